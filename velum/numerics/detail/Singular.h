#pragma once

/// \file
/// The test of pivots.
///
///     if (IsSingular(a(i, i))) return false;

#include <velum/geometry/Constants.h>

#include <cmath>

namespace vlm::detail {

/// Tells whether a value is too small to divide by: below `EPSILON` in magnitude. NaN is not.
[[nodiscard]] inline bool IsSingular(double p) noexcept { return std::abs(p) < EPSILON; }

}  // namespace vlm::detail

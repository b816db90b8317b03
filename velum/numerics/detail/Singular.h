#pragma once

/// \file
/// The test of pivots.
///
///     if (IsSingular(a(i, i))) return false;

#include <cmath>

namespace vlm::detail {

/// The epsilon of `double`, below which a pivot is singular.
constexpr double kEpsilon = 2.220446049250313e-16;

/// Tells whether a value is too small to divide by. NaN is not.
[[nodiscard]] inline bool IsSingular(double p) noexcept { return std::abs(p) < kEpsilon; }

}  // namespace vlm::detail

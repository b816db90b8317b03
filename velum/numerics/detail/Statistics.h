#pragma once

/// \file
/// What the statistics share: their threshold and the value of what can't be told.

#include <cfloat>
#include <limits>

namespace vlm::detail {

/// The smallest normal number of single precision: what is not above it, nothing is divided by.
constexpr double kTiny = FLT_MIN;
/// A statistic that can't be told.
constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

}  // namespace vlm::detail

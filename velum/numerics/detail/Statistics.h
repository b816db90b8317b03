#pragma once

/// \file
/// What the statistics share: the value of what can't be told.

#include <limits>

namespace vlm::detail {

/// A statistic that can't be told.
constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

}  // namespace vlm::detail

#pragma once

/// \file
/// How large the numbers and names of a sketch may be, wherever they come from.
///
///     if (!vlm::sketchbook::IsWithin(point)) return "it lies too far out";

#include <velum/core/GString.h>
#include <velum/geometry/Mat3d.h>
#include <velum/geometry/Vec2.h>

namespace vlm::sketchbook {

/// The largest coordinate, size or width, in points.
inline constexpr double kLargest = 10000.0;

/// The most bytes of a name.
inline constexpr unsigned int kLongestName = 100;

/// Tells whether a size is above 0 and not too large; false for NaN.
[[nodiscard]] bool IsSize(double size);
/// Tells whether both coordinates are within the largest; false for NaN.
[[nodiscard]] bool IsWithin(const Vec2d& point);
/// Tells whether a placement moves, turns and scales within bounds, and can be reversed.
[[nodiscard]] bool IsWithin(const Mat3d& placement);
/// Tells whether a text can be a name: not empty, not too long, without control characters.
[[nodiscard]] bool IsName(const GString& text);

}  // namespace vlm::sketchbook

#pragma once

/// \file
/// Exact answers about points of the plane: on which side of a line a point lies, and which way
/// round a ring runs.
///
///     int side = vlm::detail::Orientation(a, b, c);  // 1: c is left of the way from a to b
///
/// Coordinates must be finite, and may be of any size: nothing overflows or underflows.

#include <velum/geometry/Vec2.h>

#include <cmath>
#include <cstddef>

namespace vlm::detail {

/// `Orientation` where its quick test says nothing.
[[nodiscard]] int OrientationExactly(const Vec2d& a, const Vec2d& b, const Vec2d& c) noexcept;

/// Returns 1 if `c` lies to the left of the way from `a` to `b` (y goes up), -1 if it lies to the
/// right, 0 if the three lie on a line.
///
/// *Source*: the error bound is that of Shewchuk (1997).
[[nodiscard]] inline int Orientation(const Vec2d& a, const Vec2d& b, const Vec2d& c) noexcept {
  const double left = (a.x - c.x) * (b.y - c.y);
  const double right = (a.y - c.y) * (b.x - c.x);
  const double determinant = left - right;
  const double size = std::abs(determinant);
  // Below the second bound products may have underflowed, and infinity is an overflow.
  if (size > 3.3306690738754716e-16 * (std::abs(left) + std::abs(right)) && size > 1e-280 &&
      size <= 1.7976931348623157e308) {
    return determinant > 0 ? 1 : -1;
  }
  return OrientationExactly(a, b, c);
}

/// Returns 1 if the ring of `count` points, closed from the last to the first, runs
/// counter-clockwise (y goes up), -1 if it runs clockwise, 0 if its area is 0.
[[nodiscard]] int RingOrientation(const Vec2d* points, std::size_t count) noexcept;

}  // namespace vlm::detail

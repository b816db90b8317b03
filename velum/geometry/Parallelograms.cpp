#include <velum/geometry/Parallelograms.h>

#include <velum/geometry/Mat3d.h>
#include <velum/geometry/Vec2.h>

namespace vlm {

namespace {

// Takes (1, 0) and (0, 1) along the sides that meet at the first corner, which is where (0, 0)
// comes to.
Mat3d FrameOf(const Vec2d* corners) noexcept {
  const Vec2d first = corners[1] - corners[0];
  const Vec2d second = corners[2] - corners[0];
  return Mat3d(first.x, first.y, second.x, second.y, corners[0].x, corners[0].y);
}

}  // namespace

bool MapParallelogramToParallelogram(Mat3d& m, const Vec2d* from, const Vec2d* to) noexcept {
  m = FrameOf(from);
  if (!m.Inverse()) return false;
  m *= FrameOf(to);
  return true;
}

}  // namespace vlm

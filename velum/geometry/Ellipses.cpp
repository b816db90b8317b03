#include <velum/geometry/Ellipses.h>

#include <velum/geometry/Constants.h>

#include <cmath>
#include <cstddef>

namespace vlm {

void ComputeEllipse(const Box2d& box, int n, Vec2d* points) noexcept {
  if (n <= 0) {
    return;
  }
  const double a = (box.xMax() - box.xMin()) * 0.5;
  const double b = (box.yMax() - box.yMin()) * 0.5;
  // Each direction is the one before, turned by the step.
  const double step = HALF_PI / n;
  const double cosine = std::cos(step);
  const double sine = std::sin(step);
  double c = 1;
  double s = 0;
  std::ptrdiff_t end = 0;
  while (end <= n) {
    points[end++] = Vec2d(c * a, s * b);
    const double turned = c * cosine - s * sine;
    s = s * cosine + c * sine;
    c = turned;
  }
  for (std::ptrdiff_t i = n; i-- > 0;) {
    points[end++] = Vec2d(-points[i].x, points[i].y);
  }
  for (std::ptrdiff_t i = 2 * std::ptrdiff_t{n}; i-- > 0;) {
    points[end++] = Vec2d(points[i].x, -points[i].y);
  }
  const Vec2d centre = box.Center();
  for (std::ptrdiff_t i = 0; i < end; ++i) {
    points[i] += centre;
  }
}

}  // namespace vlm

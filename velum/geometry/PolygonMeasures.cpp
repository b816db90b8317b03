#include <velum/geometry/PolygonMeasures.h>

namespace vlm {

namespace {

// Adds up what `measure` gives for each of several contours.
template <class Measure>
double SumOverContours(const Vec2d* points, const unsigned* counts, unsigned contours,
                       const Measure& measure) noexcept {
  if (!points || !counts) return 0;
  double sum = 0;
  for (unsigned i = 0; i < contours; ++i) {
    sum += measure(points, counts[i]);
    points += counts[i];
  }
  return sum;
}

}  // namespace

double PolylineLength(const Vec2d* points, unsigned count) noexcept {
  if (!points) return 0;
  double length = 0;
  for (unsigned i = 1; i < count; ++i) length += points[i - 1].Distance(points[i]);
  return length;
}

double PolygonPerimeter(const Vec2d* points, unsigned count) noexcept {
  if (!points || count < 2) return 0;
  const Vec2d& first = points[0];
  const Vec2d& last = points[count - 1];
  const double length = PolylineLength(points, count);
  return first == last ? length : length + last.Distance(first);
}

double PolygonPerimeter(const Vec2d* points, const unsigned* counts, unsigned contours) noexcept {
  return SumOverContours(points, counts, contours, [](const Vec2d* contour, unsigned count) {
    return PolygonPerimeter(contour, count);
  });
}

double PolygonArea(const Vec2d* points, unsigned count) noexcept {
  if (!points || count < 3) return 0;
  // Heights are taken from the last vertex, so that a contour far from the origin loses nothing.
  const double base = points[count - 1].y;
  double xBefore = points[count - 1].x;
  double yBefore = 0;
  double sum = 0;
  for (unsigned i = 0; i < count; ++i) {
    const double y = points[i].y - base;
    sum += (yBefore + y) * (xBefore - points[i].x);
    xBefore = points[i].x;
    yBefore = y;
  }
  return sum * 0.5;
}

double PolygonArea(const Vec2d* points, const unsigned* counts, unsigned contours) noexcept {
  return SumOverContours(points, counts, contours, [](const Vec2d* contour, unsigned count) {
    return PolygonArea(contour, count);
  });
}

}  // namespace vlm

#include <velum/geometry/Segments.h>

#include <velum/geometry/Constants.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vlm {

namespace {

double Cross(const Vec2d& u, const Vec2d& v) noexcept { return u.x * v.y - u.y * v.x; }

template <class Vec>
double DistanceSquared(const Vec& p, const Vec& a, const Vec& b) noexcept {
  const Vec d = b - a;
  const Vec w = p - a;
  const double along = w.Dot(d);
  if (along <= 0) return w.Dot(w);
  const double length = d.Dot(d);
  if (length <= along) return p.DistanceSquared(b);
  return (w - d * (along / length)).LengthSquared();
}

template <class Point>
unsigned Closest(const Point* points, unsigned count, const Point& p, double* distSq) noexcept {
  unsigned best = 0;
  double least = std::numeric_limits<double>::max();
  if (points) {
    for (unsigned i = 1; i < count; ++i) {
      const double distance = PointLineSegDistSq(p, points[i - 1], points[i]);
      if (distance < least) {
        least = distance;
        best = i - 1;
      }
    }
  }
  if (distSq) *distSq = least;
  return best;
}

template <class T>
bool AreCollinear(const BasicVec2<T>& a, const BasicVec2<T>& b, const BasicVec2<T>& c,
                  T epsilon) noexcept {
  const auto side = [](const BasicVec2<T>& p, const BasicVec2<T>& q) {
    const BasicVec2<T> d = p - q;
    return std::sqrt(d.x * d.x + d.y * d.y);
  };
  const T largest = std::max({side(a, b), side(b, c), side(c, a)});
  const T area =
      std::abs(a.x * b.y + b.x * c.y + a.y * c.x - (b.y * c.x + a.y * b.x + a.x * c.y)) * T(0.5);
  return largest * epsilon > area;
}

}  // namespace

// Both ends of each segment have to lie on different sides of the other one's line. To lie on the
// line counts as the right side, and so does NaN.
bool SegmentsIntersect(const Vec2d& a, const Vec2d& b, const Vec2d& c, const Vec2d& d) noexcept {
  const bool aIsLeft = Cross(d - c, a - c) > 0;
  const bool bIsLeft = Cross(d - c, b - c) > 0;
  if (aIsLeft == bIsLeft) return false;
  const bool cIsLeft = Cross(b - a, c - a) > 0;
  const bool dIsLeft = Cross(b - a, d - a) > 0;
  return cIsLeft != dIsLeft;
}

double PointLineSegDistSq(const Vec2d& p, const Vec2d& a, const Vec2d& b) noexcept {
  return DistanceSquared(p, a, b);
}

double PointLineSegDistSq(const Vec3d& p, const Vec3d& a, const Vec3d& b) noexcept {
  return DistanceSquared(p, a, b);
}

double PointLineSegDistSq(const tagPOINT& p, const tagPOINT& a, const tagPOINT& b) noexcept {
  return DistanceSquared<Vec2d>(p, a, b);
}

unsigned FindClosestSegment(const Vec2d* points, unsigned count, const Vec2d& p,
                            double* distSq) noexcept {
  return Closest(points, count, p, distSq);
}

unsigned FindClosestSegment(const tagPOINT* points, unsigned count, const tagPOINT& p,
                            double* distSq) noexcept {
  return Closest(points, count, p, distSq);
}

bool GAreCollinear(const Vec2d& a, const Vec2d& b, const Vec2d& c) noexcept {
  return AreCollinear(a, b, c, EPSILON);
}

bool GAreCollinear(const Vec2f& a, const Vec2f& b, const Vec2f& c) noexcept {
  return AreCollinear(a, b, c, 1.1920928955078125e-07F);
}

}  // namespace vlm

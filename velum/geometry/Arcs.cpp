#include <velum/geometry/Arcs.h>

#include <velum/geometry/Constants.h>
#include <velum/geometry/detail/Finite.h>

#include <algorithm>
#include <cmath>

namespace vlm {

namespace {

// Half the angle about the top and the bottom of the ellipse within which a point is moved there.
constexpr double kSnapAngle = 0.005;
// Of a half axis beside one of about 1.
constexpr double kLeastSquare = 1e-300;

bool IsNear(double t, double angle) noexcept { return std::abs(t - angle) < kSnapAngle; }

// The ellipse in a box, by its centre and the squares of its half axes, which are divided by two to
// the power `exponent`: the squares of large and of small ones have no room.
struct Ellipse {
  Vec2d centre;
  double top;
  double bottom;
  double a2;
  double b2;
  int exponent;

  // Writes the point in the direction `t`, from 0 to 4 pi, as seen from the centre.
  [[nodiscard]] bool PointAt(double t, Vec2d& point) const noexcept {
    // The tangent changes its sign at the top and the bottom, where its argument's rounding decides
    // which it has: so they are told apart here, in the second turn as in the first.
    if (IsNear(t, 0.5 * PI) || IsNear(t, 2.5 * PI)) {
      point.Set(centre.x, top);
      return true;
    }
    if (IsNear(t, 1.5 * PI) || IsNear(t, 3.5 * PI)) {
      point.Set(centre.x, bottom);
      return true;
    }
    const double tangent = std::tan(t);
    const double denominator = a2 * tangent * tangent + b2;
    if (denominator == 0) return false;
    double x = std::ldexp(std::sqrt(a2 * b2 / denominator), exponent);
    if ((t > 0.5 * PI && t < 1.5 * PI) || (t > 2.5 * PI && t < 3.5 * PI)) x = -x;
    point.Set(centre.x + x, centre.y + tangent * x);
    return true;
  }
};

double Direction(const Vec2d& p, const Vec2d& centre) noexcept {
  const double t = std::atan2(p.y - centre.y, p.x - centre.x);
  return t < 0 ? t + 2 * PI : t;
}

template <class T>
bool Arc(const BasicBox2<T>& box, const BasicVec2<T>& start, const BasicVec2<T>& end,
         unsigned count, BasicVec2<T>* points, BasicBox2<T>* bounds) noexcept {
  const BasicVec2<T> centre = box.Center();
  if (count < 2 || start == centre || end == centre) return false;
  if (!detail::IsFinite(start) || !detail::IsFinite(end) || !detail::IsFinite(centre) ||
      !detail::IsFinite(box.MaxCorner())) {
    return false;
  }
  const Vec2d middle(centre);
  const double a = box.xMax() - middle.x;
  const double b = box.yMax() - middle.y;
  if (a == 0 || b == 0) return false;
  const int exponent = std::ilogb(std::max(std::abs(a), std::abs(b)));
  const double a1 = std::ldexp(a, -exponent);
  const double b1 = std::ldexp(b, -exponent);
  const Ellipse ellipse{middle, box.yMax(), box.yMin(), a1 * a1, b1 * b1, exponent};
  if (ellipse.a2 < kLeastSquare || ellipse.b2 < kLeastSquare) return false;
  double t = Direction(Vec2d(start), middle);
  double last = Direction(Vec2d(end), middle);
  if (t >= last) last += 2 * PI;
  const double step = (last - t) / (count - 1);
  for (unsigned i = 0; i < count; ++i, t += step) {
    Vec2d exact;
    if (!ellipse.PointAt(t, exact)) return false;
    const BasicVec2<T> point(static_cast<T>(exact.x), static_cast<T>(exact.y));
    if (points) points[i] = point;
    if (bounds) bounds->ExtendBy(point);
  }
  return true;
}

// An arc, `extra` points behind it of which the last one closes the outline; before it comes the
// centre if there is another.
template <class T>
bool Area(const BasicBox2<T>& box, const BasicVec2<T>& start, const BasicVec2<T>& end,
          unsigned count, unsigned extra, BasicVec2<T>* points, BasicBox2<T>* bounds) noexcept {
  const BasicVec2<T> centre = box.Center();
  if (count < 2 + extra || !Arc(box, start, end, count - extra, points, bounds)) return false;
  const bool hasCentre = extra == 2;
  if (hasCentre && bounds) bounds->ExtendBy(centre);
  if (points) {
    if (hasCentre) points[count - 2] = centre;
    points[count - 1] = points[0];
  }
  return true;
}

}  // namespace

bool ArcToCurve(const Box2d& box, const Vec2d& start, const Vec2d& end, unsigned count,
                Vec2d* points, Box2d* bounds) noexcept {
  return Arc(box, start, end, count, points, bounds);
}

bool ArcToCurve(const Box2f& box, const Vec2f& start, const Vec2f& end, unsigned count,
                Vec2f* points, Box2f* bounds) noexcept {
  return Arc(box, start, end, count, points, bounds);
}

bool ChordToArea(const Box2d& box, const Vec2d& start, const Vec2d& end, unsigned count,
                 Vec2d* points, Box2d* bounds) noexcept {
  return Area(box, start, end, count, 1, points, bounds);
}

bool ChordToArea(const Box2f& box, const Vec2f& start, const Vec2f& end, unsigned count,
                 Vec2f* points, Box2f* bounds) noexcept {
  return Area(box, start, end, count, 1, points, bounds);
}

bool PieToArea(const Box2d& box, const Vec2d& start, const Vec2d& end, unsigned count,
               Vec2d* points, Box2d* bounds) noexcept {
  return Area(box, start, end, count, 2, points, bounds);
}

bool PieToArea(const Box2f& box, const Vec2f& start, const Vec2f& end, unsigned count,
               Vec2f* points, Box2f* bounds) noexcept {
  return Area(box, start, end, count, 2, points, bounds);
}

}  // namespace vlm

#include <velum/geometry/Line3d.h>

#include <velum/geometry/Box3.h>
#include <velum/geometry/Vec2.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vlm {
namespace {

// A box's surface as triangles that go round clockwise for who looks from outside. A corner has
// bit 0 clear for the maximum of x, bit 1 for that of y and bit 2 for that of z.
constexpr unsigned char kBoxTriangles[12][3] = {{2, 1, 0}, {2, 3, 1}, {4, 5, 6}, {6, 5, 7},
                                                {0, 6, 2}, {0, 4, 6}, {1, 3, 7}, {1, 7, 5},
                                                {1, 4, 0}, {1, 5, 4}, {2, 7, 3}, {2, 6, 7}};

bool IsPicked(double pickAngle, double off, double along) noexcept {
  return pickAngle < 0 ? off < -pickAngle : off / along < pickAngle;
}

// The weights of the second and third corner at `hit`, from the two coordinates where the triangle
// looks largest. All three are given relative to the first corner.
Vec2d Weights(const Vec2d& hit, const Vec2d& side1, const Vec2d& side2) noexcept {
  constexpr double kSmallestPivot = 1e-10;
  if (std::abs(side1.x) < kSmallestPivot) {
    const double gamma = hit.x / side2.x;
    return Vec2d((hit.y - gamma * side2.y) / side1.y, gamma);
  }
  const double gamma =
      (hit.y * side1.x - hit.x * side1.y) / (side2.y * side1.x - side2.x * side1.y);
  return Vec2d((hit.x - gamma * side2.x) / side1.x, gamma);
}

}  // namespace

void Line3d::SetValue(const Vec3d& p0, const Vec3d& p1) noexcept {
  // Either point may be the line's own position.
  const Vec3d direction = (p1 - p0).Normalized();
  position_ = p0;
  direction_ = direction;
}

bool Line3d::GetClosestPoints(const Line3d& other, Vec3d& onThis, Vec3d& onOther) const noexcept {
  const Vec3d between = position_ - other.position_;
  const double a = direction_.Dot(direction_);
  const double b = direction_.Dot(other.direction_);
  const double c = other.direction_.Dot(other.direction_);
  const double d = direction_.Dot(between);
  const double e = other.direction_.Dot(between);
  const double denominator = a * c - b * b;
  if (denominator == 0) {
    return false;
  }
  const double t = (b * e - c * d) / denominator;
  const double s = (a * e - b * d) / denominator;
  onOther = other.position_ + other.direction_ * s;
  onThis = position_ + direction_ * t;
  return true;
}

bool Line3d::Intersect(const Vec3d& v0, const Vec3d& v1, const Vec3d& v2, Vec3d& point,
                       Vec3d& barycentric, bool& front) const noexcept {
  Vec3d normal = (v2 - v1).Cross(v1 - v0);
  if (!normal.Normalize()) {
    return false;
  }
  const double slope = normal.Dot(direction_);
  if (!(std::abs(slope) >= 1e-10)) {
    return false;
  }
  const double t = (v0 - position_).Dot(normal) / slope;
  const Vec3d hit = position_ + direction_ * t;

  const double x = std::abs(normal.x);
  const double y = std::abs(normal.y);
  const double z = std::abs(normal.z);
  const std::size_t dropped = z >= x && z >= y ? 2 : y >= x ? 1 : 0;
  const std::size_t first = dropped == 0 ? 1 : 0;
  const std::size_t second = dropped == 2 ? 1 : 2;
  const auto seen = [&](const Vec3d& v) noexcept {
    return Vec2d(v[first] - v0[first], v[second] - v0[second]);
  };
  const Vec2d weights = Weights(seen(hit), seen(v1), seen(v2));
  const double sum = weights.x + weights.y;
  if (!(weights.x >= 0 && weights.x <= 1 && weights.y >= 0 && weights.y <= 1 && sum >= 0 &&
        sum <= 1)) {
    return false;
  }
  point = hit;
  barycentric.Set(1 - weights.x - weights.y, weights.x, weights.y);
  front = slope < 0;
  return true;
}

bool Line3d::Intersect(const Box3d& box, Vec3d& enter, Vec3d& exit) const noexcept {
  if (box.IsDegenerate()) {
    return false;
  }
  const Vec3d center = box.Center();
  if (GetClosestPoint(center).DistanceSquared(center) > box.Size().LengthSquared() / 4) {
    return false;
  }
  Vec3d corners[8];
  for (unsigned int i = 0; i < 8; ++i) {
    corners[i].Set((i & 1) != 0 ? box.xMin() : box.xMax(), (i & 2) != 0 ? box.yMin() : box.yMax(),
                   (i & 4) != 0 ? box.zMin() : box.zMax());
  }
  bool isHit = false;
  for (const auto& triangle : kBoxTriangles) {
    Vec3d point;
    Vec3d barycentric;
    bool front = false;
    if (Intersect(corners[triangle[0]], corners[triangle[1]], corners[triangle[2]], point,
                  barycentric, front)) {
      (front ? enter : exit) = point;
      isHit = true;
    }
  }
  return isHit;
}

bool Line3d::Intersect(double pickAngle, const Vec3d& point) const noexcept {
  const Vec3d between = point - position_;
  const double along = between.Dot(direction_);
  if (!(along > 0)) {
    return false;
  }
  // Rounding may take the square of a point on the line below 0.
  const double square = std::max(0.0, between.LengthSquared() - along * along);
  return IsPicked(pickAngle, std::sqrt(square), along);
}

bool Line3d::Intersect(double pickAngle, const Vec3d& v0, const Vec3d& v1,
                       Vec3d& out) const noexcept {
  Vec3d onThis;
  Vec3d onSegment;
  if (v0 == v1 || !GetClosestPoints(Line3d(v0, v1), onThis, onSegment)) {
    return false;
  }
  if ((onSegment - v0).Dot(v1 - v0) < 0) {
    onSegment = v0;
  } else if ((onSegment - v1).Dot(v0 - v1) < 0) {
    onSegment = v1;
  }
  out = onSegment;
  return IsPicked(pickAngle, onThis.Distance(out), onThis.Distance(position_));
}

bool Line3d::Intersect(double pickAngle, const Box3d& box) const noexcept {
  if (box.IsDegenerate()) {
    return false;
  }
  double radius = -pickAngle;
  if (!(pickAngle < 0)) {
    Vec3d corners[8];
    box.GetCorners(corners);
    double farthest = 0;
    for (const Vec3d& corner : corners) {
      farthest = std::max(farthest, position_.Distance(corner));
    }
    radius = std::tan(pickAngle) * farthest;
  }
  Box3d wide = box;
  wide.Inflate(radius, radius, radius);
  Vec3d enter;
  Vec3d exit;
  return Intersect(wide, enter, exit);
}

}  // namespace vlm

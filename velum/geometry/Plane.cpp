#include <velum/geometry/Plane.h>

#include <velum/geometry/Line3d.h>
#include <velum/geometry/Mat4d.h>

namespace vlm {

Plane::Plane(const Vec3d& p0, const Vec3d& p1, const Vec3d& p2) noexcept
    : Plane((p1 - p0).Cross(p2 - p0), p0) {}

Plane::Plane(const Vec3d& normal, double distance) noexcept
    : normal_(normal.Normalized()), d_(distance) {}

Plane::Plane(const Vec3d& normal, const Vec3d& point) noexcept
    : normal_(normal.Normalized()), d_(normal_.Dot(point)) {}

bool Plane::Intersect(const Line3d& line, Vec3d& point) const noexcept {
  const double slope = normal_.Dot(line.GetDirection());
  if (slope == 0) {
    return false;
  }
  point = line.GetPosition() + line.GetDirection() * (-GetDistance(line.GetPosition()) / slope);
  return true;
}

void Plane::Transform(const Mat4d& m) noexcept {
  const Vec3d foot = normal_ * d_ * m;
  Mat4d inverse;
  m.Inverse(inverse);
  *this = Plane(inverse.Transpose().DirMult(normal_), foot);
}

}  // namespace vlm

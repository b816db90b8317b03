#pragma once

/// \file
/// Planes in space.
///
///     vlm::Plane const floor(vlm::Vec3d::UNIT_Z, 2);  // all points with z = 2
///     double height = floor.GetDistance(vlm::Vec3d(7, 7, 5));  // 3

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/Vec3.h>

namespace vlm {

/// A plane by its unit normal and its signed distance from the origin along the normal: a point p
/// lies on it when p . normal equals the distance. A plain value; nothing is checked and nothing
/// throws.
class VELUM_API Plane {
 public:
  /// Makes a plane with the normal (0, 0, 0) and the distance 0, which is none yet.
  constexpr Plane() noexcept = default;
  /// Makes the plane of three points; from the side that the normal points to, they go round
  /// counter-clockwise. Points on one line give NaN.
  Plane(const Vec3d& p0, const Vec3d& p1, const Vec3d& p2) noexcept;
  /// Makes a plane of a normal, which is scaled to length 1, and a distance. A zero normal gives
  /// NaN.
  Plane(const Vec3d& normal, double distance) noexcept;
  /// Makes a plane of a normal, which is scaled to length 1, and a point on it. A zero normal gives
  /// NaN.
  Plane(const Vec3d& normal, const Vec3d& point) noexcept;

  /// Returns the normal, of length 1.
  [[nodiscard]] constexpr const Vec3d& GetNormal() const noexcept { return normal_; }
  /// Returns the signed distance from the origin along the normal.
  [[nodiscard]] constexpr double GetDistanceFromOrigin() const noexcept { return d_; }
  /// Returns the signed distance of a point, above 0 on the side that the normal points to.
  [[nodiscard]] constexpr double GetDistance(const Vec3d& point) const noexcept {
    return point.Dot(normal_) - d_;
  }
  /// Tells whether a point lies on the plane or on the side that the normal points to.
  [[nodiscard]] constexpr bool IsInHalfSpace(const Vec3d& point) const noexcept {
    return point.Dot(normal_) >= d_;
  }
  /// Writes the point where a line meets the plane.
  ///
  /// - The line is parallel to the plane, exactly: `false`, and `point` stays as it was.
  bool Intersect(const Line3d& line, Vec3d& point) const noexcept;

  /// Moves the plane along its normal.
  constexpr void Offset(double delta) noexcept { d_ += delta; }
  /// Transforms the plane. Where `m` has no inverse the normal stays, and the plane goes through
  /// the transformed foot of the origin.
  void Transform(const Mat4d& m) noexcept;

  /// Compares normal and distance as numbers.
  [[nodiscard]] constexpr bool operator==(const Plane& plane) const noexcept = default;

 private:
  Vec3d normal_;
  double d_ = 0;
};

}  // namespace vlm

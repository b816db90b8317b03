#pragma once

/// \file
/// Lines in space: nearest points, what they meet, and picking with a tolerance.
///
///     vlm::Line3d const sight(vlm::Vec3d(0, 0, 10), vlm::Vec3d(0, 0, 0));
///     vlm::Vec3d enter, exit;
///     bool hits = sight.Intersect(vlm::Box3d(-1, -1, -1, 1, 1, 2), enter, exit);  // at z 2 and -1

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/Vec3.h>

namespace vlm {

/// An infinite line in space by a position and a unit direction. A plain value; nothing throws.
///
/// The forms of `Intersect` with a `pickAngle` tell whether something lies near the line. A
/// `pickAngle` below 0 is a fixed radius of -`pickAngle`. Otherwise it is a cone that opens from
/// the position: the distance off the line by the distance along it. What lies on the limit is not
/// hit.
class VELUM_API Line3d {
 public:
  /// Makes a line with the position and the direction (0, 0, 0), which is none yet.
  constexpr Line3d() noexcept = default;
  /// Makes the line from `p0` towards `p1`, as `SetValue` does.
  Line3d(const Vec3d& p0, const Vec3d& p1) noexcept { SetValue(p0, p1); }

  /// Returns the point that the line starts from.
  [[nodiscard]] constexpr const Vec3d& GetPosition() const noexcept { return position_; }
  /// Returns the direction, of length 1.
  [[nodiscard]] constexpr const Vec3d& GetDirection() const noexcept { return direction_; }

  /// Returns the point of the line that is nearest to `point`.
  [[nodiscard]] constexpr Vec3d GetClosestPoint(const Vec3d& point) const noexcept {
    return position_ + direction_ * (point - position_).Dot(direction_);
  }
  /// Writes the points where two lines come nearest to each other.
  ///
  /// - Parallel lines: `false`, and nothing is written.
  /// - Lines that are parallel but for rounding: points that may be far away.
  bool GetClosestPoints(const Line3d& other, Vec3d& onThis, Vec3d& onOther) const noexcept;

  /// Finds where the line meets a triangle, on either side of the position. Writes the point; its
  /// barycentric coordinates, which go with `v0`, `v1` and `v2`; and whether it is met from the
  /// front, from where the corners go round clockwise. The edges belong to the triangle.
  ///
  /// - No hit; a triangle whose doubled area is at most 2.220446049250313e-16; a line parallel to
  ///   it to 1e-10: `false`, and nothing is written.
  ///
  /// *Source*: Badouel, An efficient ray-polygon intersection, 1990.
  bool Intersect(const Vec3d& v0, const Vec3d& v1, const Vec3d& v2, Vec3d& point,
                 Vec3d& barycentric, bool& front) const noexcept;
  /// Finds where the line enters a box and where it leaves it, on either side of the position.
  ///
  /// - No hit, or a degenerate box: `false`, and nothing is written.
  /// - A line that touches a single edge may write one of the points and leave the other.
  bool Intersect(const Box3d& box, Vec3d& enter, Vec3d& exit) const noexcept;

  /// Tells whether a point lies near the line, and ahead of its position.
  [[nodiscard]] bool Intersect(double pickAngle, const Vec3d& point) const noexcept;
  /// Tells whether a segment comes near the line, on either side of its position. Unless the two
  /// are parallel or the segment is a point, both of which are no hit, writes the point of the
  /// segment that was looked at.
  bool Intersect(double pickAngle, const Vec3d& v0, const Vec3d& v1, Vec3d& out) const noexcept;
  /// Tells whether the line meets a box that is widened on all sides: by the radius, or by tan
  /// `pickAngle` times the distance to its farthest corner. A degenerate box is no hit.
  [[nodiscard]] bool Intersect(double pickAngle, const Box3d& box) const noexcept;

  /// Sets the line from `p0` towards `p1`. Two points that coincide give a direction of NaN.
  void SetValue(const Vec3d& p0, const Vec3d& p1) noexcept;

  /// Compares position and direction as numbers.
  [[nodiscard]] constexpr bool operator==(const Line3d& line) const noexcept = default;

 private:
  Vec3d position_;
  Vec3d direction_;
};

}  // namespace vlm

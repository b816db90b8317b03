#pragma once

/// \file
/// Vectors of space: Vec3i, Vec3f and Vec3d.
///
///     vlm::Vec3d normal = vlm::Vec3d::UNIT_X.Cross(vlm::Vec3d::UNIT_Y);  // UNIT_Z
///     bool hasDirection = normal.Normalize();                           // true

#include <velum/geometry/Point.h>
#include <velum/geometry/VecBase.h>

#include <cmath>
#include <concepts>
#include <type_traits>

namespace vlm {

/// A vector or point of space; use it as Vec3i, Vec3f or Vec3d. VecBase.h tells the members that
/// all vectors share.
template <class T>
class VELUM_API BasicVec3 : public VecBase<BasicVec3<T>, Point3<T>> {
 public:
  static const BasicVec3 ZERO;    ///< (0, 0, 0)
  static const BasicVec3 ONE;     ///< (1, 1, 1)
  static const BasicVec3 UNIT_X;  ///< (1, 0, 0)
  static const BasicVec3 UNIT_Y;  ///< (0, 1, 0)
  static const BasicVec3 UNIT_Z;  ///< (0, 0, 1)

  /// `Normalize` leaves vectors alone that are not longer than this: the epsilon of the component
  /// type.
  static constexpr double kShortestLength =
      std::is_same_v<T, float> ? 1.1920928955078125e-7 : 2.220446049250313e-16;

  /// Makes the zero vector.
  constexpr BasicVec3() noexcept = default;
  /// Makes a vector of three components.
  constexpr BasicVec3(T xValue, T yValue, T zValue) noexcept : Base(xValue, yValue, zValue) {}
  /// Makes a vector of the first three elements of an array.
  explicit constexpr BasicVec3(PointerTo<T> auto xyz) noexcept : Base(xyz) {}
  /// Converts between `float` and `double`: towards `float` only on request.
  template <std::floating_point U>
  requires(std::floating_point<T> && !std::same_as<T, U>) explicit(
      sizeof(T) < sizeof(U)) constexpr BasicVec3(const BasicVec3<U>& v) noexcept
      : Base(static_cast<T>(v.x), static_cast<T>(v.y), static_cast<T>(v.z)) {}

  /// Sets all components.
  constexpr void Set(T xValue, T yValue, T zValue) noexcept {
    *this = BasicVec3(xValue, yValue, zValue);
  }

  /// Returns the cross product, right-handed: `UNIT_X.Cross(UNIT_Y)` is `UNIT_Z`.
  [[nodiscard]] constexpr BasicVec3 Cross(const BasicVec3& v) const noexcept {
    return BasicVec3(this->y * v.z - this->z * v.y, this->z * v.x - this->x * v.z,
                     this->x * v.y - this->y * v.x);
  }

  /// Returns the unit vector of the axis that the vector follows most, with the sign of that
  /// component. Of components equal in magnitude x goes before y, and y before z.
  ///
  /// - (0, 0, 0): (-1, 0, 0).
  [[nodiscard]] BasicVec3 GetClosestAxis() const noexcept requires std::floating_point<T> {
    T const ax = std::abs(this->x);
    T const ay = std::abs(this->y);
    T const az = std::abs(this->z);
    if (ax >= ay && ax >= az) {
      return BasicVec3(this->x > 0 ? T(1) : T(-1), 0, 0);
    }
    if (ay >= az) {
      return BasicVec3(0, this->y > 0 ? T(1) : T(-1), 0);
    }
    return BasicVec3(0, 0, this->z > 0 ? T(1) : T(-1));
  }

  /// Returns the angle between two vectors in radians, from 0 to pi; 0 when the product of their
  /// lengths is at most 2.220446049250313e-16.
  [[nodiscard]] double AngleBetween(
      const BasicVec3& v) const noexcept requires std::floating_point<T> {
    return this->Angle(v);
  }

  /// Orders by x, then by y, then by z, for ordered containers.
  [[nodiscard]] friend constexpr bool operator<(const BasicVec3& a, const BasicVec3& b) noexcept {
    return a.x < b.x || (a.x == b.x && (a.y < b.y || (a.y == b.y && a.z < b.z)));
  }

 private:
  using Base = VecBase<BasicVec3<T>, Point3<T>>;
};

/// Returns `v * s`.
[[nodiscard]] constexpr Vec3f operator*(float s, const Vec3f& v) noexcept { return v * s; }
/// Returns `v * s`.
[[nodiscard]] constexpr Vec3d operator*(double s, const Vec3d& v) noexcept { return v * s; }

/// \cond definitions of the constants, told above
template <>
inline constexpr Vec3i Vec3i::ZERO{0, 0, 0};
template <>
inline constexpr Vec3i Vec3i::ONE{1, 1, 1};
template <>
inline constexpr Vec3i Vec3i::UNIT_X{1, 0, 0};
template <>
inline constexpr Vec3i Vec3i::UNIT_Y{0, 1, 0};
template <>
inline constexpr Vec3i Vec3i::UNIT_Z{0, 0, 1};
template <>
inline constexpr Vec3f Vec3f::ZERO{0, 0, 0};
template <>
inline constexpr Vec3f Vec3f::ONE{1, 1, 1};
template <>
inline constexpr Vec3f Vec3f::UNIT_X{1, 0, 0};
template <>
inline constexpr Vec3f Vec3f::UNIT_Y{0, 1, 0};
template <>
inline constexpr Vec3f Vec3f::UNIT_Z{0, 0, 1};
template <>
inline constexpr Vec3d Vec3d::ZERO{0, 0, 0};
template <>
inline constexpr Vec3d Vec3d::ONE{1, 1, 1};
template <>
inline constexpr Vec3d Vec3d::UNIT_X{1, 0, 0};
template <>
inline constexpr Vec3d Vec3d::UNIT_Y{0, 1, 0};
template <>
inline constexpr Vec3d Vec3d::UNIT_Z{0, 0, 1};
/// \endcond

static_assert(sizeof(Vec3i) == 3 * sizeof(int) && sizeof(Vec3f) == 3 * sizeof(float));
static_assert(sizeof(Vec3d) == 3 * sizeof(double));

}  // namespace vlm

#pragma once

/// \file
/// Rotations of space as quaternions: Quat4f and Quat4d.
///
///     vlm::Quat4d const turn(vlm::Vec3d::UNIT_Z, vlm::HALF_PI);
///     vlm::Vec3d p = turn * vlm::Vec3d::UNIT_X;  // UNIT_Y
///     vlm::Quat4d half = vlm::Quat4d::Slerp(vlm::Quat4d::IDENTITY, turn, 0.5);

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/PointerTo.h>
#include <velum/geometry/Vec3.h>

#include <concepts>
#include <type_traits>

namespace vlm {

/// A quaternion with the vector part x, y, z and the scalar part w; use it as Quat4f or Quat4d. A
/// unit quaternion is a rotation.
///
/// A plain value; nothing is checked and nothing throws. `a * b` rotates by `a` first, as matrices
/// do. Angles are radians and turn counter-clockwise when the axis points at the viewer. In memory
/// it is x, y, z, w.
template <class T>
class VELUM_API BasicQuat4 {
 public:
  /// The vector of the same number type.
  using Vec3 = BasicVec3<T>;
  /// The matrix of the same number type.
  using Mat4 = std::conditional_t<std::is_same_v<T, float>, Mat4f, Mat4d>;

  static const BasicQuat4 IDENTITY;  ///< (0, 0, 0, 1), no rotation
  static const BasicQuat4 ZERO;      ///< (0, 0, 0, 0), which is no rotation

  /// What `Norm` or its root must exceed to be divided by: the epsilon of the component type.
  static constexpr T kSmallestNorm =
      std::is_same_v<T, float> ? T(1.1920928955078125e-7) : T(2.220446049250313e-16);

  T x{};  ///< The first component of the vector part.
  T y{};  ///< The second component of the vector part.
  T z{};  ///< The third component of the vector part.
  T w{};  ///< The scalar part.

  /// Makes (0, 0, 0, 0), which is not the identity.
  constexpr BasicQuat4() noexcept {}
  /// Makes a quaternion of four components.
  constexpr BasicQuat4(T xValue, T yValue, T zValue, T wValue) noexcept
      : x(xValue), y(yValue), z(zValue), w(wValue) {}
  /// Makes a quaternion of the first four elements of an array.
  explicit constexpr BasicQuat4(PointerTo<T> auto xyzw) noexcept
      : x(xyzw[0]), y(xyzw[1]), z(xyzw[2]), w(xyzw[3]) {}
  /// Makes the rotation about an axis, as `Set` does.
  BasicQuat4(const Vec3& axis, T angle) noexcept { Set(axis, angle); }
  /// Makes the rotation from one direction to another, as `Set` does.
  BasicQuat4(const Vec3& from, const Vec3& to) noexcept { Set(from, to); }
  /// Makes the rotation of a matrix, as `Set` does.
  explicit BasicQuat4(const Mat4& m) noexcept { Set(m); }
  /// Converts between `float` and `double`: towards `float` only on request.
  template <std::floating_point U>
  requires(!std::same_as<T, U>) explicit(sizeof(T) < sizeof(U)) constexpr BasicQuat4(
      const BasicQuat4<U>& q) noexcept
      : x(static_cast<T>(q.x)),
        y(static_cast<T>(q.y)),
        z(static_cast<T>(q.z)),
        w(static_cast<T>(q.w)) {}

  /// Returns the rotation on the way from `a` to `b` along the shorter arc, at even speed.
  ///
  /// - `t` at most 0: `a`; at least 1: `b`.
  /// - Quaternions almost equal, or almost opposite: blended component by component. The result is
  ///   never scaled to unit length.
  ///
  /// *Source*: K. Shoemake, Animating Rotation with Quaternion Curves (1985).
  [[nodiscard]] static BasicQuat4 Slerp(const BasicQuat4& a, const BasicQuat4& b, T t) noexcept;

  /// Returns the axis and the angle of a unit quaternion.
  ///
  /// - Vector part with a square of at most `kSmallestNorm`: the axis (0, 0, 1) and the angle 0.
  /// - `w` beyond -1 to 1 by rounding counts as that limit.
  void Get(Vec3& axis, T& angle) const noexcept;
  /// Writes the matrix of a unit quaternion; what other quaternions give is no rotation.
  void Get(Mat4& m) const noexcept;
  /// Returns the sum of the squares of the components, not its root.
  [[nodiscard]] constexpr T Norm() const noexcept { return x * x + y * y + z * z + w * w; }
  /// Tells whether `Norm` differs from 1 by at most the square of `tolerance`.
  [[nodiscard]] bool IsUnit(T tolerance) const noexcept;
  /// Tells whether the squares of the differences add up to at most `tolerance`, not its square.
  [[nodiscard]] constexpr bool Equals(const BasicQuat4& q, T tolerance) const noexcept {
    const BasicQuat4 difference(x - q.x, y - q.y, z - q.z, w - q.w);
    return difference.Norm() <= tolerance;
  }
  /// Returns the inverse: the conjugate divided by `Norm`, or `ZERO` for a `Norm` of at most
  /// `kSmallestNorm`.
  [[nodiscard]] BasicQuat4 Inverse() const noexcept;
  /// Returns the conjugate, which is the inverse of a unit quaternion.
  [[nodiscard]] constexpr BasicQuat4 UnitInverse() const noexcept {
    return BasicQuat4(-x, -y, -z, w);
  }
  /// Rotates a vector through the matrix that `Get` writes. For many vectors take that matrix.
  [[nodiscard]] Vec3 MultVec(const Vec3& v) const noexcept;

  /// Sets all components.
  constexpr void Set(T xValue, T yValue, T zValue, T wValue) noexcept {
    *this = BasicQuat4(xValue, yValue, zValue, wValue);
  }
  /// Sets the rotation about an axis of any length. A zero axis gives NaN.
  void Set(const Vec3& axis, T angle) noexcept;
  /// Sets the rotation of a matrix, which must be nothing but one: other matrices give a quaternion
  /// that is not a unit, or NaN.
  void Set(const Mat4& m) noexcept;
  /// Sets the shortest rotation that takes the direction `from` to the direction `to`.
  ///
  /// - A cosine between them above 0.99999: the identity.
  /// - Below -0.99999: a half turn about an axis across `from`.
  /// - A zero vector: NaN in x, y and z.
  void Set(const Vec3& from, const Vec3& to) noexcept;
  /// Multiplies all four components, `w` included, by -1 / `Norm`: beside `Inverse` the result has
  /// `w` of the opposite sign. A `Norm` of at most `kSmallestNorm` leaves the quaternion as it is,
  /// `false`.
  bool Invert() noexcept;
  /// Scales the quaternion to `Norm` 1. A root of the `Norm` of at most `kSmallestNorm` leaves it
  /// as it is, `false`.
  bool Normalize() noexcept;
  /// Multiplies the angle of a unit quaternion by a factor and keeps its axis.
  void ScaleAngle(T factor) noexcept;

  /// Sets this = this * q.
  constexpr BasicQuat4& operator*=(const BasicQuat4& q) noexcept { return *this = *this * q; }
  /// Rotates a vector, as `MultVec` does.
  [[nodiscard]] Vec3 operator*(const Vec3& v) const noexcept { return MultVec(v); }

  /// Returns the rotation by `a` followed by the rotation by `b`.
  [[nodiscard]] friend constexpr BasicQuat4 operator*(const BasicQuat4& a,
                                                      const BasicQuat4& b) noexcept {
    return BasicQuat4(b.w * a.x + b.x * a.w + b.y * a.z - b.z * a.y,
                      b.w * a.y + b.y * a.w + b.z * a.x - b.x * a.z,
                      b.w * a.z + b.z * a.w + b.x * a.y - b.y * a.x,
                      b.w * a.w - b.x * a.x - b.y * a.y - b.z * a.z);
  }
  /// Compares all components as numbers.
  [[nodiscard]] friend constexpr bool operator==(const BasicQuat4& a,
                                                 const BasicQuat4& b) noexcept {
    return a.x == b.x && a.y == b.y && a.z == b.z && a.w == b.w;
  }
};

/// \cond definitions of the constants, told above
template <>
inline constexpr Quat4f Quat4f::IDENTITY{0, 0, 0, 1};
template <>
inline constexpr Quat4f Quat4f::ZERO{};
template <>
inline constexpr Quat4d Quat4d::IDENTITY{0, 0, 0, 1};
template <>
inline constexpr Quat4d Quat4d::ZERO{};
/// \endcond

static_assert(sizeof(Quat4f) == 4 * sizeof(float) && sizeof(Quat4d) == 4 * sizeof(double));

}  // namespace vlm

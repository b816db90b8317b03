#pragma once

/// \file
/// Vectors of the plane: Vec2i, Vec2f and Vec2d.
///
///     vlm::Vec2d a(3, 4);
///     double length = a.Length();          // 5
///     vlm::Vec2d b = 2 * a + vlm::Vec2d::UNIT_X;  // (7, 8)

#include <velum/geometry/Point.h>
#include <velum/geometry/VecBase.h>
#include <velum/platform/Types.h>

#include <cmath>
#include <concepts>
#include <type_traits>

namespace vlm {

/// A vector or point of the plane; use it as Vec2i, Vec2f or Vec2d. VecBase.h tells the members
/// that all vectors share.
template <class T>
class VELUM_API BasicVec2 : public VecBase<BasicVec2<T>, Point2<T>> {
 public:
  static const BasicVec2 ZERO;    ///< (0, 0)
  static const BasicVec2 ONE;     ///< (1, 1)
  static const BasicVec2 UNIT_X;  ///< (1, 0)
  static const BasicVec2 UNIT_Y;  ///< (0, 1)

  /// `Normalize` leaves vectors alone that are not longer than this.
  static constexpr double kShortestLength = 2.220446049250313e-16;

  /// Makes the zero vector.
  constexpr BasicVec2() noexcept = default;
  /// Makes a vector of two components.
  constexpr BasicVec2(T xValue, T yValue) noexcept : Base(xValue, yValue) {}
  /// Makes a vector of the first two elements of an array.
  explicit constexpr BasicVec2(PointerTo<T> auto xy) noexcept : Base(xy) {}
  /// Makes a vector of an integer point; implicitly unless `float` would round it.
  explicit(std::is_same_v<T, float>) constexpr BasicVec2(POINT const& p) noexcept
      : Base(static_cast<T>(p.x), static_cast<T>(p.y)) {}
  /// Converts between `float` and `double`: towards `float` only on request.
  template <std::floating_point U>
  requires(std::floating_point<T> && !std::same_as<T, U>) explicit(
      sizeof(T) < sizeof(U)) constexpr BasicVec2(const BasicVec2<U>& v) noexcept
      : Base(static_cast<T>(v.x), static_cast<T>(v.y)) {}

  /// Sets both components.
  constexpr void Set(T xValue, T yValue) noexcept { *this = BasicVec2(xValue, yValue); }

  /// Returns the unit vector of the axis that the vector follows most, with the sign of that
  /// component.
  ///
  /// - |x| equal to |y|: the x axis.
  /// - (0, 0): (-1, 0).
  [[nodiscard]] BasicVec2 GetClosestAxis() const noexcept requires std::floating_point<T> {
    return std::abs(this->y) > std::abs(this->x) ? BasicVec2(0, this->y > 0 ? T(1) : T(-1))
                                                 : BasicVec2(this->x > 0 ? T(1) : T(-1), 0);
  }

  /// Returns the angle between two vectors in radians, from 0 to pi; 0 when the product of their
  /// lengths is at most 2.220446049250313e-16.
  [[nodiscard]] double AngleBetween(
      const BasicVec2& v) const noexcept requires std::floating_point<T> {
    return this->Angle(v);
  }

  /// Orders by x, then by y, for ordered containers.
  [[nodiscard]] friend constexpr bool operator<(const BasicVec2& a, const BasicVec2& b) noexcept {
    return a.x < b.x || (a.x == b.x && a.y < b.y);
  }

 private:
  using Base = VecBase<BasicVec2<T>, Point2<T>>;
};

/// Returns `v * s`.
[[nodiscard]] constexpr Vec2f operator*(float s, const Vec2f& v) noexcept { return v * s; }
/// Returns `v * s`.
[[nodiscard]] constexpr Vec2d operator*(double s, const Vec2d& v) noexcept { return v * s; }

/// \cond definitions of the constants, told above
template <>
inline constexpr Vec2i Vec2i::ZERO{0, 0};
template <>
inline constexpr Vec2i Vec2i::ONE{1, 1};
template <>
inline constexpr Vec2i Vec2i::UNIT_X{1, 0};
template <>
inline constexpr Vec2i Vec2i::UNIT_Y{0, 1};
template <>
inline constexpr Vec2f Vec2f::ZERO{0, 0};
template <>
inline constexpr Vec2f Vec2f::ONE{1, 1};
template <>
inline constexpr Vec2f Vec2f::UNIT_X{1, 0};
template <>
inline constexpr Vec2f Vec2f::UNIT_Y{0, 1};
template <>
inline constexpr Vec2d Vec2d::ZERO{0, 0};
template <>
inline constexpr Vec2d Vec2d::ONE{1, 1};
template <>
inline constexpr Vec2d Vec2d::UNIT_X{1, 0};
template <>
inline constexpr Vec2d Vec2d::UNIT_Y{0, 1};
/// \endcond

static_assert(sizeof(Vec2i) == 2 * sizeof(int) && sizeof(Vec2f) == 2 * sizeof(float));
static_assert(sizeof(Vec2d) == 2 * sizeof(double));

}  // namespace vlm

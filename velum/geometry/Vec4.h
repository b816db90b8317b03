#pragma once

/// \file
/// Vectors of four components: Vec4f and Vec4d.
///
///     vlm::Vec4d p(1, 2, 3, 1);
///     double const* row = p;  // the four components, one after the other

#include <velum/geometry/Point.h>
#include <velum/geometry/VecBase.h>

#include <concepts>
#include <type_traits>

namespace vlm {

/// A vector of four components, of homogeneous coordinates for example; use it as Vec4f or Vec4d.
/// VecBase.h tells the members that all vectors share. There is no order among these.
template <class T>
class VELUM_API BasicVec4 : public VecBase<BasicVec4<T>, Point4<T, T>> {
 public:
  static const BasicVec4 ZERO;  ///< (0, 0, 0, 0)

  /// `Normalize` leaves vectors alone that are not longer than this: the epsilon of the component
  /// type.
  static constexpr double kShortestLength =
      std::is_same_v<T, float> ? 1.1920928955078125e-7 : 2.220446049250313e-16;

  /// Makes the zero vector.
  constexpr BasicVec4() noexcept = default;
  /// Makes a vector of four components.
  constexpr BasicVec4(T xValue, T yValue, T zValue, T wValue) noexcept
      : Base(xValue, yValue, zValue, wValue) {}
  /// Makes a vector of the first three elements of an array and a fourth component.
  constexpr BasicVec4(PointerTo<T> auto xyz, T wValue) noexcept : Base(xyz, wValue) {}
  /// Converts between `float` and `double`: towards `float` only on request.
  template <std::floating_point U>
  requires(!std::same_as<T, U>) explicit(sizeof(T) < sizeof(U)) constexpr BasicVec4(
      const BasicVec4<U>& v) noexcept
      : Base(static_cast<T>(v.x), static_cast<T>(v.y), static_cast<T>(v.z), static_cast<T>(v.w)) {}

  /// Sets all components.
  constexpr void Set(T xValue, T yValue, T zValue, T wValue) noexcept {
    *this = BasicVec4(xValue, yValue, zValue, wValue);
  }

 private:
  using Base = VecBase<BasicVec4<T>, Point4<T, T>>;
};

/// \cond definitions of the constants, told above
template <>
inline constexpr Vec4f Vec4f::ZERO{0, 0, 0, 0};
template <>
inline constexpr Vec4d Vec4d::ZERO{0, 0, 0, 0};
/// \endcond

static_assert(sizeof(Vec4f) == 4 * sizeof(float) && sizeof(Vec4d) == 4 * sizeof(double));

}  // namespace vlm

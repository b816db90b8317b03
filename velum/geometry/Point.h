#pragma once

/// \file
/// Points of two, three and four components, the ground that the vectors stand on.
///
///     vlm::Point3<double> p(1, 2, 3);
///     p *= 2;
///     bool same = p == vlm::Point3<double>(2, 4, 6);  // true

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/PointerTo.h>
#include <velum/geometry/detail/WrapTo.inl.h>

#include <type_traits>

namespace vlm {

/// A point of two components. A plain value; arithmetic goes component by component and checks
/// nothing, and `==` compares as the component type does, so that a NaN equals nothing.
template <class T>
class VELUM_API Point2 {
 public:
  T x{};  ///< The first component.
  T y{};  ///< The second component.

  /// Makes a point with all components 0.
  constexpr Point2() noexcept {}
  /// Makes a point of two components.
  constexpr Point2(T xValue, T yValue) noexcept : x(xValue), y(yValue) {}
  /// Makes a point of the first two elements of an array.
  explicit constexpr Point2(PointerTo<T> auto xy) noexcept : x(xy[0]), y(xy[1]) {}

  /// Returns the first component.
  [[nodiscard]] constexpr T X() const noexcept { return x; }
  /// Returns the second component.
  [[nodiscard]] constexpr T Y() const noexcept { return y; }
  /// Sets the first component.
  constexpr void X(T value) noexcept { x = value; }
  /// Sets the second component.
  constexpr void Y(T value) noexcept { y = value; }

  /// Adds component by component.
  constexpr Point2& operator+=(const Point2& p) noexcept {
    x += p.x;
    y += p.y;
    return *this;
  }
  /// Subtracts component by component.
  constexpr Point2& operator-=(const Point2& p) noexcept {
    x -= p.x;
    y -= p.y;
    return *this;
  }
  /// Multiplies component by component.
  constexpr Point2& operator*=(const Point2& p) noexcept {
    x *= p.x;
    y *= p.y;
    return *this;
  }
  /// Divides component by component. An integer component of `p` must not be 0.
  constexpr Point2& operator/=(const Point2& p) noexcept {
    x /= p.x;
    y /= p.y;
    return *this;
  }
  /// Adds a number to each component.
  constexpr Point2& operator+=(T s) noexcept { return *this += Point2(s, s); }
  /// Subtracts a number from each component.
  constexpr Point2& operator-=(T s) noexcept { return *this -= Point2(s, s); }
  /// Multiplies each component by a number.
  constexpr Point2& operator*=(T s) noexcept { return *this *= Point2(s, s); }
  /// Divides each component by a number, which must not be 0 where the components are integers.
  constexpr Point2& operator/=(T s) noexcept { return *this /= Point2(s, s); }

  /// Compares all components.
  [[nodiscard]] constexpr bool operator==(const Point2& p) const noexcept {
    return x == p.x && y == p.y;
  }
};

/// A point of three components: a Point2 with a `z`.
template <class T>
class VELUM_API Point3 : public Point2<T> {
 public:
  T z{};  ///< The third component.

  /// Makes a point with all components 0.
  constexpr Point3() noexcept {}
  /// Makes a point of three components.
  constexpr Point3(T xValue, T yValue, T zValue) noexcept : Point2<T>(xValue, yValue), z(zValue) {}
  /// Makes a point of the first three elements of an array.
  explicit constexpr Point3(PointerTo<T> auto xyz) noexcept : Point2<T>(xyz), z(xyz[2]) {}

  /// Returns the third component.
  [[nodiscard]] constexpr T Z() const noexcept { return z; }
  /// Sets the third component.
  constexpr void Z(T value) noexcept { z = value; }

  /// Adds component by component.
  constexpr Point3& operator+=(const Point3& p) noexcept {
    Point2<T>::operator+=(p);
    z += p.z;
    return *this;
  }
  /// Subtracts component by component.
  constexpr Point3& operator-=(const Point3& p) noexcept {
    Point2<T>::operator-=(p);
    z -= p.z;
    return *this;
  }
  /// Multiplies component by component.
  constexpr Point3& operator*=(const Point3& p) noexcept {
    Point2<T>::operator*=(p);
    z *= p.z;
    return *this;
  }
  /// Divides component by component. An integer component of `p` must not be 0.
  constexpr Point3& operator/=(const Point3& p) noexcept {
    Point2<T>::operator/=(p);
    z /= p.z;
    return *this;
  }
  /// Adds a number to each component.
  constexpr Point3& operator+=(T s) noexcept { return *this += Point3(s, s, s); }
  /// Subtracts a number from each component.
  constexpr Point3& operator-=(T s) noexcept { return *this -= Point3(s, s, s); }
  /// Multiplies each component by a number.
  constexpr Point3& operator*=(T s) noexcept { return *this *= Point3(s, s, s); }
  /// Divides each component by a number, which must not be 0 where the components are integers.
  constexpr Point3& operator/=(T s) noexcept { return *this /= Point3(s, s, s); }

  /// Compares all components.
  [[nodiscard]] constexpr bool operator==(const Point3& p) const noexcept {
    return Point2<T>::operator==(p) && z == p.z;
  }
};

/// A point of four components: a Point3 with a `w`, whose type may differ.
///
/// Where `w` is an unsigned integer it takes part in all arithmetic as one: a scalar is truncated
/// towards 0 for it and wraps, and dividing by a `w` of 0 is the caller's error.
template <class T, class WType>
class VELUM_API Point4 : public Point3<T> {
 public:
  WType w{};  ///< The fourth component.

  /// Makes a point with all components 0.
  constexpr Point4() noexcept {}
  /// Makes a point of four components.
  constexpr Point4(T xValue, T yValue, T zValue, WType wValue) noexcept
      : Point3<T>(xValue, yValue, zValue), w(wValue) {}
  /// Makes a point of the first three elements of an array and a fourth component.
  constexpr Point4(PointerTo<T> auto xyz, WType wValue) noexcept : Point3<T>(xyz), w(wValue) {}

  /// Returns the fourth component.
  [[nodiscard]] constexpr WType W() const noexcept { return w; }
  /// Sets the fourth component.
  constexpr void W(WType value) noexcept { w = value; }

  /// Adds component by component.
  constexpr Point4& operator+=(const Point4& p) noexcept {
    Point3<T>::operator+=(p);
    w += p.w;
    return *this;
  }
  /// Subtracts component by component.
  constexpr Point4& operator-=(const Point4& p) noexcept {
    Point3<T>::operator-=(p);
    w -= p.w;
    return *this;
  }
  /// Multiplies component by component.
  constexpr Point4& operator*=(const Point4& p) noexcept {
    Point3<T>::operator*=(p);
    w *= p.w;
    return *this;
  }
  /// Divides component by component. An integer component of `p` must not be 0.
  constexpr Point4& operator/=(const Point4& p) noexcept {
    Point3<T>::operator/=(p);
    w /= p.w;
    return *this;
  }
  /// Adds a number to each component.
  constexpr Point4& operator+=(T s) noexcept { return *this += Filled(s); }
  /// Subtracts a number from each component.
  constexpr Point4& operator-=(T s) noexcept { return *this -= Filled(s); }
  /// Multiplies each component by a number.
  constexpr Point4& operator*=(T s) noexcept { return *this *= Filled(s); }
  /// Divides each component by a number, which must not truncate to 0 where `w` is an integer.
  constexpr Point4& operator/=(T s) noexcept { return *this /= Filled(s); }

  /// Compares all components.
  [[nodiscard]] constexpr bool operator==(const Point4& p) const noexcept {
    return Point3<T>::operator==(p) && w == p.w;
  }

 private:
  static constexpr Point4 Filled(T s) noexcept {
    if constexpr (std::is_same_v<T, WType>) {
      return Point4(s, s, s, s);
    } else {
      return Point4(s, s, s, detail::WrapTo<WType>(s));
    }
  }
};

extern template class Point2<int>;
extern template class Point2<float>;
extern template class Point2<double>;
extern template class Point3<int>;
extern template class Point3<float>;
extern template class Point3<double>;
extern template class Point4<float, float>;
extern template class Point4<double, double>;
extern template class Point4<float, unsigned int>;
extern template class Point4<double, unsigned int>;

}  // namespace vlm

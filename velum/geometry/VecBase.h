#pragma once

/// \file
/// What all vectors share: arithmetic, products, lengths and distances. Include Vec2.h, Vec3.h or
/// Vec4.h; the members told here are members of every vector.
///
///     vlm::Vec3d a(1, 2, 2);
///     double length = a.Length();                        // 3
///     vlm::Vec3d middle = a.Lerp(vlm::Vec3d::ONE, 0.5);  // (1, 1.5, 1.5)

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>

#include <cmath>
#include <concepts>
#include <cstddef>
#include <type_traits>

namespace vlm {

/// The operations of the vector class `Vec` on top of the point class `Point`, which holds its
/// components. `Vec` names itself here, so that results are vectors again.
///
/// Vectors are plain values: they own nothing, nothing is checked and nothing throws. They are row
/// vectors, so that a point transforms as `p * matrix`. `==` compares all components exactly.
template <class Vec, class Point>
class VELUM_API VecBase : public Point {
 public:
  /// The type of a component.
  using Scalar = decltype(Point::x);
  /// The type of products of components: `int` for integer vectors, otherwise `double`.
  using Product = std::conditional_t<std::is_integral_v<Scalar>, int, double>;

  /// The number of components.
  static constexpr std::size_t kDimension = sizeof(Point) / sizeof(Scalar);

  using Point::Point;

  /// Converts to a pointer to the components, which lie one after the other in the vector.
  /// *Lifetime*: that of the vector.
  operator Scalar*() noexcept { return reinterpret_cast<Scalar*>(this); }
  /// Converts to a pointer to the components for reading. *Lifetime*: that of the vector.
  operator const Scalar*() const noexcept { return reinterpret_cast<const Scalar*>(this); }

  /// Returns the sum of the products of like components. For `float` vectors it is computed in
  /// `double`; for `int` vectors the result must fit an `int`.
  [[nodiscard]] constexpr Product Dot(const Vec& v) const noexcept { return DotIn<Product>(v); }
  /// Returns the square of the length, as `Dot` does.
  [[nodiscard]] constexpr Product LengthSquared() const noexcept { return DotIn<Product>(Self()); }
  /// Returns the length, computed in `double` for all component types.
  [[nodiscard]] double Length() const noexcept { return std::sqrt(DotIn<double>(Self())); }
  /// Returns the square of the distance to `v`. For `float` vectors the differences, too, are
  /// computed in `double`; for `int` vectors the result must fit an `int`.
  [[nodiscard]] constexpr Product DistanceSquared(const Vec& v) const noexcept {
    return DistanceSquaredIn<Product>(v);
  }
  /// Returns the distance to `v`, computed in `double` for all component types.
  [[nodiscard]] double Distance(const Vec& v) const noexcept {
    return std::sqrt(DistanceSquaredIn<double>(v));
  }

  /// Tells whether the squared distance to `v` is at most the square of `tolerance`.
  [[nodiscard]] constexpr bool Equals(
      const Vec& v, double tolerance) const noexcept requires std::floating_point<Scalar> {
    return DistanceSquared(v) <= tolerance * tolerance;
  }

  /// Returns the point on the way to `v`: this + (v - this) * t. `t` may lie outside 0 to 1.
  [[nodiscard]] constexpr Vec Lerp(const Vec& v,
                                   Scalar t) const noexcept requires std::floating_point<Scalar> {
    return Self() + (v - Self()) * t;
  }

  /// Returns the vector scaled to length 1, without asking whether it has a length: the components
  /// of a zero vector become NaN.
  [[nodiscard]] Vec Normalized() const noexcept requires std::floating_point<Scalar> {
    Vec unit = Self();
    unit.MultiplyInDouble(1.0 / Length());
    return unit;
  }

  /// Scales the vector to length 1.
  ///
  /// - Length not above `kShortestLength`, or NaN: the vector stays as it is, `false`.
  /// - Otherwise every component is multiplied by the reciprocal of the length, `true`.
  bool Normalize() noexcept requires std::floating_point<Scalar> {
    const double length = Length();
    if (!(length > Vec::kShortestLength)) {
      return false;
    }
    MultiplyInDouble(1.0 / length);
    return true;
  }

  /// Changes the sign of every component.
  constexpr void Negate() noexcept { Self() = -Self(); }

  /// Adds component by component.
  constexpr Vec& operator+=(const Vec& v) noexcept {
    Point::operator+=(v);
    return Self();
  }
  /// Subtracts component by component.
  constexpr Vec& operator-=(const Vec& v) noexcept {
    Point::operator-=(v);
    return Self();
  }
  /// Multiplies component by component.
  constexpr Vec& operator*=(const Vec& v) noexcept {
    Point::operator*=(v);
    return Self();
  }
  /// Divides component by component. No component of an `int` divisor may be 0.
  constexpr Vec& operator/=(const Vec& v) noexcept {
    Point::operator/=(v);
    return Self();
  }
  /// Adds a number to each component.
  constexpr Vec& operator+=(Scalar s) noexcept {
    Point::operator+=(s);
    return Self();
  }
  /// Subtracts a number from each component.
  constexpr Vec& operator-=(Scalar s) noexcept {
    Point::operator-=(s);
    return Self();
  }
  /// Multiplies each component by a number.
  constexpr Vec& operator*=(Scalar s) noexcept {
    Point::operator*=(s);
    return Self();
  }
  /// Divides each component by a number: by way of its reciprocal, except for `int` vectors, which
  /// truncate and for which `s` must not be 0.
  constexpr Vec& operator/=(Scalar s) noexcept {
    if constexpr (std::is_integral_v<Scalar>) {
      Point::operator/=(s);
    } else {
      Point::operator*=(1 / s);
    }
    return Self();
  }

  /// Returns the vector with the sign of every component changed.
  [[nodiscard]] constexpr Vec operator-() const noexcept {
    Vec result = Self();
    result.Point::operator*=(Scalar(-1));
    return result;
  }

  /// Returns the sums of like components.
  [[nodiscard]] friend constexpr Vec operator+(const Vec& a, const Vec& b) noexcept {
    return Vec(a) += b;
  }
  /// Returns the differences of like components.
  [[nodiscard]] friend constexpr Vec operator-(const Vec& a, const Vec& b) noexcept {
    return Vec(a) -= b;
  }
  /// Returns the products of like components; see `Dot` for their sum.
  [[nodiscard]] friend constexpr Vec operator*(const Vec& a, const Vec& b) noexcept {
    return Vec(a) *= b;
  }
  /// Returns the quotients of like components.
  [[nodiscard]] friend constexpr Vec operator/(const Vec& a, const Vec& b) noexcept {
    return Vec(a) /= b;
  }
  /// Returns the vector with a number added to each component.
  [[nodiscard]] friend constexpr Vec operator+(const Vec& v, Scalar s) noexcept {
    return Vec(v) += s;
  }
  /// Returns the vector with a number subtracted from each component.
  [[nodiscard]] friend constexpr Vec operator-(const Vec& v, Scalar s) noexcept {
    return Vec(v) -= s;
  }
  /// Returns the vector with each component multiplied by a number.
  [[nodiscard]] friend constexpr Vec operator*(const Vec& v, Scalar s) noexcept {
    return Vec(v) *= s;
  }
  /// Returns the vector divided by a number, as `/=` does it.
  [[nodiscard]] friend constexpr Vec operator/(const Vec& v, Scalar s) noexcept {
    return Vec(v) /= s;
  }

  /// Only `<` orders vectors, where a vector has it; the other relations would compare addresses.
  friend auto operator<=>(const Vec&, const Vec&) = delete;

 protected:
  /// Returns the angle between two vectors, as `AngleBetween` of the vectors that have it.
  [[nodiscard]] double Angle(const Vec& v) const noexcept {
    const double lengths = Length() * v.Length();
    if (lengths <= 2.220446049250313e-16) {
      return 0;
    }
    const double cosine = Dot(v) / lengths;
    return std::acos(cosine < -1 ? -1 : cosine > 1 ? 1 : cosine);
  }

 private:
  constexpr Vec& Self() noexcept { return static_cast<Vec&>(*this); }
  constexpr const Vec& Self() const noexcept { return static_cast<const Vec&>(*this); }

  template <class Number>
  constexpr Number DotIn(const Vec& v) const noexcept {
    Number sum = Number(this->x) * Number(v.x) + Number(this->y) * Number(v.y);
    if constexpr (kDimension > 2) {
      sum += Number(this->z) * Number(v.z);
    }
    if constexpr (kDimension > 3) {
      sum += Number(this->w) * Number(v.w);
    }
    return sum;
  }

  template <class Number>
  constexpr Number DistanceSquaredIn(const Vec& v) const noexcept {
    const Number dx = Number(this->x) - Number(v.x);
    const Number dy = Number(this->y) - Number(v.y);
    Number sum = dx * dx + dy * dy;
    if constexpr (kDimension > 2) {
      const Number dz = Number(this->z) - Number(v.z);
      sum += dz * dz;
    }
    if constexpr (kDimension > 3) {
      const Number dw = Number(this->w) - Number(v.w);
      sum += dw * dw;
    }
    return sum;
  }

  // A float component is rounded once, after the product.
  constexpr void MultiplyInDouble(double factor) noexcept {
    this->x = static_cast<Scalar>(this->x * factor);
    this->y = static_cast<Scalar>(this->y * factor);
    if constexpr (kDimension > 2) {
      this->z = static_cast<Scalar>(this->z * factor);
    }
    if constexpr (kDimension > 3) {
      this->w = static_cast<Scalar>(this->w * factor);
    }
  }
};

}  // namespace vlm

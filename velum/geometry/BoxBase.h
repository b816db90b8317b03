#pragma once

/// \file
/// What all boxes share. Include Box2.h or Box3.h; the members told here are members of every box.
///
///     vlm::Box2d box;                       // empty
///     box.ExtendBy(vlm::Vec2d(1, 2));
///     box.ExtendBy(vlm::Vec2d(4, 6));
///     double diagonal = box.Diagonal();     // 5

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/detail/Componentwise.inl.h>

#include <limits>

namespace vlm {

/// The operations of the box class `Box` on its two corners of the vector class `Vec`, the minimum
/// corner first. `Box` names itself here, so that results are boxes again.
///
/// Boxes are plain values and nothing keeps the minimum below the maximum: the emptiness of a box
/// is nothing but its corners standing the wrong way round. What an operation takes may be part of
/// the box itself: `box -= box.MinCorner()` moves it to the origin.
template <class Box, class Vec>
class VELUM_API BoxBase {
 public:
  /// The type of a coordinate.
  using Scalar = typename Vec::Scalar;

  /// Makes the empty box, as `MakeEmpty` does.
  constexpr BoxBase() noexcept { MakeEmpty(); }
  /// Makes a box of its corners as they are.
  constexpr BoxBase(const Vec& minimum, const Vec& maximum) noexcept
      : min_(minimum), max_(maximum) {}

  /// Returns the minimum corner.
  [[nodiscard]] constexpr const Vec& MinCorner() const noexcept { return min_; }
  /// Returns the maximum corner.
  [[nodiscard]] constexpr const Vec& MaxCorner() const noexcept { return max_; }

  /// Returns the smallest x.
  [[nodiscard]] constexpr Scalar xMin() const noexcept { return min_.x; }
  /// Returns the smallest y.
  [[nodiscard]] constexpr Scalar yMin() const noexcept { return min_.y; }
  /// Returns the largest x.
  [[nodiscard]] constexpr Scalar xMax() const noexcept { return max_.x; }
  /// Returns the largest y.
  [[nodiscard]] constexpr Scalar yMax() const noexcept { return max_.y; }
  /// Gives access to the smallest x.
  [[nodiscard]] constexpr Scalar& xMin() noexcept { return min_.x; }
  /// Gives access to the smallest y.
  [[nodiscard]] constexpr Scalar& yMin() noexcept { return min_.y; }
  /// Gives access to the largest x.
  [[nodiscard]] constexpr Scalar& xMax() noexcept { return max_.x; }
  /// Gives access to the largest y.
  [[nodiscard]] constexpr Scalar& yMax() noexcept { return max_.y; }

  /// Returns the x of the centre.
  [[nodiscard]] constexpr Scalar xMid() const noexcept { return Center().x; }
  /// Returns the y of the centre.
  [[nodiscard]] constexpr Scalar yMid() const noexcept { return Center().y; }
  /// Returns the width, below 0 for an inverted box.
  [[nodiscard]] constexpr Scalar xRange() const noexcept { return max_.x - min_.x; }
  /// Returns the height, below 0 for an inverted box.
  [[nodiscard]] constexpr Scalar yRange() const noexcept { return max_.y - min_.y; }
  /// Returns the centre: half the sum of the corners.
  [[nodiscard]] constexpr Vec Center() const noexcept { return (min_ + max_) * Scalar(0.5); }
  /// Returns the ranges of all axes: the maximum corner less the minimum corner.
  [[nodiscard]] constexpr Vec Size() const noexcept { return max_ - min_; }

  /// Tells whether the box is inverted on some axis, as the empty box is. A box of zero width is
  /// not.
  [[nodiscard]] constexpr bool IsDegenerate() const noexcept { return detail::AnyLess(max_, min_); }
  /// Tells whether the box is inverted or of zero width on some axis.
  [[nodiscard]] constexpr bool IsEmpty() const noexcept { return detail::AnyLessEqual(max_, min_); }
  /// Returns the distance of the corners; 0 for a degenerate box.
  [[nodiscard]] double Diagonal() const noexcept { return IsDegenerate() ? 0.0 : Size().Length(); }

  /// Tells whether a point lies inside or on the boundary. An inverted box contains nothing.
  [[nodiscard]] constexpr bool Contains(const Vec& p) const noexcept {
    const bool isAbove = detail::AllLessEqual(min_, p);
    const bool isBelow = detail::AllLessEqual(p, max_);
    return isAbove & isBelow;
  }
  /// Tells whether both corners of another box are contained.
  [[nodiscard]] constexpr bool Contains(const Box& box) const noexcept {
    return Contains(box.min_) && Contains(box.max_);
  }
  /// Tells whether two boxes have a point in common; touching boxes have.
  [[nodiscard]] constexpr bool Intersects(const Box& box) const noexcept {
    const bool isAbove = detail::AllLessEqual(min_, box.max_);
    const bool isBelow = detail::AllLessEqual(box.min_, max_);
    return isAbove & isBelow;
  }

  /// Sets both corners as they are.
  constexpr void Set(const Vec& minimum, const Vec& maximum) noexcept {
    Self() = Box(minimum, maximum);
  }
  /// Makes the box empty: every minimum the largest number of its type, every maximum the most
  /// negative, so that `ExtendBy` of anything gives that thing.
  constexpr void MakeEmpty() noexcept {
    min_ = Vec() + std::numeric_limits<Scalar>::max();
    max_ = Vec() + std::numeric_limits<Scalar>::lowest();
  }
  /// Reduces the box to what it shares with another one. Disjoint boxes leave an inverted box.
  constexpr void Intersect(const Box& box) noexcept {
    min_ = detail::Higher(min_, box.min_);
    max_ = detail::Lower(max_, box.max_);
  }
  /// Widens the box on each axis where a point lies outside. A NaN coordinate widens nothing.
  constexpr void ExtendBy(const Vec& p) noexcept {
    min_ = detail::Lower(min_, p);
    max_ = detail::Higher(max_, p);
  }
  /// Widens the box on each axis where another one reaches outside. The empty box widens nothing.
  constexpr void ExtendBy(const Box& box) noexcept {
    min_ = detail::Lower(min_, box.min_);
    max_ = detail::Higher(max_, box.max_);
  }
  /// Sets the box to the bounds of `count` points: what extending the empty box by one after the
  /// other gives, so that NaN coordinates are passed over and no point leaves the empty box.
  constexpr void BoundPoints(const Vec* points, unsigned int count) noexcept {
    // Two halves side by side, since each comparison waits for the one before it; in corners of
    // their own, which the compiler keeps in registers.
    Box bounds;
    Box second;
    const unsigned int half = count / 2;
    for (unsigned int i = 0; i < half; ++i) {
      bounds.ExtendBy(points[i]);
      second.ExtendBy(points[half + i]);
    }
    if (count % 2 != 0) second.ExtendBy(points[count - 1]);
    bounds.ExtendBy(second);
    Self() = bounds;
  }
  /// Exchanges minimum and maximum on each axis where they stand the wrong way round. The empty box
  /// becomes the whole universe: ask `IsDegenerate` first where that matters.
  constexpr void Normalize() noexcept {
    const Vec lower = detail::Lower(min_, max_);
    max_ = detail::Higher(max_, min_);
    min_ = lower;
  }

  /// Returns the box that stands in `destination` as `sub` stands in this box. A frame without
  /// width or height gives coordinates that are not finite.
  [[nodiscard]] constexpr Box MapSubBoxToDestSubBox(const Box& sub,
                                                    const Box& destination) const noexcept {
    const Vec scale = destination.Size() / Size();
    const Vec minimum = (sub.min_ - min_) * scale + destination.min_;
    return Box(minimum, scale * sub.Size() + minimum);
  }

  /// Adds a vector to both corners.
  constexpr Box& operator+=(const Vec& v) noexcept { return Self() = Box(min_ + v, max_ + v); }
  /// Subtracts a vector from both corners.
  constexpr Box& operator-=(const Vec& v) noexcept { return Self() = Box(min_ - v, max_ - v); }
  /// Multiplies both corners by a vector, component by component.
  constexpr Box& operator*=(const Vec& v) noexcept { return Self() = Box(min_ * v, max_ * v); }
  /// Divides both corners by a vector, component by component.
  constexpr Box& operator/=(const Vec& v) noexcept { return Self() = Box(min_ / v, max_ / v); }
  /// Adds a number to all coordinates.
  constexpr Box& operator+=(Scalar s) noexcept {
    min_ += s;
    max_ += s;
    return Self();
  }
  /// Subtracts a number from all coordinates.
  constexpr Box& operator-=(Scalar s) noexcept {
    min_ -= s;
    max_ -= s;
    return Self();
  }
  /// Multiplies all coordinates by a number: scales about the origin, not about the centre.
  constexpr Box& operator*=(Scalar s) noexcept {
    min_ *= s;
    max_ *= s;
    return Self();
  }
  /// Divides all coordinates by a number, by way of its reciprocal.
  constexpr Box& operator/=(Scalar s) noexcept {
    min_ /= s;
    max_ /= s;
    return Self();
  }

  /// Returns the box moved by a vector.
  [[nodiscard]] friend constexpr Box operator+(const Box& box, const Vec& v) noexcept {
    return Box(box) += v;
  }
  /// Returns the box moved back by a vector.
  [[nodiscard]] friend constexpr Box operator-(const Box& box, const Vec& v) noexcept {
    return Box(box) -= v;
  }
  /// Returns the box scaled about the origin, each axis by its own factor.
  [[nodiscard]] friend constexpr Box operator*(const Box& box, const Vec& v) noexcept {
    return Box(box) *= v;
  }
  /// Returns the box with both corners divided by a vector, component by component.
  [[nodiscard]] friend constexpr Box operator/(const Box& box, const Vec& v) noexcept {
    return Box(box) /= v;
  }
  /// Returns the box with a number added to all coordinates.
  [[nodiscard]] friend constexpr Box operator+(const Box& box, Scalar s) noexcept {
    return Box(box) += s;
  }
  /// Returns the box with a number subtracted from all coordinates.
  [[nodiscard]] friend constexpr Box operator-(const Box& box, Scalar s) noexcept {
    return Box(box) -= s;
  }
  /// Returns the box scaled about the origin.
  [[nodiscard]] friend constexpr Box operator*(const Box& box, Scalar s) noexcept {
    return Box(box) *= s;
  }
  /// Returns the box with all coordinates divided by a number.
  [[nodiscard]] friend constexpr Box operator/(const Box& box, Scalar s) noexcept {
    return Box(box) /= s;
  }

  /// Compares all coordinates exactly.
  [[nodiscard]] constexpr bool operator==(const BoxBase& box) const noexcept = default;

 protected:
  Vec min_;  ///< The minimum corner.
  Vec max_;  ///< The maximum corner.

 private:
  constexpr Box& Self() noexcept { return static_cast<Box&>(*this); }
};

}  // namespace vlm

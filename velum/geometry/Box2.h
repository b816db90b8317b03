#pragma once

/// \file
/// Rectangles with axis-parallel sides: Box2f and Box2d.
///
///     vlm::Box2d page(0, 0, 210, 297);
///     bool inside = page.Contains(vlm::Vec2d(105, 148));  // true
///     page.Inflate(-20, -20);                            // a margin of 20 on all sides

#include <velum/geometry/BoxBase.h>
#include <velum/geometry/Vec2.h>

#include <limits>

namespace vlm {

/// A rectangle by its minimum and its maximum corner; use it as Box2f or Box2d. BoxBase.h tells the
/// members that all boxes share. In memory it is xMin, yMin, xMax, yMax.
template <class T>
class VELUM_API BasicBox2 : public BoxBase<BasicBox2<T>, BasicVec2<T>> {
  using Base = BoxBase<BasicBox2<T>, BasicVec2<T>>;
  friend Base;

 public:
  /// The box that contains every point: from the most negative number to the largest.
  static const BasicBox2 UNIVERSE;

  /// Makes the empty box.
  constexpr BasicBox2() noexcept = default;
  /// Makes a box of its corners as they are.
  constexpr BasicBox2(const BasicVec2<T>& minimum, const BasicVec2<T>& maximum) noexcept
      : Base(minimum, maximum) {}
  /// Makes a box of xMin, yMin, xMax and yMax as they are.
  constexpr BasicBox2(T x0, T y0, T x1, T y1) noexcept
      : Base(BasicVec2<T>(x0, y0), BasicVec2<T>(x1, y1)) {}

  /// Tells whether width and height are above 0.
  [[nodiscard]] constexpr bool HasArea() const noexcept {
    return detail::AllLess(this->min_, this->max_);
  }
  /// Returns width times height; 0 for an empty box.
  [[nodiscard]] constexpr T GetArea() const noexcept {
    return this->IsEmpty() ? T(0) : this->xRange() * this->yRange();
  }
  /// Writes the four corners: (xMin, yMin), (xMax, yMin), (xMax, yMax), (xMin, yMax).
  constexpr void GetCorners(BasicVec2<T>* corners) const noexcept {
    corners[0] = this->min_;
    corners[1].Set(this->max_.x, this->min_.y);
    corners[2] = this->max_;
    corners[3].Set(this->min_.x, this->max_.y);
  }

  using Base::Set;
  /// Sets xMin, yMin, xMax and yMax as they are.
  constexpr void Set(T x0, T y0, T x1, T y1) noexcept { *this = BasicBox2(x0, y0, x1, y1); }
  /// Does what `BoundPoints` of all boxes does, two coordinates at a time.
  void BoundPoints(const BasicVec2<T>* points, unsigned int count) noexcept;
  /// Moves each side outwards, by `dx` at the left and right and by `dy` at the others. Negative
  /// distances shrink the box and may invert it.
  constexpr void Inflate(T dx, T dy) noexcept {
    this->min_ -= BasicVec2<T>(dx, dy);
    this->max_ += BasicVec2<T>(dx, dy);
  }
};

/// \cond definitions of the constants, told above
template <>
inline constexpr Box2f Box2f::UNIVERSE{Vec2f() + std::numeric_limits<float>::lowest(),
                                       Vec2f() + std::numeric_limits<float>::max()};
template <>
inline constexpr Box2d Box2d::UNIVERSE{Vec2d() + std::numeric_limits<double>::lowest(),
                                       Vec2d() + std::numeric_limits<double>::max()};
/// \endcond

static_assert(sizeof(Box2f) == 4 * sizeof(float) && sizeof(Box2d) == 4 * sizeof(double));

}  // namespace vlm

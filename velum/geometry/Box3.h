#pragma once

/// \file
/// Cuboids with axis-parallel sides: Box3f and Box3d.
///
///     vlm::Box3d cube(0, 0, 0, 2, 2, 2);
///     double volume = cube.GetVolume();  // 8

#include <velum/geometry/BoxBase.h>
#include <velum/geometry/Vec3.h>

#include <limits>

namespace vlm {

/// A cuboid by its minimum and its maximum corner; use it as Box3f or Box3d. BoxBase.h tells the
/// members that all boxes share. In memory it is xMin, yMin, zMin, xMax, yMax, zMax.
template <class T>
class VELUM_API BasicBox3 : public BoxBase<BasicBox3<T>, BasicVec3<T>> {
  using Base = BoxBase<BasicBox3<T>, BasicVec3<T>>;
  friend Base;

 public:
  /// The box that contains every point: from the most negative number to the largest.
  static const BasicBox3 UNIVERSE;

  /// Makes the empty box.
  constexpr BasicBox3() noexcept = default;
  /// Makes the box of a single point.
  explicit constexpr BasicBox3(const BasicVec3<T>& p) noexcept : Base(p, p) {}
  /// Makes a box of its corners as they are.
  constexpr BasicBox3(const BasicVec3<T>& minimum, const BasicVec3<T>& maximum) noexcept
      : Base(minimum, maximum) {}
  /// Makes a box of xMin, yMin, zMin, xMax, yMax and zMax as they are.
  constexpr BasicBox3(T x0, T y0, T z0, T x1, T y1, T z1) noexcept
      : Base(BasicVec3<T>(x0, y0, z0), BasicVec3<T>(x1, y1, z1)) {}

  /// Returns the smallest z.
  [[nodiscard]] constexpr T zMin() const noexcept { return this->min_.z; }
  /// Returns the largest z.
  [[nodiscard]] constexpr T zMax() const noexcept { return this->max_.z; }
  /// Gives access to the smallest z.
  [[nodiscard]] constexpr T& zMin() noexcept { return this->min_.z; }
  /// Gives access to the largest z.
  [[nodiscard]] constexpr T& zMax() noexcept { return this->max_.z; }
  /// Returns the z of the centre.
  [[nodiscard]] constexpr T zMid() const noexcept { return this->Center().z; }
  /// Returns the depth, below 0 for an inverted box.
  [[nodiscard]] constexpr T zRange() const noexcept { return this->max_.z - this->min_.z; }

  /// Tells whether the ranges of all axes are above 0.
  [[nodiscard]] constexpr bool HasVolume() const noexcept {
    return detail::AllLess(this->min_, this->max_);
  }
  /// Returns the product of the ranges; 0 for an empty box.
  [[nodiscard]] constexpr T GetVolume() const noexcept {
    return this->IsEmpty() ? T(0) : this->xRange() * this->yRange() * zRange();
  }
  /// Writes the eight corners: (xMin, yMin), (xMax, yMin), (xMax, yMax), (xMin, yMax) at zMin, then
  /// the same four at zMax.
  constexpr void GetCorners(BasicVec3<T>* corners) const noexcept {
    const BasicVec3<T>& low = this->min_;
    const BasicVec3<T>& high = this->max_;
    for (T const z : {low.z, high.z}) {
      *corners++ = BasicVec3<T>(low.x, low.y, z);
      *corners++ = BasicVec3<T>(high.x, low.y, z);
      *corners++ = BasicVec3<T>(high.x, high.y, z);
      *corners++ = BasicVec3<T>(low.x, high.y, z);
    }
  }

  using Base::Set;
  /// Sets xMin, yMin, zMin, xMax, yMax and zMax as they are.
  constexpr void Set(T x0, T y0, T z0, T x1, T y1, T z1) noexcept {
    *this = BasicBox3(x0, y0, z0, x1, y1, z1);
  }
  /// Moves each side outwards by the distance of its axis. Negative distances shrink the box and
  /// may invert it.
  constexpr void Inflate(T dx, T dy, T dz) noexcept {
    this->min_ -= BasicVec3<T>(dx, dy, dz);
    this->max_ += BasicVec3<T>(dx, dy, dz);
  }
  /// Adds a vector to both corners.
  constexpr void Offset(const BasicVec3<T>& v) noexcept { *this += v; }
};

/// \cond definitions of the constants, told above
template <>
inline constexpr Box3f Box3f::UNIVERSE{Vec3f() + std::numeric_limits<float>::lowest(),
                                       Vec3f() + std::numeric_limits<float>::max()};
template <>
inline constexpr Box3d Box3d::UNIVERSE{Vec3d() + std::numeric_limits<double>::lowest(),
                                       Vec3d() + std::numeric_limits<double>::max()};
/// \endcond

static_assert(sizeof(Box3f) == 6 * sizeof(float) && sizeof(Box3d) == 6 * sizeof(double));

}  // namespace vlm

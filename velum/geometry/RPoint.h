#pragma once

/// \file
/// The plain pairs of coordinates that statistics and registration work on.
///
///     vlm::RPoints from({vlm::RPoint(0, 0), vlm::RPoint(1, 0)});
///     from.Points().push_back(vlm::RPoint(0, 1));

#include <velum/core/Api.h>

#include <utility>
#include <vector>

namespace vlm {

/// A pair of coordinates. A plain value.
class VELUM_API RPoint {
 public:
  /// Makes the point (0, 0).
  constexpr RPoint() noexcept = default;
  /// Makes a point of two coordinates.
  constexpr RPoint(double x, double y) noexcept : x_(x), y_(y) {}

  /// Returns the first coordinate.
  [[nodiscard]] constexpr double X() const noexcept { return x_; }
  /// Returns the second coordinate.
  [[nodiscard]] constexpr double Y() const noexcept { return y_; }
  /// Sets the first coordinate.
  constexpr void X(double value) noexcept { x_ = value; }
  /// Sets the second coordinate.
  constexpr void Y(double value) noexcept { y_ = value; }

  /// Compares both coordinates exactly.
  [[nodiscard]] constexpr bool operator==(const RPoint&) const noexcept = default;

 private:
  double x_ = 0;
  double y_ = 0;
};

/// A list of points, a value that owns them.
class VELUM_API RPoints {
 public:
  /// Makes an empty list.
  RPoints() noexcept = default;
  /// Takes over a list.
  explicit RPoints(std::vector<RPoint> points) noexcept : points_(std::move(points)) {}

  /// Gives access to the points. *Lifetime*: that of this object.
  [[nodiscard]] std::vector<RPoint>& Points() noexcept { return points_; }
  /// Gives access to the points for reading. *Lifetime*: that of this object.
  [[nodiscard]] const std::vector<RPoint>& Points() const noexcept { return points_; }

 private:
  std::vector<RPoint> points_;
};

}  // namespace vlm

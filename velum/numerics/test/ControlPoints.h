#pragma once

/// \file
/// Control points for tests.
///
///     const RPoints from = ScatteredPoints(40, random);
///     const RPoints to = ImagesOf(from, [](const RPoint& p) { return RPoint(p.X() + 1, p.Y()); });

#include <velum/geometry/RPoint.h>

#include <cmath>
#include <cstddef>
#include <random>

namespace vlm::testing {

/// Returns points in the rectangle of 600 by 400 about (500, 300), no two at one place.
inline RPoints ScatteredPoints(std::size_t count, std::mt19937& random) {
  std::uniform_real_distribution<double> x(200, 800);
  std::uniform_real_distribution<double> y(100, 500);
  RPoints points;
  while (points.Points().size() < count) {
    const double first = x(random);
    points.Points().emplace_back(first, y(random));
  }
  return points;
}

/// Returns what a function makes of each point.
template <class Function>
RPoints ImagesOf(const RPoints& points, const Function& function) {
  RPoints images;
  for (const RPoint& p : points.Points()) images.Points().push_back(function(p));
  return images;
}

/// A map of scanned paper: moved, turned, stretched and bent.
inline RPoint Bent(const RPoint& p) {
  return {1000 + 0.9 * p.X() + 0.2 * p.Y() + 12 * std::sin(p.Y() / 90),
          -400 - 0.1 * p.X() + 1.1 * p.Y() + 9 * std::cos(p.X() / 120)};
}

inline double Distance(const RPoint& p, const RPoint& q) {
  return std::hypot(p.X() - q.X(), p.Y() - q.Y());
}

}  // namespace vlm::testing

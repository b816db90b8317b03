#pragma once

/// \file
/// Thinning by the angles themselves, segment by segment: what the fast form is held against.

#include <velum/geometry/Vec2.h>

#include <cmath>
#include <vector>

namespace vlm::reference {

inline std::vector<Vec2d> ThinByAngularDeviation(const std::vector<Vec2d>& points, double radians) {
  if (points.size() < 5) return points;
  const double pi = 3.141592653589793;
  std::vector<Vec2d> thin{points.front()};
  const auto direction = [](const Vec2d& d) { return std::atan2(d.y, d.x); };
  double previous = direction(points[1] - points[0]);
  for (std::size_t i = 1; i + 1 < points.size(); ++i) {
    const Vec2d d = points[i + 1] - points[i];
    const double current = d.x == 0 && d.y == 0 ? previous : direction(d);
    double difference = std::abs(current - previous);
    if (difference > pi) difference = 2 * pi - difference;
    if (difference > radians) thin.push_back(points[i]);
    previous = current;
  }
  thin.push_back(points.back());
  return thin;
}

}  // namespace vlm::reference

#pragma once

// The nearest neighbours of points sorted by x, y and z, by a scan along x from each point both
// ways.

#include <boost/tuple/tuple.hpp>

#include <cmath>
#include <vector>

namespace vlm::testing {

struct PlainNearest {
  std::vector<double> distances;
  std::vector<double> separations;

  explicit PlainNearest(const std::vector<boost::tuple<double, double, double>>& points) {
    for (std::size_t i = 0; i < points.size(); ++i) {
      double best = INFINITY;
      double separation = INFINITY;
      // Whether the scan goes on.
      const auto look = [&](std::size_t j) {
        const double dx = boost::get<0>(points[i]) - boost::get<0>(points[j]);
        const double dy = boost::get<1>(points[i]) - boost::get<1>(points[j]);
        const double dz = std::abs(boost::get<2>(points[i]) - boost::get<2>(points[j]));
        if (dx * dx > best) {
          return false;
        }
        const double square = dx * dx + dy * dy;
        if (square < best) {
          best = square;
          separation = dz;
        } else if (square == best && dz <= separation) {
          separation = dz;
        }
        return true;
      };
      for (std::size_t j = i + 1; j < points.size() && look(j); ++j) {
      }
      for (std::size_t j = i; j > 0 && look(j - 1); --j) {
      }
      distances.push_back(std::sqrt(best));
      separations.push_back(separation);
    }
  }
};

}  // namespace vlm::testing

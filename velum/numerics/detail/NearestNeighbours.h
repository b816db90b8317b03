#pragma once

/// \file
/// The nearest neighbour in the plane of every point of a set.

#include <boost/tuple/tuple.hpp>

#include <span>
#include <vector>

namespace vlm::detail {

/// What a point's nearest neighbours say.
struct NearestNeighbours {
  std::vector<double> distances;    ///< From each point to its nearest neighbour in the plane.
  std::vector<double> separations;  ///< The least difference in z to a neighbour as near as that.
};

/// Finds the nearest neighbours of all points, in the order of the points.
///
/// The result is the one that comparing each point with every other gives, bit for bit: the least
/// dx * dx + dy * dy, and among equal ones the least |dz|. A single point has neither: infinity.
///
/// \pre The points are finite and sorted by x, y and z.
///
/// Points of one place are one site. The sites stand in a tree of rectangles, leaf by leaf of eight
/// or fewer; each leaf looks for its neighbours once, from itself upwards.
/// *Errors:* `std::bad_alloc`. *Cost:* O(n log n), wherever the points lie; on all processors.
/// *Source:* J. H. Friedman, J. L. Bentley and R. A. Finkel, An Algorithm for Finding Best Matches
/// in Logarithmic Expected Time, ACM Transactions on Mathematical Software 3 (1977).
NearestNeighbours FindNearestNeighbours(
    std::span<const boost::tuple<double, double, double>> points);

}  // namespace vlm::detail

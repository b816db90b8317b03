#pragma once

/// \file
/// Whether points in the plane cluster: statistics of their nearest neighbours.
///
///     std::vector<boost::tuple<double, double, double>> points;  // x, y, z
///     points.emplace_back(1, 2, 0);
///     points.emplace_back(2, 4, 1);
///     vlm::CSpatialStatistics stats;
///     vlm::Load(stats, points.begin(), points.end());
///     bool clustered = stats.ClarkEvansRatio < 1;

#include <velum/core/Api.h>
#include <velum/numerics/UnivariateStatistics.h>

#include <boost/tuple/tuple.hpp>

#include <vector>

namespace vlm {

/// Statistics of the distance of each point to its nearest neighbour.
///
/// A value. What can't be told is NaN.
class VELUM_API CSpatialStatistics {
 public:
  /// Makes an empty record.
  CSpatialStatistics() noexcept;

  /// Makes the record empty: Count 0, both records cleared, everything else NaN.
  void Clear() noexcept;

  unsigned int Count;  ///< How many points there are.

  /// Of the distance in the plane from each point to its nearest neighbour.
  CUnivariateStatistics NearestDistance;
  /// Of the difference in z from each point to that neighbour; of several as near, the least.
  CUnivariateStatistics NearestSeparation;

  double Density;  ///< Points per unit of area of the rectangle about all points.
  /// The mean of the nearest distances by that of points placed at random: below 1 they cluster,
  /// above 1 they keep away from each other.
  /// *Source:* P. J. Clark and F. C. Evans, Distance to Nearest Neighbor as a Measure of Spatial
  /// Relationships in Populations, Ecology 35 (1954).
  double ClarkEvansRatio;
  /// Two pi times the density times the sum of the squared nearest distances, of chi-squared
  /// distribution with 2 n degrees of freedom for points placed at random.
  /// *Source:* J. G. Skellam, Studies in Statistical Ecology, Biometrika 39 (1952).
  double SkellamStatistic;
};

/// Computes the statistics of the points (x, y, z) from `first` up to `last`, and sorts these by x,
/// y and z.
///
/// - No points: an empty record. One point: its distance and separation are infinite.
/// - A coordinate that is NaN or infinite: all but Count stays empty, and the points keep their
///   order.
/// - An area not above `SUKOSHI`, 2^-126: no density, nor what needs it.
///
/// *Errors:* `std::bad_alloc`. *Cost:* O(n log n), wherever the points lie; on all processors, with
/// the same result on any number of them.
VELUM_API void Load(CSpatialStatistics& stats,
                    std::vector<boost::tuple<double, double, double>>::iterator first,
                    std::vector<boost::tuple<double, double, double>>::iterator last);

}  // namespace vlm

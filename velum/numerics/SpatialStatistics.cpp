#include <velum/numerics/SpatialStatistics.h>

#include <velum/geometry/Constants.h>
#include <velum/numerics/detail/NearestNeighbours.h>
#include <velum/numerics/detail/Statistics.h>

#include <boost/numeric/conversion/cast.hpp>

#include <algorithm>
#include <cmath>
#include <span>

namespace vlm {
namespace {

using Point = boost::tuple<double, double, double>;

using detail::kUnknown;

bool IsFinite(const Point& point) noexcept {
  return std::isfinite(boost::get<0>(point)) && std::isfinite(boost::get<1>(point)) &&
         std::isfinite(boost::get<2>(point));
}

bool ComesBefore(const Point& a, const Point& b) noexcept {
  if (boost::get<0>(a) != boost::get<0>(b)) {
    return boost::get<0>(a) < boost::get<0>(b);
  }
  if (boost::get<1>(a) != boost::get<1>(b)) {
    return boost::get<1>(a) < boost::get<1>(b);
  }
  return boost::get<2>(a) < boost::get<2>(b);
}

// Of the rectangle about points that are sorted by x.
double AreaOf(std::span<const Point> points) noexcept {
  const auto [low, high] = std::minmax_element(
      points.begin(), points.end(),
      [](const Point& a, const Point& b) { return boost::get<1>(a) < boost::get<1>(b); });
  const double width = boost::get<0>(points.back()) - boost::get<0>(points.front());
  return width * (boost::get<1>(*high) - boost::get<1>(*low));
}

}  // namespace

CSpatialStatistics::CSpatialStatistics() noexcept { Clear(); }

void CSpatialStatistics::Clear() noexcept {
  Count = 0;
  NearestDistance.Clear();
  NearestSeparation.Clear();
  Density = kUnknown;
  ClarkEvansRatio = kUnknown;
  SkellamStatistic = kUnknown;
}

void Load(CSpatialStatistics& stats, std::vector<Point>::iterator first,
          std::vector<Point>::iterator last) {
  stats.Clear();
  const std::span<Point> points(first, last);
  stats.Count = static_cast<unsigned int>(points.size());
  if (points.empty() || !std::all_of(points.begin(), points.end(), IsFinite)) {
    return;
  }
  std::sort(points.begin(), points.end(),
            [](const Point& a, const Point& b) { return ComesBefore(a, b); });
  detail::NearestNeighbours nearest = detail::FindNearestNeighbours(points);
  const auto load = [](CUnivariateStatistics& record, std::vector<double>& values) {
    try {
      Load(record, values.begin(), values.end());
    } catch (const boost::numeric::bad_numeric_cast&) {
      // Infinite distances have no histogram; everything else is there.
    }
  };
  load(stats.NearestDistance, nearest.distances);
  load(stats.NearestSeparation, nearest.separations);
  const double area = AreaOf(points);
  if (area > SUKOSHI) {
    const auto n = static_cast<double>(points.size());
    stats.Density = n / area;
    stats.ClarkEvansRatio = 2 * std::sqrt(stats.Density) * stats.NearestDistance.Mean;
    stats.SkellamStatistic = 2 * PI * stats.Density * n * stats.NearestDistance.MeanSquare;
  }
}

}  // namespace vlm

#include <velum/numerics/detail/NearestNeighbours.h>

#include <velum/numerics/detail/SiteTree.h>
#include <velum/platform/detail/ParallelRanges.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>

namespace vlm::detail {
namespace {

using Point = boost::tuple<double, double, double>;
using Points = std::span<const Point>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

double ZOf(const Point& point) noexcept { return boost::get<2>(point); }

std::vector<Site> SitesOf(Points points) {
  std::vector<Site> sites;
  for (std::uint32_t i = 0; i < points.size(); ++i) {
    const double x = boost::get<0>(points[i]);
    const double y = boost::get<1>(points[i]);
    if (!sites.empty() && sites.back().x == x && sites.back().y == y) {
      ++sites.back().count;
    } else {
      sites.push_back({x, y, i, 1});
    }
  }
  return sites;
}

// The least difference of the value at `i` to those beside it; the values ascend.
template <class ValueAt>
double LeastDifferenceBeside(std::size_t i, std::size_t count, ValueAt valueAt) {
  const double below = i > 0 ? std::abs(valueAt(i) - valueAt(i - 1)) : kInfinity;
  const double above = i + 1 < count ? std::abs(valueAt(i + 1) - valueAt(i)) : kInfinity;
  return std::min(below, above);
}

class Search {
 public:
  Search(Points points, const SiteTree& tree, NearestNeighbours& out) noexcept
      : points_(points), tree_(tree), out_(out) {}

  // Finds the neighbours of the points of one leaf.
  void Run(const SiteTree::Node& leaf) const {
    Squares squares;
    for (std::uint32_t i = leaf.begin; i < leaf.end; ++i) {
      squares[i - leaf.begin] = Begin(tree_.Sites()[i]);
    }
    const auto farthest = [&] {
      return *std::max_element(squares.begin(), squares.begin() + (leaf.end - leaf.begin));
    };
    Compare(leaf, leaf, squares);
    double limit = farthest();
    tree_.ForNearLeaves(
        leaf.extent, [&] { return limit; },
        [&](const SiteTree::Node& other) {
          if (&other != &leaf) {
            Compare(leaf, other, squares);
            limit = farthest();
          }
        });
    for (std::uint32_t i = leaf.begin; i < leaf.end; ++i) {
      const Site& site = tree_.Sites()[i];
      std::fill_n(&out_.distances[site.first], site.count, std::sqrt(squares[i - leaf.begin]));
    }
  }

 private:
  // The least squared distance of each site of a leaf so far.
  using Squares = std::array<double, SiteTree::kLeafSize>;

  double ZAt(std::size_t i) const noexcept { return ZOf(points_[i]); }

  // Points of one place have each other at distance 0, those beside them in z nearest.
  double Begin(const Site& site) const noexcept {
    for (std::uint32_t i = 0; i < site.count; ++i) {
      out_.separations[site.first + i] =
          LeastDifferenceBeside(i, site.count, [&](std::size_t k) { return ZAt(site.first + k); });
    }
    return site.count > 1 ? 0 : kInfinity;
  }

  void Compare(const SiteTree::Node& leaf, const SiteTree::Node& other,
               Squares& squares) const noexcept {
    const SiteTree::Places& places = tree_.PlacesOf(other);
    for (std::uint32_t i = leaf.begin; i < leaf.end; ++i) {
      const Site& site = tree_.Sites()[i];
      double& best = squares[i - leaf.begin];
      if (other.extent.SquaredGap(site.Place()) > best) {
        continue;
      }
      const Squares candidates = SquaredDistances(site, places);
      for (std::uint32_t j = other.begin; j < other.end; ++j) {
        const double square = candidates[j - other.begin];
        if (square <= best && square < kInfinity && i != j) {
          Take(site, tree_.Sites()[j], square < best);
          best = square;
        }
      }
    }
  }

  static Squares SquaredDistances(const Site& site, const SiteTree::Places& places) noexcept {
    Squares squares;
    for (std::size_t k = 0; k < squares.size(); ++k) {
      const double dx = site.x - places.x[k];
      const double dy = site.y - places.y[k];
      squares[k] = dx * dx + dy * dy;
    }
    return squares;
  }

  void Take(const Site& site, const Site& neighbour, bool nearer) const noexcept {
    for (std::uint32_t i = 0; i < site.count; ++i) {
      double& separation = out_.separations[site.first + i];
      const double least = LeastSeparation(ZAt(site.first + i), neighbour);
      separation = nearer ? least : std::min(separation, least);
    }
  }

  double LeastSeparation(double z, const Site& site) const noexcept {
    if (site.count == 1) {
      return std::abs(z - ZAt(site.first));
    }
    const Points at = points_.subspan(site.first, site.count);
    const auto above =
        std::partition_point(at.begin(), at.end(), [&](const Point& p) { return ZOf(p) < z; });
    const double up = above != at.end() ? std::abs(ZOf(*above) - z) : kInfinity;
    const double down = above != at.begin() ? std::abs(z - ZOf(*std::prev(above))) : kInfinity;
    return std::min(up, down);
  }

  Points points_;
  const SiteTree& tree_;
  NearestNeighbours& out_;
};

// Where no squared distance is finite, all others are neighbours.
void SeparateFarPoints(Points points, NearestNeighbours& out) {
  if (points.size() < 2 || std::none_of(out.distances.begin(), out.distances.end(),
                                        [](double d) { return std::isinf(d); })) {
    return;
  }
  std::vector<double> heights(points.size());
  std::transform(points.begin(), points.end(), heights.begin(), ZOf);
  std::sort(heights.begin(), heights.end());
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (std::isinf(out.distances[i])) {
      const auto at =
          std::lower_bound(heights.begin(), heights.end(), ZOf(points[i])) - heights.begin();
      out.separations[i] = LeastDifferenceBeside(static_cast<std::size_t>(at), heights.size(),
                                                 [&](std::size_t k) { return heights[k]; });
    }
  }
}

}  // namespace

NearestNeighbours FindNearestNeighbours(Points points) {
  NearestNeighbours out{std::vector<double>(points.size()), std::vector<double>(points.size())};
  if (points.empty()) {
    return out;
  }
  const SiteTree tree(SitesOf(points));
  const Search search(points, tree, out);
  constexpr std::size_t kGrain = 256;
  platform::ForRanges(tree.Nodes().size(), kGrain, [&](std::size_t begin, std::size_t end) {
    for (const SiteTree::Node& node : tree.Nodes().subspan(begin, end - begin)) {
      if (node.IsLeaf()) {
        search.Run(node);
      }
    }
  });
  SeparateFarPoints(points, out);
  return out;
}

}  // namespace vlm::detail

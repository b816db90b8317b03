#pragma once

/// \file
/// A tree of rectangles over places in the plane.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vlm::detail {

/// A rectangle with its sides.
struct Extent {
  double minX, minY, maxX, maxY;

  /// Returns a lower bound of the squared distance between points of two rectangles: none that is
  /// computed in doubles is below it, since differences, squares and sums round in order.
  [[nodiscard]] double SquaredGap(const Extent& other) const noexcept {
    const double dx = Gap(minX, maxX, other.minX, other.maxX);
    const double dy = Gap(minY, maxY, other.minY, other.maxY);
    return dx * dx + dy * dy;
  }

 private:
  // The larger one of the gaps on the two sides, and 0, without a branch: at most one is positive.
  static double Gap(double min, double max, double otherMin, double otherMax) noexcept {
    const double below = min - otherMax;
    const double above = otherMin - max;
    return ((below + std::abs(below)) + (above + std::abs(above))) * 0.5;
  }
};

/// A place in the plane with its points: `count` of them, one after the other, from `first` on.
struct Site {
  double x;
  double y;
  std::uint32_t first;
  std::uint32_t count;

  /// Returns the rectangle without width and height at the place.
  [[nodiscard]] Extent Place() const noexcept { return {x, y, x, y}; }
};

/// Sites in leaves of eight, the last one of eight or fewer: halved along the longer side of their
/// rectangle until then, so that leaves are no longer than they have to be, wherever the sites lie.
class SiteTree {
 public:
  static constexpr std::size_t kLeafSize = 8;

  /// A rectangle's sites, `begin` up to `end`, and its two halves unless it is a leaf.
  struct Node {
    Extent extent;
    std::uint32_t begin;
    std::uint32_t end;
    std::uint32_t upper;  // the second half; the first one follows its parent; 0 in a leaf

    [[nodiscard]] bool IsLeaf() const noexcept { return upper == 0; }
  };

  /// The places of a leaf, at infinity where it has none.
  struct Places {
    std::array<double, kLeafSize> x;
    std::array<double, kLeafSize> y;
  };

  /// Orders the sites into leaves. There is one at least.
  explicit SiteTree(std::vector<Site> sites);

  /// The nodes, the root first.
  [[nodiscard]] std::span<const Node> Nodes() const noexcept { return nodes_; }
  /// The sites, leaf by leaf.
  [[nodiscard]] std::span<const Site> Sites() const noexcept { return sites_; }

  /// The places of a leaf.
  [[nodiscard]] const Places& PlacesOf(const Node& leaf) const noexcept {
    return places_[leaf.begin / kLeafSize];
  }

  /// Calls `visit(leaf)` for each leaf with a squared gap to `extent` of at most `limit()`, which
  /// may fall on the way.
  template <class Limit, class Visit>
  void ForNearLeaves(const Extent& extent, Limit limit, Visit visit) const {
    std::uint32_t stack[64];
    std::size_t depth = 0;
    std::uint32_t at = 0;
    for (;;) {
      const Node& node = nodes_[at];
      // A gap between sites too far apart for a double may be NaN.
      if (!(node.extent.SquaredGap(extent) > limit())) {
        if (!node.IsLeaf()) {
          stack[depth++] = node.upper;
          ++at;
          continue;
        }
        visit(node);
      }
      if (depth == 0) {
        return;
      }
      at = stack[--depth];
    }
  }

 private:
  void Split(std::uint32_t begin, std::uint32_t end);

  std::vector<Site> sites_;
  std::vector<Node> nodes_;
  std::vector<Places> places_;
};

}  // namespace vlm::detail

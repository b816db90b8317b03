#include <velum/numerics/detail/SiteTree.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace vlm::detail {

namespace {

Extent Around(const Extent& a, const Extent& b) noexcept {
  return {std::min(a.minX, b.minX), std::min(a.minY, b.minY), std::max(a.maxX, b.maxX),
          std::max(a.maxY, b.maxY)};
}

Extent ExtentOf(std::span<const Site> sites) noexcept {
  Extent extent = sites.front().Place();
  for (const Site& site : sites) {
    extent = Around(extent, site.Place());
  }
  return extent;
}

constexpr auto kLiesBefore = [](const Site& a, const Site& b) noexcept { return a.x < b.x; };
constexpr auto kLiesBelow = [](const Site& a, const Site& b) noexcept { return a.y < b.y; };

}  // namespace

SiteTree::SiteTree(std::vector<Site> sites) : sites_(std::move(sites)) {
  const std::size_t leaves = (sites_.size() + kLeafSize - 1) / kLeafSize;
  nodes_.reserve(2 * leaves);
  Split(0, static_cast<std::uint32_t>(sites_.size()));
  places_.resize(leaves);
  for (std::size_t leaf = 0; leaf < leaves; ++leaf) {
    for (std::size_t k = 0; k < kLeafSize; ++k) {
      // Beyond the last site there is none near any other.
      const std::size_t i = leaf * kLeafSize + k;
      places_[leaf].x[k] =
          i < sites_.size() ? sites_[i].x : std::numeric_limits<double>::infinity();
      places_[leaf].y[k] =
          i < sites_.size() ? sites_[i].y : std::numeric_limits<double>::infinity();
    }
  }
}

void SiteTree::Split(std::uint32_t begin, std::uint32_t end) {
  const std::span<Site> part = std::span(sites_).subspan(begin, end - begin);
  const Extent extent = ExtentOf(part);
  const std::size_t at = nodes_.size();
  nodes_.push_back({extent, begin, end, 0});
  if (part.size() <= kLeafSize) {
    return;
  }
  const auto half =
      static_cast<std::uint32_t>((part.size() / 2 + kLeafSize - 1) / kLeafSize * kLeafSize);
  if (extent.maxX - extent.minX > extent.maxY - extent.minY) {
    std::nth_element(part.begin(), part.begin() + half, part.end(), kLiesBefore);
  } else {
    std::nth_element(part.begin(), part.begin() + half, part.end(), kLiesBelow);
  }
  Split(begin, begin + half);
  nodes_[at].upper = static_cast<std::uint32_t>(nodes_.size());
  Split(begin + half, end);
}

}  // namespace vlm::detail

#include <velum/geometry/detail/clip/ContourBoxes.h>

#include <velum/geometry/detail/clip/ClipErrors.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace vlm::detail {
namespace {

constexpr double kMost = std::numeric_limits<double>::max();
constexpr ContourBox kNothing{kMost, kMost, -kMost, -kMost};
constexpr std::size_t kFan = 8;

bool Meet(const ContourBox& a, const ContourBox& b) noexcept {
  return a.maxX >= b.minX && a.minX <= b.maxX && a.maxY >= b.minY && a.minY <= b.maxY;
}

void Extend(ContourBox& box, const ContourBox& other) noexcept {
  box.minX = std::min(box.minX, other.minX);
  box.minY = std::min(box.minY, other.minY);
  box.maxX = std::max(box.maxX, other.maxX);
  box.maxY = std::max(box.maxY, other.maxY);
}

ContourBox Measure(const gpc_vertex_list& contour) {
  if (contour.num_vertices > 0 && !contour.vertex) ThrowBadInput(__LINE__);
  ContourBox box = kNothing;
  bool finite = true;
  for (std::int32_t i = 0; i < contour.num_vertices; ++i) {
    const gpc_vertex& vertex = contour.vertex[i];
    finite &= std::isfinite(vertex.x) && std::isfinite(vertex.y);
    Extend(box, {vertex.x, vertex.y, vertex.x, vertex.y});
  }
  if (!finite) ThrowBadInput(__LINE__);
  return box;
}

/// Boxes in strips of equal number by x, each strip in the order of y, with the boxes of eight, of
/// eight of those and so on above them, level behind level.
class BoxTree {
 public:
  explicit BoxTree(const ClipArray<ContourBox>& boxes) : boxes_("overlap table creation") {
    levels_[0] = 0;
    levels_[1] = boxes.size();
    boxes_.Reserve(boxes.size() + boxes.size() / 7 + 16);
    for (const ContourBox& box : boxes) boxes_.Push(box);
    Arrange();
    while (levels_[levelCount_] - levels_[levelCount_ - 1] > 1) {
      for (std::size_t i = levels_[levelCount_ - 1]; i < levels_[levelCount_]; i += kFan) {
        ContourBox all = kNothing;
        for (std::size_t j = i; j < std::min(i + kFan, levels_[levelCount_]); ++j) {
          Extend(all, boxes_[j]);
        }
        boxes_.Push(all);
      }
      levels_[++levelCount_] = boxes_.size();
    }
  }

  [[nodiscard]] bool MeetsAny(const ContourBox& box) const noexcept {
    // Depth first, by the place in each level; 32 bits of boxes have at most eleven levels.
    std::size_t level = levelCount_ - 1;
    std::size_t at = levels_[level];
    while (true) {
      if (Meet(boxes_[at], box)) {
        if (level == 0) return true;
        at = levels_[level - 1] + (at - levels_[level]) * kFan;
        --level;
        continue;
      }
      while (Last(level, at)) {
        if (level + 1 == levelCount_) return false;
        at = levels_[level + 1] + (at - levels_[level]) / kFan;
        ++level;
      }
      ++at;
    }
  }

 private:
  /// True if no brother follows.
  [[nodiscard]] bool Last(std::size_t level, std::size_t at) const noexcept {
    return at + 1 == levels_[level + 1] || (at - levels_[level]) % kFan == kFan - 1;
  }

  void Arrange() noexcept {
    const auto centreX = [](const ContourBox& box) { return box.minX / 2 + box.maxX / 2; };
    const auto centreY = [](const ContourBox& box) { return box.minY / 2 + box.maxY / 2; };
    std::sort(boxes_.begin(), boxes_.end(),
              [&](const auto& a, const auto& b) { return centreX(a) < centreX(b); });
    const auto count = static_cast<double>(boxes_.size());
    const auto strip = static_cast<std::size_t>(std::sqrt(count / kFan)) * kFan + kFan;
    for (std::size_t i = 0; i < boxes_.size(); i += strip) {
      std::sort(boxes_.begin() + i, boxes_.begin() + std::min(i + strip, boxes_.size()),
                [&](const auto& a, const auto& b) { return centreY(a) < centreY(b); });
    }
  }

  ClipArray<ContourBox> boxes_;
  std::size_t levels_[16];
  std::size_t levelCount_ = 1;
};

}  // namespace

void MeasureContours(const gpc_polygon& polygon, ClipArray<ContourBox>& boxes) {
  boxes.Clear();
  if (polygon.num_contours <= 0) return;
  if (!polygon.contour) ThrowBadInput(__LINE__);
  boxes.Reserve(static_cast<std::size_t>(polygon.num_contours));
  for (std::int32_t i = 0; i < polygon.num_contours; ++i) boxes.Push(Measure(polygon.contour[i]));
}

void RejectApart(const ClipArray<ContourBox>& boxes, const ClipArray<ContourBox>& others,
                 ClipArray<bool>& enabled) {
  const BoxTree tree(others);
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    if (!tree.MeetsAny(boxes[i])) enabled[i] = false;
  }
}

}  // namespace vlm::detail

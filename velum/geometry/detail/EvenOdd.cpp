#include <velum/geometry/detail/EvenOdd.h>

#include <velum/geometry/detail/Orientation.h>
#include <velum/geometry/detail/Pair.inl.h>

#include <cstddef>

namespace vlm::detail {

namespace {

constexpr std::ptrdiff_t kBlock = 8;

// How many vertices of a block lie above a height.
long CountAbove(const gpc_vertex* block, Pair height) noexcept {
  const auto areAbove = [=](int i) {
    const Pair first = LoadPair(&block[i].x);
    const Pair second = LoadPair(&block[i + 1].x);
    return __builtin_shufflevector(first, second, 1, 3) > height;
  };
  const auto sum = (areAbove(0) + areAbove(2)) + (areAbove(4) + areAbove(6));
  return static_cast<long>(-(sum[0] + sum[1]));
}

// Tells whether an edge with a point between the heights of its ends passes it on the right.
bool PassesOnTheRight(const gpc_vertex& low, const gpc_vertex& high, const Vec2d& point) noexcept {
  const bool lowIsRight = low.x > point.x;
  const bool highIsRight = high.x > point.x;
  if (lowIsRight == highIsRight) return lowIsRight;
  return Orientation(Vec2d(low.x, low.y), Vec2d(high.x, high.y), point) > 0;
}

}  // namespace

bool IsInContour(const gpc_vertex_list& contour, const Vec2d& point) noexcept {
  if (contour.num_vertices < 3) return false;
  const gpc_vertex* const end = contour.vertex + contour.num_vertices;
  const gpc_vertex* from = end - 1;
  const Pair height = Both(point.y);
  bool fromAbove = from->y > point.y;
  bool inside = false;
  for (const gpc_vertex* to = contour.vertex; to != end;) {
    const bool isBlock = end - to >= kBlock;
    // A block that stays on one side is passed over.
    if (isBlock && CountAbove(to, height) == (fromAbove ? kBlock : 0)) {
      to += kBlock;
      from = to - 1;
      continue;
    }
    for (const gpc_vertex* const stop = isBlock ? to + kBlock : end; to != stop; from = to++) {
      const bool toAbove = to->y > point.y;
      if (toAbove == fromAbove) continue;
      fromAbove = toAbove;
      inside ^= toAbove ? PassesOnTheRight(*from, *to, point) : PassesOnTheRight(*to, *from, point);
    }
  }
  return inside;
}

}  // namespace vlm::detail

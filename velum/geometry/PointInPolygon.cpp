#include <velum/geometry/PointInPolygon.h>

#include <velum/geometry/detail/EdgeParity.h>

#include <cstdint>

namespace vlm {

namespace {

// Even-odd over contours: the result toggles with each one that holds the point.
template <class Point, class Count>
bool OddNumberHold(const Point& p, const Point* points, const Count* counts,
                   unsigned contours) noexcept {
  if (!points || !counts) return false;
  bool isInside = false;
  for (unsigned i = 0; i < contours; ++i) {
    if (counts[i] <= 0) continue;
    isInside ^= PointInPolygon(p, points, static_cast<unsigned>(counts[i]));
    points += counts[i];
  }
  return isInside;
}

// a * b / c to the nearest integer, halves away from zero. The differences of 32-bit integers need
// 33 bits, their product more than 64. `c` is not 0 and no smaller than `b`.
std::int64_t MulDiv(std::int64_t a, std::int64_t b, std::int64_t c) noexcept {
  __extension__ using Wide = __int128;
  Wide product = static_cast<Wide>(a) * b;
  if (c < 0) {
    product = -product;
    c = -c;
  }
  const Wide half = product < 0 ? -(c / 2) : c / 2;
  return static_cast<std::int64_t>((product + half) / c);
}

}  // namespace

bool PointInPolygon(const Vec2d& p, const Vec2d* points, unsigned count) noexcept {
  return points && count > 0 && detail::OddNumberOfEdges(p, points, count);
}

bool PointInPolygon(const Vec2d& p, const Vec2d* points, const unsigned* counts,
                    unsigned contours) noexcept {
  return OddNumberHold(p, points, counts, contours);
}

bool PointInPolygon(const tagPOINT& p, const tagPOINT* points, unsigned count) noexcept {
  if (!points || count == 0) return false;
  bool isInside = false;
  tagPOINT before = points[count - 1];
  for (unsigned i = 0; i < count; ++i) {
    const tagPOINT& vertex = points[i];
    if ((vertex.y <= p.y) != (before.y <= p.y)) {
      const auto difference = [](std::int64_t a, std::int64_t b) { return a - b; };
      const std::int64_t crossing =
          vertex.x + MulDiv(difference(before.x, vertex.x), difference(p.y, vertex.y),
                            difference(before.y, vertex.y));
      isInside ^= p.x < crossing;
    }
    before = vertex;
  }
  return isInside;
}

bool PointInPolygon(const tagPOINT& p, const tagPOINT* points, const long* counts,
                    unsigned contours) noexcept {
  return OddNumberHold(p, points, counts, contours);
}

}  // namespace vlm

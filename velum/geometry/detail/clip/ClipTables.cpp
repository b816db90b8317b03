#include <velum/geometry/detail/clip/ClipTables.h>

#include <velum/geometry/detail/clip/YSort.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

namespace vlm::detail {
namespace {

// Slopes and extents below these can't overflow on a scan line.
constexpr double kLarge = 1e300;
constexpr double kWidest = 1.7e308;

double Slope(const gpc_vertex& bottom, const gpc_vertex& top) noexcept {
  return (top.x - bottom.x) / (top.y - bottom.y);
}

constexpr int kDigits = std::numeric_limits<double>::digits;

// The powers of two of the first and the last digit of a number that is not 0.
struct Digits {
  int first;
  int last;
};

Digits DigitsOf(double value) noexcept {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  const int exponent = static_cast<int>(bits >> 52 & 0x7FF);
  // Numbers below the least normal one have no leading digit that is not written.
  const std::uint64_t written = (bits & 0xFFFFFFFFFFFFF) | std::uint64_t{exponent > 0} << 52;
  const int last = std::max(exponent, 1) - 1075;
  return {last + 63 - std::countl_zero(written), last + std::countr_zero(written)};
}

}  // namespace

ClipTables::ClipTables()
    : vertices_("edge table creation"),
      lineOf_("scanbeam tree insertion"),
      lines_("sbt creation"),
      bounds_("LMT insertion"),
      firstBound_("LMT insertion") {}

void ClipTables::Add(const gpc_polygon& polygon, const ClipArray<bool>& enabled, TypeMask type) {
  std::size_t most = vertices_.size();
  for (std::int32_t i = 0; i < polygon.num_contours; ++i) {
    if (!enabled[static_cast<std::size_t>(i)]) continue;
    most += static_cast<std::size_t>(std::max(polygon.contour[i].num_vertices, 0));
  }
  vertices_.Reserve(most);
  for (std::int32_t i = 0; i < polygon.num_contours; ++i) {
    if (!enabled[static_cast<std::size_t>(i)]) continue;
    const std::size_t begin = vertices_.size();
    Keep(polygon.contour[i]);
    if (vertices_.size() > begin) {
      FindBounds(static_cast<Index>(begin), static_cast<Index>(vertices_.size()), type);
    }
  }
}

void ClipTables::Keep(const gpc_vertex_list& contour) {
  const std::int32_t count = contour.num_vertices;
  if (count <= 0) return;
  double previous = contour.vertex[count - 1].y;
  for (std::int32_t i = 0; i < count; ++i) {
    const gpc_vertex& vertex = contour.vertex[i];
    const double next = contour.vertex[i + 1 == count ? 0 : i + 1].y;
    if (previous != vertex.y || next != vertex.y) vertices_.Push(vertex);
    previous = vertex.y;
  }
}

void ClipTables::FindBounds(Index begin, Index end, TypeMask type) {
  // At least two vertices are kept, since y changes an even number of times.
  for (Index i = begin; i < end; ++i) {
    const Index previous = NextAround(i, begin, end, false);
    const Index next = NextAround(i, begin, end, true);
    const double y = vertices_[i].y;
    if (vertices_[previous].y >= y && vertices_[next].y > y) {
      PushBound(i, next, begin, end, true, type);
    }
  }
  for (Index i = begin; i < end; ++i) {
    const Index previous = NextAround(i, begin, end, false);
    const Index next = NextAround(i, begin, end, true);
    const double y = vertices_[i].y;
    if (vertices_[previous].y > y && vertices_[next].y >= y) {
      PushBound(i, previous, begin, end, false, type);
    }
  }
}

void ClipTables::PushBound(Index vertex, Index next, Index begin, Index end, bool forward,
                           TypeMask type) {
  const gpc_vertex& bottom = vertices_[vertex];
  const gpc_vertex& top = vertices_[next];
  bounds_.Push({bottom.x, Slope(bottom, top), vertex, begin, end,
                static_cast<Index>(bounds_.size()), forward, type});
}

void ClipTables::Sort() {
  SortLines();
  FindMargins();
  FindDigits();
  SortBounds();
}

void ClipTables::SortLines() {
  const std::size_t count = vertices_.size();
  ClipArray<YKey> keys("scanbeam tree insertion");
  keys.Resize(count);
  for (std::size_t i = 0; i < count; ++i) {
    keys[i] = {SortableY(vertices_[i].y), static_cast<Index>(i)};
  }
  SortKeys(keys);
  lineOf_.Resize(count);
  lines_.Reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    if (i == 0 || keys[i].y != keys[i - 1].y) lines_.Push(vertices_[keys[i].vertex].y);
    lineOf_[keys[i].vertex] = static_cast<Index>(lines_.size() - 1);
  }
}

void ClipTables::SortBounds() {
  firstBound_.Fill(lines_.size() + 1, 0);
  for (const ClipBound& bound : bounds_) ++firstBound_[lineOf_[bound.vertex]];
  Index sum = 0;
  for (Index& first : firstBound_) {
    sum += first;
    first = sum;
  }
  ClipArray<ClipBound> sorted("LMT insertion");
  sorted.Resize(bounds_.size());
  for (std::size_t i = bounds_.size(); i-- > 0;) {
    sorted[--firstBound_[lineOf_[bounds_[i].vertex]]] = bounds_[i];
  }
  bounds_.Swap(sorted);
  for (std::size_t line = 0; line < lines_.size(); ++line) {
    SortMinimum(bounds_.begin() + firstBound_[line], bounds_.begin() + firstBound_[line + 1]);
  }
}

void ClipTables::SortMinimum(ClipBound* first, ClipBound* last) const noexcept {
  if (last - first <= 16) {
    // Each bound goes before the first that is greater.
    const auto isGreater = [](const ClipBound& a, const ClipBound& b) {
      return a.x > b.x || (a.x == b.x && a.dx > b.dx);
    };
    for (ClipBound* bound = first; bound < last; ++bound) {
      ClipBound* place = bound;
      while (place > first && (isGreater(place[-1], *bound) || std::isnan(place[-1].dx))) --place;
      while (place < bound && !isGreater(*place, *bound)) ++place;
      std::rotate(place, bound, bound + 1);
    }
    return;
  }
  const auto sort = [&] {
    std::sort(first, last, [](const ClipBound& a, const ClipBound& b) {
      if (a.x != b.x) return a.x < b.x;
      return a.dx != b.dx ? a.dx < b.dx : a.order < b.order;
    });
  };
  if (std::none_of(first, last, [](const ClipBound& bound) { return std::isnan(bound.dx); })) {
    sort();
    return;
  }
  // A slope that is no number is neither less nor greater than another: its bound goes behind those
  // of its x that came before it, as one of the greatest slope among them would.
  std::sort(first, last, [](const ClipBound& a, const ClipBound& b) {
    return a.x != b.x ? a.x < b.x : a.order < b.order;
  });
  double greatest = 0;
  for (ClipBound* bound = first; bound < last; ++bound) {
    if (bound == first || bound[-1].x != bound->x) {
      greatest = -std::numeric_limits<double>::infinity();
    }
    if (bound->dx > greatest) greatest = bound->dx;
    if (std::isnan(bound->dx)) bound->dx = greatest;
  }
  sort();
  for (ClipBound* bound = first; bound < last; ++bound) bound->dx = SlopeOf(*bound);
}

double ClipTables::SlopeOf(const ClipBound& bound) const noexcept {
  const Index next = NextAround(bound.vertex, bound.begin, bound.end, bound.forward);
  return Slope(vertices_[bound.vertex], vertices_[next]);
}

// Tells whether the x of an edge may be off by more than rounding somewhere between its ends.
bool ClipTables::HasFlatEdge() const noexcept {
  for (const ClipBound& bound : bounds_) {
    Index bottom = bound.vertex;
    Index top = NextAround(bottom, bound.begin, bound.end, bound.forward);
    for (; lineOf_[top] > lineOf_[bottom];
         bottom = std::exchange(top, NextAround(top, bound.begin, bound.end, bound.forward))) {
      // Its ends are given, and most often there is no line between them.
      const bool isFlat = !(std::fabs(Slope(vertices_[bottom], vertices_[top])) < kLarge);
      if (isFlat && lineOf_[top] > lineOf_[bottom] + 1) return true;
    }
  }
  return false;
}

void ClipTables::FindMargins() noexcept {
  constexpr double kUnit = std::numeric_limits<double>::epsilon() / 2;
  double minX = 0;
  double maxX = 0;
  for (const gpc_vertex& vertex : vertices_) {
    minX = std::min(minX, vertex.x);
    maxX = std::max(maxX, vertex.x);
  }
  const double low = lines_.empty() ? 0 : lines_[0];
  const double high = lines_.empty() ? 0 : lines_.back();
  // A flat edge below a bound's first one shows only when it is reached; the ratio of the extents
  // tells in most cases that there is none.
  double thinnest = std::numeric_limits<double>::infinity();
  for (std::size_t i = 1; i < lines_.size(); ++i) {
    thinnest = std::min(thinnest, lines_[i] - lines_[i - 1]);
  }
  const double width = maxX - minX;
  const double height = high - low;
  const bool mayBeFlat = !(width < kLarge * std::min(thinnest, 1.0));
  if (!(width < kWidest && height < kWidest) || (mayBeFlat && HasFlatEdge())) {
    margin_ = marginY_ = std::numeric_limits<double>::infinity();
    return;
  }
  // x = bottom.x + dx * (y - bottom.y) is off by at most 11 units of the largest x; two of them,
  // and room to spare, also for a dx too small for all of its digits. Edges that bundle may grow
  // apart by the tolerance for x and for their slopes.
  margin_ = 64 * kUnit * std::max(-minX, maxX) + 16 * GPC_EPSILON + 2 * GPC_EPSILON * height;
  marginY_ = 16 * kUnit * std::max(std::fabs(low), std::fabs(high));
}

// How many binary digits all coordinates have together, from the first of the largest to the last
// of the smallest.
void ClipTables::FindDigits() noexcept {
  int first = std::numeric_limits<int>::min();
  int last = std::numeric_limits<int>::max();
  for (const gpc_vertex& vertex : vertices_) {
    for (const double value : {vertex.x, vertex.y}) {
      if (value == 0) continue;
      const Digits digits = DigitsOf(value);
      first = std::max(first, digits.first);
      last = std::min(last, digits.last);
      digits_ = first - last + 1;
      if (digits_ >= kDigits) return;
    }
  }
}

bool ClipTables::HasFewDigits(double dx) const noexcept {
  // bottom.x + dx * (y - bottom.y): one digit more for the difference, those of both for the
  // product, and those of dx behind the point for the sum.
  if (dx == 0) return true;
  if (!std::isfinite(dx)) return false;
  const Digits digits = DigitsOf(dx);
  return digits_ + 1 + (digits.first - digits.last + 1) <= kDigits &&
         digits_ + 1 - std::min(digits.last, 0) <= kDigits;
}

Index ClipTables::LineFrom(double y, Index from, Index to) const noexcept {
  // Mostly it is near.
  Index step = 1;
  Index low = from;
  while (low + step < to && lines_[low + step] < y) {
    low += step;
    step *= 2;
  }
  const Index high = std::min(low + step, to);
  return static_cast<Index>(std::lower_bound(lines_.begin() + low, lines_.begin() + high, y) -
                            lines_.begin());
}

}  // namespace vlm::detail

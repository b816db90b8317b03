#include <velum/geometry/detail/clip/ClipTables.h>

#include <velum/geometry/detail/clip/YSort.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace vlm::detail {

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
  const double dx = (top.x - bottom.x) / (top.y - bottom.y);
  bounds_.Push(
      {bottom.x, dx, vertex, begin, end, static_cast<Index>(bounds_.size()), forward, type});
}

void ClipTables::Sort() {
  SortLines();
  FindMargins();
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

void ClipTables::SortMinimum(ClipBound* first, ClipBound* last) noexcept {
  if (last - first > 16 && !flat_) {
    std::sort(first, last, [](const ClipBound& a, const ClipBound& b) {
      if (a.x != b.x) return a.x < b.x;
      return a.dx != b.dx ? a.dx < b.dx : a.order < b.order;
    });
    return;
  }
  // A slope that is no number is neither less nor greater than another, so where there may be one
  // the list is made as it is defined: each bound goes before the first that is greater.
  for (ClipBound* bound = first; bound < last; ++bound) {
    ClipBound* place = flat_ ? first : bound;
    if (flat_) {
      while (place < bound &&
             !(place->x > bound->x || (place->x == bound->x && place->dx > bound->dx))) {
        ++place;
      }
    } else {
      while (place > first &&
             (place[-1].x > bound->x || (place[-1].x == bound->x && place[-1].dx > bound->dx))) {
        --place;
      }
    }
    std::rotate(place, bound, bound + 1);
  }
}

void ClipTables::FindMargins() noexcept {
  constexpr double kUnit = std::numeric_limits<double>::epsilon() / 2;
  constexpr double kLarge = 1e300;
  double maxX = 0;
  for (const gpc_vertex& vertex : vertices_) maxX = std::max(maxX, std::fabs(vertex.x));
  const double low = lines_.empty() ? 0 : lines_[0];
  const double high = lines_.empty() ? 0 : lines_.back();
  const double maxY = std::max(std::fabs(low), std::fabs(high));
  // A flat edge below a bound's first one shows only when it is reached; the ratio of the extents
  // tells it in advance.
  double thinnest = std::numeric_limits<double>::infinity();
  for (std::size_t i = 1; i < lines_.size(); ++i) {
    thinnest = std::min(thinnest, lines_[i] - lines_[i - 1]);
  }
  flat_ = !(maxX < kLarge && maxY < kLarge && 2 * maxX < kLarge * std::min(thinnest, 1.0));
  if (flat_) {
    margin_ = marginY_ = std::numeric_limits<double>::infinity();
    return;
  }
  // x = bottom.x + dx * (y - bottom.y) is off by at most 11 units of the largest x; two of them,
  // and room to spare. Edges that bundle may grow apart by the tolerance for x and for their
  // slopes.
  margin_ = 64 * kUnit * maxX + 4 * GPC_EPSILON + 2 * GPC_EPSILON * (high - low);
  marginY_ = 16 * kUnit * maxY;
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

#include <velum/geometry/detail/LineClipContour.h>

#include <velum/geometry/detail/Finite.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vlm::detail {

namespace {

constexpr std::size_t kEdgesInBlock = 8;
constexpr std::size_t kBlocksInBlock = 4;

// Whether c lies on the line through a and b, told exactly in `double`.
bool IsOnLine(const Vec2d& a, const Vec2d& b, const Vec2d& c) noexcept {
  return (b.x - a.x) * (c.y - b.y) == (b.y - a.y) * (c.x - b.x);
}

// Appends the next vertex of a path, which replaces the last one if it goes on along its line.
void AppendToPath(std::vector<Vec2d>& path, const Vec2d& p) {
  const std::size_t n = path.size();
  if (n >= 2 && IsOnLine(path[n - 2], path[n - 1], p)) {
    path[n - 1] = p;
  } else {
    path.push_back(p);
  }
}

// The vertices of a contour without those between two others on one line, spikes included, all the
// way round; none where no area is left.
std::vector<Vec2d> Corners(const Vec2d* points, unsigned count) {
  std::vector<Vec2d> ring;
  ring.reserve(count);
  for (const Vec2d* p = points; p != points + count; ++p) {
    if (!IsFinite(*p)) continue;
    while (ring.size() >= 2 && IsOnLine(ring[ring.size() - 2], ring.back(), *p)) ring.pop_back();
    if (ring.empty() || !(ring.back() == *p)) ring.push_back(*p);
  }
  std::size_t first = 0;
  while (ring.size() - first >= 3) {
    if (IsOnLine(ring[ring.size() - 2], ring.back(), ring[first])) {
      ring.pop_back();
    } else if (IsOnLine(ring.back(), ring[first], ring[first + 1])) {
      ++first;
    } else {
      ring.erase(ring.begin(), ring.begin() + static_cast<std::ptrdiff_t>(first));
      return ring;
    }
  }
  return {};
}

}  // namespace

// A segment and the line that it lies on. A key tells how far along the line a point is, by the
// coordinate that changes most along it, so that rounding never exchanges two places that are
// further apart than itself.
class LineClipContour::Line {
 public:
  Line(const Vec2d& begin, const Vec2d& end) noexcept
      : begin_(begin),
        end_(end),
        d_(end - begin),
        isSteep_(std::abs(d_.y) > std::abs(d_.x)),
        beginKey_(Key(begin)),
        endKey_(Key(end)) {}

  [[nodiscard]] double BeginKey() const noexcept { return beginKey_; }
  [[nodiscard]] double EndKey() const noexcept { return endKey_; }
  [[nodiscard]] double Key(const Vec2d& p) const noexcept {
    return !isSteep_ ? p.x : d_.y < 0 ? -p.y : p.y;
  }
  // The least and the largest key in a box.
  [[nodiscard]] Stretch Keys(const Box2d& box) const noexcept {
    const double a = Key(box.MinCorner());
    const double b = Key(box.MaxCorner());
    return {std::min(a, b), std::max(a, b)};
  }

  // Above 0 to the left of the line, below 0 to the right. One formula for all vertices, so that
  // the edges at a vertex agree about its side whatever rounding does.
  [[nodiscard]] double Side(const Vec2d& p) const noexcept {
    return d_.x * (p.y - begin_.y) - d_.y * (p.x - begin_.x);
  }
  // Whether all points of a box lie on one side. Each step of `Side` is monotone, rounding
  // included: so its values at two corners bound the others.
  [[nodiscard]] bool IsBeside(const Box2d& box) const noexcept {
    const double yHigh = d_.x >= 0 ? box.yMax() : box.yMin();
    const double yLow = d_.x >= 0 ? box.yMin() : box.yMax();
    const double xHigh = d_.y >= 0 ? box.xMin() : box.xMax();
    const double xLow = d_.y >= 0 ? box.xMax() : box.xMin();
    return Side(Vec2d(xLow, yLow)) > 0 || Side(Vec2d(xHigh, yHigh)) < 0;
  }

  // Takes account of a vertex of the polygon where the boundary crosses the line.
  void CrossAt(const Vec2d& vertex, Crossings& found) const {
    const double key = Key(vertex);
    if (key <= beginKey_) {
      found.beginsInside = !found.beginsInside;
    } else if (key < endKey_) {
      found.list.push_back({vertex, key, true});
    }
  }

  // Takes account of an edge that crosses the line between its ends, which lie on different sides;
  // `rises` if it goes to the left.
  void CrossEdge(const Edge& edge, bool rises, Crossings& found) const {
    const Vec2d d = edge.end - edge.start;
    const bool isForward = Key(edge.start) < Key(edge.end);
    const Vec2d& low = isForward ? edge.start : edge.end;
    const Vec2d& high = isForward ? edge.end : edge.start;
    // Where the edge lies decides before rounding of the products may: an edge almost along the
    // line says little about where it crosses.
    if (Key(low) >= endKey_) return;
    if (Key(high) <= beginKey_ || (Key(low) <= beginKey_ && !IsBeyond(edge, d, begin_, rises))) {
      found.beginsInside = !found.beginsInside;
    } else if (Key(high) < endKey_ || IsBeyond(edge, d, end_, !rises)) {
      const Vec2d point = Within(CrossingPoint(edge, d), low, high);
      found.list.push_back({point, Key(point), true});
    }
  }

 private:
  // Whether an edge that rises crosses the line further along than at `p`, one that falls less far.
  static bool IsBeyond(const Edge& edge, const Vec2d& d, const Vec2d& p, bool rises) noexcept {
    const Vec2d w = edge.start - p;
    const double position = w.x * d.y - d.x * w.y;
    return rises ? position > 0 : position < 0;
  }

  [[nodiscard]] Vec2d CrossingPoint(const Edge& edge, const Vec2d& d) const noexcept {
    const Vec2d w = edge.start - begin_;
    const double along = d_.y * w.x - d_.x * w.y;
    const double whole = d_.x * d.y - d_.y * d.x;
    // Upright and level segments keep the coordinate that they have.
    return Vec2d(d_.x == 0 ? begin_.x : edge.start.x + d.x * along / whole,
                 d_.y == 0 ? begin_.y : edge.start.y + d.y * along / whole);
  }

  // The point, or the end of the segment or of the edge that rounding carried it over. What
  // overflowed comes to an end as well.
  [[nodiscard]] Vec2d Within(const Vec2d& p, const Vec2d& low, const Vec2d& high) const noexcept {
    const Vec2d& first = Key(low) < beginKey_ ? begin_ : low;
    const Vec2d& last = Key(high) > endKey_ ? end_ : high;
    if (!IsFinite(p) || Key(p) < Key(first)) return first;
    return Key(p) > Key(last) ? last : p;
  }

  Vec2d begin_;
  Vec2d end_;
  Vec2d d_;
  bool isSteep_;
  double beginKey_;
  double endKey_;
};

LineClipContour::LineClipContour(const std::vector<Vec2d>& path, const std::vector<Vec2d>& points,
                                 const std::vector<unsigned>& counts) {
  for (const Vec2d& p : path) AppendToPath(path_, p);
  const Vec2d* contour = points.data();
  for (unsigned count : counts) {
    AddRing(contour, count);
    contour += count;
  }
  BuildIndex();
}

void LineClipContour::AddRing(const Vec2d* points, unsigned count) {
  const std::vector<Vec2d> ring = Corners(points, count);
  const auto first = static_cast<std::uint32_t>(edges_.size());
  const auto last = static_cast<std::uint32_t>(first + ring.size() - 1);
  for (std::size_t i = 0; i < ring.size(); ++i) {
    edges_.push_back({ring[i], ring[i + 1 == ring.size() ? 0 : i + 1], first, last});
  }
}

void LineClipContour::BuildIndex() {
  std::vector<Box2d> boxes((edges_.size() + kEdgesInBlock - 1) / kEdgesInBlock);
  for (std::size_t i = 0; i < edges_.size(); ++i) {
    boxes[i / kEdgesInBlock].ExtendBy(edges_[i].start);
    boxes[i / kEdgesInBlock].ExtendBy(edges_[i].end);
  }
  while (!boxes.empty()) {
    std::vector<Box2d> larger;
    if (boxes.size() > 1) {
      larger.resize((boxes.size() + kBlocksInBlock - 1) / kBlocksInBlock);
      for (std::size_t i = 0; i < boxes.size(); ++i) larger[i / kBlocksInBlock].ExtendBy(boxes[i]);
    }
    levels_.push_back(std::move(boxes));
    boxes = std::move(larger);
  }
}

const LineClipContour::Edge& LineClipContour::Previous(std::size_t i) const noexcept {
  return edges_[i == edges_[i].first ? edges_[i].last : i - 1];
}

const LineClipContour::Edge& LineClipContour::Next(std::size_t i) const noexcept {
  return edges_[i == edges_[i].last ? edges_[i].first : i + 1];
}

// The boundary crosses the line where it comes from one side and leaves to the other. Between, it
// may touch the line in a vertex or run along it with an edge, never with two. What lies on the
// line counts as right of it where sides are compared, so that each ring crosses an even number of
// times.
void LineClipContour::Meet(const Line& line, std::size_t i, Crossings& found) const {
  const Edge& edge = edges_[i];
  const double startSide = line.Side(edge.start);
  const double endSide = line.Side(edge.end);
  if (startSide == 0 && endSide == 0) {
    MeetAlong(line, i, found);
  } else if ((startSide > 0) == (endSide > 0)) {
    return;
  } else if (startSide == 0 || endSide == 0) {
    // One end on the line, the other to the left: a crossing if the edge beyond the vertex leaves
    // to the right. If that one lies along the line, it takes care of the crossing.
    const double beyond = startSide == 0 ? line.Side(Previous(i).start) : line.Side(Next(i).end);
    if (beyond < 0) {
      line.CrossAt(startSide == 0 ? edge.start : edge.end, found);
    }
  } else {
    line.CrossEdge(edge, endSide > 0, found);
  }
}

// An edge along the line. If its neighbours lie on different sides it is a crossing at its far end,
// and a piece ends at the near one as well.
void LineClipContour::MeetAlong(const Line& line, std::size_t i, Crossings& found) const {
  // The end that comes first along the line, whichever way the edge runs.
  Vec2d low = edges_[i].start;
  Vec2d high = edges_[i].end;
  if (line.Key(high) < line.Key(low)) std::swap(low, high);
  const double lowKey = line.Key(low);
  const double highKey = line.Key(high);
  if (lowKey < line.EndKey() && highKey > line.BeginKey()) {
    found.stretches.push_back({lowKey, highKey});
  }
  const bool comesFromLeft = line.Side(Previous(i).start) > 0;
  const bool leavesToLeft = line.Side(Next(i).end) > 0;
  if (comesFromLeft == leavesToLeft) return;
  if (lowKey > line.BeginKey() && lowKey < line.EndKey()) {
    found.list.push_back({low, lowKey, false});
  }
  line.CrossAt(high, found);
}

// Whether a chain of edges, all before the segment's begin, can be passed over: it changes the
// parity there if it ends on another side than it starts. Rings that are whole do not. Where the
// chain is cut on the line itself, the edges have to be looked at.
bool LineClipContour::PassesOver(const Line& line, std::size_t begin, std::size_t end,
                                 bool& isOdd) const noexcept {
  const Edge& head = edges_[begin];
  const Edge& tail = edges_[end - 1];
  const double sides[] = {line.Side(head.start), line.Side(edges_[head.first].start),
                          line.Side(edges_[tail.first].start), line.Side(tail.end)};
  for (double side : sides) {
    if (!(side < 0) && !(side > 0)) return false;
    isOdd ^= side > 0;
  }
  return true;
}

void LineClipContour::MeetBlock(const Line& line, std::size_t level, std::size_t block,
                                Crossings& found) const {
  const Box2d& box = levels_[level][block];
  if (line.IsBeside(box)) return;
  const Stretch keys = line.Keys(box);
  if (keys.low > line.EndKey()) return;
  std::size_t size = kEdgesInBlock;
  for (std::size_t i = 0; i < level; ++i) size *= kBlocksInBlock;
  const std::size_t begin = block * size;
  const std::size_t end = std::min(begin + size, edges_.size());
  if (bool isOdd = false; keys.high < line.BeginKey() && PassesOver(line, begin, end, isOdd)) {
    found.beginsInside ^= isOdd;
  } else if (level == 0) {
    for (std::size_t i = begin; i < end; ++i) Meet(line, i, found);
  } else {
    const std::size_t first = block * kBlocksInBlock;
    const std::size_t last = std::min(first + kBlocksInBlock, levels_[level - 1].size());
    for (std::size_t i = first; i < last; ++i) MeetBlock(line, level - 1, i, found);
  }
}

void LineClipContour::FindCrossings(const Vec2d& begin, const Vec2d& end, Crossings& found) const {
  found.beginsInside = false;
  found.list.clear();
  found.stretches.clear();
  if (!levels_.empty()) MeetBlock(Line(begin, end), levels_.size() - 1, 0, found);
}

void LineClipContour::FindCrossingsPlainly(const Vec2d& begin, const Vec2d& end,
                                           Crossings& found) const {
  found.beginsInside = false;
  found.list.clear();
  found.stretches.clear();
  const Line line(begin, end);
  for (std::size_t i = 0; i < edges_.size(); ++i) Meet(line, i, found);
}

void LineClipContour::Clip(Vec2d begin, Vec2d end, Crossings& found,
                           std::vector<Piece>& pieces) const {
  pieces.clear();
  if (!IsFinite(begin) || !IsFinite(end)) return;
  if (end < begin) std::swap(begin, end);
  FindCrossings(begin, end, found);
  std::sort(found.list.begin(), found.list.end());
  std::sort(found.stretches.begin(), found.stretches.end(),
            [](const Stretch& a, const Stretch& b) { return a.low < b.low; });
  const Line line(begin, end);
  // How far the segment lies along the boundary from its begin on.
  double reach = line.BeginKey();
  for (const Stretch& stretch : found.stretches) {
    if (stretch.low > reach) break;
    reach = std::max(reach, stretch.high);
  }
  found.list.push_back({end, line.EndKey(), false});
  bool isInside = found.beginsInside;
  Vec2d from = begin;
  for (const Crossing& crossing : found.list) {
    if (isInside && crossing.key > reach) pieces.push_back({from, crossing.point});
    isInside ^= crossing.isToggle;
    from = crossing.point;
  }
}

}  // namespace vlm::detail

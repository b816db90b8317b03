#include <velum/geometry/detail/RingSweep.h>

#include <velum/geometry/detail/Finite.h>
#include <velum/geometry/detail/Orientation.h>
#include <velum/geometry/detail/RingOverlay.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <new>
#include <numeric>
#include <utility>

namespace vlm::detail {

namespace {

// Tells whether a strand is below a point, for searches.
template <class SideOf>
struct IsBelow {
  template <class Strand>
  bool operator()(const Strand& strand, const Vec2d& p) const noexcept {
    return sideOf(strand, p) > 0;
  }
  template <class Strand>
  bool operator()(const Vec2d& p, const Strand& strand) const noexcept {
    return sideOf(strand, p) < 0;
  }
  SideOf sideOf;
};

}  // namespace

RingSweep::RingSweep(const MultiPolygon2d& polygons) {
  for (const RingPolygon2d& polygon : polygons) {
    AddRing(polygon.outer(), true);
    for (const Ring2d& ring : polygon.inners()) AddRing(ring, false);
  }
  SortPoints();
  SortEdges();
  strandEndingAt_.resize(points_.size());
  pieces_.reserve(edges_.size());
  for (std::uint32_t i = 0; i < points_.size(); ++i) Visit(i);
}

// Until `SortPoints`, a vertex is a point of its own, and so is a passage.
void RingSweep::AddRing(const Ring2d& ring, bool isOuter) {
  if (!std::all_of(ring.begin(), ring.end(), IsFinite<double>)) ThrowInvalidInput();
  if (ring.empty()) return;
  const std::size_t first = points_.size();
  std::unique_copy(ring.begin(), ring.end(), std::back_inserter(points_));
  if (points_.back() == points_[first] && points_.size() - first > 1) {
    points_.pop_back();
  } else {
    isClean_ = false;
  }
  const std::size_t count = points_.size() - first;
  if (points_.size() >= kNone / 2) throw std::bad_alloc();
  const bool isClockwise = RingOrientation(points_.data() + first, count) < 0;
  if (isClockwise != isOuter) isClean_ = false;
  for (std::size_t i = 0; count > 1 && i < count; ++i) {
    const auto from = static_cast<std::uint32_t>(first + i);
    const auto to = static_cast<std::uint32_t>(first + (i + 1) % count);
    edges_.push_back({from, to, from, to, isClockwise == isOuter ? 1 : -1});
  }
}

void RingSweep::SortPoints() {
  passages_ = static_cast<std::uint32_t>(points_.size());
  std::vector<std::uint32_t> order(points_.size());
  std::iota(order.begin(), order.end(), 0u);
  std::sort(order.begin(), order.end(),
            [this](std::uint32_t a, std::uint32_t b) { return points_[a] < points_[b]; });
  std::vector<Vec2d> sorted;
  std::vector<std::uint32_t> places(points_.size());
  for (const std::uint32_t i : order) {
    if (sorted.empty() || !(sorted.back() == points_[i])) sorted.push_back(points_[i]);
    places[i] = static_cast<std::uint32_t>(sorted.size() - 1);
  }
  points_.swap(sorted);
  for (Edge& edge : edges_) {
    edge.left = places[edge.left];
    edge.right = places[edge.right];
    if (edge.left < edge.right) continue;
    std::swap(edge.left, edge.right);
    std::swap(edge.passageLeft, edge.passageRight);
    edge.direction = -edge.direction;
  }
}

void RingSweep::SortEdges() {
  firstEdge_.resize(points_.size() + 1);
  for (const Edge& edge : edges_) ++firstEdge_[edge.left + 1];
  std::partial_sum(firstEdge_.begin(), firstEdge_.end(), firstEdge_.begin());
  std::vector<std::uint32_t> next(firstEdge_.begin(), firstEdge_.end() - 1);
  std::vector<Edge> sorted(edges_.size());
  for (const Edge& edge : edges_) sorted[next[edge.left]++] = edge;
  edges_.swap(sorted);
}

void RingSweep::Visit(std::uint32_t point) {
  const Strands::iterator upper = FindStrands(point);
  starts_.clear();
  spokes_.clear();
  for (Strand* const strand : found_) EndStrand(*strand, point);
  if (starts_.size() > 1) ThrowInvalidInput();  // Two go straight on, but not along each other.
  const std::size_t ended = spokes_.size();
  SortStarts(point);

  const Strand* const lowest = upper == strands_.begin() ? nullptr : &*std::prev(upper);
  const Strand* const highest = upper == strands_.end() ? nullptr : &*upper;
  const Strand* lower = lowest;
  for (std::size_t i = 0; i < starts_.size();) {
    const std::uint32_t toward = edges_[starts_[i].edge].right;
    std::size_t end = i + 1;
    while (end < starts_.size() && Orientation(points_[point], points_[toward],
                                               points_[edges_[starts_[end].edge].right]) == 0) {
      ++end;
    }
    const auto old = std::find_if(starts_.begin() + static_cast<std::ptrdiff_t>(i),
                                  starts_.begin() + static_cast<std::ptrdiff_t>(end),
                                  [](const Start& start) { return start.strand != nullptr; });
    Strand& strand =
        old == starts_.begin() + static_cast<std::ptrdiff_t>(end) ? NewStrand() : *old->strand;
    for (; i < end; ++i) {
      if (!starts_[i].strand) AddEdge(strand, starts_[i].edge);
    }
    BeginStrand(strand, point, lower);
    strands_.insert_before(upper, strand);
    if (lower == lowest) TestNeighbours(lowest, &strand);
    lower = &strand;
  }
  TestNeighbours(lower, highest);

  // From the right, where they stand from low to high, on to the left, from high to low.
  std::reverse(spokes_.begin(), spokes_.begin() + static_cast<std::ptrdiff_t>(ended));
  std::rotate(spokes_.begin(), spokes_.begin() + static_cast<std::ptrdiff_t>(ended), spokes_.end());
  if (spokes_.size() > 2) {
    isClean_ = false;
    TestPassages();
  }
  LinkBoundaries();
}

// Collects the strands that hold a point, the lowest first, and gives the next one above.
RingSweep::Strands::iterator RingSweep::FindStrands(std::uint32_t point) {
  const Vec2d& p = points_[point];
  Strands::iterator first;
  if (Strand* const known = strandEndingAt_[point]) {
    first = strands_.iterator_to(*known);
    while (first != strands_.begin() && Side(*std::prev(first), p) == 0) --first;
  } else {
    const auto side = [this](const Strand& strand, const Vec2d& v) { return Side(strand, v); };
    first = strands_.lower_bound(p, IsBelow<decltype(side)>{side});
  }
  found_.clear();
  for (; first != strands_.end() && Side(*first, p) == 0; ++first) found_.push_back(&*first);
  return first;
}

void RingSweep::EndStrand(Strand& strand, std::uint32_t point) {
  pieces_[strand.piece].end = point;
  spokes_.push_back({strand.piece, Passage(strand, point), false});
  strands_.erase(strands_.iterator_to(strand));
  while (strand.edge != kNone && edges_[strand.edge].right == point) RemoveEdge(strand);
  if (strand.edge == kNone) {
    free_.push_back(&strand);
  } else {
    starts_.push_back({strand.edge, &strand});
  }
}

void RingSweep::SortStarts(std::uint32_t point) {
  for (std::uint32_t i = firstEdge_[point]; i < firstEdge_[point + 1]; ++i) {
    starts_.push_back({i, nullptr});
  }
  std::sort(starts_.begin(), starts_.end(), [this, point](const Start& a, const Start& b) {
    return Orientation(points_[point], points_[edges_[a.edge].right],
                       points_[edges_[b.edge].right]) > 0;
  });
}

void RingSweep::BeginStrand(Strand& strand, std::uint32_t point, const Strand* lower) {
  strand.below = lower ? lower->below - lower->direction : 0;
  const int above = strand.below - strand.direction;
  if (above < 0) ThrowInvalidInput();
  Piece piece;
  piece.start = point;
  piece.isBoundary = (strand.below > 0) != (above > 0);
  piece.isAreaBelow = strand.below > 0;
  if (lower) {
    piece.below = pieces_[lower->piece].isBoundary ? lower->piece : pieces_[lower->piece].below;
  }
  if (!piece.isBoundary || strand.below + above > 1 || !strand.more.empty()) isClean_ = false;
  strand.piece = static_cast<std::uint32_t>(pieces_.size());
  pieces_.push_back(piece);
  spokes_.push_back({strand.piece, Passage(strand, point), true});
  // Whoever else ends there sets this again when it is changed before.
  strandEndingAt_[edges_[strand.edge].right] = &strand;
}

void RingSweep::AddEdge(Strand& strand, std::uint32_t edge) {
  strand.direction += edges_[edge].direction;
  if (strand.edge == kNone) {
    strand.edge = edge;
    return;
  }
  if (edges_[edge].right < edges_[strand.edge].right) std::swap(edge, strand.edge);
  strand.more.push_back(edge);
  std::push_heap(strand.more.begin(), strand.more.end(), [this](std::uint32_t a, std::uint32_t b) {
    return edges_[a].right > edges_[b].right;
  });
}

void RingSweep::RemoveEdge(Strand& strand) {
  strand.direction -= edges_[strand.edge].direction;
  strand.edge = kNone;
  if (strand.more.empty()) return;
  std::pop_heap(strand.more.begin(), strand.more.end(), [this](std::uint32_t a, std::uint32_t b) {
    return edges_[a].right > edges_[b].right;
  });
  strand.edge = strand.more.back();
  strand.more.pop_back();
}

RingSweep::Strand& RingSweep::NewStrand() {
  if (free_.empty()) return store_.emplace_back();
  Strand& strand = *free_.back();
  free_.pop_back();
  return strand;
}

// The lower one must not end above the upper one, nor the upper one below the lower.
void RingSweep::TestNeighbours(const Strand* lower, const Strand* upper) const {
  if (!lower || !upper) return;
  const std::uint32_t lowerEnd = edges_[lower->edge].right;
  const std::uint32_t upperEnd = edges_[upper->edge].right;
  if (lowerEnd < upperEnd ? Side(*upper, points_[lowerEnd]) > 0
                          : lowerEnd > upperEnd && Side(*lower, points_[upperEnd]) < 0) {
    ThrowInvalidInput();
  }
}

// The two ends of each passage, taken round the point, must stand like brackets. Edges that lie on
// each other leave open which of them is inside, so that their passages are left out.
void RingSweep::TestPassages() {
  ways_.clear();
  for (const Spoke& spoke : spokes_) {
    if (spoke.passage != kNone) ways_.push_back(spoke.passage);
  }
  std::sort(ways_.begin(), ways_.end());
  open_.clear();
  for (const Spoke& spoke : spokes_) {
    const auto ends = std::equal_range(ways_.begin(), ways_.end(), spoke.passage);
    if (ends.second - ends.first != 2) continue;
    if (!open_.empty() && open_.back() == spoke.passage) {
      open_.pop_back();
    } else {
      open_.push_back(spoke.passage);
    }
  }
  if (!open_.empty()) ThrowInvalidInput();
}

// Behind a boundary that arrives here comes the next one counter-clockwise: between the two lies
// its area.
void RingSweep::LinkBoundaries() {
  std::uint32_t arrived = kNone;
  std::uint32_t first = kNone;
  for (const Spoke& spoke : spokes_) {
    const Piece& piece = pieces_[spoke.piece];
    if (!piece.isBoundary) continue;
    if (first == kNone) first = spoke.piece;
    if (arrived != kNone) pieces_[arrived].next = spoke.piece;
    arrived = spoke.isRight != piece.isAreaBelow ? spoke.piece : kNone;
  }
  if (arrived != kNone) pieces_[arrived].next = first;
}

int RingSweep::Side(const Strand& strand, const Vec2d& p) const noexcept {
  const Edge& edge = edges_[strand.edge];
  return Orientation(points_[edge.left], points_[edge.right], p);
}

std::uint32_t RingSweep::Passage(const Strand& strand, std::uint32_t point) const noexcept {
  if (!strand.more.empty()) return kNone;
  const Edge& edge = edges_[strand.edge];
  return point == edge.left    ? edge.passageLeft
         : point == edge.right ? edge.passageRight
                               : passages_ + strand.edge;
}

}  // namespace vlm::detail

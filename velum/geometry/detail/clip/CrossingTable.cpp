#include <velum/geometry/detail/clip/CrossingTable.h>

#include <velum/geometry/Gpc.h>
#include <velum/geometry/detail/clip/ClipErrors.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

namespace vlm::detail {

CrossingTable::CrossingTable(const ClipTables& tables, ActiveEdges& edges, CrossingWatch& watch,
                             bool inBeam)
    : tables_(tables),
      edges_(edges),
      watch_(watch),
      inBeam_(inBeam),
      sorted_("ST insertion"),
      inverted_("ST insertion"),
      crossings_("IT insertion"),
      ready_("IT insertion") {}

void CrossingTable::Build(Index line) {
  crossings_.Clear();
  sorted_.Clear();
  ready_.Clear();
  next_ = waiting_ = 0;
  line_ = line;
  bottom_ = tables_.Y(line);
  top_ = tables_.Y(line + 1);
  height_ = top_ - bottom_;
  Collect(line);
  for (const PlacedEdge& first : inverted_) {
    // An edge that sinks leaves its follower behind another one.
    for (Index edge = first.edge; edge != kNone && edges_[edge].comparedAt != line;) {
      edges_[edge].comparedAt = line;
      if (!Sink(edge)) break;
      edge = edges_.NextHead(edge);
    }
  }
  std::sort(crossings_.begin(), crossings_.end(), [](const Crossing& a, const Crossing& b) {
    return a.y != b.y ? a.y < b.y : a.order < b.order;
  });
}

void CrossingTable::Collect(Index line) {
  // Of the pairs that may cross, those that are in the wrong order at the top, from left to right.
  inverted_.Clear();
  for (const Index edge : watch_.Candidates(line)) {
    const ActiveEdge& right = edges_[edge];
    const ActiveEdge& left = edges_[edges_.PreviousHead(edge)];
    if (XAt(left, line + 1, top_) <= XAt(right, line + 1, top_)) {
      watch_.Ask(edge);
    } else {
      inverted_.Push({0, edge});
    }
  }
  edges_.Sort(inverted_);
}

Index CrossingTable::Enter(Index edge) {
  ActiveEdge& it = edges_[edge];
  if (it.sortedAt != line_) {
    it.sortedAt = line_;
    it.sortedPlace = static_cast<Index>(sorted_.size());
    sorted_.Push({XAt(it, line_, bottom_), XAt(it, line_ + 1, top_), it.dx, edge,
                  edges_.PreviousHead(edge), edges_.NextHead(edge), kNone});
  }
  return it.sortedPlace;
}

bool CrossingTable::Sink(Index edge) {
  const Index place = Enter(edge);
  Index left = sorted_[place].previous;
  Index right = kNone;
  while (left != kNone) {
    const Sorted& other = At(left);
    const Sorted& it = sorted_[place];
    const double den = (other.topX - other.bottomX) - (it.topX - it.bottomX);
    if (other.topX <= it.topX) break;
    if (other.dx == it.dx || std::fabs(den) <= GPC_EPSILON) {
      // They stay in the wrong order, and may cross further up.
      watch_.Allow(other.topX - it.topX);
      watch_.Ask(edge);
      break;
    }
    AddCrossing(other, it, den);
    right = left;
    left = other.previous;
  }
  if (right == kNone) return false;
  // From behind its old neighbour to between `left` and `right`.
  const Index oldPrevious = sorted_[place].previous;
  const Index oldNext = sorted_[place].next;
  At(oldPrevious).next = oldNext;
  if (oldNext != kNone) At(oldNext).previous = oldPrevious;
  sorted_[place].previous = left;
  sorted_[place].next = right;
  At(right).previous = edge;
  if (left != kNone) At(left).next = edge;
  return true;
}

void CrossingTable::AddCrossing(const Sorted& left, const Sorted& right, double den) {
  double r = (right.bottomX - left.bottomX) / den;
  if (inBeam_) r = std::min(1.0, std::max(0.0, r));
  const double x = left.bottomX + r * (left.topX - left.bottomX);
  const double y = r * height_;
  if (!std::isfinite(x) || !std::isfinite(y)) ThrowBrokenSweep(__LINE__);
  crossings_.Push({y, x, left.edge, right.edge, static_cast<Index>(crossings_.size()), kNone});
}

const Crossing* CrossingTable::Next() {
  while (!ready_.empty()) {
    std::pop_heap(ready_.begin(), ready_.end(), std::greater<>());
    const Index crossing = ready_.back();
    ready_.Pop();
    if (!Neighbours(crossings_[crossing])) continue;
    RemoveWaiting(crossing);
    return &crossings_[crossing];
  }
  while (next_ < crossings_.size()) {
    const auto crossing = static_cast<Index>(next_++);
    if (Neighbours(crossings_[crossing])) return &crossings_[crossing];
    Wait(crossing);
  }
  if (waiting_ > 0) ThrowBrokenSweep(__LINE__);
  return nullptr;
}

void CrossingTable::Wait(Index crossing) {
  Index& first = At(crossings_[crossing].left).waiting;
  crossings_[crossing].nextWaiting = std::exchange(first, crossing);
  ++waiting_;
}

void CrossingTable::RemoveWaiting(Index crossing) {
  Index* link = &At(crossings_[crossing].left).waiting;
  while (*link != crossing) link = &crossings_[*link].nextWaiting;
  *link = crossings_[crossing].nextWaiting;
  --waiting_;
}

void CrossingTable::Met(Index left, Index right) {
  if (waiting_ == 0 || left == kNone || right == kNone) return;
  if (edges_[left].sortedAt != line_) return;
  const Sorted& it = At(left);
  for (Index crossing = it.waiting; crossing != kNone;
       crossing = crossings_[crossing].nextWaiting) {
    if (crossings_[crossing].right != right) continue;
    ready_.Push(crossing);
    std::push_heap(ready_.begin(), ready_.end(), std::greater<>());
    return;
  }
}

}  // namespace vlm::detail

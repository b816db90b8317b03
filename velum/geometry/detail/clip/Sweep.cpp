#include <velum/geometry/detail/clip/Sweep.h>

#include <velum/geometry/Gpc.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vlm::detail {
namespace {

bool NearlyParallel(const ActiveEdge& a, const ActiveEdge& b) noexcept {
  return std::fabs(a.dx - b.dx) <= GPC_EPSILON;
}

// Two edges at a distance, whose x as it is computed is one on every scan line.
bool ComputedAlike(const ActiveEdge& a, const ActiveEdge& b, double distance) noexcept {
  if (a.dx != b.dx) return false;
  if (a.bottomX == b.bottomX && (a.dx == 0 || a.bottomY == b.bottomY)) return true;
  return a.exact && b.exact && distance == 0;
}

}  // namespace

template <class Output>
Sweep<Output>::Sweep(const ClipTables& tables, const ClipRules& rules)
    : tables_(tables),
      rules_(rules),
      watch_(tables, edges_),
      // Contours bear a crossing outside of its beam, since the point is on both edges. Chains of
      // strips would be folded back by it.
      crossings_(tables, edges_, watch_, Output::kNeedsSpan),
      output_(edges_, tables.VertexCount()),
      tops_("scanbeam tree insertion"),
      bends_("ST insertion"),
      ended_("ST insertion"),
      joins_("ST insertion"),
      nextJoins_("ST insertion"),
      bundles_("ST insertion"),
      active_("ST insertion") {
  tops_.Fill(tables.LineCount(), kNone);
}

template <class Output>
void Sweep<Output>::Run() {
  for (Index line = 0; line < tables_.LineCount(); ++line) {
    line_ = line;
    y_ = tables_.Y(line);
    Prefetch();
    AtLine();
    if (line + 1 < tables_.LineCount()) Cross();
  }
}

template <class Output>
void Sweep<Output>::AtLine() {
  bends_.Clear();
  ended_.Clear();
  active_.Clear();
  Rise();
  InsertBounds();
  JoinEdges();
  Classify();
  PassBends();
  RemoveEnded();
}

template <class Output>
void Sweep<Output>::Prefetch() const noexcept {
  // Edges that end or may cross are far apart in memory. In what order their lines come is known.
  const Index far = std::min(line_ + 6, tables_.LineCount() - 1);
  const Index near = std::min(line_ + 3, tables_.LineCount() - 1);
  if (tops_[far] != kNone) edges_.Prefetch(tops_[far]);
  if (tops_[near] != kNone) {
    const ActiveEdge& it = edges_[tops_[near]];
    if (it.previous != kNone) edges_.Prefetch(it.previous);
    if (it.next != kNone) edges_.Prefetch(it.next);
    tables_.Prefetch(it.vertex);
  }
  watch_.Prefetch(far, near);
}

template <class Output>
void Sweep<Output>::Load(Index edge, Index bottom, Index top) noexcept {
  ActiveEdge& it = edges_[edge];
  const gpc_vertex& from = tables_.Vertex(bottom);
  const gpc_vertex& to = tables_.Vertex(top);
  it.bottomX = from.x;
  it.bottomY = from.y;
  it.topX = to.x;
  it.dx = (to.x - from.x) / (to.y - from.y);
  it.exact = tables_.IsExact(it.dx);
  it.topLine = tables_.Line(top);
  it.vertex = top;
  it.nextTop = tops_[it.topLine];
  tops_[it.topLine] = edge;
}

template <class Output>
void Sweep<Output>::Rise() {
  const bool inserts = tables_.BoundsBegin(line_) != tables_.BoundsEnd(line_);
  for (Index edge = tops_[line_]; edge != kNone;) {
    ActiveEdge& it = edges_[edge];
    const Index following = it.nextTop;
    if (inserts) {
      // Bounds find their places before it is known how these edges go on.
      if (it.same) edges_.Join(edge, it.joined, false);
      if (it.next != kNone && edges_[it.next].same) edges_.Join(it.next, true, false);
    }
    const Index next = NextAround(it.vertex, it.begin, it.end, it.forward);
    if (tables_.Line(next) > line_) {
      Load(edge, it.vertex, next);
      bends_.Push(edge);
      watch_.Ask(edge);
      watch_.Ask(it.next);
      if (Output::kNeedsSpan) MarkActive(edge);
    } else {
      it.ended = true;
      ended_.Push(edge);
    }
    AskJoin(edge);
    AskJoin(it.next);
    edge = following;
  }
}

template <class Output>
void Sweep<Output>::InsertBounds() {
  Index place = kNone;
  const ClipBound* const end = tables_.BoundsEnd(line_);
  for (const ClipBound* bound = tables_.BoundsBegin(line_); bound != end; ++bound) {
    place = edges_.FindPlace(bound->x, bound->dx, line_, y_, watch_.Margin(), place);
    const Index edge = edges_.Create();
    ActiveEdge& it = edges_[edge];
    it = {};
    it.type = it.above = bound->type;
    it.begin = bound->begin;
    it.end = bound->end;
    it.forward = bound->forward;
    it.output = it.outputBelow = kNone;
    it.pairBeam = kNone;
    it.walkedAt = it.activeAt = it.joinedAt = it.bundledAt = kNone;
    it.comparedAt = it.queuedAt = it.sortedAt = kNone;
    Load(edge, bound->vertex, NextAround(bound->vertex, bound->begin, bound->end, bound->forward));
    edges_.InsertBehind(place, edge);
    MarkActive(edge);
    const Index next = edges_[edge].next;
    if (next != kNone && edges_[next].joined) {
      // To the edge before the new one.
      Part(place, next);
      edges_[place].tail = false;
      edges_.Join(next, false, false);
    }
    place = edge;
    AskJoin(edge);
    AskJoin(next);
    watch_.Ask(edge);
    watch_.Ask(next);
  }
}

template <class Output>
void Sweep<Output>::AskJoin(Index edge) {
  if (edge != kNone) joins_.Push(edge);
}

template <class Output>
bool Sweep<Output>::MayPart(const ActiveEdge& a, const ActiveEdge& b,
                            double distance) const noexcept {
  // Neighbours that begin to coincide, or cease to, while both go on: not those whose distance is
  // computed alike on every line, nor those too far apart.
  const double margin = watch_.Margin();
  if (std::isfinite(margin) && a.dx == b.dx) {
    if (a.dx == 0 || (a.exact && b.exact)) return false;
    if (a.bottomX == b.bottomX && a.bottomY == b.bottomY) return false;
  }
  return !(distance > 2 * margin);
}

template <class Output>
void Sweep<Output>::AskJoinIfParallel(Index edge) {
  if (edge == kNone || edges_[edge].previous == kNone) return;
  if (NearlyParallel(edges_[edges_[edge].previous], edges_[edge])) joins_.Push(edge);
}

template <class Output>
void Sweep<Output>::JoinEdges() {
  for (const Index edge : joins_) {
    ActiveEdge& it = edges_[edge];
    if (!it.alive || it.joinedAt == line_) continue;
    it.joinedAt = line_;
    bool joined = false;
    bool same = false;
    if (it.previous != kNone) {
      const ActiveEdge& before = edges_[it.previous];
      if (NearlyParallel(before, it) && !it.ended && !before.ended) {
        const double distance = std::fabs(XAt(before, line_, y_) - XAt(it, line_, y_));
        joined = distance <= GPC_EPSILON;
        same = joined && std::isfinite(watch_.Margin()) && ComputedAlike(before, it, distance);
        if (MayPart(before, it, distance)) nextJoins_.Push(edge);
      }
    }
    if (joined == it.joined && same == it.same) continue;
    if (!joined && it.joined) Part(it.previous, edge);
    if (joined && !it.joined) Unite(it.previous, edge);
    edges_.Join(edge, joined, same);
  }
  joins_.Clear();
  joins_.Swap(nextJoins_);
  for (const Index edge : bundles_) Bundle(edge);
  bundles_.Clear();
  for (const Index edge : ended_) {
    edges_[edge].above = 0;
    if (edges_[edge].below != 0) MarkActive(edge);
  }
}

template <class Output>
void Sweep<Output>::Part(Index left, Index right) {
  // The left one speaks for a bundle from now on, whose parity is to be found.
  MarkActive(left);
  bundles_.Push(left);
  bundles_.Push(right);
}

template <class Output>
void Sweep<Output>::Unite(Index left, Index right) {
  ActiveEdge& it = edges_[left];
  it.above = 0;
  it.pairBeam = kNone;
  if (it.below != 0) MarkActive(left);
  bundles_.Push(right);
}

template <class Output>
void Sweep<Output>::Bundle(Index edge) {
  const Index head = edges_.HeadOf(edge);
  ActiveEdge& it = edges_[head];
  if (it.bundledAt == line_) return;
  it.bundledAt = line_;
  it.above = edges_.TypesOfBundle(head);
  if (it.below != it.above) MarkActive(head);
  watch_.Ask(head);
  watch_.Ask(it.next);
}

template <class Output>
void Sweep<Output>::MarkActive(Index edge) {
  if (edges_[edge].activeAt == line_) return;
  edges_[edge].activeAt = line_;
  active_.Push({0, edge});
}

template <class Output>
TypeMask Sweep<Output>::ParityBefore(Index edge) const noexcept {
  const Index before = edges_.PreviousHead(edge);
  if (before == kNone) return rules_.Outside();
  return edges_[before].parity ^ edges_[before].above;
}

template <class Output>
Index Sweep<Output>::StretchBegin(Index edge) noexcept {
  if (!Output::kNeedsSpan || !rules_.Inside(ParityBefore(edge))) return edge;
  // The inside was opened by the nearest edge that has an output.
  const Index opening = edges_.PreviousWithOutput(edge);
  return opening == kNone ? edge : opening;
}

template <class Output>
Index Sweep<Output>::NextInSpan(Index edge, std::size_t& active) noexcept {
  // Within a span, edges that have no output and are the same above and below do nothing.
  while (active < active_.size() && edges_[active_[active].edge].walkedAt == line_) ++active;
  const Index next = active < active_.size() ? active_[active].edge : kNone;
  if (next == kNone || edges_[edge].next == next) {
    return next == kNone ? edges_.NextWithOutput(edge) : next;
  }
  const Index other = edges_.NextWithOutput(edge);
  return other != kNone && edges_.Before(other, next) ? other : next;
}

template <class Output>
Index Sweep<Output>::NextToWalk(Index edge, std::size_t& active) noexcept {
  // Those of a bundle that do not speak for it bound nothing, unless they have just come to that.
  const auto isIdle = [&](Index at) {
    return at != kNone && edges_[at].tail && edges_[at].activeAt != line_;
  };
  if (!isIdle(edge)) return edge;
  edge = edges_[edge].next;
  if (!isIdle(edge)) return edge;
  const Index head = edges_.HeadOf(edge);
  while (active < active_.size() && edges_[active_[active].edge].walkedAt == line_) ++active;
  if (active == active_.size()) return head;
  const Index next = active_[active].edge;
  return edges_.Before(next, head) ? next : head;
}

template <class Output>
void Sweep<Output>::Classify() {
  edges_.Sort(active_);
  for (std::size_t i = 0; i < active_.size(); ++i) {
    const Index edge = active_[i].edge;
    if (edges_[edge].walkedAt != line_) WalkStretch(StretchBegin(edge), i);
  }
  for (const PlacedEdge& it : active_) edges_[it.edge].below = edges_[it.edge].above;
}

template <class Output>
void Sweep<Output>::WalkStretch(Index edge, std::size_t active) {
  // Between an edge that differs above and below and the next one behind which the parities are
  // equal again. Behind that nothing is open, and edges that are the same above and below stay what
  // they are.
  output_.BeginStretch();
  TypeMask above = ParityBefore(edge);
  TypeMask below = above;
  while (true) {
    ActiveEdge& it = edges_[edge];
    it.walkedAt = line_;
    it.parity = above;
    it.outputBelow = it.output;
    it.output = kNone;
    const TypeMask aboveRight = above ^ it.above;
    const TypeMask belowRight = below ^ it.below;
    if ((it.above | it.below) != 0) {
      const VertexClass vertexClass = rules_.Classify(below, belowRight, above, aboveRight);
      output_.AtLine(edge, vertexClass, XAt(it, line_, y_), y_);
    }
    above = aboveRight;
    below = belowRight;
    if (above != below) {
      edge = NextToWalk(it.next, active);
    } else if (Output::kNeedsSpan && rules_.Inside(above)) {
      edge = NextInSpan(edge, active);
      if (edge != kNone) above = below = ParityBefore(edge);
    } else {
      return;
    }
    if (edge == kNone) return;
  }
}

template <class Output>
void Sweep<Output>::PassBends() {
  if constexpr (!Output::kNeedsSpan) {
    for (const Index edge : bends_) {
      const ActiveEdge& it = edges_[edge];
      if (it.walkedAt == line_) continue;
      const unsigned right = it.parity ^ it.above;
      output_.AtBend(edge, rules_.Classify(it.parity, right, it.parity, right), y_);
    }
  }
}

template <class Output>
void Sweep<Output>::RemoveEnded() {
  for (const Index edge : ended_) {
    const Index next = edges_[edge].next;
    edges_.Remove(edge);
    watch_.Ask(next);
    AskJoinIfParallel(next);
  }
}

template <class Output>
void Sweep<Output>::Cross() {
  crossings_.Build(line_);
  while (const Crossing* const crossing = crossings_.Next()) CrossBundles(*crossing);
}

template <class Output>
void Sweep<Output>::CrossBundles(const Crossing& crossing) {
  const Index left = crossing.left;
  const Index right = crossing.right;
  const ActiveEdge& e0 = edges_[left];
  const ActiveEdge& e1 = edges_[right];
  const unsigned f0 = e0.above;
  const unsigned f1 = e1.above;
  if (f0 != 0 && f1 != 0) {
    const unsigned p0 = e0.parity;
    const unsigned p1 = e1.parity;
    const unsigned between = ((f0 & ~p0) | (f1 & p1) | (~(f0 | f1) & p0 & p1)) & 3U;
    // Below the crossing's point lies what is between the edges, above it what will be.
    const VertexClass vertexClass =
        rules_.Classify(between, between ^ f1, between ^ f0, between ^ f0 ^ f1);
    output_.AtCrossing(left, right, vertexClass, crossing.x, crossing.y + y_);
  }
  edges_[left].parity = static_cast<TypeMask>(e0.parity ^ f1);
  edges_[right].parity = static_cast<TypeMask>(e1.parity ^ f0);
  const Index leftFirst = edges_.FirstOfBundle(left);
  const Index rightFirst = e0.next;
  // Bundles that cancel out change places, too, or they would be out of order.
  edges_.Exchange(left, right);
  const Index before = edges_[rightFirst].previous;
  const Index behind = edges_.NextHead(left);
  watch_.Ask(right);
  watch_.Ask(left);
  watch_.Ask(behind);
  crossings_.Met(before, right);
  crossings_.Met(left, behind);
  AskJoinIfParallel(rightFirst);
  AskJoinIfParallel(leftFirst);
  AskJoinIfParallel(edges_[left].next);
}

template class Sweep<ContourOutput>;
template class Sweep<StripOutput>;

}  // namespace vlm::detail

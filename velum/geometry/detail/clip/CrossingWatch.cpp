#include <velum/geometry/detail/clip/CrossingTable.h>

#include <algorithm>

namespace vlm::detail {

CrossingWatch::CrossingWatch(const ClipTables& tables, ActiveEdges& edges)
    : tables_(tables),
      edges_(edges),
      asked_("ST insertion"),
      candidates_("ST insertion"),
      entries_("ST insertion"),
      beams_("ST insertion"),
      margin_(tables.Margin()) {
  beams_.Fill(tables.LineCount(), kNone);
}

ClipArray<Index>& CrossingWatch::Candidates(Index line) {
  candidates_.Clear();
  for (Index edge : asked_) {
    if (!edges_[edge].alive) continue;
    // The last edge of a bundle speaks for it, and is asked about whenever it is a new one.
    if (edges_[edge].tail && edges_[edge].joined) continue;
    edge = edges_.HeadOf(edge);
    ActiveEdge& right = edges_[edge];
    if (right.queuedAt == line) continue;
    right.queuedAt = line;
    const Index previous = edges_.PreviousHead(edge);
    right.pairBeam = previous == kNone ? kNone : FirstBeam(edges_[previous], right, line);
    if (right.pairBeam == line) {
      candidates_.Push(edge);
    } else if (right.pairBeam != kNone) {
      File(edge, right.pairBeam);
    }
  }
  asked_.Clear();
  // What was filed for this beam, unless it was asked about since.
  for (Index entry = beams_[line]; entry != kNone;) {
    const Index edge = entries_[entry].edge;
    const Index next = entries_[entry].next;
    if (edges_[edge].alive && edges_[edge].pairBeam == line && edges_[edge].queuedAt != line) {
      edges_[edge].queuedAt = line;
      candidates_.Push(edge);
    }
    entries_[entry].next = freeEntry_;
    freeEntry_ = entry;
    entry = next;
  }
  return candidates_;
}

void CrossingWatch::File(Index edge, Index beam) {
  Index entry = freeEntry_;
  if (entry == kNone) {
    entries_.Push({});
    entry = static_cast<Index>(entries_.size() - 1);
  } else {
    freeEntry_ = entries_[entry].next;
  }
  entries_[entry] = {edge, beams_[beam]};
  beams_[beam] = entry;
}

Index CrossingWatch::FirstBeam(const ActiveEdge& left, const ActiveEdge& right,
                               Index line) const noexcept {
  if (left.dx == right.dx) return kNone;
  // Each test is so put that no number at all asks for a look.
  const Index top = std::min(left.topLine, right.topLine);
  const double topY = tables_.Y(top);
  const double topGap = XAt(right, top, topY) - XAt(left, top, topY);
  if (top == line + 1) return topGap >= 0 ? kNone : line;
  if (topGap > margin_ && left.bottomX == right.bottomX && left.bottomY == right.bottomY &&
      left.dx < right.dx) {
    return kNone;
  }
  const double bottomY = tables_.Y(line);
  const double gap = XAt(right, line, bottomY) - XAt(left, line, bottomY);
  if (!(gap > 2 * margin_)) return topGap > margin_ && gap > margin_ ? kNone : line;
  if (topGap > margin_) return kNone;
  // The gap shrinks evenly: no crossing below the line at which it comes near the margin.
  const double near = bottomY + (gap - 2 * margin_) / (gap - topGap) * (topY - bottomY);
  return tables_.LineFrom(near - tables_.MarginY(), line + 1, top) - 1;
}

}  // namespace vlm::detail

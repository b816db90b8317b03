#pragma once

/// \file
/// Where edges cross: the watch over neighbours that may, and the table of the crossings in one
/// beam.

#include <velum/geometry/detail/clip/ActiveEdges.h>
#include <velum/geometry/detail/clip/ClipArray.h>
#include <velum/geometry/detail/clip/ClipTables.h>

#include <cstddef>

namespace vlm::detail {

/// A crossing of the bundles of two edges, the left one below it first.
struct Crossing {
  double y;  ///< Above the bottom of the beam.
  double x;
  Index left, right;
  Index order;        ///< The place in which it was found.
  Index nextWaiting;  ///< The next one of the same left edge that waits.
};

/// Watches neighbouring bundles, so that a beam looks only at those that may cross in it.
///
/// The edge behind, of each pair, keeps the beam in which to look; there the pair is looked at
/// exactly. A pair is asked about again when one of the two, or their neighbourhood, changes.
///
/// *Errors*: "ST insertion".
class CrossingWatch {
 public:
  CrossingWatch(const ClipTables& tables, ActiveEdges& edges);

  /// Asks again about the pair of the bundle of `edge` and that before it; kNone does nothing.
  void Ask(Index edge) {
    if (edge != kNone) asked_.Push(edge);
  }
  /// The edges that may cross the one before them in the beam above `line`, in no order; each is
  /// the last of its bundle.
  ///
  /// *Lifetime*: until the next call.
  [[nodiscard]] ClipArray<Index>& Candidates(Index line);
  /// Says that the first edges that were put off to these lines will be needed soon.
  void Prefetch(Index far, Index near) const noexcept {
    if (beams_[far] != kNone) edges_.Prefetch(entries_[beams_[far]].edge);
    if (beams_[near] == kNone) return;
    const Index left = edges_[entries_[beams_[near]].edge].previous;
    if (left != kNone) edges_.Prefetch(left);
  }
  /// How far apart two x may be in the wrong order.
  [[nodiscard]] double Margin() const noexcept { return margin_; }
  /// Allows for edges that stay in the wrong order by `distance`.
  void Allow(double distance) noexcept {
    if (4 * distance > margin_) margin_ = 4 * distance;
  }

 private:
  struct Entry {
    Index edge;
    Index next;
  };

  [[nodiscard]] Index FirstBeam(const ActiveEdge& left, const ActiveEdge& right,
                                Index line) const noexcept;
  void File(Index edge, Index beam);

  const ClipTables& tables_;
  ActiveEdges& edges_;
  ClipArray<Index> asked_;
  ClipArray<Index> candidates_;
  ClipArray<Entry> entries_;
  ClipArray<Index> beams_;
  Index freeEntry_ = kNone;
  double margin_;
};

/// The crossings of one beam.
///
/// *Errors*: "ST insertion", "IT insertion"; ERR_POLYGON_CLIPPING for a crossing at no finite
/// point.
class CrossingTable {
 public:
  /// Makes a table. Two edges that nearly coincide may be out of order by rounding, and then seem
  /// to cross outside of the beam; `inBeam` says whether such a crossing is moved to its bottom or
  /// top.
  CrossingTable(const ClipTables& tables, ActiveEdges& edges, CrossingWatch& watch, bool inBeam);

  /// Finds the crossings of the beam above `line` and sorts them.
  void Build(Index line);

  /// Gives the crossing to deal with next: the lowest of those whose bundles are neighbours, and of
  /// equal ones the first that was found. Rounding may put the crossings of three edges near one
  /// point in an order in which they can't happen.
  ///
  /// \return  null if there is none.
  /// *Errors*: ERR_POLYGON_CLIPPING if some remain and none of them can happen.
  [[nodiscard]] const Crossing* Next();
  /// Says that the bundle of `left` is now before that of `right`.
  void Met(Index left, Index right);

 private:
  /// An edge of the beam that crosses another one or is next to one that does, with its place in
  /// the order at the top of the beam as far as it is known.
  struct Sorted {
    double bottomX, topX;
    double dx;
    Index edge;
    Index previous, next;  ///< Edges.
    Index waiting;         ///< The first crossing that waits with this left edge.
  };

  void Collect(Index line);
  Index Enter(Index edge);
  Sorted& At(Index edge) { return sorted_[Enter(edge)]; }
  bool Sink(Index edge);
  void AddCrossing(const Sorted& left, const Sorted& right, double den);
  [[nodiscard]] bool Neighbours(const Crossing& crossing) const noexcept {
    return edges_.PreviousHead(crossing.right) == crossing.left;
  }
  void Wait(Index crossing);
  void RemoveWaiting(Index crossing);

  const ClipTables& tables_;
  ActiveEdges& edges_;
  CrossingWatch& watch_;
  const bool inBeam_;
  ClipArray<Sorted> sorted_;
  ClipArray<PlacedEdge> inverted_;
  ClipArray<Crossing> crossings_;
  ClipArray<Index> ready_;
  std::size_t next_ = 0;
  std::size_t waiting_ = 0;
  Index line_ = 0;
  double bottom_ = 0, top_ = 0, height_ = 0;
};

}  // namespace vlm::detail

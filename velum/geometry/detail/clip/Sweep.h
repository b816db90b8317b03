#pragma once

/// \file
/// The sweep over the scan lines of two polygons.
///
/// B. R. Vatti, "A generic solution to polygon clipping", 1992, is where the method comes from.
/// Parities and vertex classes tell the output what happens at each vertex. Here nothing is done
/// for an edge that crosses a scan line on which nothing happens to it: its x follows from its
/// ends, and its place, parity and output stay what they were.

#include <velum/geometry/detail/clip/ActiveEdges.h>
#include <velum/geometry/detail/clip/ClipArray.h>
#include <velum/geometry/detail/clip/ClipRules.h>
#include <velum/geometry/detail/clip/ClipTables.h>
#include <velum/geometry/detail/clip/ContourOutput.h>
#include <velum/geometry/detail/clip/CrossingTable.h>
#include <velum/geometry/detail/clip/StripOutput.h>

#include <cstddef>

namespace vlm::detail {

/// One run over the scan lines. `Output` is ContourOutput or StripOutput.
///
/// *Errors*: ERR_POLYGON_CLIPPING if an invariant is broken; memory.
/// *Cost*: for n vertices and k crossings about (n + k) log n, and the lengths of the horizontal
/// edges in edges that they cross. Edges that lie on each other count once, unless their x is
/// rounded: then each pair of neighbours counts on each scan line.
template <class Output>
class Sweep {
 public:
  Sweep(const ClipTables& tables, const ClipRules& rules);

  /// Sweeps all.
  void Run();
  /// What came out.
  [[nodiscard]] const Output& Result() const noexcept { return output_; }

 private:
  void AtLine();
  void Prefetch() const noexcept;
  // The steps of a scan line.
  void Rise();
  void InsertBounds();
  void JoinEdges();
  void Classify();
  void PassBends();
  void RemoveEnded();
  // The steps of a beam.
  void Cross();
  void CrossBundles(const Crossing& crossing);

  void Load(Index edge, Index bottom, Index top) noexcept;
  void MarkActive(Index edge);
  void AskJoin(Index edge);
  void AskJoinIfParallel(Index edge);
  [[nodiscard]] bool MayPart(const ActiveEdge& a, const ActiveEdge& b,
                             double distance) const noexcept;
  void Part(Index left, Index right);
  void Unite(Index left, Index right);
  void Bundle(Index edge);
  [[nodiscard]] TypeMask ParityBefore(Index edge) const noexcept;
  [[nodiscard]] Index StretchBegin(Index edge) noexcept;
  [[nodiscard]] Index NextInSpan(Index edge, std::size_t& active) noexcept;
  [[nodiscard]] Index NextToWalk(Index edge, std::size_t& active) noexcept;
  void WalkStretch(Index edge, std::size_t active);

  const ClipTables& tables_;
  const ClipRules rules_;
  ActiveEdges edges_;
  CrossingWatch watch_;
  CrossingTable crossings_;
  Output output_;

  ClipArray<Index> tops_;   // The first edge whose upper end stands on each scan line.
  ClipArray<Index> bends_;  // The edges that began here at the upper end of another one.
  ClipArray<Index> ended_;  // The edges that end here.
  ClipArray<Index> joins_;  // The edges that may join the one before them here, or part from it,
  ClipArray<Index> nextJoins_;    // and on the next scan line.
  ClipArray<Index> bundles_;      // Edges whose bundles have changed.
  ClipArray<PlacedEdge> active_;  // The edges that differ above and below the scan line.
  Index line_ = 0;
  double y_ = 0;
};

extern template class Sweep<ContourOutput>;
extern template class Sweep<StripOutput>;

}  // namespace vlm::detail

#pragma once

/// \file
/// The edges that cross the present beam, from left to right.

#include <velum/geometry/detail/clip/ClipArray.h>
#include <velum/geometry/detail/clip/ClipRules.h>

#include <cstddef>
#include <cstdint>

namespace vlm::detail {

/// A bound that is being swept, with its present edge.
///
/// Where an edge is at a given y follows from its ends alone, so nothing is stored for each beam.
struct alignas(64) ActiveEdge {
  double bottomX, bottomY;  ///< The lower end of the present edge.
  double dx;                ///< The change of x by y.
  double topX;              ///< x of the upper end, which stands on
  Index topLine;            ///< this scan line.
  Index previous, next;     ///< The neighbours.
  Index block;              ///< Where it stands, see ActiveEdges.
  Index output;   ///< The contour or strip that the edge adds to above the present scan line, or
                  ///< kNone.
  TypeMask type;  ///< The polygon of the edge.
  TypeMask below, above;  ///< The edges of its bundle, by polygon, on either side of the scan line.
  TypeMask parity;        ///< Of the last edge of a bundle: the parity to the left of the bundle,
                          ///< above the scan line.
  bool joined;            ///< It coincides with the edge before it: they are of one bundle.
  bool tail;              ///< The next edge is of the same bundle; the last one speaks for all.
  bool ended;             ///< The bound ends on the present scan line.
  bool alive;             ///< It is among the active ones.

  Index outputBelow;  ///< The output below the present scan line.
  Index vertex;       ///< The vertex at the upper end.
  Index begin, end;   ///< The vertices of the contour.
  Index nextTop;      ///< The next edge whose upper end stands on the same scan line.
  Index pairBeam;  ///< The beam in which to look whether it crosses the edge before it, or kNone.
  Index walkedAt;  ///< Scan lines and beams that dealt with it.
  Index activeAt;
  Index joinedAt;
  Index bundledAt;
  Index comparedAt;
  Index sortedAt;
  Index sortedPlace;  ///< Where the crossings of the beam keep it.
  Index queuedAt;
  bool forward;  ///< The way along the contour.
  bool exact;    ///< Its x is never rounded.
  bool same;     ///< It is joined, and its x is that of the edge before it on every scan line.
};

/// The x of an edge on a scan line.
[[nodiscard]] inline double XAt(const ActiveEdge& edge, Index line, double y) noexcept {
  if (line == edge.topLine) return edge.topX;
  if (y == edge.bottomY) return edge.bottomX;
  return edge.bottomX + edge.dx * (y - edge.bottomY);
}

/// An edge on its way to be sorted.
struct PlacedEdge {
  std::uint64_t place;
  Index edge;
};

/// The list of active edges.
///
/// It is linked, and there is a directory of blocks of up to 64 edges, which finds a place by its
/// x, tells which of two edges is the first, and finds the ends of a bundle. An edge has a number
/// that stays the same until it is removed.
///
/// *Errors*: "edge table creation". *Cost*: a bundle of n edges takes a step for each 64 blocks.
class ActiveEdges {
 public:
  ActiveEdges() noexcept;

  [[nodiscard]] ActiveEdge& operator[](Index edge) noexcept { return edges_[edge]; }
  [[nodiscard]] const ActiveEdge& operator[](Index edge) const noexcept { return edges_[edge]; }
  /// Says that an edge will be needed soon.
  void Prefetch(Index edge) const noexcept {
    const auto* const line = reinterpret_cast<const char*>(edges_.begin() + edge);
    __builtin_prefetch(line);
    __builtin_prefetch(line + 64);
  }
  /// A number for a new edge, which is not in the list yet.
  [[nodiscard]] Index Create();
  /// Puts an edge behind another one, or in front of all for kNone.
  void InsertBehind(Index place, Index edge);
  /// Takes an edge from the list and gives its number back.
  void Remove(Index edge) noexcept;

  /// The edge behind which one with this x and slope goes on a scan line: the one before the first
  /// that has a greater x, or an equal x and a greater slope; kNone for the front.
  ///
  /// \param from  Edges up to this one are known to stay in front; or kNone.
  /// \param margin  How far the x of two edges may be in the wrong order.
  [[nodiscard]] Index FindPlace(double x, double dx, Index line, double y, double margin,
                                Index from) const noexcept;

  /// Sorts edges from left to right.
  void Sort(ClipArray<PlacedEdge>& edges) const noexcept;

  /// Makes an edge one of the bundle of the edge before it, or the first of its own.
  ///
  /// \param same  See ActiveEdge.
  void Join(Index edge, bool joined, bool same) noexcept;
  /// The last edge of the bundle before that of `head`, or kNone.
  [[nodiscard]] Index PreviousHead(Index head) const noexcept {
    return edges_[FirstOfBundle(head)].previous;
  }
  /// The last edge of the bundle behind that of `head`, or kNone.
  [[nodiscard]] Index NextHead(Index head) const noexcept {
    const Index next = edges_[head].next;
    return next == kNone ? kNone : HeadOf(next);
  }
  /// The first edge of a bundle.
  [[nodiscard]] Index FirstOfBundle(Index edge) const noexcept {
    for (int i = 0; i < kSteps; ++i) {
      if (!edges_[edge].joined) return edge;
      edge = edges_[edge].previous;
    }
    return FarFirst(edge);
  }
  /// The last edge of a bundle.
  [[nodiscard]] Index HeadOf(Index edge) const noexcept {
    for (int i = 0; i < kSteps; ++i) {
      if (!edges_[edge].tail) return edge;
      edge = edges_[edge].next;
    }
    return FarLast(edge, &Block::joined, kAllJoined);
  }
  /// The types of the edges of a bundle, each polygon's edges modulo two; by the last edge.
  [[nodiscard]] TypeMask TypesOfBundle(Index head) const noexcept;
  /// The nearest edge behind another one that has an output, or kNone. Who gives an edge an output
  /// says so by Wake().
  [[nodiscard]] Index NextWithOutput(Index edge) noexcept;
  /// The nearest edge before another one that has an output, or kNone.
  [[nodiscard]] Index PreviousWithOutput(Index edge) noexcept;
  /// Says that an edge has an output.
  void Wake(Index edge) noexcept { blocks_[edges_[edge].block].silent = false; }
  /// True if one edge is to the left of another.
  [[nodiscard]] bool Before(Index left, Index right) const noexcept {
    return PlaceOf(left) < PlaceOf(right);
  }

  /// Lets two neighbouring bundles change places; each is given by its last edge.
  void Exchange(Index left, Index right);

 private:
  static constexpr Index kBlockSize = 64;
  static constexpr int kSteps = 4;  // This near, a link is faster than a block.
  /// A run of edges. Behind `count` there is kNone, or no bit.
  struct Block {
    Index count;
    Index rank;            ///< The place in the directory.
    bool silent;           ///< None of the edges is known to have an output.
    std::uint64_t joined;  ///< The edges that are joined, a bit each,
    std::uint64_t same;    ///< that are the same as the one before,
    std::uint64_t clip;    ///< and that are of each of the polygons.
    std::uint64_t subject;
    Index edges[kBlockSize];

    [[nodiscard]] std::uint64_t All() const noexcept { return ~std::uint64_t{0} >> (64 - count); }
  };
  /// What all edges of a block have, in a row in the order of the directory. The two lowest bits
  /// are types as `TypesOfBundle` gives them.
  using Summary = std::uint8_t;
  static constexpr Summary kTypes = 3, kAllJoined = 4, kAllSame = 8;

  [[nodiscard]] static Index PlaceIn(const Block& block, Index edge) noexcept;
  [[nodiscard]] std::uint64_t PlaceOf(Index edge) const noexcept {
    const Block& block = blocks_[edges_[edge].block];
    return std::uint64_t{block.rank} << 32 | PlaceIn(block, edge);
  }
  [[nodiscard]] bool Silence(Block& block) noexcept;
  void ExchangeEdges(Index left, Index right) noexcept;
  void Unlink(Index edge) noexcept;
  void Link(Index place, Index edge);
  void Summarize(const Block& block, int types) noexcept;
  [[nodiscard]] Index FarFirst(Index edge) const noexcept;
  [[nodiscard]] Index FarLast(Index edge, std::uint64_t Block::*chain, Summary all) const noexcept;
  void AddToBlock(Index block, Index place, Index edge);
  void TakeFromBlock(Index block, Index edge) noexcept;
  Index NewBlock(Index rank);
  void Split(Index block);

  ClipArray<ActiveEdge> edges_;
  ClipArray<Index> freeEdges_;
  ClipArray<Block> blocks_;
  ClipArray<Index> freeBlocks_;
  ClipArray<Index> directory_;
  ClipArray<Summary> summaries_;
  Index first_ = kNone;
};

}  // namespace vlm::detail

#pragma once

/// \file
/// A sweep over the edges of rings that finds where they cross, and otherwise gives the pieces of
/// edges that bound their area.

#include <velum/geometry/PolygonRings.h>
#include <velum/geometry/Vec2.h>

#include <boost/intrusive/set.hpp>

#include <cstdint>
#include <deque>
#include <vector>

namespace vlm::detail {

/// Runs from the least point to the greatest, in the order of x and then y. What is "below" at a
/// point is what a vertical line meets below it; a vertical edge runs upwards. The edges that are
/// under way are kept from the lowest to the highest as strands: a strand is all edges that lie on
/// each other, up to the next point that lies on them, where it ends and others begin.
///
/// As long as no two edges cross, strands never change places, so that the sweep never computes a
/// point: all its decisions are orientations of three given points, which are exact. Neighbours are
/// tested for a crossing when they become neighbours, as Shamos and Hoey (1976) do it.
class RingSweep {
 public:
  /// No piece, point or strand.
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  /// A stretch of one or several edges that lie on each other.
  struct Piece {
    std::uint32_t start = kNone;  ///< The lesser end: an index of `Points()`.
    std::uint32_t end = kNone;    ///< The greater end.
    std::uint32_t below = kNone;  ///< The nearest boundary below the start, a piece.
    std::uint32_t next = kNone;   ///< The boundary that follows, if this is one.
    bool isBoundary = false;      ///< True if the area is on one side only.
    bool isAreaBelow = false;     ///< True for a boundary with the area below it.
  };

  /// Runs over all rings.
  ///
  /// *Errors*: see `PrepareRings`.
  explicit RingSweep(const MultiPolygon2d& polygons);

  /// Tells whether the rings meet nowhere, run the right way round and are closed.
  [[nodiscard]] bool IsClean() const noexcept { return isClean_; }
  /// The different points, in order.
  [[nodiscard]] const std::vector<Vec2d>& Points() const noexcept { return points_; }
  /// The pieces, in the order in which they start, the lower ones first. The boundaries are linked
  /// to closed ways, with the area on the right, that turn as far to the right as they can.
  [[nodiscard]] const std::vector<Piece>& Pieces() const noexcept { return pieces_; }

 private:
  struct Edge {
    std::uint32_t left;          // Its lesser point.
    std::uint32_t right;         // Its greater point.
    std::uint32_t passageLeft;   // The way of the ring through its lesser point.
    std::uint32_t passageRight;  // The way of the ring through its greater point.
    int direction;               // 1 if the ring holds what is below it, -1 for what is above.
  };
  struct Strand : boost::intrusive::set_base_hook<> {
    std::uint32_t edge = kNone;       // The edge that ends first.
    std::vector<std::uint32_t> more;  // The others, a heap.
    std::uint32_t piece = kNone;
    int direction = 0;  // The sum over all edges.
    int below = 0;      // How many more outer than inner rings hold what is below.
  };
  // Strands are put where they belong, and never compared with each other.
  struct Unordered {
    bool operator()(const Strand&, const Strand&) const noexcept { return false; }
  };
  using Strands = boost::intrusive::set<Strand, boost::intrusive::compare<Unordered>>;
  // What goes on from the present point: an edge, or what is left of a strand.
  struct Start {
    std::uint32_t edge;
    Strand* strand;
  };
  // A piece that ends or starts at the present point.
  struct Spoke {
    std::uint32_t piece;
    std::uint32_t passage;  // kNone if several edges lie on each other.
    bool isRight;           // True if it starts here.
  };

  void AddRing(const Ring2d& ring, bool isOuter);
  void SortPoints();
  void SortEdges();
  void Visit(std::uint32_t point);
  Strands::iterator FindStrands(std::uint32_t point);
  void EndStrand(Strand& strand, std::uint32_t point);
  void SortStarts(std::uint32_t point);
  void BeginStrand(Strand& strand, std::uint32_t point, const Strand* lower);
  void AddEdge(Strand& strand, std::uint32_t edge);
  void RemoveEdge(Strand& strand);
  Strand& NewStrand();
  void TestNeighbours(const Strand* lower, const Strand* upper) const;
  void TestPassages();
  void LinkBoundaries();
  [[nodiscard]] int Side(const Strand& strand, const Vec2d& p) const noexcept;
  [[nodiscard]] std::uint32_t Passage(const Strand& strand, std::uint32_t point) const noexcept;

  bool isClean_ = true;
  std::vector<Vec2d> points_;
  std::vector<Piece> pieces_;
  std::vector<Edge> edges_;               // In the order of their lesser points.
  std::vector<std::uint32_t> firstEdge_;  // Of each point, where its edges start.
  std::vector<Strand*> strandEndingAt_;   // Of each point, one that ends there if any does.
  std::deque<Strand> store_;
  std::vector<Strand*> free_;
  Strands strands_;
  std::uint32_t passages_ = 0;  // The vertices of all rings, each a passage; edges follow.

  // What the present point takes; kept for their memory.
  std::vector<Strand*> found_;
  std::vector<Start> starts_;
  std::vector<Spoke> spokes_;  // Counter-clockwise, from straight down.
  std::vector<std::uint32_t> ways_;
  std::vector<std::uint32_t> open_;
};

}  // namespace vlm::detail

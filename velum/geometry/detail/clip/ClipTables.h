#pragma once

/// \file
/// What a sweep reads: the vertices that matter, the scan lines through them, and the bounds that
/// rise from each local minimum.

#include <velum/geometry/Gpc.h>
#include <velum/geometry/detail/clip/ClipArray.h>
#include <velum/geometry/detail/clip/ClipRules.h>

#include <cstddef>

namespace vlm::detail {

/// The vertex that follows one of a contour's vertices from `begin` up to `end`, on either way
/// round.
[[nodiscard]] inline Index NextAround(Index vertex, Index begin, Index end, bool forward) noexcept {
  if (forward) return vertex + 1 == end ? begin : vertex + 1;
  return vertex == begin ? end - 1 : vertex - 1;
}

/// A run of edges that rises from a local minimum: the vertices from `vertex` on, forward or
/// backward along their contour, as long as y grows.
struct ClipBound {
  double x;       ///< Of the lowest vertex.
  double dx;      ///< The change of x by y of the lowest edge.
  Index vertex;   ///< The lowest vertex.
  Index begin;    ///< The first vertex of the contour,
  Index end;      ///< and behind its last.
  Index order;    ///< The place in which it was found.
  bool forward;   ///< The way along the contour.
  TypeMask type;  ///< The polygon it belongs to.
};

/// The vertices, scan lines and bounds of the enabled contours of two polygons.
///
/// A vertex is dropped where its y is that of both its neighbours, so runs of horizontal edges are
/// one. Scan lines are counted from 0 in the order of their y.
class ClipTables {
 public:
  ClipTables();

  /// Adds the contours of a polygon.
  void Add(const gpc_polygon& polygon, const ClipArray<bool>& enabled, TypeMask type);
  /// Sorts what was added.
  void Sort();

  /// How many vertices were kept.
  [[nodiscard]] std::size_t VertexCount() const noexcept { return vertices_.size(); }
  /// A kept vertex.
  [[nodiscard]] const gpc_vertex& Vertex(Index vertex) const noexcept { return vertices_[vertex]; }
  /// The scan line of a kept vertex.
  [[nodiscard]] Index Line(Index vertex) const noexcept { return lineOf_[vertex]; }
  /// Says that a vertex and its neighbours will be needed soon.
  void Prefetch(Index vertex) const noexcept {
    __builtin_prefetch(vertices_.begin() + vertex);
    __builtin_prefetch(lineOf_.begin() + vertex);
  }
  /// How many scan lines there are.
  [[nodiscard]] Index LineCount() const noexcept { return static_cast<Index>(lines_.size()); }
  /// The y of a scan line.
  [[nodiscard]] double Y(Index line) const noexcept { return lines_[line]; }
  /// The first scan line from `from` to `to` that is not below y; `to` if there is none.
  [[nodiscard]] Index LineFrom(double y, Index from, Index to) const noexcept;
  /// The bounds that start on a scan line, by x, then by slope, then as they were found.
  [[nodiscard]] const ClipBound* BoundsBegin(Index line) const noexcept {
    return bounds_.begin() + firstBound_[line];
  }
  [[nodiscard]] const ClipBound* BoundsEnd(Index line) const noexcept {
    return bounds_.begin() + firstBound_[line + 1];
  }
  /// How far apart two x that are computed may be in the wrong order: a bound of the rounding
  /// errors; infinite if coordinates are so large, or edges so flat, that there is none.
  [[nodiscard]] double Margin() const noexcept { return margin_; }
  /// True if the x of an edge of this slope is computed without rounding on every scan line:
  /// coordinates and slope have few digits.
  [[nodiscard]] bool IsExact(double dx) const noexcept { return digits_ < 52 && HasFewDigits(dx); }
  /// A bound of the rounding errors of a y that is computed.
  [[nodiscard]] double MarginY() const noexcept { return marginY_; }

 private:
  void Keep(const gpc_vertex_list& contour);
  void FindBounds(Index begin, Index end, TypeMask type);
  void PushBound(Index vertex, Index next, Index begin, Index end, bool forward, TypeMask type);
  void SortLines();
  void SortBounds();
  void SortMinimum(ClipBound* first, ClipBound* last) const noexcept;
  [[nodiscard]] double SlopeOf(const ClipBound& bound) const noexcept;
  [[nodiscard]] bool HasFlatEdge() const noexcept;
  void FindMargins() noexcept;
  void FindDigits() noexcept;
  [[nodiscard]] bool HasFewDigits(double dx) const noexcept;

  ClipArray<gpc_vertex> vertices_;
  ClipArray<Index> lineOf_;
  ClipArray<double> lines_;
  ClipArray<ClipBound> bounds_;
  ClipArray<Index> firstBound_;
  double margin_ = 0;
  double marginY_ = 0;
  int digits_ = 0;
};

}  // namespace vlm::detail

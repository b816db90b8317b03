#pragma once

/// \file
/// The triangle strips of a result while the sweep makes them.

#include <velum/geometry/Gpc.h>
#include <velum/geometry/detail/clip/ActiveEdges.h>
#include <velum/geometry/detail/clip/ClipArray.h>
#include <velum/geometry/detail/clip/ClipRules.h>

#include <cstddef>

namespace vlm::detail {

/// Strips that grow upward between a left and a right edge, and what each class of vertex does to
/// them.
///
/// A strip is two chains of vertices, one for each side. Both edges of its span add to it.
///
/// *Errors*: "tristrip node creation", "vertex node creation"; ERR_POLYGON_CLIPPING where a strip
/// or an edge is missing.
class StripOutput {
 public:
  /// Steps need the edge that opened the inside to their left.
  static constexpr bool kNeedsSpan = true;

  /// \param expected  About how many vertices will come.
  StripOutput(ActiveEdges& edges, std::size_t expected)
      : edges_(edges), strips_("tristrip node creation"), vertices_("vertex node creation") {
    vertices_.Reserve(expected);
  }

  /// Starts on a stretch of a scan line, where nothing is open.
  void BeginStretch() noexcept {
    open_ = kNone;
    setter_ = VertexClass::kNull;
  }
  /// Deals with the vertex of an edge on a scan line.
  void AtLine(Index edge, VertexClass vertexClass, double x, double y);
  /// Deals with a crossing of the bundles of two edges.
  void AtCrossing(Index left, Index right, VertexClass vertexClass, double x, double y);

  /// Makes the strips of more than two vertices, the oldest first.
  ///
  /// *Errors*: "tristrip creation", "tristrip vertex creation".
  void Write(gpc_tristrip& result) const;

 private:
  struct Chain {
    Index head, tail;
  };
  struct Strip {
    Chain left, right;
    Index count;
  };
  struct Vertex {
    double x, y;
    Index next;
  };

  [[nodiscard]] ActiveEdge& Open(int line);
  void AtRightEdge(ActiveEdge& it, double x, double y);
  void FinishLeftEdge(double y);
  void Append(Chain& chain, double x, double y);
  void AddLeft(Index strip, double x, double y);
  void AddRight(Index strip, double x, double y);
  [[nodiscard]] bool LeftEndsAt(Index strip, double x, double y) const noexcept;
  [[nodiscard]] Index Begin(double x, double y);
  [[nodiscard]] ActiveEdge& NearestBefore(Index edge);
  [[nodiscard]] ActiveEdge& NearestBehind(Index edge);
  void AtInnerCrossing(Index left, Index right, VertexClass vertexClass, double x, double y);

  ActiveEdges& edges_;
  ClipArray<Strip> strips_;
  ClipArray<Vertex> vertices_;
  Index open_ = kNone;
  double openX_ = 0;
  VertexClass setter_ = VertexClass::kNull;
};

}  // namespace vlm::detail

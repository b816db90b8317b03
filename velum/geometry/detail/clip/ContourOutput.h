#pragma once

/// \file
/// The contours of a result while the sweep makes them.

#include <velum/geometry/Gpc.h>
#include <velum/geometry/detail/clip/ActiveEdges.h>
#include <velum/geometry/detail/clip/ClipArray.h>
#include <velum/geometry/detail/clip/ClipRules.h>

#include <cstddef>

namespace vlm::detail {

/// Contours that grow at both ends and merge, and what each class of vertex does to them.
///
/// A contour is a chain of vertices. An edge to the left of the inside adds at its head, one to the
/// right at its tail. Merged contours stand for one another; the number of any of them will do.
///
/// *Errors*: "polygon node creation", "vertex node creation"; ERR_POLYGON_CLIPPING where a contour
/// is missing.
class ContourOutput {
 public:
  /// No step needs the edge that opened the inside to its left.
  static constexpr bool kNeedsSpan = false;

  /// \param expected  About how many vertices will come.
  ContourOutput(ActiveEdges& edges, std::size_t expected)
      : edges_(edges), contours_("polygon node creation"), vertices_("vertex node creation") {
    vertices_.Reserve(expected);
  }

  /// Starts on a stretch of a scan line, where nothing is open.
  void BeginStretch() noexcept;
  /// Deals with the vertex of an edge on a scan line.
  void AtLine(Index edge, VertexClass vertexClass, double x, double y);
  /// Deals with a vertex between two edges of a bound, where nothing else happens.
  void AtBend(Index edge, VertexClass vertexClass, double y);
  /// Deals with a crossing of the bundles of two edges.
  void AtCrossing(Index left, Index right, VertexClass vertexClass, double x, double y);

  /// Makes the contours of more than two vertices, the newest first.
  ///
  /// *Errors*: "contour creation", "hole flag table creation", "vertex creation".
  void Write(gpc_polygon& result) const;

 private:
  struct Contour {
    Index head, tail;
    Index proxy;  ///< The contour that stands for this one; itself if it stands for itself.
    Index count;
    bool hole;
  };
  struct Vertex {
    double x, y;
    Index next;
  };

  [[nodiscard]] Index Proxy(Index contour);
  void AddLeft(Index contour, double x, double y);
  void AddRight(Index contour, double x, double y);
  void MergeLeft(Index from, Index into);
  void MergeRight(Index from, Index into);
  [[nodiscard]] Index Begin(double x, double y);
  [[nodiscard]] bool Moved(double x) noexcept;
  void AddLeftIfMoved(double x, double y) {
    if (Moved(x)) AddLeft(open_, x, y);
  }
  void AddRightIfMoved(double x, double y) {
    if (Moved(x)) AddRight(open_, x, y);
  }

  ActiveEdges& edges_;
  ClipArray<Contour> contours_;
  ClipArray<Vertex> vertices_;
  Index open_ = kNone;
  double lastX_ = 0;
};

}  // namespace vlm::detail

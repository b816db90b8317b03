#pragma once

/// \file
/// Open paths of the plane.
///
///     vlm::GPolyline curve(vlm::Vec2d(0, 0), vlm::Vec2d(0, 1), vlm::Vec2d(1, 1), vlm::Vec2d(1, 0),
///                          5);  // a Bezier curve as 32 segments
///     curve.ThinByAngularDeviation(0.1);
///     vlm::Box2d box = curve.GetBBox();

#include <velum/core/Api.h>
#include <velum/geometry/Box2.h>
#include <velum/platform/Types.h>

#include <cstddef>
#include <vector>

namespace vlm {

/// An open path and the box about it. A vertex that lies on one line with the two before it takes
/// the place of the last one, so that straight runs keep their ends only.
///
/// A value, but one to derive from: its destructor is virtual.
///
/// The box covers every point that was ever appended since the path was empty, also those that have
/// been replaced.
///
/// Threads: an object belongs to one thread at a time.
///
/// *Errors*: `std::bad_alloc` where vertices can't be kept; the path then holds those that were
/// appended before.
class VELUM_API GPolyline {
 public:
  /// Makes the empty path, with the empty box.
  GPolyline() noexcept {}
  /// Makes a path of points, as `Append` appends them.
  GPolyline(const Vec2d* points, unsigned count) { Append(points, count); }
  /// Makes a path of integer points, as `Append` appends them.
  GPolyline(const tagPOINT* points, unsigned count) { Append(points, count); }
  /// Makes the empty path.
  GPolyline(std::nullptr_t, unsigned) noexcept {}
  /// Makes a path along a cubic Bezier curve, as `Append` appends it.
  GPolyline(const Vec2d& a, const Vec2d& b, const Vec2d& c, const Vec2d& d, int depth) {
    Append(a, b, c, d, depth);
  }
  /// Copies vertices and box as they are.
  GPolyline(const GPolyline& other) : vertices_(other.vertices_), box_(other.box_) {}
  virtual ~GPolyline();

  /// Returns the number of vertices.
  [[nodiscard]] unsigned GetNumVertices() const noexcept {
    return static_cast<unsigned>(vertices_.size());
  }
  /// Returns a vertex; the index is not checked.
  [[nodiscard]] const Vec2d& operator[](unsigned index) const noexcept { return vertices_[index]; }
  /// Returns the box about all points appended.
  [[nodiscard]] const Box2d& GetBBox() const noexcept { return box_; }
  /// Copies the vertices to `out`, unless it is null, and returns their number.
  unsigned GetVertices(Vec2d* out) const noexcept;
  /// Copies the vertices, rounded half away from zero, to `out`, unless it is null, and returns
  /// their number. A coordinate beyond the integers gives the nearest one, NaN gives 0.
  unsigned GetVertices(tagPOINT* out) const noexcept;
  /// Returns the number of vertices.
  unsigned GetVertices(std::nullptr_t) const noexcept { return GetNumVertices(); }
  /// Replaces `out` by the vertices and returns their number.
  unsigned GetVertices(std::vector<Vec2d>& out) const;
  /// Replaces `out` by the vertices, rounded as in the form for an array, and returns their number.
  unsigned GetVertices(std::vector<tagPOINT>& out) const;

  /// Removes all vertices and empties the box; the memory is kept.
  void Empty() noexcept;
  /// Appends points, which must not be the path's own.
  ///
  /// - A point equal to the only vertex is dropped.
  /// - A point on one line with the last two vertices (see `GAreCollinear`) replaces the last one:
  ///   a path that turns back along itself loses the tip of the turn.
  /// - `points` null: nothing.
  void Append(const Vec2d* points, unsigned count);
  /// Appends integer points.
  void Append(const tagPOINT* points, unsigned count);
  /// Appends nothing.
  void Append(std::nullptr_t, unsigned) noexcept {}
  /// Appends the point `a` and the cubic Bezier curve from `a` to `d` with the control points `b`
  /// and `c`, as `SubDivideGBez` divides it.
  void Append(const Vec2d& a, const Vec2d& b, const Vec2d& c, const Vec2d& d, int depth);
  /// Appends a cubic Bezier curve without its start: 2 to the power `depth` segments, from halving
  /// it so often, of which those on one line become one.
  ///
  /// - `depth` below 1: as 1. Above 20, which gives a million segments: as 20.
  void SubDivideGBez(const Vec2d& a, const Vec2d& b, const Vec2d& c, const Vec2d& d, int depth);
  /// Keeps the vertices where the path changes direction by more than `radians`, see
  /// `GThinByAngularDeviation`. The box becomes that of the vertices kept.
  ///
  /// *Errors*: `ERR_OUT_OF_MEMORY`, with the path as it was.
  void ThinByAngularDeviation(double radians);
  /// Keeps the vertices where the path turns back in x or in y, see `GThinToMinimalDetail`. The box
  /// becomes that of the vertices kept.
  ///
  /// *Errors*: `ERR_OUT_OF_MEMORY`, with the path as it was.
  void ThinToMinimalDetail();

  /// Copies vertices and box as they are.
  GPolyline& operator=(const GPolyline& other);

 private:
  [[gnu::visibility("hidden")]] void AppendPoint(const Vec2d& p);
  [[gnu::visibility("hidden")]] void Divide(Vec2d a, Vec2d b, Vec2d c, Vec2d d, int depth);
  [[gnu::visibility("hidden")]] void Replace(const std::vector<Vec2d>& points);

  std::vector<Vec2d> vertices_;
  Box2d box_;
};

/// Appends the vertices of each path to `points` and their number to `counts`: the form in which
/// clippers and polygons take several paths.
VELUM_API void GPolylineVectorToPolyPolyline(const std::vector<GPolyline>& polylines,
                                             std::vector<Vec2d>& points,
                                             std::vector<unsigned>& counts);

}  // namespace vlm

#pragma once

/// \file
/// GPolygon2d: polygons with holes that stay holes, in the types of Boost.Geometry.
///
///     vlm::GPolygon2d island(0, 0, 60, 40);
///     island.Difference(vlm::GPolygon2d(20, 10, 50, 30));
///     vlm::MultiPolygon2d rings;
///     island.GetMultiPolygon(rings);
///     std::size_t lakes = rings[0].inners().size();  // 1

#include <velum/core/Api.h>
#include <velum/files/Forward.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/PolygonRings.h>
#include <velum/geometry/Vec2.h>
#include <velum/platform/Types.h>

#include <cstddef>
#include <vector>

namespace vlm {

/// Polygons of one outer ring and any inner rings each, and the box around the outer rings.
///
/// A value that owns its rings. What comes in as contours becomes outer rings, closed and
/// clockwise; inner rings arise from operations, and from multi-polygons and files, whose rings are
/// taken as they are. Separate objects may be used on separate threads.
///
/// **What set operations take.** An operand's area is what lies in more of its outer than of its
/// inner rings, whichever way they run. Rings may touch in points, share edges, lie in each other,
/// repeat points and hold paths of no width: where they do, the operation works on rings that bound
/// the same area and meet in points at most. What is refused, exactly and in O(n log n):
/// - edges that cross, of one ring or of two, and ways through a common point that cross there;
/// - an inner ring, or part of one, outside of all outer rings;
/// - a coordinate that is not a finite number.
///
/// Crossing points are rounded. Where rings of the result would cross by a hair for that, their
/// points are moved onto a grid: a result is always a good operand. *Cost*: that of the clipper of
/// Gpc.h.
///
/// Where the result is in `POINT`, coordinates are rounded half away from zero and limited to 32
/// bits; NaN gives 0.
///
/// *Errors*: the set operations throw `boost::geometry::overlay_invalid_input_exception` for what
/// is refused, before anything is changed. `ERR_OUT_OF_MEMORY` if memory for arrays of points
/// fails, `std::bad_alloc` elsewhere; `ERR_INTERNAL` for a null array that should hold something.
/// Unless told otherwise a call that throws leaves the polygon as it was.
class VELUM_API GPolygon2d {
 public:
  /// Takes the vertices of one strip; see `GPolygon::DecomposeCallback`.
  using DecomposeCallback = bool (*)(const Vec2d* points, unsigned int count, void* userData);

  /// Makes an empty polygon, with an empty box.
  GPolygon2d();
  /// Makes a polygon of one contour, see `InitRing`.
  GPolygon2d(const Vec2d* points, unsigned int count);
  /// The same for integer points.
  GPolygon2d(const POINT* points, unsigned int count);
  /// The same for no points.
  GPolygon2d(std::nullptr_t, unsigned int count)
      : GPolygon2d(static_cast<const Vec2d*>(nullptr), count) {}
  /// Makes one polygon of each contour, see `InitMultiPolygon`.
  GPolygon2d(const Vec2d* points, const unsigned int* counts, unsigned int contourCount);
  /// The same for integer points.
  GPolygon2d(const POINT* points, const unsigned int* counts, unsigned int contourCount);
  /// The same for no points.
  GPolygon2d(std::nullptr_t, const unsigned int* counts, unsigned int contourCount)
      : GPolygon2d(static_cast<const Vec2d*>(nullptr), counts, contourCount) {}
  /// Makes a rectangle of the vertices (x0, y0), (x1, y0), (x1, y1), (x0, y1), closed and
  /// clockwise.
  GPolygon2d(double x0, double y0, double x1, double y1);
  /// Makes a rectangle from left, top, right and bottom.
  GPolygon2d(const RECT& rectangle);
  /// Copies a multi-polygon as it is.
  GPolygon2d(const MultiPolygon2d& multiPolygon);
  /// Makes one polygon of each contour, closed and clockwise. Hole flags are dropped.
  GPolygon2d(const GPolygon& polygon);
  /// Copies all rings.
  GPolygon2d(const GPolygon2d& polygon);
  /// Takes over all rings of another polygon, which is left empty.
  GPolygon2d(GPolygon2d&& polygon) noexcept;
  /// Copies all rings.
  GPolygon2d& operator=(const GPolygon2d& polygon);
  /// Takes over all rings of another polygon, which is left empty.
  GPolygon2d& operator=(GPolygon2d&& polygon) noexcept;
  ~GPolygon2d();

  /// Returns the box around all outer rings; the empty box if there are none.
  [[nodiscard]] const Box2d& GetBBox() const noexcept { return box_; }
  /// Returns the number of rings, outer and inner ones.
  [[nodiscard]] unsigned int GetNumContours() const noexcept;
  /// Returns the number of points of a ring without its closing point; rings count as in
  /// `GetPolyPolygon`.
  ///
  /// *Errors*: `ERR_INTERNAL` if there is no ring `i`.
  [[nodiscard]] unsigned int GetContourVertexCount(unsigned int i) const;
  /// Returns the number of all points without the closing ones.
  [[nodiscard]] unsigned int GetTotalVertexCount() const noexcept;
  /// Copies the polygons into a multi-polygon.
  void GetMultiPolygon(MultiPolygon2d& multiPolygon) const;

  /// Copies the points of all rings, for each polygon the outer ring and then the inner ones, and
  /// how many that are for each ring. Without `close` the closing points are left out. Gives the
  /// number of all points; a null `points` only counts, and then `counts` is left alone. `counts`
  /// may be null.
  unsigned int GetPolyPolygon(Vec2d* points, unsigned int* counts, bool close) const;
  /// The same in integers.
  unsigned int GetPolyPolygon(POINT* points, unsigned int* counts, bool close) const;
  /// Only counts.
  unsigned int GetPolyPolygon(std::nullptr_t, unsigned int* counts, bool close) const;
  /// Replaces two vectors by the same.
  void GetPolyPolygon(std::vector<Vec2d>& points, std::vector<unsigned int>& counts,
                      bool close) const;
  /// The same in integers.
  void GetPolyPolygon(std::vector<POINT>& points, std::vector<unsigned int>& counts,
                      bool close) const;

  /// Copies all rings as one closed path, as `GetLegacyMultiPolygonAsSinglePolygon` does.
  unsigned int GetPolygon(Vec2d* points) const;
  /// The same in integers.
  unsigned int GetPolygon(POINT* points) const;
  /// Only counts.
  unsigned int GetPolygon(std::nullptr_t) const;
  /// Replaces a vector by the same.
  void GetPolygon(std::vector<Vec2d>& points) const;
  /// The same in integers.
  void GetPolygon(std::vector<POINT>& points) const;

  /// Tells whether a point is inside one of the polygons. One on a ring is not, except that a later
  /// polygon may hold it while it lies outside the earlier ones. A ring of fewer than 4 points
  /// holds nothing.
  [[nodiscard]] bool PointInside(const Vec2d& point) const noexcept;
  /// Tells whether the polygon is one outer ring of five points that runs round its own box. `box`,
  /// unless it is null, gets that box.
  bool IsRectangle(Box2d* box = nullptr) const;
  /// Hands the outer rings over as triangle strips: `GPolygon::Decompose` of `GPolygon(*this)`, so
  /// that holes are filled.
  ///
  /// *Errors*: as there.
  bool Decompose(DecomposeCallback callback, void* userData) const;

  /// Replaces the polygon by a copy of a multi-polygon, as it is.
  void Construct(const MultiPolygon2d& multiPolygon);
  /// Appends one polygon for each contour, closed and clockwise; the box grows to hold them.
  void AddContours(const Vec2d* points, const unsigned int* counts, unsigned int contourCount);
  /// The same for integer points.
  void AddContours(const POINT* points, const unsigned int* counts, unsigned int contourCount);
  /// The same for no points.
  void AddContours(std::nullptr_t, const unsigned int* counts, unsigned int contourCount) {
    AddContours(static_cast<const Vec2d*>(nullptr), counts, contourCount);
  }
  /// Appends the polygons of another. It may be this one.
  void AddContours(const GPolygon2d& other);
  /// Removes all polygons.
  void MakeEmpty() noexcept;

  /// Reduces the polygon to what lies in both.
  void Intersection(const GPolygon2d& other);
  /// Reduces the polygon to what lies in a box, as a ring of its four corners: it makes no
  /// difference which way round they stand.
  void Intersection(const Box2d& box);
  /// The same for the numbers of a box in braces.
  void Intersection(const double (&box)[4]) { Intersection(Box2d(box[0], box[1], box[2], box[3])); }
  /// Adds what lies in the other polygon.
  void Union(const GPolygon2d& other);
  /// Removes what lies in the other polygon.
  void Difference(const GPolygon2d& other);
  /// Keeps what lies in this one only, and appends what lies in the other only. The two are not
  /// merged, so that they may share edges.
  void XOR(const GPolygon2d& other);
  /// Sets `result` to what lies in both. Here and below `result` may be one of the operands, which
  /// then stays as it was after an error; any other is empty.
  void Intersection(const GPolygon2d& other, GPolygon2d& result) const;
  /// Sets `result` to what lies in a box.
  void Intersection(const Box2d& box, GPolygon2d& result) const;
  /// The same for the numbers of a box in braces.
  void Intersection(const double (&box)[4], GPolygon2d& result) const {
    Intersection(Box2d(box[0], box[1], box[2], box[3]), result);
  }
  /// Sets `result` to what lies in either.
  void Union(const GPolygon2d& other, GPolygon2d& result) const;
  /// Sets `result` to what lies in this one only.
  void Difference(const GPolygon2d& other, GPolygon2d& result) const;
  /// Sets `result` to what lies in one of them only, as `XOR` in place does.
  void XOR(const GPolygon2d& other, GPolygon2d& result) const;
  /// Intersects the polygon with its own box, which rebuilds it without paths of no width.
  void RemoveZeroWidthReturnPaths();

  /// Writes the polygon as text: counts and points on lines of their own, comments in lines that
  /// begin with ";". Numbers have 16 significant digits and a point, whatever the locale.
  ///
  /// *Errors*: `ERR_WRITE`.
  void DumpToTextFile(CBufferedFile& file) const;
  /// Replaces the polygon by what `DumpToTextFile` wrote. Rings are taken as they are; empty lines
  /// and comments may stand anywhere.
  ///
  /// *Errors*: `ERR_READ` for a count or point that can't be read, and a file that ends early.
  void LoadFromTextFile(CBufferedFile& file);
  /// Writes the polygon in binary form: counts of 8 bytes and coordinates of 8 bytes,
  /// little-endian.
  ///
  /// *Errors*: `ERR_WRITE`.
  void DumpToBinaryFile(CBufferedFile& file) const;
  /// Replaces the polygon by what `DumpToBinaryFile` wrote. Rings are taken as they are; of each
  /// count the low 32 bits count.
  ///
  /// *Errors*: `ERR_READ` for a file that is not open, `ERR_END_OF_FILE`. Memory is asked for in
  /// proportion to what is read.
  void LoadFromBinaryFile(CBufferedFile& file);

 private:
  /// Takes over polygons, with the box around them.
  [[gnu::visibility("hidden")]] void Replace(MultiPolygon2d&& polygons);

  MultiPolygon2d polygons_;
  Box2d box_;
};

}  // namespace vlm

#pragma once

/// \file
/// GPolygon: areas bounded by any contours, also ones that cross themselves, over the clipper of
/// Gpc.h.
///
///     vlm::GPolygon fields(0, 0, 60, 40);
///     vlm::Vec2d const lake[] = {{20, 10}, {50, 10}, {35, 30}};
///     fields.Difference(vlm::GPolygon(lake, 3));
///     bool dry = fields.PointInside(vlm::Vec2d(35, 15));  // false

#include <velum/core/Api.h>
#include <velum/files/Forward.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/Gpc.h>
#include <velum/geometry/Vec2.h>
#include <velum/platform/Types.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace vlm {

/// A set of contours with hole flags and the box around them. A point is inside if an odd number of
/// contours hold it, whatever their directions and flags; contours may cross themselves and each
/// other.
///
/// A value that owns its contours, in the records of the clipper. Contours are open: the first
/// vertex is not repeated at the end. Flags are kept and stored, but mean nothing to the
/// operations. Separate objects may be used on separate threads; a set operation uses both its
/// operands, also the one that it does not change.
///
/// Where the result is in `POINT`, coordinates are rounded half away from zero and limited to 32
/// bits; NaN gives 0.
///
/// *Errors*: `ERR_OUT_OF_MEMORY` if memory for contours or for a result fails, also where their
/// number exceeds what their 32-bit counts can say; `ERR_INTERNAL` for a null array that should
/// hold something. Unless told otherwise a call that throws leaves the polygon as it was.
class VELUM_API GPolygon {
 public:
  /// The set operations. Their numbers are part of the interface.
  enum SET_OPERATION : int {
    SET_INTERSECTION = 0,  ///< What lies in both polygons.
    SET_UNION = 1,         ///< What lies in either.
    SET_DIFFERENCE = 2,    ///< What lies in this polygon and not in the other.
    SET_XOR = 3,           ///< What lies in one of them only.
  };

  /// A list of contours: the clipper's record under a name of this class.
  struct tagGCONTOURLIST {
    std::int32_t num_contours;  ///< How many contours there are.
    std::int32_t* hole;         ///< A flag for each contour, not 0 for a hole.
    gpc_vertex_list* contour;   ///< The contours.
  };

  /// Takes the vertices of one strip, of which i, i + 1 and i + 2 form a triangle, and what the
  /// caller gave; false ends the decomposition. The vertices are good until it returns.
  using DecomposeCallback = bool (*)(const Vec2d* points, unsigned int count, void* userData);

  /// Makes an empty polygon, with an empty box.
  GPolygon() noexcept = default;
  /// Makes a polygon of one contour. A last point equal to the first is dropped.
  GPolygon(const Vec2d* points, unsigned int count);
  /// The same for integer points.
  GPolygon(const POINT* points, unsigned int count);
  /// The same for no points.
  GPolygon(std::nullptr_t, unsigned int count)
      : GPolygon(static_cast<const Vec2d*>(nullptr), count) {}
  /// Makes a polygon of several contours, `counts[i]` points each, one after the other in `points`.
  /// A last point of a contour that equals its first is dropped.
  GPolygon(const Vec2d* points, const unsigned int* counts, unsigned int contourCount);
  /// The same for integer points.
  GPolygon(const POINT* points, const unsigned int* counts, unsigned int contourCount);
  /// The same for no points.
  GPolygon(std::nullptr_t, const unsigned int* counts, unsigned int contourCount)
      : GPolygon(static_cast<const Vec2d*>(nullptr), counts, contourCount) {}
  /// Makes a rectangle of the vertices (x0, y0), (x1, y0), (x1, y1), (x0, y1).
  GPolygon(double x0, double y0, double x1, double y1);
  /// Makes a rectangle from left, top, right and bottom.
  GPolygon(const RECT& rectangle);
  /// Makes one contour of each outer ring, without its closing point. Inner rings are not carried
  /// over.
  GPolygon(const GPolygon2d& polygon);
  /// Copies contours and flags.
  GPolygon(const GPolygon& polygon);
  /// Takes over all of another polygon, which is left empty.
  GPolygon(GPolygon&& polygon) noexcept;
  /// Copies contours and flags.
  GPolygon& operator=(const GPolygon& polygon);
  /// Takes over all of another polygon, which is left empty.
  GPolygon& operator=(GPolygon&& polygon) noexcept;
  ~GPolygon();

  /// Returns the box around all vertices; the empty box if there are none.
  [[nodiscard]] const Box2d& GetBBox() const noexcept { return box_; }
  /// Returns the number of contours.
  [[nodiscard]] unsigned int GetNumContours() const noexcept {
    return static_cast<unsigned int>(contours_.num_contours);
  }
  /// Returns the number of vertices of a contour.
  ///
  /// *Errors*: `ERR_INTERNAL` if there is no contour `i`.
  [[nodiscard]] unsigned int GetContourVertexCount(unsigned int i) const;
  /// Returns the number of all vertices.
  [[nodiscard]] unsigned int GetTotalVertexCount() const noexcept;

  /// Copies the vertices of all contours, with `close` each followed by its first vertex again, and
  /// how many that are for each contour. Either array may be null. Gives the number of all points.
  ///
  /// - A contour without vertices: no points.
  unsigned int GetPolyPolygon(Vec2d* points, unsigned int* counts, bool close) const noexcept;
  /// The same in integers.
  unsigned int GetPolyPolygon(POINT* points, unsigned int* counts, bool close) const noexcept;
  /// The same without the points.
  unsigned int GetPolyPolygon(std::nullptr_t, unsigned int* counts, bool close) const noexcept;
  /// Replaces two vectors by the same.
  void GetPolyPolygon(std::vector<Vec2d>& points, std::vector<unsigned int>& counts,
                      bool close) const;
  /// The same in integers.
  void GetPolyPolygon(std::vector<POINT>& points, std::vector<unsigned int>& counts,
                      bool close) const;

  /// Copies all contours as one closed path that a single-polygon drawing call can fill, and gives
  /// the number of its points. Each contour is closed by its first vertex; behind several of them
  /// come the first vertices of all but the last contour, backwards, so that the path returns along
  /// lines of no width. A null array only counts.
  ///
  /// - No vertices: 0.
  /// - Contours without vertices: left out.
  unsigned int GetPolygon(Vec2d* points) const noexcept;
  /// The same in integers.
  unsigned int GetPolygon(POINT* points) const noexcept;
  /// Only counts.
  unsigned int GetPolygon(std::nullptr_t) const noexcept;
  /// Replaces a vector by the same.
  void GetPolygon(std::vector<Vec2d>& points) const;
  /// The same in integers.
  void GetPolygon(std::vector<POINT>& points) const;

  /// Tells whether a point is inside: outside the box never; in a polygon for which `IsRectangle`
  /// holds also on its boundary; otherwise if an odd number of contours hold it, told exactly. A
  /// point on the boundary of another polygon can be reported either way.
  ///
  /// *Cost*: linear, without a clip.
  [[nodiscard]] bool PointInside(const Vec2d& point) const noexcept;
  /// Tells whether the polygon is one contour of four vertices with axis-parallel sides, of which
  /// the first is horizontal. `box`, unless it is null, gets the fourth vertex as minimum and the
  /// second as maximum corner, as they are: `Normalize` it.
  bool IsRectangle(Box2d* box = nullptr) const noexcept;
  /// Hands the polygon over as triangle strips, one call for each. Gives false as soon as a call
  /// does, otherwise true. What the callback throws passes through.
  ///
  /// *Errors*: `ERR_INTERNAL` for a null callback; those of the clipper, see Gpc.h.
  bool Decompose(DecomposeCallback callback, void* userData) const;

  /// Appends contours as the constructor takes them; the box grows to hold them.
  void AddContours(const Vec2d* points, const unsigned int* counts, unsigned int contourCount);
  /// The same for integer points.
  void AddContours(const POINT* points, const unsigned int* counts, unsigned int contourCount);
  /// The same for no points.
  void AddContours(std::nullptr_t, const unsigned int* counts, unsigned int contourCount) {
    AddContours(static_cast<const Vec2d*>(nullptr), counts, contourCount);
  }
  /// Appends the contours of another polygon with their flags. It may be this one.
  void AddContours(const GPolygon& other);

  /// Reduces the polygon to what lies in both.
  ///
  /// *Errors*: those of the clipper, see Gpc.h; the other set operations have them too.
  void Intersection(const GPolygon& other);
  /// Adds what lies in the other polygon.
  void Union(const GPolygon& other);
  /// Removes what lies in the other polygon.
  void Difference(const GPolygon& other);
  /// Keeps what lies in one of the two only, and adds what lies in the other only.
  void XOR(const GPolygon& other);
  /// Intersects the polygon with its own box, which rebuilds it without contours that cross and
  /// paths of no width.
  void RemoveZeroWidthReturnPaths();
  /// Removes all contours.
  void FreeAll() noexcept;

  /// Writes the polygon with its flags as text, as `gpc_write_polygon` does, to the stream of a
  /// file.
  ///
  /// *Errors*: `ERR_WRITE`, also for a file in memory, which has no stream.
  void DumpToTextFile(CBufferedFile& file) const;
  /// Replaces the polygon by what `DumpToTextFile` wrote.
  ///
  /// *Errors*: `ERR_READ`, also for a file in memory. The polygon is empty then.
  void LoadFromTextFile(CBufferedFile& file);
  /// Writes the polygon with its flags in binary form, as `gpc_write_polygon_binary` does.
  ///
  /// *Errors*: as `DumpToTextFile`.
  void DumpToBinaryFile(CBufferedFile& file) const;
  /// Replaces the polygon by what `DumpToBinaryFile` wrote.
  ///
  /// *Errors*: as `LoadFromTextFile`.
  void LoadFromBinaryFile(CBufferedFile& file);

 protected:
  /// Replaces the polygon by one contour.
  void Construct(const Vec2d* points, unsigned int count);
  /// The same for integer points.
  void Construct(const POINT* points, unsigned int count);
  /// Replaces the polygon by several contours.
  void Construct(const Vec2d* points, const unsigned int* counts, unsigned int contourCount);
  /// The same for integer points.
  void Construct(const POINT* points, const unsigned int* counts, unsigned int contourCount);
  /// Replaces the polygon by a rectangle.
  void Construct(double x0, double y0, double x1, double y1);
  /// Replaces the polygon by a copy.
  void Construct(const GPolygon& polygon);
  /// Replaces the polygon by the outer rings of another.
  void Construct(const GPolygon2d& polygon);
  /// Replaces the polygon by a copy of contours and their flags.
  void Construct(const tagGCONTOURLIST& contours);
  /// Replaces the polygon by a copy whose coordinates are rounded to single precision. It may be
  /// this one.
  void ConstructFromFloats(const GPolygon& polygon);
  /// Runs a set operation with this polygon as left operand. An `other` that is this very object
  /// needs no clip.
  ///
  /// *Errors*: `ERR_INTERNAL` for an operation that is none; those of the clipper.
  void Combine(const GPolygon& other, SET_OPERATION operation);
  /// Frees the destination, hands contours and box over to it, and leaves this polygon empty.
  /// Nothing happens if they are the same.
  void MoveTo(GPolygon& destination) noexcept;
  /// Computes the box anew.
  void CalcBBox() noexcept;

 private:
  using Writer = bool (*)(std::FILE*, int, gpc_polygon*);
  using Reader = Writer;

  /// Frees the contours and takes over others, with the box around them.
  [[gnu::visibility("hidden")]] void Replace(gpc_polygon contours) noexcept;
  /// Takes over the contours of another polygon behind its own.
  [[gnu::visibility("hidden")]] void Append(GPolygon&& tail);
  /// Writes the polygon to the stream of a file.
  [[gnu::visibility("hidden")]] void Dump(CBufferedFile& file, Writer write) const;
  /// Replaces the polygon by what the stream of a file holds.
  [[gnu::visibility("hidden")]] void Load(CBufferedFile& file, Reader read);

  gpc_polygon contours_{};
  Box2d box_;
};

}  // namespace vlm

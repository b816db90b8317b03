#pragma once

/// \file
/// The polygon clipper: the difference, intersection, exclusive-or or union of two polygons, each a
/// list of contours that may cross themselves and each other, as contours or as triangle strips;
/// and the two files that keep a polygon.
///
///     gpc_polygon result{};
///     gpc_polygon_clip(GPC_INT, &fields, &district, &result);
///     gpc_free_polygon(&result);
///
/// These are plain functions and records of the global namespace, found from `vlm` too. GPolygon is
/// the class over them.
///
/// What is inside is told by parity: a point is inside a polygon if an odd number of its contours
/// hold it, whatever their directions and hole flags. Contours are closed: the last vertex joins
/// the first, which is not repeated.
///
/// Coordinates are compared exactly, except that edges bundle, and count as parallel, within
/// #GPC_EPSILON, which is absolute: outlines whose coordinates are near 1e-15 degenerate. Scale
/// them first.
///
/// The functions keep no state between calls and only read their inputs: they may run on several
/// threads at once, as long as none writes a polygon that another uses.

#include <velum/core/Api.h>

#include <cstdint>
#include <cstdio>

/// The set operations. Their numbers are part of the interface.
enum gpc_op : int {
  GPC_DIFF = 0,   ///< The subject without the clip polygon.
  GPC_INT = 1,    ///< What lies in both.
  GPC_XOR = 2,    ///< What lies in one of them only.
  GPC_UNION = 3,  ///< What lies in either.
};

/// A point of a contour.
struct gpc_vertex {
  double x;  ///< The horizontal coordinate.
  double y;  ///< The vertical coordinate.
};

/// A closed contour, or the vertices of a triangle strip.
struct gpc_vertex_list {
  std::int32_t num_vertices;  ///< How many vertices there are; below 0 counts as none.
  gpc_vertex* vertex;         ///< The vertices, a block of `malloc`.
};

/// A set of contours. An empty one has 0 contours and null arrays; whoever receives one frees it
/// with gpc_free_polygon().
struct gpc_polygon {
  std::int32_t num_contours;  ///< How many contours there are.
  std::int32_t* hole;         ///< A flag for each contour, not 0 for a hole; a block of `malloc`.
  gpc_vertex_list* contour;   ///< The contours, a block of `malloc`.
};

/// A set of triangle strips: vertices i, i + 1 and i + 2 of a strip form a triangle. Whoever
/// receives one frees it with gpc_free_tristrip().
struct gpc_tristrip {
  std::int32_t num_strips;  ///< How many strips there are.
  gpc_vertex_list* strip;   ///< The strips, a block of `malloc`.
};

/// Values that differ by no more than this count as equal where edges are bundled and where the
/// denominator of a crossing is looked at.
inline constexpr double GPC_EPSILON = 2.220446049250313e-16;

/// Computes `op` of two polygons as contours. The input stays as it was, but for one that is the
/// result too, which is freed and overwritten; otherwise what `result` held before is not looked
/// at.
///
/// The contours do not cross; the flag of one that bounds a hole is 1. Vertices inside a run of
/// horizontal edges go. A contour of fewer than 3 vertices, or with all of them at one height,
/// gives nothing.
///
/// *Errors*: `ERR_INTERNAL` for a null pointer, a number that is no operation, or a vertex that is
/// not finite: nothing was touched.
/// `ERR_OUT_OF_MEMORY` of the module "GPC Library", and `ERR_POLYGON_CLIPPING` or `ERR_INTERNAL` if
/// rounding has broken the sweep's order: `result` is not a polygon then if it was an input too,
/// since that has been freed.
///
/// *Cost*: O((n + k) log n) for n vertices with k crossings.
///
/// *Source*: the scan-beam method of Vatti (1992).
extern "C++" VELUM_API void gpc_polygon_clip(gpc_op op, gpc_polygon* subject, gpc_polygon* clip,
                                             gpc_polygon* result);

/// Computes `op` of two polygons as triangle strips, which cover the area that gpc_polygon_clip()
/// bounds. `result` is overwritten.
///
/// *Errors*, *Cost*: those of gpc_polygon_clip().
extern "C++" VELUM_API void gpc_tristrip_clip(gpc_op op, gpc_polygon* subject, gpc_polygon* clip,
                                              gpc_tristrip* result);

/// Covers a polygon with triangle strips. `result` is overwritten.
///
/// *Errors*, *Cost*: those of gpc_polygon_clip().
extern "C++" VELUM_API void gpc_polygon_to_tristrip(gpc_polygon* polygon, gpc_tristrip* result);

/// Appends a copy of a contour, a hole if `hole` is not 0.
///
/// *Errors*: `ERR_OUT_OF_MEMORY` of the module "GPC Library", also for more contours than an `int`
/// counts; `ERR_INTERNAL` for a null pointer or a negative number of vertices. The polygon stays as
/// it was.
///
/// *Cost*: the arrays of contours and flags are copied.
extern "C++" VELUM_API void gpc_add_contour(gpc_polygon* polygon, gpc_vertex_list* contour,
                                            int hole);

/// Frees the arrays of a polygon and makes it empty. Nothing happens to an empty one, and to null.
extern "C++" VELUM_API void gpc_free_polygon(gpc_polygon* polygon);

/// Frees the arrays of a set of strips and makes it empty. Nothing happens to an empty one, and to
/// null.
extern "C++" VELUM_API void gpc_free_tristrip(gpc_tristrip* tristrip);

/// Writes a polygon as text with 15 decimal places behind a point, whatever the locale: the number
/// of contours, then of each one the number of its vertices, its hole flag if `writeHoleFlags` is
/// not 0, and the vertices, one a line.
///
/// - A null file or polygon, or a write that fails: `false`.
/// - No contours: the number alone.
extern "C++" VELUM_API bool gpc_write_polygon(FILE* file, int writeHoleFlags, gpc_polygon* polygon);

/// Reads a polygon as gpc_write_polygon() writes it, with any white space between items.
/// `readHoleFlags` must be what it was written with, which the file doesn't tell; where it is 0 all
/// flags are 0. What the polygon held before is overwritten, not freed.
///
/// - A null file or polygon: `false`.
/// - No first number: `false`, and the polygon is empty.
/// - Damage behind it, such as a negative number of vertices: `false`, and the polygon holds what
///   was read. gpc_free_polygon() releases it.
///
/// *Errors*: `ERR_OUT_OF_MEMORY` of the module "GPC Library"; the polygon can be released too.
///
/// *Cost*: memory in proportion to what the file holds, whatever its numbers say.
extern "C++" VELUM_API bool gpc_read_polygon(FILE* file, int readHoleFlags, gpc_polygon* polygon);

/// Writes a polygon as gpc_write_polygon() does, but as 4-byte numbers and 8-byte coordinates,
/// lowest byte first.
extern "C++" VELUM_API bool gpc_write_polygon_binary(FILE* file, int writeHoleFlags,
                                                     gpc_polygon* polygon);

/// Reads a polygon that gpc_write_polygon_binary() wrote, in all else as gpc_read_polygon() does.
extern "C++" VELUM_API bool gpc_read_polygon_binary(FILE* file, int readHoleFlags,
                                                    gpc_polygon* polygon);

namespace vlm {

using ::gpc_add_contour;
using ::GPC_DIFF;
using ::GPC_EPSILON;
using ::gpc_free_polygon;
using ::gpc_free_tristrip;
using ::GPC_INT;
using ::gpc_op;
using ::gpc_polygon;
using ::gpc_polygon_clip;
using ::gpc_polygon_to_tristrip;
using ::gpc_read_polygon;
using ::gpc_read_polygon_binary;
using ::gpc_tristrip;
using ::gpc_tristrip_clip;
using ::GPC_UNION;
using ::gpc_vertex;
using ::gpc_vertex_list;
using ::gpc_write_polygon;
using ::gpc_write_polygon_binary;
using ::GPC_XOR;

}  // namespace vlm

#pragma once

/// \file
/// Whether a point lies inside a polygon.
///
///     vlm::Vec2d const triangle[] = {{0, 0}, {4, 0}, {0, 4}};
///     bool inside = vlm::PointInPolygon(vlm::Vec2d(1, 1), triangle, 3);  // true
///
/// Inside is what an odd number of edges separates from far away, so that a contour may cross
/// itself. Contours are closed: the last vertex joins the first, which may be repeated. Several
/// contours stand one after the other in one array, `counts` holding their lengths.
///
/// A point on the boundary belongs to one side of it: on the edge where y is lowest it is inside,
/// on the one where y is highest outside, so that of two polygons that share an edge one holds it.
///
/// *Source*: M. Shimrat, Algorithm 112: Position of Point Relative to Polygon (1962).

#include <velum/core/Api.h>
#include <velum/geometry/Vec2.h>
#include <velum/platform/Types.h>

namespace vlm {

/// Tells whether a point lies inside a contour.
///
/// - No vertices, or a null array: false.
/// - A point with a coordinate that is not a number: false.
///
/// *Cost*: linear in `count`, without a division.
[[nodiscard]] VELUM_API bool PointInPolygon(const Vec2d& p, const Vec2d* points,
                                            unsigned count) noexcept;
/// Tells whether an odd number of contours hold a point.
///
/// - No contours, or a null array: false.
[[nodiscard]] VELUM_API bool PointInPolygon(const Vec2d& p, const Vec2d* points,
                                            const unsigned* counts, unsigned contours) noexcept;

/// Tells whether a point lies inside a contour of integer points. The place where an edge passes
/// the point's height is rounded to the nearest integer, and a point to the left of it is inside.
///
/// - No vertices, or a null array: false.
[[nodiscard]] VELUM_API bool PointInPolygon(const tagPOINT& p, const tagPOINT* points,
                                            unsigned count) noexcept;
/// Tells whether an odd number of contours of integer points hold a point.
///
/// - No contours, or a null array: false. A count below 0 is an empty contour.
[[nodiscard]] VELUM_API bool PointInPolygon(const tagPOINT& p, const tagPOINT* points,
                                            const long* counts, unsigned contours) noexcept;

}  // namespace vlm

#pragma once

/// \file
/// Lengths and areas of paths and contours.
///
///     vlm::Vec2d const square[] = {{0, 0}, {3, 0}, {3, 3}, {0, 3}};
///     double area = vlm::PolygonArea(square, 4);            // 9
///     double perimeter = vlm::PolygonPerimeter(square, 4);  // 12
///
/// Several contours stand one after the other in one array, `counts` holding their lengths. The
/// cost is linear in the number of points.

#include <velum/core/Api.h>
#include <velum/geometry/Vec2.h>

namespace vlm {

/// Returns the length of an open path: the sum over its segments.
///
/// - A null array, or fewer than 2 points: 0.
[[nodiscard]] VELUM_API double PolylineLength(const Vec2d* points, unsigned count) noexcept;

/// Returns the length of a closed path: that of the open one and of the segment from its last point
/// to its first, which is left out where these are exactly equal.
///
/// - A null array, or fewer than 2 points: 0.
[[nodiscard]] VELUM_API double PolygonPerimeter(const Vec2d* points, unsigned count) noexcept;
/// Returns the sum of the perimeters of several contours.
///
/// - A null array, or no contours: 0.
[[nodiscard]] VELUM_API double PolygonPerimeter(const Vec2d* points, const unsigned* counts,
                                                unsigned contours) noexcept;

/// Returns the signed area of a contour, above 0 if it goes round counter-clockwise where y grows
/// upwards.
///
/// - A null array, or fewer than 3 points: 0.
[[nodiscard]] VELUM_API double PolygonArea(const Vec2d* points, unsigned count) noexcept;
/// Returns the sum of the signed areas of several contours: one that goes round the other way, as a
/// hole may, subtracts.
///
/// - A null array, or no contours: 0.
[[nodiscard]] VELUM_API double PolygonArea(const Vec2d* points, const unsigned* counts,
                                           unsigned contours) noexcept;

}  // namespace vlm

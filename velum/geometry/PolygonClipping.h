#pragma once

/// \file
/// Whole polygons clipped to a rectangle or to each other, and the question whether one holds
/// another, for both classes of polygons.
///
///     vlm::GPolygon visible;
///     vlm::GClipGPolygonToRect(fields, page, visible);
///     bool whole = vlm::GPolygonContains(vlm::GPolygon(0, 0, 210, 297), fields);
///
/// Clipping a `GPolygon` to a rectangle goes contour by contour, without the clipper: contours stay
/// separate, flags are lost, and a contour that the rectangle splits stays one, with edges along
/// the rectangle. Clipping a `GPolygon2d` is a set operation.
///
/// A result may be the operand. Vectors are filled only if the result has contours; otherwise they
/// stay as they came.
///
/// *Errors*: those of the classes' constructors and set operations. A call that throws leaves
/// vectors and a `GPolygon` as they were; a `GPolygon2d` result is as it was, or empty.

#include <velum/core/Api.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/Vec2.h>

#include <vector>

namespace vlm {

/// Clips each contour to a box, which is normalized first. What is left of a contour with fewer
/// than 2 vertices is dropped.
///
/// *Cost*: linear.
VELUM_API void GClipGPolygonToRect(const GPolygon& polygon, const Box2d& box, GPolygon& result);
/// The same, as arrays; see `GPolygon::GetPolyPolygon`.
VELUM_API void GClipGPolygonToRect(const GPolygon& polygon, const Box2d& box,
                                   std::vector<Vec2d>& points, std::vector<unsigned int>& counts,
                                   bool close);
/// Intersects a polygon with a box.
VELUM_API void GClipGPolygonToRect(const GPolygon2d& polygon, const Box2d& box, GPolygon2d& result);
/// The same, as arrays; see `GPolygon2d::GetPolyPolygon`.
VELUM_API void GClipGPolygonToRect(const GPolygon2d& polygon, const Box2d& box,
                                   std::vector<Vec2d>& points, std::vector<unsigned int>& counts,
                                   bool close);

/// Clips contours to a box as a `GPolygon`.
VELUM_API void GClipPolyPolygonToRect(const Vec2d* points, const unsigned int* counts,
                                      unsigned int contourCount, const Box2d& box,
                                      std::vector<Vec2d>& outPoints,
                                      std::vector<unsigned int>& outCounts, bool close);
/// Clips contours to a box as a `GPolygon2d`.
VELUM_API void GClipPolyPolygonToRectUsingGPolygon2d(
    const Vec2d* points, const unsigned int* counts, unsigned int contourCount, const Box2d& box,
    std::vector<Vec2d>& outPoints, std::vector<unsigned int>& outCounts, bool close);

/// Clips a polygon to another one: as `GClipGPolygonToRect` if that is a rectangle, otherwise by
/// their intersection.
VELUM_API void GClipGPolygonToGPolygon(const GPolygon& subject, const GPolygon& clip,
                                       GPolygon& result);
/// The same, as arrays.
VELUM_API void GClipGPolygonToGPolygon(const GPolygon& subject, const GPolygon& clip,
                                       std::vector<Vec2d>& points,
                                       std::vector<unsigned int>& counts, bool close);
/// Clips a polygon to another one; see the form for `GPolygon`.
VELUM_API void GClipGPolygonToGPolygon(const GPolygon2d& subject, const GPolygon2d& clip,
                                       GPolygon2d& result);
/// The same, as arrays.
VELUM_API void GClipGPolygonToGPolygon(const GPolygon2d& subject, const GPolygon2d& clip,
                                       std::vector<Vec2d>& points,
                                       std::vector<unsigned int>& counts, bool close);

/// Clips contours to a polygon, as `GClipGPolygonToGPolygon`.
VELUM_API void GClipPolyPolygonToGPolygon(const Vec2d* points, const unsigned int* counts,
                                          unsigned int contourCount, const GPolygon& clip,
                                          std::vector<Vec2d>& outPoints,
                                          std::vector<unsigned int>& outCounts, bool close);
/// The same for contours that do not cross.
VELUM_API void GClipPolyPolygonToGPolygon(const Vec2d* points, const unsigned int* counts,
                                          unsigned int contourCount, const GPolygon2d& clip,
                                          std::vector<Vec2d>& outPoints,
                                          std::vector<unsigned int>& outCounts, bool close);

/// Tells whether a polygon lies in a container: in a rectangle if its box does, boundary included;
/// otherwise if nothing is left of it without the container. An empty polygon lies in any container
/// but a rectangle: its box, normalized, is the whole plane.
[[nodiscard]] VELUM_API bool GPolygonContains(const GPolygon& container, const GPolygon& polygon);
/// The same for contours.
[[nodiscard]] VELUM_API bool GPolygonContains(const GPolygon& container, const Vec2d* points,
                                              const unsigned int* counts,
                                              unsigned int contourCount);
/// Tells whether a polygon lies in a container; see the form for `GPolygon`.
[[nodiscard]] VELUM_API bool GPolygonContains(const GPolygon2d& container,
                                              const GPolygon2d& polygon);
/// The same for contours.
[[nodiscard]] VELUM_API bool GPolygonContains(const GPolygon2d& container, const Vec2d* points,
                                              const unsigned int* counts,
                                              unsigned int contourCount);

/// Tells whether a polygon lies in a container of the other kind, whose rings count as contours.
[[nodiscard]] VELUM_API bool GPolygonContains(const GPolygon& container, const GPolygon2d& polygon);
/// Tells whether a polygon lies in a container of the other kind, whose rings count as contours.
[[nodiscard]] VELUM_API bool GPolygonContains(const GPolygon2d& container, const GPolygon& polygon);

}  // namespace vlm

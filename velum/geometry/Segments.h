#pragma once

/// \file
/// Line segments of plain points: whether they cross, how far a point is from them, whether three
/// points lie on one line.
///
///     vlm::Vec2d const path[] = {{0, 0}, {10, 0}, {10, 10}};
///     double distanceSquared;
///     unsigned segment =
///         vlm::FindClosestSegment(path, 3, vlm::Vec2d(9, 4), &distanceSquared);  // 1

#include <velum/core/Api.h>
#include <velum/geometry/Vec2.h>
#include <velum/geometry/Vec3.h>
#include <velum/platform/Types.h>

namespace vlm {

/// Tells whether the segments a-b and c-d cross.
///
/// - Segments on one line: false, whether they overlap or not.
/// - An end of one that lies on the other one's line counts as lying to the right of it: so a
///   segment that ends on the other one crosses it if it comes from the left.
/// - A coordinate that is not a number: false.
[[nodiscard]] VELUM_API bool SegmentsIntersect(const Vec2d& a, const Vec2d& b, const Vec2d& c,
                                               const Vec2d& d) noexcept;

/// Returns the square of the distance from a point to the segment a-b, whose ends may be equal.
[[nodiscard]] VELUM_API double PointLineSegDistSq(const Vec2d& p, const Vec2d& a,
                                                  const Vec2d& b) noexcept;
/// Returns the square of the distance from a point to the segment a-b in space.
[[nodiscard]] VELUM_API double PointLineSegDistSq(const Vec3d& p, const Vec3d& a,
                                                  const Vec3d& b) noexcept;
/// Returns the square of the distance from a point to the segment a-b, computed in `double`.
[[nodiscard]] VELUM_API double PointLineSegDistSq(const tagPOINT& p, const tagPOINT& a,
                                                  const tagPOINT& b) noexcept;

/// Returns the same of points that are numbers in braces.
[[nodiscard]] inline double PointLineSegDistSq(const double (&p)[2], const double (&a)[2],
                                               const double (&b)[2]) noexcept {
  return PointLineSegDistSq(Vec2d(p), Vec2d(a), Vec2d(b));
}

/// Returns the segment of a path that is closest to a point, the first of several; segment k goes
/// from point k to point k + 1. `distSq` receives the square of the distance unless it is null.
///
/// - Fewer than 2 points, or a null array: 0, at the largest `double`.
///
/// *Cost*: linear in `count`.
VELUM_API unsigned FindClosestSegment(const Vec2d* points, unsigned count, const Vec2d& p,
                                      double* distSq) noexcept;
/// Returns the closest segment of a path of integer points, as the form for `Vec2d` does.
VELUM_API unsigned FindClosestSegment(const tagPOINT* points, unsigned count, const tagPOINT& p,
                                      double* distSq) noexcept;

/// Tells whether three points lie on one line: whether the area of their triangle is below its
/// longest side times 2.220446049250313e-16.
///
/// - Three equal points: false.
[[nodiscard]] VELUM_API bool GAreCollinear(const Vec2d& a, const Vec2d& b, const Vec2d& c) noexcept;
/// Tells whether three points lie on one line, as the form for `Vec2d` does, with the factor
/// 1.1920928955078125e-07.
[[nodiscard]] VELUM_API bool GAreCollinear(const Vec2f& a, const Vec2f& b, const Vec2f& c) noexcept;

/// Tells the same of points that are numbers in braces, as the form for `Vec2d` does.
[[nodiscard]] inline bool GAreCollinear(const double (&a)[2], const double (&b)[2],
                                        const double (&c)[2]) noexcept {
  return GAreCollinear(Vec2d(a), Vec2d(b), Vec2d(c));
}

}  // namespace vlm

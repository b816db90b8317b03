#pragma once

/// \file
/// Arcs, chords and pies of ellipses as points.
///
///     vlm::Vec2d points[90];
///     vlm::Box2d bounds;
///     bool ok = vlm::ArcToCurve(vlm::Box2d(-2, -1, 2, 1), vlm::Vec2d(1, 0), vlm::Vec2d(0, 1),
///                               90, points, &bounds);  // a quarter of the ellipse
///
/// The ellipse touches the sides of a box. Of the points `start` and `end` only the direction from
/// the box's centre matters. Arcs run counter-clockwise where y grows upwards; equal directions
/// give a full turn. The angles between the points, seen from the centre, are equal. A point within
/// 0.005 radians of the ellipse's top or bottom is moved there.
///
/// `points` has room for `count` points; `bounds` is extended by them. Either may be null.
///
/// The functions return false, having written some points or none, where
/// - there are too few points,
/// - `start` or `end` is the centre,
/// - the box has no width or height, or one is less than 1e-150 of the other,
/// - a coordinate is not finite.
///
/// The forms for `float` compute in `double` and round each coordinate once.

#include <velum/core/Api.h>
#include <velum/geometry/Box2.h>

namespace vlm {

/// Writes `count` points of an arc, at least 2, both ends included.
VELUM_API bool ArcToCurve(const Box2d& box, const Vec2d& start, const Vec2d& end, unsigned count,
                          Vec2d* points, Box2d* bounds) noexcept;
/// Writes `count` points of an arc, at least 2, both ends included.
VELUM_API bool ArcToCurve(const Box2f& box, const Vec2f& start, const Vec2f& end, unsigned count,
                          Vec2f* points, Box2f* bounds) noexcept;
/// Does the same for a box and points that are numbers in braces.
inline bool ArcToCurve(const double (&box)[4], const double (&start)[2], const double (&end)[2],
                       unsigned count, Vec2d* points, Box2d* bounds) noexcept {
  return ArcToCurve(Box2d(box[0], box[1], box[2], box[3]), Vec2d(start), Vec2d(end), count, points,
                    bounds);
}

/// Writes the closed outline between an arc and its chord: `count` points, at least 3, the last
/// one equal to the first.
VELUM_API bool ChordToArea(const Box2d& box, const Vec2d& start, const Vec2d& end, unsigned count,
                           Vec2d* points, Box2d* bounds) noexcept;
/// Writes the closed outline between an arc and its chord: `count` points, at least 3, the last
/// one equal to the first.
VELUM_API bool ChordToArea(const Box2f& box, const Vec2f& start, const Vec2f& end, unsigned count,
                           Vec2f* points, Box2f* bounds) noexcept;
/// Does the same for a box and points that are numbers in braces.
inline bool ChordToArea(const double (&box)[4], const double (&start)[2], const double (&end)[2],
                        unsigned count, Vec2d* points, Box2d* bounds) noexcept {
  return ChordToArea(Box2d(box[0], box[1], box[2], box[3]), Vec2d(start), Vec2d(end), count, points,
                     bounds);
}

/// Writes the closed outline of a pie: `count` points, at least 4, of which the last two are the
/// box's centre and the first one again.
VELUM_API bool PieToArea(const Box2d& box, const Vec2d& start, const Vec2d& end, unsigned count,
                         Vec2d* points, Box2d* bounds) noexcept;
/// Writes the closed outline of a pie: `count` points, at least 4, of which the last two are the
/// box's centre and the first one again.
VELUM_API bool PieToArea(const Box2f& box, const Vec2f& start, const Vec2f& end, unsigned count,
                         Vec2f* points, Box2f* bounds) noexcept;
/// Does the same for a box and points that are numbers in braces.
inline bool PieToArea(const double (&box)[4], const double (&start)[2], const double (&end)[2],
                      unsigned count, Vec2d* points, Box2d* bounds) noexcept {
  return PieToArea(Box2d(box[0], box[1], box[2], box[3]), Vec2d(start), Vec2d(end), count, points,
                   bounds);
}

}  // namespace vlm

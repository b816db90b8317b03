#pragma once

/// \file
/// Polygons as rings: Boost.Geometry's models over Vec2d, and the way from arrays of points to them
/// and back.
///
///     vlm::Vec2d const corners[] = {{0, 0}, {4, 0}, {4, 3}};
///     vlm::Ring2d ring;
///     vlm::InitRing(corners, 3, ring);  // clockwise and closed: 4 points
///     bool valid = vlm::IsValidRing(ring);  // true
///     auto open = vlm::GetLegacyRingPoints(nullptr, ring, false);  // 3
///
/// A ring is stored clockwise, in a plane whose y goes up, and closed: its last point repeats its
/// first. An inner ring, a hole, is stored the other way round. Including this header makes Vec2d a
/// point of Boost.Geometry.
///
/// The array form of several contours is one array of points, contour after contour, and one of
/// their counts.

#include <velum/core/Api.h>
#include <velum/geometry/Vec2.h>
#include <velum/platform/Types.h>

#include <boost/geometry/core/cs.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <boost/geometry/geometries/register/point.hpp>
#include <boost/geometry/geometries/ring.hpp>

#include <cstddef>

/// \cond traits that Boost.Geometry looks for
BOOST_GEOMETRY_REGISTER_POINT_2D(vlm::Vec2d, double, boost::geometry::cs::cartesian, x, y)
/// \endcond

namespace vlm {

/// A closed path; clockwise if it bounds an area from outside.
using Ring2d = boost::geometry::model::ring<Vec2d, true, true>;
/// One outer ring and the inner rings that cut holes into it.
using RingPolygon2d = boost::geometry::model::polygon<Vec2d, true, true>;
/// Any number of polygons with holes.
using MultiPolygon2d = boost::geometry::model::multi_polygon<RingPolygon2d>;

/// Replaces a ring by `count` points and corrects it: a ring of more than 2 points is closed,
/// unless its ends agree within 2.220446049250313e-16 of the first, and one of at least 4 points,
/// the closing one counted, is made clockwise.
///
/// *Errors*: `ERR_INTERNAL` if `points` is null and `count` is not 0. The ring stays as it was
/// whenever this throws.
VELUM_API void InitRing(const Vec2d* points, unsigned int count, Ring2d& ring);
/// The same for integer points.
VELUM_API void InitRing(const POINT* points, unsigned int count, Ring2d& ring);
/// The same for no points.
inline void InitRing(std::nullptr_t, unsigned int count, Ring2d& ring) {
  InitRing(static_cast<const Vec2d*>(nullptr), count, ring);
}

/// Replaces a multi-polygon by one polygon for each contour: its outer ring is what `InitRing`
/// makes of the next `counts[i]` points. No contour becomes a hole.
///
/// *Errors*: `ERR_INTERNAL` for a null array that should hold something. The multi-polygon stays as
/// it was whenever this throws.
VELUM_API void InitMultiPolygon(const Vec2d* points, const unsigned int* counts,
                                unsigned int contourCount, MultiPolygon2d& multiPolygon);
/// The same for integer points.
VELUM_API void InitMultiPolygon(const POINT* points, const unsigned int* counts,
                                unsigned int contourCount, MultiPolygon2d& multiPolygon);
/// The same for no points.
inline void InitMultiPolygon(std::nullptr_t, const unsigned int* counts, unsigned int contourCount,
                             MultiPolygon2d& multiPolygon) {
  InitMultiPolygon(static_cast<const Vec2d*>(nullptr), counts, contourCount, multiPolygon);
}
/// `InitMultiPolygon` by its other name.
VELUM_API void InitMultiPolygonUINTCounts(const Vec2d* points, const unsigned int* counts,
                                          unsigned int contourCount, MultiPolygon2d& multiPolygon);
/// The same for integer points.
VELUM_API void InitMultiPolygonUINTCounts(const POINT* points, const unsigned int* counts,
                                          unsigned int contourCount, MultiPolygon2d& multiPolygon);
/// The same for no points.
inline void InitMultiPolygonUINTCounts(std::nullptr_t, const unsigned int* counts,
                                       unsigned int contourCount, MultiPolygon2d& multiPolygon) {
  InitMultiPolygonUINTCounts(static_cast<const Vec2d*>(nullptr), counts, contourCount,
                             multiPolygon);
}

/// Copies the points of a ring, without its closing point unless `close` is true, and gives their
/// number. A null `out` only counts; an empty ring gives 0.
VELUM_API unsigned int GetLegacyRingPoints(Vec2d* out, const Ring2d& ring, bool close);
/// The same, each coordinate rounded half away from zero to 32 bits; see `GPolygon` for what is out
/// of range.
VELUM_API unsigned int GetLegacyRingPoints(POINT* out, const Ring2d& ring, bool close);
/// Only counts.
VELUM_API unsigned int GetLegacyRingPoints(std::nullptr_t, const Ring2d& ring, bool close);

/// Copies the points of all rings, as `GetLegacyRingPoints` does for one: for each polygon the
/// outer ring, then the inner ones. Gives the number of all points; a null `out` only counts.
VELUM_API unsigned int GetLegacyMultiPolygonPoints(Vec2d* out, const MultiPolygon2d& multiPolygon,
                                                   bool close);
/// The same, each coordinate rounded half away from zero to 32 bits.
VELUM_API unsigned int GetLegacyMultiPolygonPoints(POINT* out, const MultiPolygon2d& multiPolygon,
                                                   bool close);
/// Only counts.
VELUM_API unsigned int GetLegacyMultiPolygonPoints(std::nullptr_t,
                                                   const MultiPolygon2d& multiPolygon, bool close);

/// Writes how many points `GetLegacyMultiPolygonPoints` gives for each ring, and gives the number
/// of rings. A null `out` only counts them.
VELUM_API unsigned int GetLegacyMultiPolygonCounts(unsigned int* out,
                                                   const MultiPolygon2d& multiPolygon, bool close);
/// `GetLegacyMultiPolygonCounts` by its other name.
VELUM_API unsigned int GetLegacyMultiPolygonUINTCounts(unsigned int* out,
                                                       const MultiPolygon2d& multiPolygon,
                                                       bool close);

/// Copies all rings, closed, as one path that a single-polygon drawing call can fill, and gives the
/// number of its points: the rings one after the other, and behind several of them the first points
/// of all but the last ring, backwards, so that the path returns along lines of no width. Empty
/// rings are left out; a null `out` only counts.
VELUM_API unsigned int GetLegacyMultiPolygonAsSinglePolygon(Vec2d* out,
                                                            const MultiPolygon2d& multiPolygon);
/// The same, each coordinate rounded half away from zero to 32 bits.
VELUM_API unsigned int GetLegacyMultiPolygonAsSinglePolygon(POINT* out,
                                                            const MultiPolygon2d& multiPolygon);
/// Only counts.
VELUM_API unsigned int GetLegacyMultiPolygonAsSinglePolygon(std::nullptr_t,
                                                            const MultiPolygon2d& multiPolygon);

/// Tells whether a ring has at least 2 points, ends where it starts, and is clockwise:
/// `PolygonArea` of its points is negative.
[[nodiscard]] VELUM_API bool IsValidRing(const Ring2d& ring);
/// Tells whether `IsValidRing` holds for the outer and every inner ring. Inner rings have to be
/// clockwise here too, which those that the set operations give are not.
[[nodiscard]] VELUM_API bool IsValidPolygon(const RingPolygon2d& polygon);
/// Tells whether `IsValidPolygon` holds for every polygon; an empty multi-polygon is valid.
[[nodiscard]] VELUM_API bool IsValidMultiPolygon(const MultiPolygon2d& multiPolygon);

}  // namespace vlm

#pragma once

/// \file
/// What makes any rings good operands, or refuses them: an overlay of Boost.Geometry gives wrong
/// areas for rings that cross, share stretches of edges or lie in each other, without a word.

#include <velum/geometry/PolygonRings.h>

namespace vlm::detail {

/// Returns rings that an overlay treats right and that cover the same area: `polygons` itself
/// where no ring meets another or itself, otherwise `repaired`, which is filled.
///
/// The area is what lies in more outer than inner rings, whichever way they run.
///
/// - Rings that touch in points, or along edges: what they bound together is bounded anew. Edges
///   with area on both sides go.
/// - Rings in rings of the same kind, paths of no width, points that repeat, rings that are not
///   closed: likewise.
/// - Rings of no area go.
///
/// No point is computed: all points of the result are points of the rings.
///
/// *Errors*: `boost::geometry::overlay_invalid_input_exception` where two edges cross, where two
/// ways through one point cross there, where more inner than outer rings hold something, and for a
/// coordinate that is not finite. `std::bad_alloc`.
///
/// *Cost*: O(n log n) for n points; every comparison is exact.
[[nodiscard]] const MultiPolygon2d& PrepareRings(const MultiPolygon2d& polygons,
                                                 MultiPolygon2d& repaired);

/// Returns what bounds the area of rings anew, each hole with the polygon that it is in, also where
/// nothing has to be repaired.
///
/// *Errors*, *Cost*: those of `PrepareRings`.
[[nodiscard]] MultiPolygon2d RebuildRings(const MultiPolygon2d& polygons);

}  // namespace vlm::detail

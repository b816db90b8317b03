#pragma once

/// \file
/// Set operations on rings, by Boost.Geometry and the clipper, behind plain functions: the overlay
/// takes seconds to compile.

#include <velum/geometry/Box2.h>
#include <velum/geometry/PolygonRings.h>

namespace vlm::detail {

/// The set operations, as `GPolygon2d` names them.
enum class RingOperation { kIntersection, kUnion, kDifference, kXor };

/// Returns the result of an operation, which is a good operand of the next. The exclusive-or is
/// both differences, not merged, unless rounding makes them cross.
///
/// *Errors*: `boost::geometry::overlay_invalid_input_exception`, see `PrepareRings`;
/// `std::bad_alloc`. *Cost*: that of the clipper, see Gpc.h.
[[nodiscard]] MultiPolygon2d Overlay(RingOperation operation, const MultiPolygon2d& left,
                                     const MultiPolygon2d& right);

/// Tells whether a ring covers just a box: their areas agree, and so do their edges, collinear runs
/// of them taken as one.
[[nodiscard]] bool EqualsBox(const Ring2d& ring, const Box2d& box);

/// Throws `boost::geometry::overlay_invalid_input_exception`.
[[noreturn]] void ThrowInvalidInput();

}  // namespace vlm::detail

#pragma once

/// \file
/// Ellipses as closed polylines.
///
///     vlm::Vec2d points[4 * 8 + 1];
///     vlm::ComputeEllipse(vlm::Box2d(0, 0, 4, 2), 8, points);

#include <velum/core/Api.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>

namespace vlm {

/// Writes the points of the ellipse that fills `box`: `n` steps a quarter, from the rightmost point
/// up and round. The last point is the first one again, up to the sign of a zero and to rounding.
///
/// - `n` not above 0: nothing.
/// \pre There is room for 4 n + 1 points.
VELUM_API void ComputeEllipse(const Box2d& box, int n, Vec2d* points) noexcept;

}  // namespace vlm

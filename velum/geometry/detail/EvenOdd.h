#pragma once

/// \file
/// Whether a point lies in a contour, told exactly.

#include <velum/geometry/Gpc.h>
#include <velum/geometry/Vec2.h>

namespace vlm::detail {

/// Tells whether an odd number of a contour's edges lie to the right of a point, at its height. An
/// edge holds its lower end and not its upper one; a point on it is not to its left. Each edge is
/// told exactly, so that the two sides of a path of no width cancel.
[[nodiscard]] bool IsInContour(const gpc_vertex_list& contour, const Vec2d& point) noexcept;

}  // namespace vlm::detail

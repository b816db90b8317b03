#pragma once

/// \file
/// How many edges of a contour pass a point on one side, modulo 2: the core of PointInPolygon.

#include <velum/geometry/Vec2.h>

namespace vlm::detail {

/// Tells whether an odd number of edges passes the point, `count` above 0. It takes the fastest
/// form that the processor runs.
[[nodiscard]] bool OddNumberOfEdges(const Vec2d& p, const Vec2d* points, unsigned count) noexcept;

/// Tells the same for the edges from point i - 1 to point i of an open path, i from 1 on, edge by
/// edge.
[[nodiscard]] bool OddNumberOnPath(const Vec2d& p, const Vec2d* points, unsigned count) noexcept;

/// Tells the same, sixteen edges at a time. Only where `platform::HasFourWide`.
[[nodiscard]] bool OddNumberOnPathFourWide(const Vec2d& p, const Vec2d* points,
                                           unsigned count) noexcept;

}  // namespace vlm::detail

#pragma once

/// \file
/// Thinning of paths: fewer points, much the same shape.
///
///     std::vector<vlm::Vec2d> coast = Coastline();
///     std::vector<vlm::Vec2d> thin;
///     vlm::GThinByAngularDeviation(coast.data(), unsigned(coast.size()), 0.05, thin);

#include <velum/core/Api.h>
#include <velum/geometry/Vec2.h>

#include <vector>

namespace vlm {

/// Appends to `out` the points of a path where it changes direction by more than `radians`, and its
/// two ends. Only neighbouring segments are compared: a long gentle curve can vanish altogether.
///
/// - Fewer than 5 points: all of them.
/// - A repeated point: a segment without length keeps the direction of the one before it.
/// - `points` null: none.
///
/// *Errors*: `ERR_OUT_OF_MEMORY` when `out` can't grow; it is as it was then.
///
/// *Cost*: linear; directions are compared without angles wherever that is sure to give the same
/// answer. `points` must not lie in `out`.
VELUM_API void GThinByAngularDeviation(const Vec2d* points, unsigned count, double radians,
                                       std::vector<Vec2d>& out);

/// Appends to `out` the points of a path where it turns back in x or in y, and its two ends. A
/// point before a segment that is horizontal, vertical or without length is dropped.
///
/// - Fewer than 5 points: all of them.
/// - `points` null: none.
///
/// *Errors*: `ERR_OUT_OF_MEMORY` when `out` can't grow; it is as it was then.
///
/// *Cost*: linear. `points` must not lie in `out`.
VELUM_API void GThinToMinimalDetail(const Vec2d* points, unsigned count, std::vector<Vec2d>& out);

}  // namespace vlm

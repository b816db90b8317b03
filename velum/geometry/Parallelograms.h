#pragma once

/// \file
/// The map of the plane that three points and their images settle.
///
///     const vlm::Vec2d sheet[] = {{0, 0}, {400, 0}, {0, 300}};
///     const vlm::Vec2d land[] = {{10, 50}, {14, 50}, {10, 47}};
///     vlm::Mat3d m;
///     if (vlm::MapParallelogramToParallelogram(m, sheet, land)) {
///       vlm::Vec2d place = vlm::Vec2d(200, 150) * m;  // (12, 48.5)
///     }

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>

namespace vlm {

/// Sets `m` to the affine transform that takes `from[i]` to `to[i]`, for three corners of a
/// parallelogram each. Up to rounding: `from[i] * m` is `to[i]`.
///
/// - Three collinear points in `from`, as `Mat3d::Inverse` tells it: `false`, and `m` holds the
///   sides of that parallelogram in its first two rows and its first corner in the third.
[[nodiscard]] VELUM_API bool MapParallelogramToParallelogram(Mat3d& m, const Vec2d* from,
                                                             const Vec2d* to) noexcept;

}  // namespace vlm

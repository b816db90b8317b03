#pragma once

/// \file
/// The outline of a triangle strip.
///
///     vlm::Vec2d const strip[] = {{0, 0}, {0, 1}, {1, 0}, {1, 1}};
///     vlm::Vec2d outline[4];
///     vlm::GTriStripToCCWPolygon(strip, 4, outline);  // (0, 0), (1, 0), (1, 1), (0, 1)

#include <velum/core/Api.h>
#include <velum/geometry/Vec2.h>

namespace vlm {

/// Writes the vertices of a strip as a closed path, first those with odd index and then, backwards,
/// those with even index. `out` has room for `count` points and is another array than `strip`.
///
/// - No vertices, or a null array: nothing.
VELUM_API void GTriStripToCWPolygon(const Vec2d* strip, unsigned count, Vec2d* out) noexcept;
/// Writes the vertices of a strip as a closed path the other way round, first those with even index
/// and then, backwards, those with odd index.
VELUM_API void GTriStripToCCWPolygon(const Vec2d* strip, unsigned count, Vec2d* out) noexcept;

}  // namespace vlm

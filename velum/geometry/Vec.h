#pragma once

/// \file
/// All vectors of the library: Vec2i, Vec2f, Vec2d, Vec3i, Vec3f, Vec3d, Vec4f and Vec4d.
///
///     vlm::Vec3f fine(vlm::Vec3d(0.1, 0.2, 0.3));
///     double dot = fine.Dot(vlm::Vec3f::ONE);

// IWYU pragma: begin_exports
#include <velum/geometry/Vec2.h>
#include <velum/geometry/Vec3.h>
#include <velum/geometry/Vec4.h>
// IWYU pragma: end_exports

#pragma once

/// \file
/// All boxes of the library: Box2f, Box2d, Box3f and Box3d.
///
///     vlm::Box3d space(vlm::Vec3d::ZERO);  // the box of one point
///     space.Inflate(1, 1, 1);

// IWYU pragma: begin_exports
#include <velum/geometry/Box2.h>
#include <velum/geometry/Box3.h>
// IWYU pragma: end_exports

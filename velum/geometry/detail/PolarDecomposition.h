#pragma once

/// \file
/// The factors of a linear map of space: a rotation, and a stretch along three axes at right
/// angles.

#include <velum/geometry/Mat3d.h>
#include <velum/geometry/Quat4.h>
#include <velum/geometry/Vec3.h>

namespace vlm::detail {

/// A linear map in the order of its application: turn back by `orientation`, scale, turn by
/// `orientation`; rotate.
struct Stretch {
  Quat4d rotation;     ///< The rotation, a unit quaternion.
  Vec3d scale;         ///< The factors along the axes; all with the sign of the determinant.
  Quat4d orientation;  ///< What turns the coordinate axes into those of the stretch.
};

/// Factors the linear part of a transform of row vectors. The orientation is the one of all
/// possible ones that turns least.
///
/// - Singular: one or more factors are 0 or rounding errors; the rotation fits what is left.
/// - Infinities or NaN: factors that mean nothing.
///
/// *Source*: Shoemake and Duff, Matrix animation and polar decomposition, 1992.
[[nodiscard]] Stretch Decompose(const Mat3d& linear) noexcept;

}  // namespace vlm::detail

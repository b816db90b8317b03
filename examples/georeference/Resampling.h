#pragma once

/// \file
/// Images resampled through a registration.
///
///     const auto straight = vlm::georeference::Resampled(sheet, toSheet, frame, 600);

#include <velum/geometry/Box2.h>
#include <velum/numerics/ImageRegistration.h>
#include <examples/common/Handles.h>

namespace vlm::georeference {

/// Makes an image of a box of the map, `width` pixels wide and north up. The colour of each pixel
/// is that of its place on the sheet, in pixels from the lower left corner, between the four pixels
/// there; beyond the sheet it is white.
[[nodiscard]] examples::SurfacePtr Resampled(struct _cairo_surface* sheet,
                                             const CImageRegistration& toSheet, const Box2d& map,
                                             int width);

}  // namespace vlm::georeference

#pragma once

/// \file
/// Which contours of two polygons a clip has to look at: those whose bounding boxes meet.

#include <velum/geometry/Gpc.h>
#include <velum/geometry/detail/clip/ClipArray.h>

namespace vlm::detail {

/// A closed rectangle.
struct ContourBox {
  double minX, minY, maxX, maxY;
};

/// The bounding boxes of a polygon's contours. A contour without vertices has an inverted box,
/// which meets nothing.
///
/// *Errors*: `ERR_INTERNAL` for a vertex that is not finite and for a missing array; "Bounding box
/// creation".
void MeasureContours(const gpc_polygon& polygon, ClipArray<ContourBox>& boxes);

/// Clears the flag of each of `boxes` that meets none of `others`. Boxes that only touch meet.
///
/// *Errors*: "overlap table creation". *Cost*: about n log n for n boxes in all.
void RejectApart(const ClipArray<ContourBox>& boxes, const ClipArray<ContourBox>& others,
                 ClipArray<bool>& enabled);

}  // namespace vlm::detail

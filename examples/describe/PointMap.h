#pragma once

/// \file
/// A map of points, coloured by a third variable.
///
///     vlm::describe::DrawPointMap(context, window, points, labels);

#include <velum/geometry/Box2.h>
#include <velum/numerics/RMatrix.h>

#include <string>
#include <vector>

struct _cairo;

namespace vlm::describe {

/// How high a map of points is that is `width` wide, the names of its axes not counted, so that
/// both axes have one scale, within what is reasonable.
[[nodiscard]] double PointMapHeight(double width, const RMatrix& points);

/// Draws points whose rows hold x, y and perhaps z, the highest z last. The scale of z stands on
/// the right, inside the window; ticks and titles, math texts, stand outside, below and on the
/// left.
void DrawPointMap(struct _cairo* context, const Box2d& window, const RMatrix& points,
                  const std::vector<std::string>& labels);

}  // namespace vlm::describe

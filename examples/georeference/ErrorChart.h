#pragma once

/// \file
/// A chart of the errors of all methods, on a logarithmic axis.
///
///     vlm::georeference::DrawErrorChart(context, window, "f", trials);

#include <velum/geometry/Box2.h>
#include <examples/georeference/Trials.h>

#include <string>
#include <vector>

struct _cairo;

namespace vlm::georeference {

/// Draws for each method but the identity a line from the root-mean-square error to the worst one
/// among the other points, into a window of the page whose y grows downwards, and a heading with a
/// letter above it.
void DrawErrorChart(struct _cairo* context, const Box2d& window, const std::string& letter,
                    const std::vector<Trial>& trials);

}  // namespace vlm::georeference

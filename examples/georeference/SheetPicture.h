#pragma once

/// \file
/// The sheet before and after, as a picture of six panels.
///
///     vlm::georeference::DrawComparison(sheet.get(), points, trials, "georeference.png");

#include <examples/georeference/ControlPoints.h>
#include <examples/georeference/Trials.h>

#include <string>
#include <vector>

struct _cairo_surface;

namespace vlm::georeference {

/// Draws the sheet with its control points, the maps that four methods make of it under a straight
/// grid, and the errors of all, to a file that ends in .png, .svg or .pdf.
///
/// *Errors*: those of `WritePicture`.
void DrawComparison(struct _cairo_surface* sheet, const ControlPoints& points,
                    const std::vector<Trial>& trials, const std::string& path);

}  // namespace vlm::georeference

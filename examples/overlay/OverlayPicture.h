#pragma once

/// \file
/// Two outlines and their combinations as a picture of six panels.
///
///     vlm::overlay::DrawOverlay(outlines[0], outlines[1], results, "overlay.png");

#include <examples/overlay/Outlines.h>
#include <examples/overlay/Results.h>

#include <string>

namespace vlm::overlay {

/// Draws both outlines, their intersection under clipped hatching, their union under dashed
/// hatching, their difference as triangle strips, their exclusive-or with its holes, and a stretch
/// of coast thinned in two ways, to a file that ends in .png, .svg or .pdf.
///
/// *Errors*: those of `WritePicture`.
void DrawOverlay(const Outline& first, const Outline& second, const Results& results,
                 const std::string& path);

}  // namespace vlm::overlay

#pragma once

/// \file
/// A picture beside itself in few colours.
///
///     vlm::palette::DrawSheet(image, "harbour.png", "sheet.png");

#include <examples/palette/Image.h>

#include <string>

namespace vlm::palette {

/// Draws a picture and, below each other, itself in 256, 16 and 4 colours by the nearest entry and
/// by diffusion, with the palettes and the errors, and the names of its 16 colours.
///
/// *Errors*: those of `examples::WritePicture` and `NearestName`.
void DrawSheet(const Image& image, const std::string& name, const std::string& path);

}  // namespace vlm::palette

#pragma once

/// \file
/// A sketch as a picture.
///
///     vlm::sketchbook::DrawSketch(sketch, "bench.png");

#include <examples/sketchbook/Document.h>

#include <string>

namespace vlm::sketchbook {

/// Draws a sketch, with a margin around it, to a file that ends in .png, .svg or .pdf.
///
/// *Errors*: those of `WritePicture`; `Exception` for a sketch that is too large for a picture.
void DrawSketch(const Document& document, const std::string& path);

}  // namespace vlm::sketchbook

#pragma once

/// \file
/// A palette in words and figures.
///
///     vlm::palette::PrintReport(std::cout, image, quantized);

#include <examples/palette/Quantized.h>

#include <iosfwd>
#include <string>

namespace vlm::palette {

/// "#RRGGBB".
[[nodiscard]] std::string HexOf(const RGBQUAD& color);

/// Tells size and colours of a picture, the error of the reduced one, and its palette: how many
/// pixels in a hundred have a colour, its channels, and the nearest name.
void PrintReport(std::ostream& out, const Image& image, const Quantized& quantized);

}  // namespace vlm::palette

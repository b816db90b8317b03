#pragma once

/// \file
/// A picture reduced to a palette of its own, with figures.
///
///     const auto few = vlm::palette::Quantize(image, 16, false);

#include <examples/palette/Image.h>

#include <cstddef>
#include <string>
#include <vector>

namespace vlm::palette {

/// A picture of few colours, made from one of many. A plain value.
struct Quantized {
  std::size_t coloursBefore = 0;       ///< how many different ones the picture had
  IndexedImage image;                  ///< the palette's most frequent entry first
  std::vector<std::size_t> frequency;  ///< how many pixels have each entry
  double meanSquaredError = 0.0;
};

/// Reduces a picture to at most `colors` colours, from 1 to 256: counts its own, cuts them at their
/// medians, and gives each pixel the nearest entry, or with `diffuses` spreads what it is off by.
[[nodiscard]] Quantized Quantize(const Image& image, unsigned colors, bool diffuses);

/// The name in the colour table that is nearest to a colour.
///
/// *Errors*: `Exception` if there is no colour table.
[[nodiscard]] std::string NearestName(const RGBQUAD& color);

}  // namespace vlm::palette

#pragma once

/// \file
/// The colours of a picture and how many pixels each has.
///
///     const std::vector<vlm::ColorCount> colors = vlm::palette::CountColors(image);

#include <velum/colour/ColorCount.h>
#include <examples/palette/Image.h>

#include <vector>

namespace vlm::palette {

/// Counts the colours of a picture, in the order of their words 0x00BBGGRR. *Cost*: three passes
/// over the pixels, and memory of twice theirs.
[[nodiscard]] std::vector<ColorCount> CountColors(const Image& image);

}  // namespace vlm::palette

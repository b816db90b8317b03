#pragma once

/// \file
/// A palette of few colours for a picture of many.
///
///     std::vector<vlm::ColorCount> colors = {{0x000000, 40}, {0x101010, 20}, {0xFFFFFF, 40}};
///     std::vector<vlm::RGBQUAD> palette;
///     vlm::MedianCut(colors, palette, 2);  // (5, 5, 5) and (255, 255, 255)

#include <velum/colour/ColorCount.h>
#include <velum/core/Api.h>
#include <velum/platform/Types.h>

#include <vector>

namespace vlm {

/// Fills `palette` with at most `maxColors` colours that stand for those of a picture, given with
/// their numbers of pixels, and brings these into another order.
///
/// The colours are a box that is cut in two, and so are the boxes that come of it, those of fewer
/// cuts first, until there are enough or each holds one colour. A cut goes across the widest of
/// the three channels, blue before green before red among equals, where half of the pixels lie on
/// either side. An entry is the mean of a box's pixels, with the reserved byte 0, in the order of
/// the boxes: a cut puts the upper part at the end.
///
/// `colors` then holds the boxes one after the other. Colours that are equal in the channel of a
/// cut stand in the order of their words, equal ones in that of their numbers: so neither the
/// palette nor the order depends on the order in which they came.
/// - A `maxColors` of 0 acts as 1, one above 256 as 256.
/// - For 1 nothing is cut: the entry is the mean of all, added up in single precision in the order
///   in which they came, and `colors` stays as it is.
/// - Entries without a pixel take no part, and come last. Where there is no other, the palette is
///   empty.
///
/// *Errors*: `ERR_OUT_OF_MEMORY` from "MedianCut"; the palette is then empty and the colours are as
/// they were.
/// *Cost*: a few passes over the colours for each doubling of the palette, memory of about twice
/// theirs.
/// *Source*: P. Heckbert, Color image quantization for frame buffer display, SIGGRAPH 1982.
VELUM_API void MedianCut(std::vector<ColorCount>& colors, std::vector<RGBQUAD>& palette,
                         unsigned int maxColors);

}  // namespace vlm

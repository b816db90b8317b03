#pragma once

/// \file
/// A picture of true colours, as the program works with it.
///
///     vlm::palette::Image image{2, 1, {{0, 0, 255, 0}, {255, 0, 0, 0}}};  // red, blue

#include <velum/colour/Dib.h>
#include <velum/platform/Types.h>

#include <vector>

namespace vlm::palette {

/// Pixels row by row, the upper row first; reserved bytes are 0. A plain value.
struct Image {
  int width = 0;
  int height = 0;
  std::vector<RGBQUAD> pixels;
};

/// A picture of at most 256 colours: an index into the palette for each pixel. A plain value.
struct IndexedImage {
  int width = 0;
  int height = 0;
  std::vector<unsigned char> indices;
  std::vector<RGBQUAD> palette;
};

/// The true colours of a bitmap of 1, 4, 8, 16, 24 or 32 bits. An index without a colour is black.
[[nodiscard]] Image ImageOf(const CDib& dib);

/// The true colours of a picture of few.
[[nodiscard]] Image ImageOf(const IndexedImage& image);

/// A bitmap of 1, 4 or 8 bits, as few as the palette allows.
[[nodiscard]] CDib DibOf(const IndexedImage& image);

/// The mean squared difference of two pictures of one size, over all channels of all pixels.
[[nodiscard]] double MeanSquaredError(const Image& a, const Image& b);

/// The same as a peak signal-to-noise ratio in decibels: 10 log10(255² / error); infinite for 0.
[[nodiscard]] double Decibels(double meanSquaredError);

}  // namespace vlm::palette

#include <examples/palette/Quantized.h>

#include <velum/colour/Color4b.h>
#include <velum/colour/ColorTable.h>
#include <velum/colour/MedianCut.h>
#include <examples/palette/Histogram.h>
#include <examples/palette/NearestColor.h>

#include <algorithm>
#include <array>
#include <numeric>

namespace vlm::palette {
namespace {

/// Puts the most frequent entries of the palette first.
void SortByFrequency(Quantized& result) {
  IndexedImage& image = result.image;
  std::vector<std::size_t> frequency(image.palette.size());
  for (const unsigned char index : image.indices) ++frequency[index];
  std::vector<unsigned char> order(image.palette.size());
  std::iota(order.begin(), order.end(), static_cast<unsigned char>(0));
  std::stable_sort(order.begin(), order.end(),
                   [&](unsigned char a, unsigned char b) { return frequency[a] > frequency[b]; });
  std::array<unsigned char, 256> placeOf{};
  std::vector<RGBQUAD> palette;
  for (const unsigned char index : order) {
    placeOf[index] = static_cast<unsigned char>(palette.size());
    palette.push_back(image.palette[index]);
    result.frequency.push_back(frequency[index]);
  }
  for (unsigned char& index : image.indices) index = placeOf[index];
  image.palette = palette;
}

int SquaredDistance(const RGBQUAD& a, const Color4b& b) {
  const int red = a.rgbRed - b.R;
  const int green = a.rgbGreen - b.G;
  const int blue = a.rgbBlue - b.B;
  return red * red + green * green + blue * blue;
}

}  // namespace

Quantized Quantize(const Image& image, unsigned colors, bool diffuses) {
  Quantized result;
  std::vector<ColorCount> counts = CountColors(image);
  result.coloursBefore = counts.size();
  std::vector<RGBQUAD> palette;
  MedianCut(counts, palette, colors);
  result.image = diffuses ? MapWithDiffusion(image, palette) : MapToNearest(image, palette);
  SortByFrequency(result);
  result.meanSquaredError = MeanSquaredError(image, ImageOf(result.image));
  return result;
}

std::string NearestName(const RGBQUAD& color) {
  const CColorTable& table = CColorTable::Instance();
  const auto distance = [&](const CColorTableEntry& entry) {
    return SquaredDistance(color, Color4b(entry.Color(), ALPHA_MAX));
  };
  const auto nearest =
      std::min_element(table.begin(), table.end(),
                       [&](const auto& a, const auto& b) { return distance(a) < distance(b); });
  return nearest == table.end() ? std::string() : nearest->Name().c_str();
}

}  // namespace vlm::palette

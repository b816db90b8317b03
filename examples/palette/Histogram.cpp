#include <examples/palette/Histogram.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace vlm::palette {
namespace {

std::uint32_t WordOf(const RGBQUAD& pixel) {
  return std::uint32_t{pixel.rgbBlue} << 16 | std::uint32_t{pixel.rgbGreen} << 8 | pixel.rgbRed;
}

/// All colours in order, sorted by one channel after the other.
std::unique_ptr<std::uint32_t[]> SortedWords(const std::vector<RGBQUAD>& pixels) {
  std::array<std::array<std::uint32_t, 256>, 3> places{};
  for (const RGBQUAD& pixel : pixels) {
    ++places[0][pixel.rgbRed];
    ++places[1][pixel.rgbGreen];
    ++places[2][pixel.rgbBlue];
  }
  for (auto& tally : places) {
    std::uint32_t next = 0;
    for (std::uint32_t& entry : tally) next += std::exchange(entry, next);
  }
  // Not vectors, which would be filled with zeros first.
  std::unique_ptr<std::uint32_t[]> a(new std::uint32_t[pixels.size()]);
  const std::unique_ptr<std::uint32_t[]> b(new std::uint32_t[pixels.size()]);
  for (const RGBQUAD& pixel : pixels) a[places[0][pixel.rgbRed]++] = WordOf(pixel);
  const auto sort = [&](const std::uint32_t* from, std::uint32_t* to, std::size_t channel) {
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      to[places[channel][from[i] >> (8 * channel) & 0xFF]++] = from[i];
    }
  };
  sort(a.get(), b.get(), 1);
  sort(b.get(), a.get(), 2);
  return a;
}

}  // namespace

std::vector<ColorCount> CountColors(const Image& image) {
  const std::size_t size = image.pixels.size();
  const std::unique_ptr<std::uint32_t[]> words = SortedWords(image.pixels);
  std::size_t changes = 1;
  for (std::size_t i = 1; i < size; ++i) changes += words[i] != words[i - 1];
  std::vector<ColorCount> colors;
  colors.reserve(changes);
  for (std::size_t i = 0; i < size;) {
    std::size_t end = i + 1;
    while (end < size && words[end] == words[i]) ++end;
    colors.emplace_back(words[i], static_cast<unsigned>(end - i));
    i = end;
  }
  return colors;
}

}  // namespace vlm::palette

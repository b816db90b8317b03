#pragma once

/// \file
/// The cuts and the means as they are told, each box sorted anew: what the library's own are held
/// against.

#include <velum/colour/ColorCount.h>
#include <velum/platform/Types.h>

#include <algorithm>
#include <array>
#include <tuple>
#include <vector>

namespace vlm::test {

/// A box of colours.
struct PlainBox {
  std::vector<ColorCount> colors;
  unsigned level = 0;

  [[nodiscard]] unsigned Count() const {
    unsigned count = 0;
    for (const ColorCount& color : colors) count += color.GetCount();
    return count;
  }
  // The values of red, green and blue.
  [[nodiscard]] std::array<std::vector<int>, 3> Channels() const {
    std::array<std::vector<int>, 3> values;
    for (const ColorCount& color : colors) {
      values[0].push_back(color.GetRed());
      values[1].push_back(color.GetGreen());
      values[2].push_back(color.GetBlue());
    }
    return values;
  }
};

/// Cuts off the upper part of a box.
inline PlainBox CutOff(PlainBox& box) {
  std::array<int, 3> range{};
  const auto values = box.Channels();
  for (std::size_t c = 0; c < 3; ++c) {
    const auto [least, most] = std::minmax_element(values[c].begin(), values[c].end());
    range[c] = *most - *least;
  }
  int channel = 2;
  if (range[1] > range[2]) channel = 1;
  if (range[0] > range[static_cast<std::size_t>(channel)]) channel = 0;
  std::sort(box.colors.begin(), box.colors.end(), [&](const ColorCount& a, const ColorCount& b) {
    const auto key = [&](const ColorCount& c) {
      const int value = channel == 0 ? c.GetRed() : channel == 1 ? c.GetGreen() : c.GetBlue();
      return std::make_tuple(value, c.GetColor(), c.GetCount());
    };
    return key(a) < key(b);
  });
  const unsigned half = box.Count() / 2;
  unsigned sum = 0;
  std::size_t i = 0;
  while (i + 1 < box.colors.size() && sum < half) sum += box.colors[i++].GetCount();
  const auto cut = box.colors.begin() + static_cast<std::ptrdiff_t>(i);
  PlainBox upper{{cut, box.colors.end()}, ++box.level};
  box.colors.erase(cut, box.colors.end());
  return upper;
}

/// `MedianCut` for colours that all have pixels.
inline void PlainMedianCut(std::vector<ColorCount>& colors, std::vector<RGBQUAD>& palette,
                           unsigned maxColors) {
  std::vector<PlainBox> boxes = {{colors, 0}};
  while (boxes.size() < maxColors) {
    PlainBox* next = nullptr;
    for (PlainBox& box : boxes) {
      if (box.colors.size() > 1 && (!next || box.level < next->level)) next = &box;
    }
    if (!next) break;
    PlainBox upper = CutOff(*next);
    boxes.push_back(std::move(upper));
  }
  palette.clear();
  for (const PlainBox& box : boxes) {
    std::array<std::uint8_t, 3> mean{};
    const auto values = box.Channels();
    for (std::size_t c = 0; c < 3; ++c) {
      float sum = 0;
      for (std::size_t i = 0; i < box.colors.size(); ++i) {
        sum += static_cast<float>(box.colors[i].GetCount() * static_cast<unsigned>(values[c][i]));
      }
      mean[c] = static_cast<std::uint8_t>(sum / static_cast<float>(box.Count()));
    }
    palette.push_back({mean[2], mean[1], mean[0], 0});
  }
}

}  // namespace vlm::test

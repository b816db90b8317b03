#pragma once

/// \file
/// The entry of a palette that is nearest to a colour.
///
///     vlm::palette::NearestColor nearest(palette);
///     const unsigned char index = nearest.Find(255, 0, 0);

#include <velum/platform/Types.h>
#include <examples/palette/Image.h>

#include <array>
#include <cstdint>
#include <vector>

namespace vlm::palette {

/// Finds nearest entries by the squared distance of red, green and blue; the first among equals.
///
/// Colours are looked for in cells of 8 by 8 by 8. A cell keeps the entries that can be nearest to
/// a colour in it, once it has been asked for one, and colours that come again soon are known. So
/// an object belongs to one thread at a time.
class NearestColor {
 public:
  /// Takes a palette of 1 to 256 entries.
  explicit NearestColor(const std::vector<RGBQUAD>& palette);

  /// The index of the nearest entry.
  [[nodiscard]] unsigned char Find(int red, int green, int blue);

 private:
  static constexpr int kCellBits = 3;
  static constexpr int kCells = 256 >> kCellBits;  // on a side
  struct Range {
    std::uint32_t first = 0;
    std::uint32_t size = 0;  // 0 for a cell that has not been asked for
  };
  struct Entry {
    std::int16_t red, green, blue, index;
  };
  struct Distances {
    std::vector<std::int32_t> least, most;
  };

  // A colour, 0xRRGGBB, that was looked for, and its entry.
  struct Known {
    std::uint32_t word = 0xFFFFFFFF;
    std::uint32_t index = 0;
  };
  static constexpr int kKnownBits = 16;

  [[nodiscard]] unsigned char Search(int red, int green, int blue);
  [[nodiscard]] Range MakeCell(int red, int green, int blue);

  std::vector<Entry> entries_;
  // The squared distance of each entry to a slab of cells across a channel.
  std::array<std::array<Distances, kCells>, 3> slabs_;
  std::vector<Range> cells_;
  std::vector<Entry> candidates_;
  std::vector<std::int32_t> least_;
  std::vector<Known> known_;
};

/// Gives each pixel its nearest entry.
[[nodiscard]] IndexedImage MapToNearest(const Image& image, const std::vector<RGBQUAD>& palette);

/// Gives each pixel an entry so that what it is off by is made up for by its neighbours.
///
/// Rows go to the right and to the left by turns. *Source*: R. Floyd and L. Steinberg, An adaptive
/// algorithm for spatial grey scale, 1976.
[[nodiscard]] IndexedImage MapWithDiffusion(const Image& image,
                                            const std::vector<RGBQUAD>& palette);

}  // namespace vlm::palette

#include <examples/palette/NearestColor.h>

#include <algorithm>
#include <cstddef>
#include <limits>

namespace vlm::palette {
namespace {

constexpr int kIndexBits = 8;

int Squared(int value) { return value * value; }

int ChannelOf(const RGBQUAD& color, std::size_t channel) {
  return channel == 0 ? color.rgbRed : channel == 1 ? color.rgbGreen : color.rgbBlue;
}

/// What the neighbours of the pixels have to make up for, in sixteenths: of this row and the next.
class Debts {
 public:
  explicit Debts(int width) : now_(Size(width)), next_(Size(width)) {}

  [[nodiscard]] const std::array<int, 3>& At(int x) const { return now_[Place(x)]; }
  void Pay(int x, int step, const std::array<int, 3>& error) {
    for (std::size_t c = 0; c < 3; ++c) {
      now_[Place(x + step)][c] += 7 * error[c];
      next_[Place(x - step)][c] += 3 * error[c];
      next_[Place(x)][c] += 5 * error[c];
      next_[Place(x + step)][c] += error[c];
    }
  }
  void NextRow() {
    now_.swap(next_);
    std::fill(next_.begin(), next_.end(), std::array<int, 3>{});
  }

 private:
  // A place more at both ends, where nothing is made up for.
  static std::size_t Size(int width) { return static_cast<std::size_t>(width) + 2; }
  static std::size_t Place(int x) { return static_cast<std::size_t>(x + 1); }

  std::vector<std::array<int, 3>> now_;
  std::vector<std::array<int, 3>> next_;
};

}  // namespace

NearestColor::NearestColor(const std::vector<RGBQUAD>& palette)
    : cells_(kCells * kCells * kCells),
      least_(palette.size()),
      known_(std::size_t{1} << kKnownBits) {
  for (const RGBQUAD& color : palette) {
    entries_.push_back(
        {color.rgbRed, color.rgbGreen, color.rgbBlue, static_cast<std::int16_t>(entries_.size())});
  }
  for (std::size_t channel = 0; channel < 3; ++channel) {
    for (int cell = 0; cell < kCells; ++cell) {
      const int low = cell << kCellBits;
      const int high = low + (1 << kCellBits) - 1;
      Distances& slab = slabs_[channel][static_cast<std::size_t>(cell)];
      for (const RGBQUAD& color : palette) {
        const int value = ChannelOf(color, channel);
        slab.least.push_back(Squared(std::max({low - value, value - high, 0})));
        slab.most.push_back(Squared(std::max(value - low, high - value)));
      }
    }
  }
}

unsigned char NearestColor::Find(int red, int green, int blue) {
  constexpr std::uint32_t kSpread = 0x9E3779B1;  // D. Knuth's multiplicative hashing
  const auto word = static_cast<std::uint32_t>(red << 16 | green << 8 | blue);
  Known& known = known_[word * kSpread >> (32 - kKnownBits)];
  if (known.word != word) known = {word, Search(red, green, blue)};
  return static_cast<unsigned char>(known.index);
}

unsigned char NearestColor::Search(int red, int green, int blue) {
  const int cell =
      ((red >> kCellBits) * kCells + (green >> kCellBits)) * kCells + (blue >> kCellBits);
  Range& range = cells_[static_cast<std::size_t>(cell)];
  if (range.size == 0) range = MakeCell(red >> kCellBits, green >> kCellBits, blue >> kCellBits);
  // The index stands below the distance: so the first among equals is the least, without a branch.
  int best = std::numeric_limits<int>::max();
  const Entry* const first = candidates_.data() + range.first;
  for (const Entry* entry = first; entry != first + range.size; ++entry) {
    const int distance =
        Squared(entry->red - red) + Squared(entry->green - green) + Squared(entry->blue - blue);
    best = std::min(best, distance << kIndexBits | entry->index);
  }
  return static_cast<unsigned char>(best);
}

// An entry can be nearest if its least distance to the cell is not above another's largest.
NearestColor::Range NearestColor::MakeCell(int red, int green, int blue) {
  const Distances& r = slabs_[0][static_cast<std::size_t>(red)];
  const Distances& g = slabs_[1][static_cast<std::size_t>(green)];
  const Distances& b = slabs_[2][static_cast<std::size_t>(blue)];
  int limit = std::numeric_limits<int>::max();
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    limit = std::min(limit, r.most[i] + g.most[i] + b.most[i]);
    least_[i] = r.least[i] + g.least[i] + b.least[i];
  }
  Range range{static_cast<std::uint32_t>(candidates_.size()), 0};
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (least_[i] <= limit) candidates_.push_back(entries_[i]);
  }
  range.size = static_cast<std::uint32_t>(candidates_.size()) - range.first;
  return range;
}

IndexedImage MapToNearest(const Image& image, const std::vector<RGBQUAD>& palette) {
  IndexedImage mapped{image.width, image.height, {}, palette};
  mapped.indices.resize(image.pixels.size());
  NearestColor nearest(palette);
  for (std::size_t i = 0; i < image.pixels.size(); ++i) {
    const RGBQUAD& pixel = image.pixels[i];
    mapped.indices[i] = nearest.Find(pixel.rgbRed, pixel.rgbGreen, pixel.rgbBlue);
  }
  return mapped;
}

IndexedImage MapWithDiffusion(const Image& image, const std::vector<RGBQUAD>& palette) {
  constexpr int kShares = 16;
  IndexedImage mapped{image.width, image.height, {}, palette};
  mapped.indices.resize(image.pixels.size());
  NearestColor nearest(palette);
  Debts debts(image.width);
  for (int y = 0; y < image.height; ++y) {
    const int step = y % 2 == 0 ? 1 : -1;
    for (int i = 0; i < image.width; ++i) {
      const int x = step > 0 ? i : image.width - 1 - i;
      const std::size_t place =
          static_cast<std::size_t>(y) * static_cast<std::size_t>(image.width) +
          static_cast<std::size_t>(x);
      std::array<int, 3> wanted{};
      for (std::size_t c = 0; c < 3; ++c) {
        const int value = ChannelOf(image.pixels[place], c) + debts.At(x)[c] / kShares;
        wanted[c] = std::clamp(value, 0, 255);
      }
      const unsigned char index = nearest.Find(wanted[0], wanted[1], wanted[2]);
      mapped.indices[place] = index;
      for (std::size_t c = 0; c < 3; ++c) wanted[c] -= ChannelOf(palette[index], c);
      debts.Pay(x, step, wanted);
    }
    debts.NextRow();
  }
  return mapped;
}

}  // namespace vlm::palette

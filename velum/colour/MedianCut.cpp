#include <velum/colour/MedianCut.h>

#include <velum/core/ErrorCodes.h>
#include <velum/core/Exception.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

namespace vlm {

namespace {

constexpr unsigned kMostBoxes = 256;

/// An entry as one number: the colour above the count. Numbers are in the order of the colours'
/// words, and among equal ones in that of the counts.
using Entry = std::uint64_t;
using Entries = std::vector<Entry>;

constexpr int kCountBits = 32;

Entry Pack(const ColorCount& color) noexcept {
  return std::uint64_t{color.GetColor()} << kCountBits | color.GetCount();
}

ColorCount Unpack(Entry entry) noexcept {
  return {static_cast<unsigned long>(entry >> kCountBits), static_cast<unsigned int>(entry)};
}

std::uint32_t CountOf(Entry entry) noexcept { return static_cast<std::uint32_t>(entry); }

/// The bytes of a colour's word by their shift in an entry.
enum Channel : int { kRed = 32, kGreen = 40, kBlue = 48, kUnused = 56, kNone = 0 };

std::uint8_t ValueOf(Entry entry, Channel channel) noexcept {
  return static_cast<std::uint8_t>(entry >> channel);
}

/// Sorts entries by one byte after the other, the least important one first.
class Sorter {
 public:
  explicit Sorter(std::size_t largest) : scratch_(largest) {}

  /// Sorts entries by a channel, equal ones by their words. What is large must come with equal
  /// words in the order of their counts.
  void Sort(Entry* first, std::size_t size, Channel channel) {
    constexpr std::size_t kFew = 256;
    if (size < kFew) {
      std::sort(first, first + size, [channel](Entry a, Entry b) {
        const std::uint8_t x = ValueOf(a, channel);
        const std::uint8_t y = ValueOf(b, channel);
        return x < y || (x == y && a < b);
      });
      return;
    }
    Count(first, size);
    Entry* from = first;
    Entry* to = scratch_.data();
    const auto pass = [&](Channel byte) {
      if (Distribute(from, size, to, byte)) std::swap(from, to);
    };
    for (const Channel byte : {kRed, kGreen, kBlue, kUnused}) {
      if (byte != channel) pass(byte);
    }
    pass(channel);
    if (from != first) std::copy_n(from, size, first);
  }

 private:
  using Tally = std::array<std::size_t, 256>;

  /// Counts the values of all four bytes in one go.
  void Count(const Entry* entries, std::size_t size) noexcept {
    for (Tally& tally : tallies_) tally.fill(0);
    for (std::size_t i = 0; i < size; ++i) {
      for (const Channel byte : {kRed, kGreen, kBlue, kUnused})
        ++Of(byte)[ValueOf(entries[i], byte)];
    }
  }

  /// Copies entries in the order of a byte, equal ones in theirs; false if there is only one value.
  bool Distribute(const Entry* from, std::size_t size, Entry* to, Channel byte) noexcept {
    Tally& places = Of(byte);
    if (places[ValueOf(from[0], byte)] == size) return false;
    std::size_t next = 0;
    for (std::size_t& place : places) next += std::exchange(place, next);
    for (std::size_t i = 0; i < size; ++i) to[places[ValueOf(from[i], byte)]++] = from[i];
    return true;
  }

  Tally& Of(Channel byte) noexcept {
    return tallies_[static_cast<std::size_t>((byte - kRed) / (kGreen - kRed))];
  }

  Entries scratch_;
  std::array<Tally, 4> tallies_;
};

/// A run of entries.
struct Box {
  std::size_t lower = 0;
  std::size_t upper = 0;  // the last one
  std::uint64_t count = 0;
  unsigned level = 0;
  Channel sortedBy = kNone;

  [[nodiscard]] std::size_t Size() const noexcept { return upper - lower + 1; }
};

/// The channel of the widest range.
Channel WidestChannel(const Entries& entries, const Box& box) noexcept {
  Channel widest = kBlue;
  int range = -1;
  for (const Channel channel : {kBlue, kGreen, kRed}) {
    int least = 255;
    int most = 0;
    for (std::size_t i = box.lower; i <= box.upper; ++i) {
      const int value = ValueOf(entries[i], channel);
      least = std::min(least, value);
      most = std::max(most, value);
    }
    if (most - least > range) {
      range = most - least;
      widest = channel;
    }
  }
  return widest;
}

/// Cuts a box of two entries or more: leaves it its lower part and gives the upper one. Each holds
/// an entry at least, since half of the pixels are one at least.
Box Cut(Entries& entries, Box& box, Sorter& sorter) {
  const Channel channel = WidestChannel(entries, box);
  if (channel != box.sortedBy) sorter.Sort(entries.data() + box.lower, box.Size(), channel);
  const std::uint64_t half = box.count / 2;
  std::uint64_t sum = 0;
  std::size_t i = box.lower;
  while (i < box.upper && sum < half) sum += CountOf(entries[i++]);
  const Box upper = {i, box.upper, box.count - sum, box.level + 1, channel};
  box = {box.lower, i - 1, sum, box.level + 1, channel};
  return upper;
}

/// The box to be cut next: of those with two entries the first of the fewest cuts; null if there is
/// none.
Box* NextBox(std::vector<Box>& boxes) noexcept {
  Box* next = nullptr;
  for (Box& box : boxes) {
    if (box.Size() > 1 && (!next || box.level < next->level)) next = &box;
  }
  return next;
}

/// The mean of a box's pixels, summed in single precision.
RGBQUAD MeanOf(const Entries& entries, const Box& box) noexcept {
  const auto mean = [&](Channel channel) {
    float sum = 0;
    for (std::size_t i = box.lower; i <= box.upper; ++i) {
      const std::uint64_t product =
          std::uint64_t{CountOf(entries[i])} * ValueOf(entries[i], channel);
      sum += static_cast<float>(product);
    }
    // A long sum may be rounded up more often than down.
    return static_cast<std::uint8_t>(std::min(sum / static_cast<float>(box.count), 255.0F));
  };
  return {mean(kBlue), mean(kGreen), mean(kRed), 0};
}

/// Puts entries in the order of their words, equal ones in that of their counts.
void SortByWord(Entry* first, std::size_t size, Sorter& sorter) {
  if (std::is_sorted(first, first + size)) return;
  sorter.Sort(first, size, kUnused);
  const auto word = [](Entry entry) { return entry >> kCountBits; };
  for (std::size_t i = 0; i < size;) {
    std::size_t end = i + 1;
    while (end < size && word(first[end]) == word(first[i])) ++end;
    std::sort(first + i, first + end);
    i = end;
  }
}

void MakePalette(std::vector<ColorCount>& colors, std::vector<RGBQUAD>& palette, unsigned most) {
  Entries entries(colors.size());
  std::size_t taking = 0;
  std::size_t last = entries.size();
  std::uint64_t pixels = 0;
  for (const ColorCount& color : colors) {
    entries[color.GetCount() > 0 ? taking++ : --last] = Pack(color);
    pixels += color.GetCount();
  }
  Sorter sorter(entries.size());
  SortByWord(entries.data(), taking, sorter);
  SortByWord(entries.data() + taking, entries.size() - taking, sorter);
  std::vector<Box> boxes;
  boxes.reserve(most);
  if (taking > 0) boxes.push_back({0, taking - 1, pixels, 0, kNone});
  while (boxes.size() < most) {
    Box* const next = NextBox(boxes);
    if (!next) break;
    boxes.push_back(Cut(entries, *next, sorter));
  }
  palette.reserve(boxes.size());
  for (const Box& box : boxes) palette.push_back(MeanOf(entries, box));
  std::transform(entries.begin(), entries.end(), colors.begin(), Unpack);
}

}  // namespace

void MedianCut(std::vector<ColorCount>& colors, std::vector<RGBQUAD>& palette,
               unsigned int maxColors) {
  palette.clear();
  try {
    MakePalette(colors, palette, std::clamp(maxColors, 1U, kMostBoxes));
  } catch (const std::bad_alloc&) {
    ThrowErrorImpl("MedianCut", __LINE__, ERR_OUT_OF_MEMORY);
  }
}

}  // namespace vlm

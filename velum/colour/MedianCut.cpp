#include <velum/colour/MedianCut.h>

#include <velum/core/Exception.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
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

/// Puts the entries for which `isFirst` holds before the others, both in their order, and gives
/// their number. Without a branch, of which half would be foreseen wrong.
template <class IsFirst>
std::size_t Divide(Entry* entries, std::size_t size, Entry* scratch, IsFirst isFirst) noexcept {
  std::size_t first = 0;
  std::size_t others = 0;
  for (std::size_t i = 0; i < size; ++i) {
    const Entry entry = entries[i];
    const bool goesFirst = isFirst(entry);
    entries[first] = entry;
    scratch[others] = entry;
    first += goesFirst;
    others += !goesFirst;
  }
  std::copy_n(scratch, others, entries + first);
  return first;
}

/// Sorts entries by a channel, equal ones by their words: by one byte after the other, the least
/// important one first. Equal words keep their order. `scratch` has the size of `entries`.
void SortMany(Entry* entries, std::size_t size, Channel channel, Entry* scratch) {
  Entry* from = entries;
  Entry* to = scratch;
  const auto sortBy = [&](Channel byte) {
    const auto valueOf = [byte](Entry entry) { return ValueOf(entry, byte); };
    std::array<std::size_t, 256> places{};
    for (std::size_t i = 0; i < size; ++i) ++places[valueOf(from[i])];
    if (places[valueOf(from[0])] == size) return;  // one value
    std::size_t next = 0;
    for (std::size_t& place : places) next += std::exchange(place, next);
    for (std::size_t i = 0; i < size; ++i) to[places[valueOf(from[i])]++] = from[i];
    std::swap(from, to);
  };
  for (const Channel byte : {kRed, kGreen, kBlue, kUnused}) {
    if (byte != channel) sortBy(byte);
  }
  sortBy(channel);
  if (from != entries) std::copy_n(from, size, entries);
}

/// The same with equal words in the order of their counts, if they come in it.
void Sort(Entry* entries, std::size_t size, Channel channel, Entry* scratch) {
  constexpr std::size_t kMany = 256;
  if (size >= kMany) {
    SortMany(entries, size, channel, scratch);
    return;
  }
  std::sort(entries, entries + size, [channel](Entry a, Entry b) {
    const std::uint8_t x = ValueOf(a, channel);
    const std::uint8_t y = ValueOf(b, channel);
    return x < y || (x == y && a < b);
  });
}

/// Puts entries in the order of their words, equal ones in that of their counts.
void SortByWord(Entry* entries, std::size_t size, Entry* scratch) {
  if (std::is_sorted(entries, entries + size)) return;
  Sort(entries, size, kUnused, scratch);
  const auto word = [entries](std::size_t i) { return entries[i] >> kCountBits; };
  for (std::size_t i = 0; i < size;) {
    std::size_t end = i + 1;
    while (end < size && word(end) == word(i)) ++end;
    std::sort(entries + i, entries + end);
    i = end;
  }
}

/// A run of entries. Its entries are sorted at the very end, by the channel of its last cut: until
/// then it only matters which they are.
struct Box {
  std::size_t lower = 0;
  std::size_t upper = 0;  // the last one
  std::uint64_t count = 0;
  unsigned level = 0;
  Channel sortedBy = kNone;

  [[nodiscard]] std::size_t Size() const noexcept { return upper - lower + 1; }
};

static_assert(std::endian::native == std::endian::little, "bytes are reached by their shift");

/// The channel whose values lie furthest apart in two entries or more.
Channel WidestChannel(const Entry* entries, std::size_t size) noexcept {
  // The bytes of two entries at a time, which a compiler takes together.
  constexpr std::size_t kPair = 2 * sizeof(Entry);
  using Bytes = std::array<std::uint8_t, kPair>;
  const auto pairAt = [entries](std::size_t i) {
    Bytes pair;
    std::memcpy(pair.data(), entries + i, kPair);
    return pair;
  };
  Bytes least = pairAt(size - 2);  // of an odd number, the last one has no other pair
  Bytes most = least;
  for (std::size_t i = 0; i + 1 < size; i += 2) {
    const Bytes pair = pairAt(i);
    for (std::size_t k = 0; k < kPair; ++k) least[k] = std::min(least[k], pair[k]);
    for (std::size_t k = 0; k < kPair; ++k) most[k] = std::max(most[k], pair[k]);
  }
  const auto range = [&](Channel channel) {
    const auto k = static_cast<std::size_t>(channel / 8);
    return std::max(most[k], most[k + sizeof(Entry)]) -
           std::min(least[k], least[k + sizeof(Entry)]);
  };
  Channel widest = kBlue;
  if (range(kGreen) > range(widest)) widest = kGreen;
  if (range(kRed) > range(widest)) widest = kRed;
  return widest;
}

/// Cuts a box of two entries or more as if it were sorted by its widest channel: leaves it its
/// lower part and gives the upper one. Each holds an entry at least, since half of the pixels are
/// one at least.
Box Cut(Entries& entries, Box& box, Entries& scratch) {
  Entry* const first = entries.data() + box.lower;
  const std::size_t size = box.Size();
  const Channel channel = WidestChannel(first, size);
  std::array<std::uint64_t, 256> counts{};
  for (std::size_t i = 0; i < size; ++i) counts[ValueOf(first[i], channel)] += CountOf(first[i]);
  // The entries are those below, at and above the value at which half of the pixels are reached.
  const std::uint64_t half = box.count / 2;
  std::uint64_t sum = 0;
  int value = 0;
  while (sum + counts[static_cast<std::size_t>(value)] < half) {
    sum += counts[static_cast<std::size_t>(value++)];
  }
  const auto below = Divide(first, size, scratch.data(),
                            [=](Entry entry) { return ValueOf(entry, channel) < value; });
  const auto at = Divide(first + below, size - below, scratch.data(),
                         [=](Entry entry) { return ValueOf(entry, channel) == value; });
  SortByWord(first + below, at, scratch.data());
  std::size_t i = box.lower + below;
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

void MakePalette(std::vector<ColorCount>& colors, std::vector<RGBQUAD>& palette, unsigned most) {
  Entries entries(colors.size());
  std::size_t taking = 0;
  std::size_t last = entries.size();
  std::uint64_t pixels = 0;
  for (const ColorCount& color : colors) {
    entries[color.GetCount() > 0 ? taking++ : --last] = Pack(color);
    pixels += color.GetCount();
  }
  Entries scratch(entries.size());
  if (most > 1) {
    SortByWord(entries.data(), taking, scratch.data());
    SortByWord(entries.data() + taking, entries.size() - taking, scratch.data());
  }
  std::vector<Box> boxes;
  boxes.reserve(most);
  if (taking > 0) boxes.push_back({0, taking - 1, pixels, 0, kNone});
  while (boxes.size() < most) {
    Box* const next = NextBox(boxes);
    if (!next) break;
    boxes.push_back(Cut(entries, *next, scratch));
  }
  for (const Box& box : boxes) {
    if (box.sortedBy != kNone) {
      Sort(entries.data() + box.lower, box.Size(), box.sortedBy, scratch.data());
    }
  }
  palette.reserve(boxes.size());
  for (const Box& box : boxes) palette.push_back(MeanOf(entries, box));
  if (most > 1) std::transform(entries.begin(), entries.end(), colors.begin(), Unpack);
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

#include <velum/geometry/detail/clip/YSort.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace vlm::detail {
namespace {

constexpr unsigned kDigitBits = 11;
constexpr std::size_t kDigits = std::size_t{1} << kDigitBits;
constexpr unsigned kPasses = (64 + kDigitBits - 1) / kDigitBits;

std::size_t Digit(std::uint64_t y, unsigned pass) noexcept {
  return (y >> (pass * kDigitBits)) & (kDigits - 1);
}

}  // namespace

void SortKeys(ClipArray<YKey>& keys) {
  if (keys.size() < 512) {
    std::sort(keys.begin(), keys.end(), [](const YKey& a, const YKey& b) {
      return a.y != b.y ? a.y < b.y : a.vertex < b.vertex;
    });
    return;
  }
  // By digits from the lowest up. Digits that all have in common, as those of round numbers, are
  // passed over.
  ClipArray<std::uint32_t> counts("scanbeam tree insertion");
  counts.Fill(kPasses * kDigits, 0);
  for (const YKey& key : keys) {
    for (unsigned pass = 0; pass < kPasses; ++pass) ++counts[pass * kDigits + Digit(key.y, pass)];
  }
  ClipArray<YKey> other("scanbeam tree insertion");
  other.Resize(keys.size());
  for (unsigned pass = 0; pass < kPasses; ++pass) {
    std::uint32_t* const places = counts.data() + pass * kDigits;
    if (places[Digit(keys[0].y, pass)] == keys.size()) continue;
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < kDigits; ++i) sum += std::exchange(places[i], sum);
    for (const YKey& key : keys) other[places[Digit(key.y, pass)]++] = key;
    keys.Swap(other);
  }
}

}  // namespace vlm::detail

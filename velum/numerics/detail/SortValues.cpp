#include <velum/numerics/detail/SortValues.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace vlm::detail {
namespace {

constexpr std::size_t kMany = 2048;
constexpr std::uint64_t kSign = std::uint64_t{1} << 63;

// Keys are in the order of their values: those of negative values have all bits turned, the others
// the sign.
std::uint64_t KeyOf(double value) noexcept {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  return bits ^ ((bits & kSign) != 0 ? ~std::uint64_t{0} : kSign);
}

double ValueOf(std::uint64_t key) noexcept {
  return std::bit_cast<double>(key ^ ((key & kSign) != 0 ? kSign : ~std::uint64_t{0}));
}

}  // namespace

void SortValues(std::span<double> values) {
  const std::size_t count = values.size();
  if (count < kMany) {
    std::sort(values.begin(), values.end());
    return;
  }
  constexpr std::size_t kBytes = sizeof(std::uint64_t);
  const auto keys = std::unique_ptr<std::uint64_t[]>(new std::uint64_t[2 * count]);
  std::uint64_t* from = keys.get();
  std::uint64_t* to = from + count;
  const auto byteOf = [](std::uint64_t key, std::size_t byte) { return key >> (8 * byte) & 0xFF; };
  std::array<std::array<std::uint32_t, 256>, kBytes> places{};
  for (std::size_t i = 0; i < count; ++i) {
    from[i] = KeyOf(values[i]);
    for (std::size_t byte = 0; byte < kBytes; ++byte) ++places[byte][byteOf(from[i], byte)];
  }
  for (std::size_t byte = 0; byte < kBytes; ++byte) {
    auto& place = places[byte];
    if (place[byteOf(from[0], byte)] == count) continue;  // all keys have the same one
    std::uint32_t next = 0;
    for (std::uint32_t& entry : place) next += std::exchange(entry, next);
    for (std::size_t i = 0; i < count; ++i) to[place[byteOf(from[i], byte)]++] = from[i];
    std::swap(from, to);
  }
  std::transform(from, from + count, values.begin(), ValueOf);
}

}  // namespace vlm::detail

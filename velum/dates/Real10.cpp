#include <velum/dates/Real10.h>

#include <bit>
#include <cstdint>

namespace vlm {
namespace {

constexpr std::uint64_t kWholeBit = std::uint64_t{1} << 63;
constexpr std::uint64_t kInfinity = std::uint64_t{0x7FF} << 52;
constexpr std::uint64_t kQuietBit = std::uint64_t{1} << 51;

// Half of what is cut off goes to the even neighbour.
std::uint64_t ShiftedAndRounded(std::uint64_t bits, int shift) noexcept {
  if (shift > 64) {
    return 0;
  }
  const std::uint64_t kept = shift == 64 ? 0 : bits >> shift;
  const std::uint64_t cut = bits << (64 - shift);
  const bool up = cut > kWholeBit || (cut == kWholeBit && (kept & 1) != 0);
  return kept + (up ? 1 : 0);
}

// The bits of the double, without its sign.
std::uint64_t MagnitudeOf(std::uint64_t significand, int exponent) noexcept {
  constexpr int kSpecial = 0x7FFF;
  constexpr int kBiasChange = 16383 - 1023;
  constexpr int kCut = 64 - 53;
  if (exponent != 0 && (significand & kWholeBit) == 0) {
    return kInfinity | kQuietBit;
  }
  if (exponent == kSpecial) {
    const std::uint64_t payload = (significand & ~kWholeBit) >> kCut;
    return (significand << 1) == 0 ? kInfinity : kInfinity | kQuietBit | payload;
  }
  const int biased = exponent - kBiasChange;
  if (biased <= 0) {
    return ShiftedAndRounded(significand, kCut + 1 - biased);
  }
  if (biased > 2046) {
    return kInfinity;
  }
  // The whole bit, and a carry out of the significand, are added to the exponent; the largest one
  // becomes infinity by that.
  return (static_cast<std::uint64_t>(biased - 1) << 52) + ShiftedAndRounded(significand, kCut);
}

}  // namespace

double Real10ToDouble(const unsigned char* bytes) noexcept {
  std::uint64_t significand = 0;
  for (int i = 7; i >= 0; --i) {
    significand = significand << 8 | bytes[i];
  }
  const std::uint64_t sign = std::uint64_t{bytes[9]} >> 7 << 63;
  const int exponent = (bytes[9] & 0x7F) << 8 | bytes[8];
  return std::bit_cast<double>(sign | MagnitudeOf(significand, exponent));
}

}  // namespace vlm

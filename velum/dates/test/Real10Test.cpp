#include <velum/dates/Real10.h>

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <random>

namespace vlm {
namespace {

struct Real10 {
  unsigned char bytes[16] = {};

  Real10(int sign, int exponent, std::uint64_t significand) {
    std::memcpy(bytes, &significand, 8);
    bytes[8] = static_cast<unsigned char>(exponent & 0xFF);
    bytes[9] = static_cast<unsigned char>(exponent >> 8 | sign << 7);
  }
};

TEST(Real10, EveryClassHasItsDouble) {
  constexpr std::uint64_t kWhole = std::uint64_t{1} << 63;
  const struct {
    int sign, exponent;
    std::uint64_t significand;
    std::uint64_t bits;
    const char* reason;
  } rows[] = {
      {0, 0, 0, 0, "zero"},
      {1, 0, 0, kWhole, "minus zero"},
      {0, 16384, 0xC0ull << 56, std::bit_cast<std::uint64_t>(3.0), "three"},
      {1, 16383, kWhole, std::bit_cast<std::uint64_t>(-1.0), "minus one"},
      {0, 16383, kWhole + 0x400, std::bit_cast<std::uint64_t>(1.0), "half of a place: to even"},
      {0, 16383, kWhole + 0xC00, 0x3FF0000000000002, "half of a place above an odd one"},
      {0, 16383, kWhole + 0x401, 0x3FF0000000000001, "a little above half"},
      {0, 16383, ~0ull, std::bit_cast<std::uint64_t>(2.0), "a carry into the exponent"},
      {0, 17406, ~0ull << 11, 0x7FEFFFFFFFFFFFFF, "the largest double"},
      {0, 17406, ~0ull, 0x7FF0000000000000, "rounded to infinity"},
      {1, 17407, kWhole, 0xFFF0000000000000, "beyond the largest double"},
      {0, 15361, kWhole, 0x0010000000000000, "the smallest normal double"},
      {0, 15360, ~0ull, 0x0010000000000000, "rounded up to it"},
      {0, 15309, kWhole, 0x0000000000000001, "the smallest double"},
      {0, 15308, kWhole, 0, "half of it: to even"},
      {0, 15308, kWhole + 1, 1, "a little above half of it"},
      {0, 15307, ~0ull, 0, "below half of it"},
      {0, 1, kWhole, 0, "the smallest normal extended number"},
      {1, 0, 1, kWhole, "the smallest extended number"},
      {0, 0, kWhole, 0, "exponent 0 with the whole bit"},
      {0, 0x7FFF, kWhole, 0x7FF0000000000000, "infinity"},
      {1, 0x7FFF, kWhole, 0xFFF0000000000000, "minus infinity"},
      {0, 0x7FFF, 0xC0ull << 56, 0x7FF8000000000000, "a quiet NaN"},
      {0, 0x7FFF, kWhole | 0x5ull << 11, 0x7FF8000000000005, "a signalling NaN, made quiet"},
      {0, 0x7FFF, kWhole | 1, 0x7FF8000000000000, "a NaN whose payload is cut off"},
      {0, 16383, 1, 0x7FF8000000000000, "no whole bit"},
      {0, 0x7FFF, 0, 0x7FF8000000000000, "an infinity without whole bit"},
  };
  for (const auto& row : rows) {
    const Real10 number(row.sign, row.exponent, row.significand);
    EXPECT_EQ(std::bit_cast<std::uint64_t>(Real10ToDouble(number.bytes)), row.bits) << row.reason;
  }
}

#if defined(__x86_64__)
TEST(Real10, AgreesWithTheProcessorOnRandomNumbers) {
  constexpr std::uint64_t kWhole = std::uint64_t{1} << 63;
  std::mt19937_64 random(1);
  for (int i = 0; i < 1000000; ++i) {
    // Mostly near the range of doubles, with few bits set as often as many.
    const int exponent = i % 8 == 0 ? static_cast<int>(random() % 0x8000)
                                    : 15290 + static_cast<int>(random() % 2140);
    std::uint64_t significand = random() >> random() % 64 << random() % 64;
    significand = exponent == 0 ? significand & ~kWhole : significand | kWhole;
    const Real10 number(static_cast<int>(random() & 1), exponent, significand);
    long double extended;
    std::memcpy(&extended, number.bytes, sizeof extended);
    const double expected = static_cast<double>(extended);
    ASSERT_EQ(std::bit_cast<std::uint64_t>(Real10ToDouble(number.bytes)),
              std::bit_cast<std::uint64_t>(expected))
        << exponent << ' ' << significand;
  }
}
#endif

}  // namespace
}  // namespace vlm

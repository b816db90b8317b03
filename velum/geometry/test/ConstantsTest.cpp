#include <velum/geometry/Constants.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>

namespace vlm {
namespace {

TEST(Constants, HaveTheirStoredBits) {
  struct Row {
    const char* name;
    double value;
    std::uint64_t bits;
  };
  // The bits of the decimal texts, from Python: struct.unpack('<Q', struct.pack('<d', value)).
  const Row rows[] = {
      {"PI", PI, 0x400921FB54442D18},
      {"ONE_PI", ONE_PI, 0x400921FB54442D18},
      {"TWO_PI", TWO_PI, 0x401921FB54442D18},
      {"THREE_PI", THREE_PI, 0x4022D97C7F3321D2},
      {"FOUR_PI", FOUR_PI, 0x402921FB54442D18},
      {"HALF_PI", HALF_PI, 0x3FF921FB54442D18},
      {"THIRD_PI, one unit above the nearest", THIRD_PI, 0x3FF0C152382D7366},
      {"QUARTER_PI, not the nearest", QUARTER_PI, 0x3FE921FB54442E81},
      {"PI_INV", PI_INV, 0x3FD45F306DC9C883},
      {"TWO_PI_INV", TWO_PI_INV, 0x3FC45F306DC9C883},
      {"SQRT_PI", SQRT_PI, 0x3FFC5BF891B4EF6B},
      {"SQRT_PI_INV", SQRT_PI_INV, 0x3FE20DD750429B6D},
      {"SQRT_TWO_PI", SQRT_TWO_PI, 0x40040D931FF62706},
      {"SQRT_TWO_PI_INV", SQRT_TWO_PI_INV, 0x3FD9884533D43651},
      {"SQRT_2", SQRT_2, 0x3FF6A09E667F3BCD},
      {"SQRT_2_INV", SQRT_2_INV, 0x3FE6A09E667F3BCD},
      {"DEG_TO_RAD", DEG_TO_RAD, 0x3F91DF46A2529D39},
      {"RAD_TO_DEG", RAD_TO_DEG, 0x404CA5DC1A63C1F8},
      {"EULER_E", EULER_E, 0x4005BF0A8B145769},
      {"EULER_GAMMA", EULER_GAMMA, 0x3FE2788CFC6FB619},
      {"GOLDEN_RATIO", GOLDEN_RATIO, 0x3FF9E3779B97F4A8},
      {"LN_TWO", LN_TWO, 0x3FE62E42FEFA39EF},
      {"LN_TEN", LN_TEN, 0x40026BB1BBB55516},
      {"EPSILON", EPSILON, 0x3CB0000000000000},
      {"SUKOSHI", SUKOSHI, 0x3810000000000000},
      {"NEG_INFINITY", NEG_INFINITY, 0xFFF0000000000000},
      {"CM_PER_INCH", CM_PER_INCH, 0x400451EB851EB852},
      {"INCHES_PER_CM", INCHES_PER_CM, 0x3FD93264C993264D},
      {"METERS_PER_INCH", METERS_PER_INCH, 0x3F9A027525460AA6},
      {"INCHES_PER_METER", INCHES_PER_METER, 0x4043AF5EBD7AF5EC},
      {"POINTS_PER_INCH", POINTS_PER_INCH, 0x4052000000000000},
      {"INCHES_PER_POINT", INCHES_PER_POINT, 0x3F8C71C71C71C71C},
      {"TWIPS_PER_INCH", TWIPS_PER_INCH, 0x4096800000000000},
      {"INCHES_PER_TWIP", INCHES_PER_TWIP, 0x3F46C16C16C16C17},
      {"TWIPS_PER_POINT", TWIPS_PER_POINT, 0x4034000000000000},
      {"POINTS_PER_TWIP", POINTS_PER_TWIP, 0x3FA999999999999A},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(std::bit_cast<std::uint64_t>(row.value), row.bits) << row.name;
  }
}

}  // namespace
}  // namespace vlm

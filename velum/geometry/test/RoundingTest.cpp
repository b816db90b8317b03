#include <velum/geometry/Rounding.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>
#include <random>

namespace vlm {
namespace {

constexpr double kTiny = std::numeric_limits<double>::denorm_min();
constexpr double kMost = std::numeric_limits<double>::max();

TEST(ToNearest, RoundsHalfAwayFromZero) {
  EXPECT_EQ(ToNearest(2.5), 3);
  EXPECT_EQ(ToNearest(-2.5), -3);
  EXPECT_EQ(ToNearest(0.49999999999999994), 0) << "adding 0.5 would give 1";
  EXPECT_EQ(ToNearest(4503599627370497.5), 4503599627370498);
  EXPECT_EQ(ToNearest(1e300), 1e300);
  EXPECT_TRUE(std::isnan(ToNearest(NAN)));
  EXPECT_EQ(ToNearest(-INFINITY), -INFINITY);
}

TEST(ToNearest, FindsTheNearestMultiple) {
  EXPECT_EQ(ToNearest(37, 5), 35);
  EXPECT_EQ(ToNearest(-5, 2), -6) << "half away from zero";
  EXPECT_EQ(ToNearest(5, -2), 6);
  EXPECT_EQ(ToNearest(37, 0), 37);
  EXPECT_EQ(ToNearest(0, 5), 0);
  constexpr int kMostInt = std::numeric_limits<int>::max();
  EXPECT_EQ(ToNearest(kMostInt, 2), std::numeric_limits<int>::min()) << "2^31 wraps";
  EXPECT_EQ(ToNearest(1.125, 0.25), 1.25);
  EXPECT_EQ(ToNearest(-1.125, 0.25), -1.25);
  EXPECT_EQ(ToNearest(1.125, 0.0), 1.125);
}

TEST(RoundSig, RoundsToDigits) {
  struct Row {
    const char* why;
    double value;
    int digits;
    double nearest;
    double up;
    double down;
  };
  const Row rows[] = {
      {"plain", 1234.5, 2, 1200, 1300, 1200},
      {"half", 12.5, 2, 13, 13, 12},
      {"negative", -12.5, 2, -13, -12, -13},
      {"below 1", 0.0123, 1, 0.01, 0.02, 0.01},
      {"to the next power", 9.96, 2, 10, 10, 9.9},
      {"a power of ten", 1000, 1, 1000, 1000, 1000},
      {"15 digits", 1.0 / 3, 15, 0.333333333333333, 0.333333333333334, 0.333333333333333},
      {"16 digits", 1.0 / 3, 16, 1.0 / 3, 1.0 / 3, 1.0 / 3},
      {"no digit", 1.5, 0, 1.5, 1.5, 1.5},
      {"zero", 0, 3, 0, 0, 0},
      {"infinite", -INFINITY, 3, -INFINITY, -INFINITY, -INFINITY},
      {"the smallest number", kTiny, 1, kTiny, kTiny, kTiny},
      {"a factor beyond the largest double", 1.26e-307, 2, 1.3e-307, 1.3e-307, 1.2e-307},
      {"the largest number", kMost, 1, INFINITY, INFINITY, 1e308},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_DOUBLE_EQ(RoundSig(row.value, row.digits), row.nearest);
    EXPECT_DOUBLE_EQ(RoundSigUp(row.value, row.digits), row.up);
    EXPECT_DOUBLE_EQ(RoundSigDown(row.value, row.digits), row.down);
  }
  EXPECT_TRUE(std::isnan(RoundSig(NAN, 3)));
}

TEST(RoundUp, FindsTheNextMultipleAbove) {
  EXPECT_EQ(RoundUp(1234.5, 2), 1300);
  EXPECT_EQ(RoundUp(1300, 2), 1400) << "strictly above";
  EXPECT_EQ(RoundUp(-1300, 2), -1200);
  EXPECT_EQ(RoundUp(5, 4), 5.001);
  EXPECT_EQ(RoundUp(99.99, 4), 100) << "the value is a multiple, though its unit is not exact";
  EXPECT_EQ(RoundUp(0.7, 1), 0.8);
  EXPECT_EQ(RoundUp(0.3, 1), 0.4);
  EXPECT_EQ(RoundUp(1.001, 4), 1.002);
  EXPECT_EQ(RoundUp(-0.7, 1), -0.6);
  EXPECT_EQ(RoundUp(0, 4), 0);
  EXPECT_EQ(RoundUp(INFINITY, 4), INFINITY);
  EXPECT_EQ(RoundUp(kMost, 1), INFINITY);
  EXPECT_EQ(RoundUp(3, 400), std::nextafter(3, 4)) << "a unit that changes nothing";
  EXPECT_EQ(RoundUp(3, -400), INFINITY) << "a unit beyond all numbers";
  EXPECT_EQ(RoundUp(-3, -400), 0);
  EXPECT_EQ(RoundUp(kTiny, 1), 2 * kTiny);
}

TEST(RoundUp, IsAboveAndNearForAnyNumber) {
  constexpr unsigned kSeed = 4242;
  SCOPED_TRACE(kSeed);
  std::mt19937 random(kSeed);
  std::uniform_real_distribution<double> exponent(-320, 308);
  std::uniform_int_distribution<int> digits(1, 20);
  for (int i = 0; i < 20000; ++i) {
    const double value = std::pow(10, exponent(random)) * (random() % 2 == 0 ? 1 : -1);
    const int n = digits(random);
    const double up = RoundUp(value, n);
    EXPECT_GT(up, value) << n;
    // A unit of the last digit, and what rounding adds to it; the first digit may be carried.
    const double unit = std::abs(value) * std::pow(10, 1 - n) * (1 + 1e-9);
    EXPECT_LE(up - value, unit + std::abs(value) * 1e-15 + kTiny) << value << ' ' << n;
  }
}

TEST(ExpandSingularLimits, WidensOnlyWhatHasNoWidth) {
  struct Row {
    double low;
    double high;
    double expectedLow;
    double expectedHigh;
  };
  const Row rows[] = {
      {1, 2, 1, 2},
      {5, 5, 4.999, 5.001},
      {3, 2, 2.999, 3.001},
      {0, 0, -0.001, 0.001},
      {0, -4, -0.001, 0.001},
      {-5, -5, -5.001, -4.999},
      {INFINITY, INFINITY, INFINITY, INFINITY},
      {1e308, 1e308, 9.99e307, 1.001e308},
      {DBL_MAX, DBL_MAX, 1.797e308, DBL_MAX},
      {-DBL_MAX, -DBL_MAX, -DBL_MAX, -1.797e308},
  };
  for (const Row& row : rows) {
    double low = row.low;
    double high = row.high;
    ExpandSingularLimits(low, high);
    EXPECT_DOUBLE_EQ(low, row.expectedLow) << row.low << ' ' << row.high;
    EXPECT_DOUBLE_EQ(high, row.expectedHigh) << row.low << ' ' << row.high;
  }
}

TEST(PowersOf2, AreFoundForAnyNumber) {
  struct Row {
    unsigned n;
    unsigned nearest;
    unsigned ceiling;
  };
  const Row rows[] = {
      {0, 2, 0},
      {1, 2, 1},
      {2, 2, 2},
      {3, 4, 4},
      {5, 4, 8},
      {6, 8, 8},
      {7, 8, 8},
      {8, 8, 8},
      {95, 64, 128},
      {96, 128, 128},
      {0x5FFFFFFF, 0x40000000, 0x80000000},
      {0x60000000, 0x80000000, 0x80000000},
      {0x80000000, 0x80000000, 0x80000000},
      {0x80000001, 0x80000000, 0},
      {0xFFFFFFFF, 0x80000000, 0},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(RoundToPowerOf2(row.n), row.nearest) << row.n;
    EXPECT_EQ(CeilPowerOf2(row.n), row.ceiling) << row.n;
  }
}

}  // namespace
}  // namespace vlm

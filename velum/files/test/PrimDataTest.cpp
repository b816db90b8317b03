#include <velum/files/PrimData.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <type_traits>

namespace vlm {
namespace {

constexpr std::int64_t kWideMax = 9223372036854775807;
constexpr std::int64_t kWideMin = -kWideMax - 1;

CPrimData Of(PrimType type, const CPrimData& number) {
  CPrimData data(type, nullptr);
  data = number;
  return data;
}

TEST(CPrimData, ConstructorsTakeTheMatchingType) {
  const struct {
    CPrimData data;
    PrimType type;
    const char* text;
  } rows[] = {
      {CPrimData(), PrimInt32, "0"},
      {char{-1}, PrimInt8, "-1"},
      {std::int8_t{-1}, PrimInt8, "-1"},
      {std::uint8_t{255}, PrimUInt8, "255"},
      {short{-300}, PrimInt16, "-300"},
      {std::uint16_t{65535}, PrimUInt16, "65535"},
      {-70000, PrimInt32, "-70000"},
      {4000000000u, PrimUInt32, "4000000000"},
      {kWideMin, PrimInt64, "-9223372036854775808"},
      {5LL, PrimInt64, "5"},
      {0.1f, PrimFloat, "0.1"},
      {0.1, PrimDouble, "0.10000000000000001"},
      {1e300, PrimDouble, "1.0000000000000001E+300"},
      {CPrimData(PrimUInt16, "\x01\x02\x03"), PrimUInt16, "513"},
      {CPrimData(PrimDouble, nullptr), PrimDouble, "0"},
      {CPrimData(static_cast<PrimType>(9), "abcdefgh"), static_cast<PrimType>(9), "0"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.data.GetType(), row.type) << row.text;
    EXPECT_EQ(row.data.GetDataAsString(), row.text);
  }
}

// Both would be taken for integers.
static_assert(!std::is_constructible_v<CPrimData, PrimType>);
static_assert(!std::is_constructible_v<CPrimData, CPrimType>);
static_assert(!std::is_assignable_v<CPrimData&, PrimType>);
static_assert(!std::is_assignable_v<CPrimData&, CPrimType>);

TEST(CPrimData, AssignmentKeepsTheTypeAndConverts) {
  const struct {
    const char* why;
    PrimType type;
    CPrimData value;
    double held;
  } rows[] = {
      {"low bytes", PrimUInt8, 300, 44},
      {"rounded", PrimUInt8, 2.5, 3},
      {"rounded away from zero and cut", PrimUInt8, -2.5, 253},
      {"signed low bytes", PrimInt8, 200, -56},
      {"just below a half", PrimInt32, 0.49999999999999994, 0},
      {"a whole number that has no place for a half", PrimInt64, 4503599627370497.0,
       4503599627370497.0},
      {"beyond 64 bits, then cut", PrimInt32, 1e300, -1},
      {"below 64 bits, then cut", PrimInt32, -1e300, 0},
      {"the end of 64 bits", PrimInt64, 0x1p63, 0x1p63},
      {"the other end of 64 bits", PrimInt64, -0x1p63, -0x1p63},
      {"infinity", PrimInt64, -HUGE_VAL, -0x1p63},
      {"NaN", PrimInt16, NAN, 0},
      {"unsigned to real", PrimFloat, 4000000000u, 4e9},
      {"the nearest float", PrimFloat, 0.1, 0.1f},
      {"beyond floats", PrimFloat, 1e300, HUGE_VAL},
  };
  for (const auto& row : rows) {
    const CPrimData data = Of(row.type, row.value);
    EXPECT_EQ(data.GetType(), row.type) << row.why;
    EXPECT_EQ(static_cast<double>(data), row.held) << row.why;
  }
  CPrimData data = 7.5;
  const CPrimData& self = data;
  data = self;
  EXPECT_EQ(static_cast<float>(data), 7.5f);
  EXPECT_EQ(static_cast<int>(data), 8);
  data.Replace(std::uint8_t{200});
  EXPECT_EQ(data.GetType(), PrimUInt8);
  EXPECT_EQ(static_cast<char>(data), char{-56});
  EXPECT_EQ(static_cast<signed char>(data), -56);
  EXPECT_EQ(static_cast<long long>(data), 200);
  unsigned char bytes[2] = {1, 1};
  data.GetData(bytes);
  EXPECT_TRUE(bytes[0] == 200 && bytes[1] == 1);
}

template <class Value>
void ExpectToComeBack(Value value, Value cutOfMinusOne) {
  CPrimData data = 0.5;
  data = value;
  EXPECT_EQ(data.GetType(), PrimDouble);
  EXPECT_EQ(static_cast<double>(data), static_cast<double>(value));
  EXPECT_EQ(static_cast<Value>(data), value);
  EXPECT_EQ(static_cast<Value>(CPrimData(value)), value);
  EXPECT_EQ(static_cast<Value>(CPrimData(-1)), cutOfMinusOne);
}

TEST(CPrimData, EveryTypeGoesInAndComesBack) {
  ExpectToComeBack<char>(-100, -1);
  ExpectToComeBack<signed char>(-128, -1);
  ExpectToComeBack<unsigned char>(200, 255);
  ExpectToComeBack<short>(-300, -1);
  ExpectToComeBack<unsigned short>(65534, 65535);
  ExpectToComeBack<int>(-70000, -1);
  ExpectToComeBack<unsigned int>(4000000000u, 4294967295u);
  ExpectToComeBack<std::int64_t>(-9007199254740992, -1);
  ExpectToComeBack<long long>(9007199254740992, -1);
  ExpectToComeBack<float>(0.1f, -1);
  ExpectToComeBack<double>(0.1, -1);
}

TEST(CPrimData, ComparisonsLoseNoDigit) {
  const struct {
    const char* why;
    CPrimData a;
    CPrimData b;
    int order;
  } rows[] = {
      {"beyond a double's digits", std::int64_t{9007199254740993}, 9007199254740992.0, 1},
      {"at the end of 64 bits", kWideMax, 0x1p63, 0},
      {"within 64 bits", kWideMax - 1, 0x1p63, -1},
      {"an odd number without room for a half", std::int64_t{4503599627370497}, 4503599627370497.0,
       0},
      {"beyond 64 bits", kWideMax, 1e300, -1},
      {"infinity", kWideMin, -HUGE_VAL, 1},
      {"rounded beside 64 bits", std::int64_t{3}, 2.5, 0},
      {"not rounded beside 32 bits", 3, 2.5, 1},
      {"a float beside 64 bits", std::int64_t{16777217}, 16777216.0f, 1},
      {"unsigned and negative", 4000000000u, -1, 1},
      {"a difference beyond 32 bits", 2000000000, -2000000000, 1},
      {"a float beside a double", 0.1f, 0.1, 1},
      {"bytes of both signs", std::int8_t{-1}, std::uint8_t{255}, -1},
      {"NaN", NAN, 1.0, 0},
      {"NaN beside 64 bits", NAN, kWideMin, 0},
  };
  for (const auto& [why, a, b, order] : rows) {
    for (const bool turned : {false, true}) {
      const CPrimData& x = turned ? b : a;
      const CPrimData& y = turned ? a : b;
      const int sign = turned ? -order : order;
      EXPECT_EQ(x == y, sign == 0) << why;
      EXPECT_EQ(x != y, sign != 0) << why;
      EXPECT_EQ(x < y, sign < 0) << why;
      EXPECT_EQ(x > y, sign > 0) << why;
      EXPECT_EQ(x <= y, sign <= 0) << why;
      EXPECT_EQ(x >= y, sign >= 0) << why;
    }
  }
}

TEST(CPrimData, LimitsHaveTheirType) {
  for (int i = 0; i < 9; ++i) {
    const CPrimType type = static_cast<PrimType>(i);
    const CPrimType expected = i == PrimInt8 ? CPrimType(PrimInt32) : type;
    EXPECT_EQ(CPrimData::PrimMin(type).GetType(), expected);
    EXPECT_EQ(static_cast<double>(CPrimData::PrimMin(type)), type.GetMin());
    EXPECT_EQ(CPrimData::PrimMax(type).GetType(), expected);
    EXPECT_EQ(static_cast<double>(CPrimData::PrimMax(type)), type.GetMax());
  }
  EXPECT_EQ(CPrimData::PrimMax(static_cast<PrimType>(9)).GetType(), PrimInt32);
  EXPECT_EQ(CPrimData::widest_INT_MIN, kWideMin);
  EXPECT_EQ(CPrimData::widest_REAL_MIN, -DBL_MAX);
}

}  // namespace
}  // namespace vlm

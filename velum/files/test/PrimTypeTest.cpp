#include <velum/files/PrimType.h>

#include <velum/files/test/FileErrors.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace vlm {
namespace {

constexpr int kCount = 9;
using Types = std::tuple<std::int8_t, std::uint8_t, std::int16_t, std::uint16_t, std::int32_t,
                         std::uint32_t, std::int64_t, float, double>;
template <std::size_t Place>
using TypeAt = std::tuple_element_t<Place, Types>;

PrimType At(int place) { return static_cast<PrimType>(place); }

template <class Work, std::size_t... Place>
void ForEachType(Work work, std::index_sequence<Place...>) {
  (work(At(Place), TypeAt<Place>()), ...);
}
template <class Work>
void ForEachType(Work work) {
  ForEachType(work, std::make_index_sequence<kCount>());
}

TEST(CPrimType, TablesDescribeTheTypes) {
  const char* const names[] = {"Signed 8 bits",    "Unsigned 8 bits", "Signed 16 bits",
                               "Unsigned 16 bits", "Signed 32 bits",  "Unsigned 32 bits",
                               "Signed 64 bits",   "Float (32 bits)", "Double (64 bits)"};
  ForEachType([&names](CPrimType type, auto number) {
    using Number = decltype(number);
    EXPECT_EQ(type.Size(), int{sizeof(Number)});
    EXPECT_EQ(type.IsFloat(), std::is_floating_point_v<Number>);
    EXPECT_NE(type.IsFloat(), type.IsInteger());
    EXPECT_EQ(type.GetMin(), static_cast<double>(std::numeric_limits<Number>::lowest()));
    EXPECT_EQ(type.GetMax(), static_cast<double>(std::numeric_limits<Number>::max()));
    EXPECT_STREQ(type.Name(), names[type]);
    EXPECT_STREQ(CPrimType::GetNameList()[type], names[type]);
  });
  EXPECT_EQ(CPrimType::GetNameList()[kCount], nullptr);
}

TEST(CPrimType, TypesCompareAndAreAssigned) {
  CPrimType type;
  EXPECT_EQ(type, PrimUInt8);
  type = 6;
  EXPECT_TRUE(type == CPrimType(PrimInt64) && type != CPrimType() && !(type != PrimInt64));
  type = PrimFloat;
  EXPECT_EQ(static_cast<int>(type), 7);
  type = 9;
  EXPECT_EQ(type.Size(), 0);
  EXPECT_STREQ(type.Name(), "");
  EXPECT_EQ(CPrimType::Promote(At(-1), PrimInt8), PrimDouble);
}

TEST(CPrimType, PromotionIsThatOfTheTable) {
  // An integer that holds both, the smaller one where there are two; else a real.
  const int table[kCount][kCount] = {
      {0, 2, 2, 4, 4, 6, 6, 7, 8}, {2, 1, 2, 3, 4, 5, 6, 7, 8}, {2, 2, 2, 4, 4, 6, 6, 7, 8},
      {4, 3, 4, 3, 4, 5, 6, 7, 8}, {4, 4, 4, 4, 4, 6, 6, 7, 8}, {6, 5, 6, 5, 6, 5, 6, 7, 8},
      {6, 6, 6, 6, 6, 6, 6, 7, 8}, {7, 7, 7, 7, 7, 7, 7, 7, 8}, {8, 8, 8, 8, 8, 8, 8, 8, 8}};
  for (int a = 0; a < kCount; ++a) {
    for (int b = 0; b < kCount; ++b) {
      EXPECT_EQ(CPrimType::Promote(At(a), At(b)), At(table[a][b])) << a << ", " << b;
    }
  }
}

TEST(CPrimType, ClipLimitsToTheRange) {
  EXPECT_EQ(CPrimType::Clip(PrimUInt8, 300), 255);
  EXPECT_EQ(CPrimType::Clip(PrimUInt8, -0.5), 0);
  EXPECT_EQ(CPrimType::Clip(PrimInt16, 2.5), 2.5);
  EXPECT_EQ(CPrimType::Clip(PrimFloat, -1e300), -double{FLT_MAX});
  EXPECT_TRUE(std::isnan(CPrimType::Clip(PrimInt8, NAN)));
}

template <class Dst, class Src>
Dst Expected(Src value) {
  if constexpr (std::is_floating_point_v<Src> && std::is_integral_v<Dst>) {
    const double whole = std::trunc(static_cast<double>(value));
    const bool fits = whole >= -0x1p63 && whole < 0x1p63;
    return static_cast<Dst>(fits ? static_cast<std::int64_t>(whole) : 0);
  } else {
    return static_cast<Dst>(value);
  }
}

template <class Src>
std::vector<Src> Samples(unsigned seed) {
  std::mt19937_64 random(seed);
  std::vector<Src> samples(5000);
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const auto bits = random() >> (random() % 64);
    std::memcpy(&samples[i], &bits, sizeof(Src));
    if constexpr (std::is_floating_point_v<Src>) {
      // Whole blocks of what fits into 32 bits, of what does not, of what does without a sign, and
      // of any bits at all.
      const double scale[] = {1e9, 1e18, 4.2e9};
      const std::size_t kind = i / 1100 % 4;
      const double part = static_cast<double>(random()) * 0x1p-63 - 1;
      if (kind < 3)
        samples[i] = static_cast<Src>(scale[kind] * (kind < 2 ? part : std::fabs(part)));
    }
  }
  if constexpr (std::is_floating_point_v<Src>) {
    const double limits[] = {0x1p31, -0x1p31, 0x1p32, 0x1p63,   -0x1p63, -0x1p64,   NAN,
                             -NAN,   1e30,    -1e30,  HUGE_VAL, 2.9,     -HUGE_VAL, -2.9};
    for (std::size_t i = 0; i < 2 * std::size(limits); ++i) {
      samples[i * 150 + 7] = static_cast<Src>(limits[i % std::size(limits)]);
    }
  }
  return samples;
}

TEST(CPrimType, CastArrayOfAllPairsIsAPlainCast) {
  const unsigned seed = std::random_device()();
  ForEachType([seed](PrimType srcType, auto srcNumber) {
    using Src = decltype(srcNumber);
    const std::vector<Src> src = Samples<Src>(seed);
    ForEachType([&](PrimType dstType, auto dstNumber) {
      using Dst = decltype(dstNumber);
      for (const int stride : {1, 2, 7, 100000}) {
        const std::size_t step = static_cast<std::size_t>(stride);
        const std::size_t written = (src.size() + step - 1) / step;
        // Room for one more, at an odd place.
        std::vector<char> dst((written + 1) * sizeof(Dst) + 1, 'x');
        CPrimType::CastArray(srcType, src.data(), dstType, dst.data() + 1,
                             static_cast<int>(src.size()), stride);
        for (std::size_t i = 0; i < written; ++i) {
          const Dst expected = Expected<Dst>(src[i * step]);
          Dst got;
          std::memcpy(&got, &dst[1 + i * sizeof(Dst)], sizeof(Dst));
          const bool isSame = got == expected || (got != got && expected != expected);
          ASSERT_TRUE(isSame) << int{srcType} << " to " << int{dstType} << " at " << i * step
                              << ": " << +src[i * step] << " gives " << +got << ", seed " << seed;
        }
        EXPECT_EQ(dst.back(), 'x');
      }
    });
  });
}

TEST(CPrimType, CastArrayRefusesMisuse) {
  const double src[] = {2.9, -2.9, 3};
  int dst[] = {7, 7, 7};
  const auto code = [&](const void* from, void* to, int count, int stride) {
    return test::CodeOf(
        [&] { CPrimType::CastArray(PrimDouble, from, PrimInt32, to, count, stride); });
  };
  EXPECT_EQ(code(src, dst, 3, 0), ERR_INTERNAL);
  EXPECT_EQ(code(src, dst, 3, -1), ERR_INTERNAL);
  EXPECT_EQ(code(nullptr, dst, 3, 1), ERR_INTERNAL);
  EXPECT_EQ(code(src, nullptr, 3, 1), ERR_INTERNAL);
  EXPECT_EQ(code(nullptr, nullptr, 0, 1), -1);
  EXPECT_EQ(code(src, dst, -1, 1), -1);
  CPrimType::CastArray(At(9), src, PrimInt32, dst, 3, 1);
  EXPECT_EQ(dst[0], 7);
  CPrimType::CastArray(PrimDouble, src, PrimInt32, dst, 3, std::numeric_limits<int>::max());
  EXPECT_EQ(dst[0], 2);
  EXPECT_EQ(dst[1], 7);
}

}  // namespace
}  // namespace vlm

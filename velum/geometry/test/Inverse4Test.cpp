#include <velum/geometry/detail/Inverse4.h>

#include <velum/geometry/Mat4d.h>
#include <velum/geometry/detail/InverseFourWide.h>
#include <velum/platform/detail/VectorUnit.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>

namespace vlm::detail {
namespace {

TEST(Inverse4, MinorsInvertWhatBlocksDoAndMore) {
  std::mt19937 random(4);
  std::uniform_real_distribution<double> number(-2, 2);
  SCOPED_TRACE("seed 4");
  for (int i = 0; i < 200; ++i) {
    double m[16];
    for (double& element : m) {
      element = number(random);
    }
    const Mat4d matrix(m);
    if (std::abs(matrix.Det4()) < 0.1) {
      continue;  // badly conditioned
    }
    double inverse[16];
    ASSERT_TRUE(InvertByMinors(m, inverse));
    EXPECT_TRUE((matrix * Mat4d(inverse)).Equals(Mat4d::IDENTITY, 1e-11));
    ASSERT_TRUE(InvertByMinors(m, m)) << "into itself";
    EXPECT_EQ(Mat4d(m), Mat4d(inverse));
  }
  const double swapped[] = {0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1, 0, 0, 0};
  double out[16] = {7};
  EXPECT_FALSE(InvertByBlocks(swapped, out));
  EXPECT_EQ(out[0], 7);
  ASSERT_TRUE(InvertByMinors(swapped, out));
  EXPECT_TRUE(Mat4d(out).Equals(Mat4d(swapped).Transpose(), 0)) << "a permutation";
}

TEST(Inverse4, MinorsFailBelowTheirThreshold) {
  double m[16] = {1e-14, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
  double out[16];
  EXPECT_TRUE(InvertByMinors(m, out)) << "the threshold itself is not below it";
  m[0] = 9.9e-15;
  EXPECT_FALSE(InvertByMinors(m, out));
  m[0] = NAN;
  EXPECT_FALSE(InvertByMinors(m, out));
}

// Numbers of all kinds: random ones, and those that make a matrix singular or nearly so.
TEST(Inverse4, AffineInversesHaveTheSameBitsInRegistersOfAnyWidth) {
  if (!platform::HasFourWide()) GTEST_SKIP() << "this processor has none for four doubles";
  constexpr double kKinds[] = {0, -0.0, 1, -1, 0.1, 3, 1e-8, -1e200, 1e200, 5e-324, INFINITY, NAN};
  std::mt19937 random(7);
  SCOPED_TRACE("seed 7");
  std::uniform_real_distribution<double> number(-2, 2);
  int regular = 0;
  for (int i = 0; i < 100000; ++i) {
    double m[16] = {};
    m[15] = 1;
    for (std::size_t k = 0; k < 15; ++k) {
      if (k % 4 != 3) m[k] = i % 2 ? number(random) : kKinds[random() % (i % 4 ? 6 : 12)];
    }
    if (i % 8 == 1) std::copy(m, m + 3, m + 8);  // two equal rows
    if (i % 8 == 3) m[8] = std::nextafter(2 * m[0], 9), m[9] = 2 * m[1], m[10] = 2 * m[2];
    double pairs[16] = {7};
    double wide[16] = {7};
    const bool isRegular = InvertAffineInPairs(m, pairs);
    ASSERT_EQ(InvertAffineFourWide(m, wide), isRegular) << i;
    regular += isRegular;
    for (std::size_t k = 0; k < 16; ++k) {
      if (std::isnan(pairs[k]) && std::isnan(wide[k])) continue;
      ASSERT_EQ(std::bit_cast<std::uint64_t>(wide[k]), std::bit_cast<std::uint64_t>(pairs[k]))
          << i << ' ' << k;
    }
  }
  EXPECT_GT(regular, 40000);
  EXPECT_LT(regular, 95000);
}

}  // namespace
}  // namespace vlm::detail

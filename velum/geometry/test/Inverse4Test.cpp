#include <velum/geometry/detail/Inverse4.h>

#include <velum/geometry/Mat4d.h>

#include <gtest/gtest.h>

#include <cmath>
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

}  // namespace
}  // namespace vlm::detail

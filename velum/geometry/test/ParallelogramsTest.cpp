#include <velum/geometry/Parallelograms.h>

#include <velum/geometry/Mat3d.h>
#include <velum/geometry/PolygonMeasures.h>
#include <velum/geometry/Vec2.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vlm {
namespace {

TEST(Parallelograms, ThreeCornersSettleAnAffineMap) {
  const struct {
    const char* why;
    Vec2d from[3];
    Vec2d to[3];
    Mat3d expected;
  } kRows[] = {
      {"nothing moves", {{0, 0}, {1, 0}, {0, 1}}, {{0, 0}, {1, 0}, {0, 1}}, Mat3d()},
      {"shift", {{1, 1}, {3, 1}, {1, 2}}, {{5, 0}, {7, 0}, {5, 1}}, Mat3d(1, 0, 0, 1, 4, -1)},
      {"quarter turn, doubled",
       {{0, 0}, {1, 0}, {0, 1}},
       {{0, 0}, {0, 2}, {-2, 0}},
       Mat3d(0, 2, -2, 0, 0, 0)},
      {"mirrored", {{0, 0}, {4, 0}, {0, 2}}, {{8, 0}, {4, 0}, {8, 2}}, Mat3d(-1, 0, 0, 1, 8, 0)},
      {"flattened", {{0, 0}, {1, 0}, {0, 1}}, {{3, 3}, {3, 3}, {3, 3}}, Mat3d(0, 0, 0, 0, 3, 3)},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.why);
    Mat3d m = Mat3d::ZERO;
    EXPECT_TRUE(MapParallelogramToParallelogram(m, row.from, row.to));
    EXPECT_TRUE(m.Equals(row.expected, 1e-15));
    EXPECT_TRUE(m.GetCol(2) == Vec3d(0, 0, 1));
  }
}

TEST(Parallelograms, CornersComeToTheirImages) {
  std::mt19937 random(3);
  SCOPED_TRACE("seed 3");
  std::uniform_real_distribution<double> coordinate(-1000, 1000);
  const auto point = [&] { return Vec2d(coordinate(random), coordinate(random)); };
  for (int i = 0; i < 1000; ++i) {
    const Vec2d from[] = {point(), point(), point()};
    const Vec2d to[] = {point(), point(), point()};
    const double area = PolygonArea(from, 3) * 2;
    if (std::abs(area) < 1000) continue;
    Mat3d m;
    ASSERT_TRUE(MapParallelogramToParallelogram(m, from, to));
    for (int k = 0; k < 3; ++k) {
      EXPECT_LT((from[k] * m - to[k]).Length(), 1e-12 * 1e9 / std::abs(area)) << k;
    }
  }
}

TEST(Parallelograms, CollinearCornersLeaveTheirFrame) {
  const Vec2d from[] = {{1, 2}, {3, 4}, {9, 10}};
  const Vec2d to[] = {{0, 0}, {1, 0}, {0, 1}};
  Mat3d m;
  EXPECT_FALSE(MapParallelogramToParallelogram(m, from, to));
  EXPECT_EQ(m, Mat3d(2, 2, 8, 8, 1, 2));
}

}  // namespace
}  // namespace vlm

#include <velum/geometry/Scalar.h>

#include <velum/geometry/Constants.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vlm {
namespace {

TEST(AlmostEqual, CountsTheNumbersBetween) {
  struct Row {
    const char* why;
    double a;
    double b;
    unsigned distance;
  };
  constexpr double kTiny = std::numeric_limits<double>::denorm_min();
  constexpr double kMost = std::numeric_limits<double>::max();
  const Row rows[] = {
      {"both zeros", 0.0, -0.0, 0},
      {"across zero", -kTiny, kTiny, 2},
      {"neighbours", 1.0, 1.0 + EPSILON, 1},
      {"negative neighbours", -1.0, -1.0 - EPSILON, 1},
      {"across a power of 2", 1.0 - EPSILON, 1.0 + EPSILON, 3},
      {"infinity", kMost, INFINITY, 1},
      {"32 bits of distance", 1.0, 1.0 + 4294967295 * EPSILON, 0xFFFFFFFF},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_TRUE(AlmostEqual(row.a, row.b, row.distance));
    EXPECT_TRUE(AlmostEqual(row.b, row.a, row.distance));
    EXPECT_TRUE(row.distance == 0 || !AlmostEqual(row.a, row.b, row.distance - 1));
  }
  EXPECT_FALSE(AlmostEqual(1.0, 1.0 + 4294967296 * EPSILON, 0xFFFFFFFF)) << "33 bits";
  EXPECT_FALSE(AlmostEqual(-1.0, 1.0, 0xFFFFFFFF));
  EXPECT_TRUE(AlmostEqual(1.0f, 1.00000012f, 1));
  EXPECT_FALSE(AlmostEqual(1.0f, 1.00000024f, 1));
  EXPECT_TRUE(AlmostEqual(-1e-45f, 1e-45f, 2));
  EXPECT_FALSE(AlmostEqual(float(NAN), float(NAN), 0xFFFFFFFF));
}

TEST(Hypot, DoesNotOverflow) {
  EXPECT_EQ(hypot(2, -3, 6), 7);
  EXPECT_DOUBLE_EQ(hypot(1e300, 1e300, 1e300), std::sqrt(3.0) * 1e300);
  EXPECT_DOUBLE_EQ(hypot(3e-300, 0, 4e-300), 5e-300);
  EXPECT_TRUE(std::isnan(hypot(0, 0, 0)));
  EXPECT_TRUE(std::isnan(hypot(1, NAN, 1)));
}

TEST(Normalize, GivesTheFractionOfARange) {
  EXPECT_EQ(Normalize(3, 2, 6), 0.25);
  EXPECT_EQ(Normalize(5, 6, 2), 0.25) << "a falling range";
  EXPECT_EQ(Normalize(1, 2, 6), 0);
  EXPECT_EQ(Normalize(7, 2, 6), 1);
  EXPECT_TRUE(std::isnan(Normalize(5, 5, 5)));
  EXPECT_EQ(Normalize(7, 5, 5), 1);
  EXPECT_EQ(Normalize(4, 5, 5), 0);
}

TEST(NormalizeAngle, TurnsIntoOnePeriod) {
  EXPECT_EQ(NormalizeAngleDeg(-90), 270);
  EXPECT_EQ(NormalizeAngleDeg(360), 0);
  EXPECT_EQ(NormalizeAngleDeg(-720), 0);
  EXPECT_EQ(NormalizeAngleDeg(725.5), 5.5);
  EXPECT_EQ(NormalizeAngleDeg(-1e-20), 0) << "360 itself is outside";
  EXPECT_EQ(NormalizeAngleRad(-HALF_PI), TWO_PI - HALF_PI);
  EXPECT_EQ(NormalizeAngleRad(TWO_PI), 0);
  EXPECT_EQ(NormalizeAngleRad(-1e-20), 0);
  EXPECT_TRUE(std::isnan(NormalizeAngleDeg(INFINITY)));
}

TEST(Trilinear, KnowsTheOrderOfTheCorners) {
  struct Corner {
    double u;
    double v;
    double w;
  };
  const Corner corners[] = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0},
                            {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}};
  const double values[] = {1, 2, 4, 8, 16, 32, 64, 128};
  for (int i = 0; i < 8; ++i) {
    EXPECT_EQ(Trilinear(corners[i].u, corners[i].v, corners[i].w, values), values[i]) << i;
  }
  EXPECT_EQ(Trilinear(0.5, 0.5, 0.5, values), 255.0 / 8);
  EXPECT_EQ(Trilinear(0.25, 0, 0, values), 1.25);
}

}  // namespace
}  // namespace vlm

#include <velum/geometry/Thinning.h>

#include <velum/geometry/Constants.h>
#include <velum/geometry/test/reference/PlainThinning.h>

#include <velum/core/Exception.h>
#include <testing/FailingAllocations.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>

namespace vlm {
namespace {

using Points = std::vector<Vec2d>;

Points ByAngle(const Points& points, double radians) {
  Points out;
  GThinByAngularDeviation(points.data(), static_cast<unsigned>(points.size()), radians, out);
  return out;
}

Points ToDetail(const Points& points) {
  Points out;
  GThinToMinimalDetail(points.data(), static_cast<unsigned>(points.size()), out);
  return out;
}

Vec2d Turned(double angle) { return Vec2d(std::cos(angle), std::sin(angle)); }

bool AreSameBits(const Points& a, const Points& b) {
  if (a.size() != b.size()) return false;
  return a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(Vec2d)) == 0;
}

TEST(Thinning, KeepsShortPathsAsTheyAre) {
  const Points straight{{0, 0}, {1, 0}, {1, 0}, {2, 0}};
  EXPECT_EQ(ByAngle(straight, 1), straight);
  EXPECT_EQ(ToDetail(straight), straight);
  EXPECT_EQ(ByAngle({}, 1), Points());
  Points out{{7, 7}};
  GThinByAngularDeviation(nullptr, 9, 1, out);
  GThinToMinimalDetail(nullptr, 9, out);
  EXPECT_EQ(out, Points({{7, 7}}));
  GThinToMinimalDetail(straight.data(), 1, out);
  EXPECT_EQ(out, Points({{7, 7}, {0, 0}})) << "results are appended";
}

TEST(Thinning, ByAngleKeepsTheTurns) {
  const Points path{{0, 0}, {1, 0}, {2, 0}, {2, 0}, {3, 0}, {3, 1}, {3, 2}, {2, 3}};
  EXPECT_EQ(ByAngle(path, 0), Points({{0, 0}, {3, 0}, {3, 2}, {2, 3}}))
      << "a repeated point keeps the direction";
  EXPECT_EQ(ByAngle(path, 1), Points({{0, 0}, {3, 0}, {2, 3}}));
  EXPECT_EQ(ByAngle(path, HALF_PI), Points({{0, 0}, {2, 3}})) << "not by more than a right angle";
}

TEST(Thinning, ToDetailKeepsTheExtremes) {
  const Points path{{0, 0}, {1, 1}, {2, 3}, {3, 2}, {4, 1}, {5, 1}, {6, 4}, {5, 5}, {4, 5.5}};
  EXPECT_EQ(ToDetail(path), Points({{0, 0}, {2, 3}, {6, 4}, {4, 5.5}}))
      << "(4, 1) turns to a level segment, which is dropped, and hides the turn behind it";
}

// Directions on a grid give many equal ones and exact multiples of the angle.
TEST(Thinning, ByAngleIsBitForBitWhatTheAnglesSay) {
  SCOPED_TRACE("seed 5");
  std::mt19937 random(5);
  const double infinity = std::numeric_limits<double>::infinity();
  const double limits[] = {
      0, QUARTER_PI, 0.7853981633974483, HALF_PI,      PI, 1e-9, 0.1, 0.4636476090008061,
      3, -1,         infinity,           std::nan(""), 4};
  for (int round = 0; round < 3000; ++round) {
    Points path(5 + random() % 60);
    Vec2d p;
    for (Vec2d& point : path) {
      switch (round % 4) {
        case 0:  // a walk on a grid
          p += Vec2d(static_cast<double>(random() % 5) - 2, static_cast<double>(random() % 5) - 2);
          break;
        case 1:  // a smooth walk of any scale
          p += Vec2d(std::cos(round * 0.01), std::sin(static_cast<double>(random() % 9))) *
               std::ldexp(1.0, round % 40 - 20);
          break;
        case 2:  // turns by multiples of an eighth of a full turn
          p += Turned(QUARTER_PI * static_cast<double>(random() % 8));
          break;
        default: {  // anything
          const double odd[] = {0, -0.0, 5e-324, 1e308, -1e308, 1e-160, infinity, std::nan(""), 1};
          p = Vec2d(odd[random() % 9], odd[random() % 9]);
        }
      }
      point = p;
    }
    for (double radians : limits) {
      EXPECT_TRUE(
          AreSameBits(ByAngle(path, radians), reference::ThinByAngularDeviation(path, radians)))
          << "round " << round << ", radians " << radians;
    }
  }
}

TEST(Thinning, LeavesTheResultAsItWasWhereMemoryFails) {
  if (!testing::kAllocationsCanFail) GTEST_SKIP();
  const Points zigzag{{0, 0}, {1, 2}, {2, 0}, {3, 2}, {4, 0}, {5, 2}};
  Points out{{7, 7}};
  const Points before = out;
  for (std::size_t succeeding = 0; succeeding < 3; ++succeeding) {
    int code = 0;
    out.shrink_to_fit();
    {
      testing::FailingAllocations exhausted(succeeding, 1);
      try {
        GThinByAngularDeviation(zigzag.data(), 6, 0, out);
      } catch (const Exception& error) {
        code = error.GetErrCode();
      }
    }
    EXPECT_EQ(code, ERR_OUT_OF_MEMORY);
    EXPECT_EQ(out, before);
  }
}

}  // namespace
}  // namespace vlm

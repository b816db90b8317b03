#include <velum/geometry/Ellipses.h>

#include <velum/geometry/Box2.h>
#include <velum/geometry/Vec2.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace vlm {
namespace {

TEST(Ellipses, PointsLieOnTheEllipseInEqualSteps) {
  for (const int n : {1, 2, 7, 500}) {
    std::vector<Vec2d> points(static_cast<std::size_t>(4 * n + 2), Vec2d(77, 77));
    ComputeEllipse(Box2d(1, -3, 9, 1), n, points.data());
    EXPECT_EQ(points.back(), Vec2d(77, 77)) << "nothing beyond 4 n + 1 points";
    for (int i = 0; i <= 4 * n; ++i) {
      const Vec2d p = points[static_cast<std::size_t>(i)];
      const double angle = 1.5707963267948966 * i / n;
      EXPECT_NEAR(p.x, 5 + 4 * std::cos(angle), 1e-12) << n << ' ' << i;
      EXPECT_NEAR(p.y, -1 + 2 * std::sin(angle), 1e-12) << n << ' ' << i;
    }
    EXPECT_EQ(points.front(), points[static_cast<std::size_t>(4 * n)]);
  }
  Vec2d untouched(1, 2);
  ComputeEllipse(Box2d(0, 0, 1, 1), 0, &untouched);
  EXPECT_EQ(untouched, Vec2d(1, 2));
}

}  // namespace
}  // namespace vlm

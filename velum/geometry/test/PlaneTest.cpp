#include <velum/geometry/Plane.h>

#include <velum/geometry/Line3d.h>
#include <velum/geometry/Mat4d.h>
#include <velum/geometry/Quat4.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vlm {
namespace {

TEST(Plane, IsMadeInThreeWays) {
  const Plane expected(Vec3d::UNIT_Z, 2);
  EXPECT_EQ(Plane(Vec3d(0, 0, 2), Vec3d(1, 0, 2), Vec3d(0, 1, 2)), expected);
  EXPECT_EQ(Plane(Vec3d(0, 0, 5), Vec3d(7, 8, 2)), expected) << "the normal is normalized";
  EXPECT_EQ(Plane(Vec3d(0, 0, 5), 2).GetNormal(), Vec3d::UNIT_Z);
  EXPECT_EQ(Plane().GetNormal(), Vec3d::ZERO);
  EXPECT_TRUE(std::isnan(Plane(Vec3d::ZERO, 1).GetNormal().x));
}

TEST(Plane, MeasuresAlongItsNormal) {
  Plane plane(Vec3d::UNIT_Z, 2);
  EXPECT_EQ(plane.GetDistance(Vec3d(9, 9, 5)), 3);
  EXPECT_EQ(plane.GetDistanceFromOrigin(), 2);
  EXPECT_TRUE(plane.IsInHalfSpace(Vec3d(0, 0, 2))) << "on the plane";
  EXPECT_FALSE(plane.IsInHalfSpace(Vec3d(0, 0, 1.9)));
  plane.Offset(-3);
  EXPECT_EQ(plane.GetDistance(Vec3d::ZERO), 1);
}

TEST(Plane, MeetsLinesThatAreNotParallel) {
  const Plane plane(Vec3d::UNIT_Z, 2);
  Vec3d point(7, 7, 7);
  EXPECT_FALSE(plane.Intersect(Line3d(Vec3d(0, 0, 2), Vec3d(1, 0, 2)), point));
  EXPECT_EQ(point, Vec3d(7, 7, 7));
  EXPECT_TRUE(plane.Intersect(Line3d(Vec3d(0, 0, 3), Vec3d(4, 0, 6)), point)) << "behind as well";
  EXPECT_TRUE(point.Equals(Vec3d(-4.0 / 3, 0, 2), 1e-15));
}

TEST(Plane, IsTransformedWithItsPoints) {
  SCOPED_TRACE("seed 9");
  std::mt19937 random(9);
  std::uniform_real_distribution<double> number(-1, 1);
  const auto vector = [&] { return Vec3d(number(random), number(random), number(random)); };
  for (int i = 0; i < 200; ++i) {
    Mat4d m;
    m.SetTransform(vector(), Quat4d(vector(), number(random)), vector() + 2,
                   Quat4d(vector(), number(random)), vector());
    const Vec3d p[] = {vector(), vector(), vector()};
    Plane plane(p[0], p[1], p[2]);
    const Vec3d above = p[0] + plane.GetNormal();
    plane.Transform(m);
    for (const Vec3d& point : p) {
      // Thin triangles leave their normal a few digits less.
      EXPECT_NEAR(plane.GetDistance(point * m), 0, 1e-11);
    }
    EXPECT_TRUE(plane.IsInHalfSpace(above * m)) << "sides stay";
    EXPECT_NEAR(plane.GetNormal().Length(), 1, 1e-15);
  }
}

TEST(Plane, KeepsItsNormalWhereNothingCanBeInverted) {
  Plane plane(Vec3d::UNIT_X, 3);
  Mat4d flat = Mat4d::MakeScale(Vec3d(2, 1, 0));
  plane.Transform(flat);
  EXPECT_EQ(plane, Plane(Vec3d::UNIT_X, 6));
}

}  // namespace
}  // namespace vlm

// Code as a user writes it, outside the library's namespace and with the standard's names about.

#include <velum/geometry/Box.h>
#include <velum/geometry/Constants.h>
#include <velum/geometry/GLine.h>
#include <velum/geometry/RPoint.h>
#include <velum/geometry/Rounding.h>
#include <velum/geometry/Scalar.h>
#include <velum/geometry/Vec.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <type_traits>
#include <vector>

using namespace vlm;

namespace {

// Static objects of a program may be built from the library's constants.
constinit Vec2d theOrigin = Vec2d::ZERO;
constinit Box3d theWorld = Box3d::UNIVERSE;
constexpr Vec3f kUp = Vec3f::UNIT_Z;

// A function of the kind that takes coordinates as an array.
double SumOf(const double* values, int count) {
  double sum = 0;
  for (int i = 0; i < count; ++i) {
    sum += values[i];
  }
  return sum;
}

TEST(GeometryUserCode, MayUseTheStandardsNamesBesideTheLibrarys) {
  EXPECT_TRUE(std::isinf(INFINITY) && INFINITY > 0);
  EXPECT_TRUE(std::isnan(NAN));
  EXPECT_EQ(NEG_INFINITY, -INFINITY);
  EXPECT_EQ(hypot(3.0, 4.0), 5);
  EXPECT_EQ(vlm::hypot(2.0, 3.0, 6.0), 7);
  EXPECT_EQ(Normalize(5, 0, 20), 0.25);
  EXPECT_FALSE(AlmostEqual(NAN, NAN, 1000));
  EXPECT_FALSE(AlmostEqual(1.0, NAN, 1000));
}

TEST(GeometryUserCode, CallsTheRoundingsWithLiteralsOfAnyKind) {
  EXPECT_EQ(ToNearest(7, 2), 8);
  EXPECT_EQ(ToNearest(7.0, 2.0), 8.0);
  EXPECT_EQ(ToNearest(7, 2.5), 7.5);
  EXPECT_EQ(ToNearest(7.0f, 2), 8.0);
  EXPECT_EQ(ToNearest(7u, 2u), 8.0);
}

TEST(GeometryUserCode, HandsVectorsOverAsArrays) {
  Vec3d v(1, 2, 4);
  const Vec4d c(1, 2, 4, 8);
  double* out = v;
  out[2] = 5;
  EXPECT_EQ(v, Vec3d(1, 2, 5));
  EXPECT_EQ(SumOf(v, 3), 8);
  EXPECT_EQ(SumOf(c, 4), 15);
  EXPECT_EQ(v[1] + c[3], 10);
  const double values[] = {1, 2, 3};
  EXPECT_EQ(Vec3d(values), Vec3d(1, 2, 3));
  EXPECT_EQ(Vec4d(values, 4), Vec4d(1, 2, 3, 4));
  EXPECT_EQ(Vec2d(values + 1), Vec2d(2, 3));
}

TEST(GeometryUserCode, ConvertsBetweenTheWidthsOnlyTowardsDoubleUnasked) {
  static_assert(std::is_convertible_v<Vec2f, Vec2d> && std::is_convertible_v<Vec4f, Vec4d>);
  static_assert(std::is_constructible_v<Vec3f, Vec3d> && !std::is_convertible_v<Vec3d, Vec3f>);
  static_assert(std::is_convertible_v<POINT, Vec2d> && std::is_convertible_v<POINT, Vec2i>);
  static_assert(std::is_constructible_v<Vec2f, POINT> && !std::is_convertible_v<POINT, Vec2f>);
  static_assert(!std::is_constructible_v<Vec3d, Vec2d> && !std::is_constructible_v<Vec3d, int>);
  EXPECT_EQ(Vec2f(0.5f, 1) + Vec2d(0.25, 2), Vec2d(0.75, 3));
  EXPECT_EQ(Vec3f(Vec3d(0.1, 1e-50, 1e300)), Vec3f(0.1f, 0, INFINITY));
  EXPECT_EQ(Vec2i(POINT{-3, 4}), Vec2i(-3, 4));
}

TEST(GeometryUserCode, BuildsStaticObjectsFromTheConstants) {
  EXPECT_EQ(theOrigin, Vec2d(0, 0));
  EXPECT_EQ(theWorld.zMax(), 1.7976931348623157e308);
  EXPECT_EQ(2 * kUp + Vec3f::ONE, Vec3f(1, 1, 3));
  EXPECT_EQ(Vec2i::UNIT_X + Vec2i::UNIT_Y, Vec2i::ONE);
  EXPECT_EQ(Vec3d::UNIT_X + Vec3d::UNIT_Y + Vec3d::UNIT_Z, Vec3d::ONE);
  EXPECT_EQ(Vec4f::ZERO, Vec4f());
}

TEST(GeometryUserCode, KeepsVectorsInOrderedContainers) {
  const std::set<Vec2d> plane = {{2, 1}, {1, 2}, {1, 1}, {1, 2}};
  EXPECT_TRUE(std::ranges::equal(plane, std::vector<Vec2d>{{1, 1}, {1, 2}, {2, 1}}));
  const std::set<Vec3i> space = {{1, 1, 2}, {1, 1, 1}, {0, 5, 5}};
  EXPECT_TRUE(std::ranges::equal(space, std::vector<Vec3i>{{0, 5, 5}, {1, 1, 1}, {1, 1, 2}}));
}

TEST(GeometryUserCode, DerivesFromSegmentsAndFillsPointLists) {
  static_assert(std::has_virtual_destructor_v<GLine2> && std::has_virtual_destructor_v<GLine3>);
  GLine3 line(Vec3d::ZERO, Vec3d::ONE);
  const GLine3 copy = line;
  line.Set(Vec3d::UNIT_X, Vec3d::UNIT_Y);
  EXPECT_EQ(line.GetBegin() + line.GetEnd(), Vec3d(1, 1, 0));
  EXPECT_EQ(copy.GetEnd(), Vec3d::ONE);

  RPoints points;
  points.Points().emplace_back(1, 2);
  points.Points()[0].Y(3);
  const RPoints same = points;
  points.Points().clear();
  EXPECT_EQ(same.Points(), std::vector<RPoint>{RPoint(1, 3)});
}

}  // namespace

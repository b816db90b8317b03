#include <velum/geometry/Vec.h>

#include <velum/geometry/Constants.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <type_traits>

namespace vlm {
namespace {

template <class Vec>
class EveryVec : public ::testing::Test {};

using AllVecs = ::testing::Types<Vec2i, Vec2f, Vec2d, Vec3i, Vec3f, Vec3d, Vec4f, Vec4d>;
TYPED_TEST_SUITE(EveryVec, AllVecs);

// Each operator is held against the same operation on single numbers.
TYPED_TEST(EveryVec, CalculatesComponentByComponent) {
  using Vec = TypeParam;
  using T = typename Vec::Scalar;
  constexpr unsigned kSeed = 20231;
  SCOPED_TRACE(kSeed);
  std::mt19937 random(kSeed);
  std::uniform_int_distribution<int> number(1, 1000);
  for (int round = 0; round < 100; ++round) {
    Vec a;
    Vec b;
    for (std::size_t i = 0; i < Vec::kDimension; ++i) {
      EXPECT_EQ(a[i], 0);
      a[i] = static_cast<T>(number(random) - 500) / 3;
      b[i] = static_cast<T>(number(random)) / 3 + 1;
    }
    const T s = static_cast<T>(number(random)) / 3 + 1;
    const T reciprocal = std::is_integral_v<T> ? 0 : 1 / s;
    Vec set = a;
    set += b;
    EXPECT_EQ(set, a + b);
    set -= b + s;
    EXPECT_EQ(set, a + b - (b + s));
    set = a;
    (set *= b) /= b;
    EXPECT_EQ(set, a * b / b);
    set = a;
    (((set += s) -= s) *= s) /= s;
    EXPECT_EQ(set, (a + s - s) * s / s);
    set = a;
    set.Negate();
    for (std::size_t i = 0; i < Vec::kDimension; ++i) {
      EXPECT_EQ((a + b)[i], a[i] + b[i]);
      EXPECT_EQ((a - b)[i], a[i] - b[i]);
      EXPECT_EQ((a * b)[i], a[i] * b[i]);
      EXPECT_EQ((a / b)[i], a[i] / b[i]);
      EXPECT_EQ((a + s)[i], a[i] + s);
      EXPECT_EQ((a - s)[i], a[i] - s);
      EXPECT_EQ((a * s)[i], a[i] * s);
      EXPECT_EQ((a / s)[i], std::is_integral_v<T> ? a[i] / s : a[i] * reciprocal);
      EXPECT_EQ((-a)[i], -a[i]);
      EXPECT_EQ(set[i], -a[i]);
    }
  }
}

TYPED_TEST(EveryVec, MeasuresByPythagoras) {
  using Vec = TypeParam;
  Vec a;
  Vec b;
  a[0] = 2;
  a[1] = 3;
  b[Vec::kDimension - 1] = -4;
  constexpr bool kPlane = Vec::kDimension == 2;
  EXPECT_EQ(a.LengthSquared(), 13);
  EXPECT_EQ(a.Length(), std::sqrt(13.0));
  EXPECT_EQ(a.Dot(b), kPlane ? -12 : 0);
  EXPECT_EQ(a.DistanceSquared(b), kPlane ? 53 : 29);
  EXPECT_EQ(a.Distance(b), std::sqrt(kPlane ? 53.0 : 29.0));
}

TEST(Vec, ComputesFloatProductsAndIntLengthsInDouble) {
  EXPECT_EQ(Vec2f(1e30f, 0).LengthSquared(), double(1e30f) * double(1e30f));
  EXPECT_EQ(Vec3f(16777216, 0, 0).Distance(Vec3f(-1, 0, 0)), 16777217);
  EXPECT_EQ(Vec2i(60000, 80000).Length(), 100000);
  EXPECT_EQ(Vec2i(-60000, 0).Distance(Vec2i(0, 80000)), 100000);
}

TEST(Vec, NormalizesOnlyWhatIsLongEnough) {
  EXPECT_TRUE(Vec2f(1e-10f, 0).Normalize());
  EXPECT_TRUE(Vec2d(0, 1e-10).Normalize());
  EXPECT_TRUE(Vec3d(0, 0, 1e-10).Normalize());
  EXPECT_TRUE(Vec4d(0, 0, 0, 1e-10).Normalize());
  EXPECT_FALSE(Vec2f(1e-16f, 0).Normalize());
  EXPECT_FALSE(Vec2d(EPSILON, 0).Normalize()) << "the threshold itself is too short";
  EXPECT_FALSE(Vec3f(1.1920929e-7f, 0, 0).Normalize()) << "the threshold itself is too short";
  EXPECT_FALSE(Vec4f(0, 0, 0, 1e-10f).Normalize());
  EXPECT_FALSE(Vec3d(0, NAN, 1).Normalize());
  Vec3f tooShort(0, 1e-10f, 0);
  EXPECT_FALSE(tooShort.Normalize());
  EXPECT_EQ(tooShort, Vec3f(0, 1e-10f, 0));

  Vec3d v(1, 2, 2);
  EXPECT_TRUE(v.Normalize());
  const double reciprocal = 1.0 / 3.0;
  EXPECT_EQ(v, Vec3d(1 * reciprocal, 2 * reciprocal, 2 * reciprocal));
  EXPECT_EQ(Vec3d(1, 2, 2).Normalized(), v);
  EXPECT_TRUE(std::isnan(Vec2d().Normalized().x));
}

TEST(Vec, InterpolatesInTheStatedOrder) {
  // a (1 - t) + b t would give 1.8000000000000003.
  EXPECT_EQ(Vec2d(1.3, 0).Lerp(Vec2d(6.3, 4), 0.1), Vec2d(1.8, 0.4));
  EXPECT_EQ(Vec3f(1, 1, 1).Lerp(Vec3f(2, 3, 4), 2), Vec3f(3, 5, 7));
}

TEST(Vec, IsEqualWithinAToleranceThatCounts) {
  EXPECT_TRUE(Vec2d(3, 4).Equals(Vec2d::ZERO, 5));
  EXPECT_FALSE(Vec2d(3, 4).Equals(Vec2d::ZERO, 4.999));
  EXPECT_FALSE(Vec2d(NAN, 0).Equals(Vec2d(NAN, 0), 1));
  EXPECT_NE(Vec2d(NAN, 0), Vec2d(NAN, 0));
}

TEST(Vec, FollowsTheClosestAxis) {
  EXPECT_EQ(Vec2d(0, 0).GetClosestAxis(), Vec2d(-1, 0));
  EXPECT_EQ(Vec2d(2, -2).GetClosestAxis(), Vec2d(1, 0)) << "a tie goes to x";
  EXPECT_EQ(Vec2f(2, -3).GetClosestAxis(), Vec2f(0, -1));
  EXPECT_EQ(Vec3d(0, 0, 0).GetClosestAxis(), Vec3d(-1, 0, 0));
  EXPECT_EQ(Vec3d(2, 2, 2).GetClosestAxis(), Vec3d(1, 0, 0)) << "a tie goes to x";
  EXPECT_EQ(Vec3d(1, -2, 2).GetClosestAxis(), Vec3d(0, -1, 0)) << "then to y";
  EXPECT_EQ(Vec3f(1, 2, 3).GetClosestAxis(), Vec3f(0, 0, 1));
}

TEST(Vec, MeasuresAngles) {
  EXPECT_EQ(Vec2d(1, 0).AngleBetween(Vec2d(0, 5)), HALF_PI);
  EXPECT_EQ(Vec3d(1, 1, 1).AngleBetween(Vec3d(2, 2, 2)), 0) << "the cosine is limited to 1";
  EXPECT_EQ(Vec3f(1, 0, 0).AngleBetween(Vec3f(-3, 0, 0)), PI);
  EXPECT_EQ(Vec2d(1e-9, 0).AngleBetween(Vec2d(0, 1e-9)), 0) << "too short";
  EXPECT_EQ(Vec2f().AngleBetween(Vec2f(1, 1)), 0);
}

TEST(Vec, CrossesRightHanded) {
  EXPECT_EQ(Vec3d::UNIT_X.Cross(Vec3d::UNIT_Y), Vec3d::UNIT_Z);
  EXPECT_EQ(Vec3i(1, 2, 3).Cross(Vec3i(4, 5, 6)), Vec3i(-3, 6, -3));
}

TEST(Point, OfMixedTypesCountsItsFourthComponentInIntegers) {
  Point4<double, unsigned int> p(1, 2, 3, 10);
  p /= Point4<double, unsigned int>(2, 2, 2, 4);
  EXPECT_EQ(p, (Point4<double, unsigned int>(0.5, 1, 1.5, 2)));
  p *= 2.9;
  EXPECT_EQ(p.W(), 4u);
  p += -5.0;
  EXPECT_EQ(p.W(), 0xFFFFFFFFu) << "wraps";
  p.Z(7);
  p.W(1);
  EXPECT_EQ(p.Z() + p.W(), 8);
  const float values[] = {1, 2, 3};
  EXPECT_EQ((Point4<float, unsigned int>(values, 4).W()), 4u);
}

}  // namespace
}  // namespace vlm

#include <velum/geometry/Quat4.h>

#include <velum/geometry/Constants.h>
#include <velum/geometry/Mat4d.h>
#include <velum/geometry/Mat4f.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <type_traits>

namespace vlm {
namespace {

template <class Quat>
class EveryQuat4 : public ::testing::Test {
 public:
  using Component = decltype(Quat::x);
  static constexpr Component kTolerance =
      std::is_same_v<Component, float> ? Component(1e-5) : Component(1e-13);

  Component Number() { return static_cast<Component>(number_(random_)); }
  BasicVec3<Component> Vector() { return BasicVec3<Component>(Number(), Number(), Number()); }
  Quat Rotation() {
    Quat q(Number(), Number(), Number(), Number());
    EXPECT_TRUE(q.Normalize());
    return q;
  }

 private:
  std::mt19937 random_{128};
  std::uniform_real_distribution<double> number_{-1, 1};
};
using AllQuats = ::testing::Types<Quat4d, Quat4f>;
TYPED_TEST_SUITE(EveryQuat4, AllQuats);

template <class Quat, class T>
bool SameRotation(const Quat& a, const Quat& b, T tolerance) {
  return a.Equals(b, tolerance) || (a * Quat(0, 0, 0, -1)).Equals(b, tolerance);
}

TYPED_TEST(EveryQuat4, GoesTheWayOfItsMatrix) {
  SCOPED_TRACE("seed 128");
  using Quat = TypeParam;
  using Mat = typename Quat::Mat4;
  for (int i = 0; i < 200; ++i) {
    const Quat a = this->Rotation();
    const Quat b = this->Rotation();
    const auto v = this->Vector();
    const Mat product = Mat::MakeRotation(a) * Mat::MakeRotation(b);
    EXPECT_TRUE(Mat::MakeRotation(a * b).Equals(product, this->kTolerance)) << "a first, then b";
    Quat c = a;
    c *= b;
    EXPECT_EQ(c, a * b);
    EXPECT_TRUE(((a * b) * v).Equals(b.MultVec(a * v), this->kTolerance));
    EXPECT_TRUE(SameRotation(Quat(product), a * b, this->kTolerance));
    EXPECT_TRUE((a.Inverse() * (a * v)).Equals(v, this->kTolerance));
    EXPECT_TRUE(a.Inverse().Equals(a.UnitInverse(), this->kTolerance));
    EXPECT_TRUE(a.IsUnit(std::sqrt(this->kTolerance)));
  }
}

TYPED_TEST(EveryQuat4, HasAnAxisAndAnAngle) {
  using Quat = TypeParam;
  using T = decltype(Quat::x);
  using Vec3 = typename Quat::Vec3;
  T const right = static_cast<T>(HALF_PI);
  const Quat turn(Vec3(0, 0, 5), right);
  EXPECT_TRUE(turn.Equals(Quat(0, 0, static_cast<T>(SQRT_2_INV), static_cast<T>(SQRT_2_INV)),
                          this->kTolerance));
  EXPECT_TRUE((turn * Vec3::UNIT_X).Equals(Vec3::UNIT_Y, this->kTolerance));
  Vec3 axis;
  T angle = 7;
  turn.Get(axis, angle);
  EXPECT_TRUE(axis.Equals(Vec3::UNIT_Z, this->kTolerance));
  EXPECT_NEAR(angle, right, this->kTolerance);
  Quat half = turn;
  half.ScaleAngle(T(0.5));
  EXPECT_TRUE(half.Equals(Quat(Vec3::UNIT_Z, right / 2), this->kTolerance));
  Quat::IDENTITY.Get(axis, angle);
  EXPECT_EQ(axis, Vec3::UNIT_Z);
  EXPECT_EQ(angle, 0);
  Quat(1, 0, 0, T(-1.5)).Get(axis, angle);
  EXPECT_NEAR(angle, TWO_PI, 1e-6) << "w beyond -1 counts as -1";
}

TYPED_TEST(EveryQuat4, ReadsMatricesByTheirLargestDiagonal) {
  using Quat = TypeParam;
  using Mat = typename Quat::Mat4;
  using T = decltype(Quat::x);
  T const third = static_cast<T>(std::sqrt(1 / 3.0));
  // Half turns leave w = 0 and go through each of the other three branches; equal diagonals go to
  // the later axis.
  const Quat turns[] = {
      {0, 0, 0, 1}, {1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {third, third, third, 0}};
  for (const Quat& turn : turns) {
    SCOPED_TRACE(&turn - turns);
    EXPECT_TRUE(Quat(Mat::MakeRotation(turn)).Equals(turn, this->kTolerance));
  }
}

TYPED_TEST(EveryQuat4, LeadsFromOneDirectionToAnother) {
  SCOPED_TRACE("seed 128");
  using Quat = TypeParam;
  using Vec3 = typename Quat::Vec3;
  for (int i = 0; i < 200; ++i) {
    const Vec3 from = this->Vector();
    const Vec3 to = this->Vector();
    const Quat turn(from, to);
    EXPECT_TRUE((turn * from.Normalized()).Equals(to.Normalized(), 100 * this->kTolerance));
    EXPECT_EQ(Quat(from, from), Quat::IDENTITY);
    const Quat back(from, -from);
    EXPECT_EQ(back.w, 0);
    EXPECT_TRUE((back * from).Equals(-from, this->kTolerance));
  }
  EXPECT_EQ(Quat(Vec3::UNIT_X, -Vec3::UNIT_X), Quat(0, 0, 1, 0)) << "x has its own axis";
}

TYPED_TEST(EveryQuat4, InvertsAndNormalizesAboveAThreshold) {
  using Quat = TypeParam;
  using T = decltype(Quat::x);
  Quat q(2, 4, 6, 8);
  EXPECT_EQ(q.Norm(), 120);
  EXPECT_EQ(q.Inverse(), Quat(T(-2) / 120, T(-4) / 120, T(-6) / 120, T(8) / 120));
  EXPECT_TRUE(q.Invert());
  T const factor = T(-1) / 120;
  EXPECT_EQ(q, Quat(2 * factor, 4 * factor, 6 * factor, 8 * factor)) << "w changes sign, too";
  const Quat tiny(0, 0, 0, std::sqrt(Quat::kSmallestNorm) / 2);
  EXPECT_EQ(tiny.Inverse(), Quat::ZERO);
  q = tiny;
  EXPECT_FALSE(q.Invert());
  EXPECT_EQ(q, tiny);
  EXPECT_TRUE(q.Normalize()) << "the root of the norm is above the threshold";
  EXPECT_EQ(q, Quat::IDENTITY);
  q = Quat(0, Quat::kSmallestNorm, 0, 0);
  EXPECT_FALSE(q.Normalize());
  EXPECT_EQ(Quat(), Quat::ZERO);
}

TYPED_TEST(EveryQuat4, ComparesSquaresWithTolerances) {
  using Quat = TypeParam;
  EXPECT_TRUE(Quat(0, 3, 0, 4).Equals(Quat::ZERO, 25)) << "the tolerance itself, not its square";
  EXPECT_FALSE(Quat(0, 3, 0, 4).Equals(Quat::ZERO, 24));
  EXPECT_TRUE(Quat(0, 0, 0, 2).IsUnit(2)) << "|4 - 1| <= 2 * 2";
  EXPECT_FALSE(Quat(0, 0, 0, 2).IsUnit(decltype(Quat::x)(1.5)));
}

TYPED_TEST(EveryQuat4, SlerpsAlongTheShorterArc) {
  using Quat = TypeParam;
  using T = decltype(Quat::x);
  using Vec3 = typename Quat::Vec3;
  const Vec3 axis(1, 2, 3);
  const Quat a(axis, T(0.2));
  const Quat b(axis, T(1.4));
  const Quat opposite = b * Quat(0, 0, 0, -1);
  for (const T t : {T(0.25), T(0.5), T(0.9)}) {
    const Quat expected(axis, T(0.2) + t * T(1.2));
    EXPECT_TRUE(Quat::Slerp(a, b, t).Equals(expected, this->kTolerance * this->kTolerance));
    EXPECT_TRUE(Quat::Slerp(a, opposite, t).Equals(expected, this->kTolerance * this->kTolerance));
  }
  EXPECT_EQ(Quat::Slerp(a, opposite, -1), a);
  EXPECT_EQ(Quat::Slerp(a, opposite, 1), opposite) << "as it stands";
  const Quat exact(T(0.5), T(0.5), T(-0.5), T(0.5));
  EXPECT_EQ(Quat::Slerp(exact, exact * Quat(0, 0, 0, -1), T(0.5)), exact);
}

}  // namespace
}  // namespace vlm

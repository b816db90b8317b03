#include <velum/geometry/Mat3d.h>

#include <velum/geometry/Box2.h>
#include <velum/geometry/Constants.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <random>

namespace vlm {
namespace {

constexpr Mat3d kCounted(1, 2, 3, 4, 5, 6, 7, 8, 9);

TEST(Mat3d, GivesAccessByRowsAndColumns) {
  Mat3d m = kCounted;
  EXPECT_EQ(m[1][2], 6);
  EXPECT_EQ(m.ToDoubleArray()[6], 7);
  EXPECT_EQ(m.GetRow(2), Vec3d(7, 8, 9));
  EXPECT_EQ(m.GetCol(2), Vec3d(3, 6, 9));
  EXPECT_EQ(m.Transpose().GetRow(2), m.GetCol(2));
  m.SetRow(0, Vec3d(0, -1, -2));
  m.SetCol(2, Vec3d(-3, -4, -5));
  EXPECT_EQ(m, Mat3d(0, -1, -3, 4, 5, -4, 7, 8, -5));
  m.Set(1, 2, 3, 4, 5, 6);
  EXPECT_EQ(m, Mat3d(1, 2, 0, 3, 4, 0, 5, 6, 1));
  EXPECT_TRUE(Mat3d().IsIdentity());
  EXPECT_FALSE(Mat3d(1, -0.0, 0, 1, 0, 0).IsIdentity()) << "bit for bit";
  EXPECT_TRUE(Mat3d(1, -0.0, 0, 1, 0, 0).Equals(Mat3d::IDENTITY, 0));
  EXPECT_FALSE(Mat3d::ZERO.Equals(Mat3d::IDENTITY, 0.999));
}

TEST(Mat3d, JoinsStepsAfterOrBefore) {
  const Vec2d v(2, -3);
  const Mat3d turn = Mat3d::MakeRotation(0.7);
  EXPECT_EQ(Mat3d(kCounted).Translate(v), kCounted * Mat3d::MakeTranslation(v));
  EXPECT_EQ(Mat3d(kCounted).Translate(2, -3, Mat3d::ORDER_PRE),
            Mat3d::MakeTranslation(v) * kCounted);
  EXPECT_EQ(Mat3d(kCounted).Scale(2, -3), kCounted * Mat3d::MakeScale(v));
  EXPECT_EQ(Mat3d(kCounted).Scale(v, Mat3d::ORDER_PRE), Mat3d::MakeScale(v) * kCounted);
  EXPECT_TRUE(Mat3d(kCounted).Rotate(0.7).Equals(kCounted * turn, 1e-14));
  EXPECT_EQ(Mat3d(kCounted).PostMultiply(turn), kCounted * turn);
  EXPECT_EQ(Mat3d(kCounted).PreMultiply(turn), turn * kCounted);
  EXPECT_EQ(Mat3d(kCounted) *= turn, kCounted * turn);
  EXPECT_TRUE((Vec2d::UNIT_X * Mat3d::MakeRotation(HALF_PI)).Equals(Vec2d::UNIT_Y, 1e-15));
  EXPECT_EQ(kCounted * kCounted, Mat3d(30, 36, 42, 66, 81, 96, 102, 126, 150));
}

TEST(Mat3d, TransformsPointsAndDirections) {
  const Mat3d affine(2, 1, 0, 3, 5, 7);
  EXPECT_EQ(Vec2d(1, 2) * affine, Vec2d(7, 14));
  EXPECT_EQ(affine.DirMult(Vec2d(1, 2)), Vec2d(2, 7));
  EXPECT_EQ(Vec2d(1, 2) * kCounted, Vec2d(16.0 / 24, 20.0 / 24)) << "divided by 3 + 12 + 9";
  EXPECT_EQ(Vec3d(1, 2, 1) * kCounted, Vec3d(16, 20, 24));
  EXPECT_EQ(kCounted * Vec3d(1, 2, 1), Vec3d(8, 20, 32));
  for (const Mat3d& m : {affine, kCounted}) {
    Vec2d points[] = {{1, 2}, {-3, 0.1}, {1e10, 7}};
    Vec2d apart[3];
    m.Transform(points, apart, 3);
    for (std::size_t i = 0; i < 3; ++i) {
      EXPECT_EQ(apart[i], points[i] * m);
    }
    m.VecMult(points, points, 3);
    EXPECT_EQ(points[2], apart[2]);
    Box2d box;
    m.Transform(Box2d(1, 2, -3, 0.1), box);
    EXPECT_EQ(box, Box2d(apart[0], apart[1]));
  }
}

TEST(Mat3d, InvertsWhatIsAffine) {
  SCOPED_TRACE("seed 3");
  std::mt19937 random(3);
  std::uniform_real_distribution<double> number(-2, 2);
  for (int i = 0; i < 200; ++i) {
    const Mat3d m(number(random), number(random), number(random), number(random), number(random),
                  number(random));
    if (std::abs(m[0][0] * m[1][1] - m[0][1] * m[1][0]) < 0.1) {
      continue;  // badly conditioned
    }
    Mat3d inverse = m;
    ASSERT_TRUE(inverse.Inverse());
    EXPECT_TRUE((m * inverse).Equals(Mat3d::IDENTITY, 1e-13));
    Mat3d out = kCounted;
    ASSERT_TRUE(m.Inverse(out));
    EXPECT_EQ(out.GetCol(2), Vec3d(3, 6, 9)) << "the third column is not touched";
    EXPECT_EQ(out.GetCol(1), inverse.GetCol(1));
  }
}

TEST(Mat3d, SingularMatricesLeaveTheOutput) {
  struct Row {
    const char* why;
    Mat3d m;
    bool isRegular;
  };
  const Row rows[] = {
      {"zero", Mat3d::ZERO, false},
      {"parallel rows", Mat3d(1, 2, 2, 4, 5, 6), false},
      {"below the threshold", Mat3d(1, 1, 1, 1 + 2e-7, 0, 0), false},
      {"above the threshold", Mat3d(1, 1, 1, 1 + 3e-7, 0, 0), true},
      {"nothing to sum but a denormal", Mat3d(1e-160, 0, 0, 1e-160, 0, 0), false},
      {"NaN", Mat3d(NAN, 0, 0, 1, 0, 0), false},
      {"infinity", Mat3d(INFINITY, 0, 0, 1, 0, 0), false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    Mat3d out = kCounted;
    EXPECT_EQ(row.m.Inverse(out), row.isRegular);
    EXPECT_EQ(out == kCounted, !row.isRegular);
    Mat3d inPlace = row.m;
    EXPECT_EQ(inPlace.Inverse(), row.isRegular);
    EXPECT_EQ(inPlace == row.m, !row.isRegular);
  }
}

TEST(Mat3d, IsFactoredIntoWhatMadeIt) {
  SCOPED_TRACE("seed 3");
  std::mt19937 random(3);
  std::uniform_real_distribution<double> number(0.1, 2);
  for (int i = 0; i < 200; ++i) {
    const Vec2d translation(number(random), number(random));
    const Vec2d scale(number(random), i % 2 == 0 ? number(random) : -number(random));
    const double rotation = number(random);
    const double shear = number(random) - 1;
    Mat3d m;
    m.SetTransform(translation, scale, rotation, shear);
    const Mat3d steps = Mat3d::MakeScale(scale) * Mat3d(1, 0, shear, 1, 0, 0) *
                        Mat3d::MakeRotation(rotation) * Mat3d::MakeTranslation(translation);
    EXPECT_TRUE(m.Equals(steps, 1e-14));
    Vec2d t;
    Vec2d s;
    double r = 0;
    double h = 0;
    ASSERT_TRUE(m.GetTransform(&t, &s, &r, &h));
    EXPECT_EQ(t, translation);
    EXPECT_TRUE(s.Equals(scale, 1e-13));
    EXPECT_NEAR(r, rotation, 1e-13);
    EXPECT_NEAR(h, shear, 1e-11);
    EXPECT_TRUE(m.GetTransform(nullptr, nullptr, nullptr, nullptr));
  }
  Vec2d untouched(7, 7);
  EXPECT_FALSE(Mat3d(1, 2, 2, 4, 0, 0).GetTransform(&untouched, &untouched, nullptr, nullptr));
  EXPECT_EQ(untouched, Vec2d(7, 7));
}

}  // namespace
}  // namespace vlm

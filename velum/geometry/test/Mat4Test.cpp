#include <velum/geometry/Box.h>
#include <velum/geometry/Constants.h>
#include <velum/geometry/Mat4d.h>
#include <velum/geometry/Mat4f.h>
#include <velum/geometry/Quat4.h>
#include <velum/geometry/test/reference/PlainTransforms.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <random>
#include <vector>

namespace vlm {
namespace {

constexpr unsigned kSeed = 67;
constexpr Mat4d::Type kTypes[] = {Mat4d::TYPE_IDENTITY, Mat4d::TYPE_2D, Mat4d::TYPE_AFFINE,
                                  Mat4d::TYPE_COMPLEX};

class Random {
 public:
  double Number(double low = -2, double high = 2) {
    return std::uniform_real_distribution<double>(low, high)(random_);
  }
  Vec3d Vector() { return Vec3d(Number(), Number(), Number()); }
  Quat4d Rotation() {
    Quat4d q(Number(), Number(), Number(), Number());
    q.Normalize();
    return q;
  }
  // A matrix of the given type with random elements where the type leaves them free.
  Mat4d Matrix(Mat4d::Type type) {
    Mat4d m;
    for (std::size_t r = 0; r < 4; ++r) {
      for (std::size_t c = 0; c < 4; ++c) {
        const bool isFree = type == Mat4d::TYPE_COMPLEX || (type == Mat4d::TYPE_AFFINE && c < 3) ||
                            (type == Mat4d::TYPE_2D && c < 2 && r != 2);
        m[r][c] = isFree ? Number() : m[r][c];
      }
    }
    return m;
  }

 private:
  std::mt19937 random_{kSeed};
};

template <class Mat>
class EveryMat4 : public ::testing::Test {};
using AllMat4s = ::testing::Types<Mat4d, Mat4f>;
TYPED_TEST_SUITE(EveryMat4, AllMat4s);

// All elements differ, and products of them are exact in float.
template <class Mat>
Mat Counted() {
  return Mat(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16);
}

TYPED_TEST(EveryMat4, GivesAccessByRowsAndColumns) {
  using Mat = TypeParam;
  using Vec4 = typename Mat::Vec4;
  Mat m = Counted<Mat>();
  const Mat& constant = m;
  EXPECT_EQ(constant[1][2], 7);
  EXPECT_EQ(&constant[6][0], &constant[2][0]) << "two bits of the row count";
  EXPECT_EQ(m.GetRow(2), Vec4(9, 10, 11, 12));
  EXPECT_EQ(m.GetCol(2), Vec4(3, 7, 11, 15));
  EXPECT_EQ(m.Transpose().GetRow(2), m.GetCol(2));
  m.SetRow(0, Vec4(0, -1, -2, -3));
  m.SetCol(3, Vec4(-4, -5, -6, -7));
  EXPECT_EQ(m, Mat(0, -1, -2, -4, 5, 6, 7, -5, 9, 10, 11, -6, 13, 14, 15, -7));
  EXPECT_EQ(Mat(), Mat::IDENTITY);
  EXPECT_TRUE(Mat().IsIdentity());
  EXPECT_FALSE(Mat::ZERO.IsIdentity());
}

TYPED_TEST(EveryMat4, ComparesBitsOrWithinATolerance) {
  using Mat = TypeParam;
  using T = typename Mat::Scalar;
  Mat a;
  Mat b;
  a[0][1] = -T(0);
  EXPECT_FALSE(a == b) << "negative zero";
  EXPECT_TRUE(a.Equals(b, 0));
  a[0][1] = b[0][1] = std::numeric_limits<T>::quiet_NaN();
  EXPECT_TRUE(a == b) << "equal NaNs";
  EXPECT_FALSE(a.Equals(b, 1));
  for (const unsigned at : {0u, 1u, 15u}) {
    Mat c;
    c[at / 4][at % 4] += T(0.5);
    EXPECT_TRUE(c.Equals(Mat(), T(0.5)));
    EXPECT_FALSE(c.Equals(Mat(), T(0.4375)));
  }
}

TYPED_TEST(EveryMat4, HasDeterminants) {
  using Mat = TypeParam;
  const Mat m(2, 0, 1, 3, 1, 4, 0, 2, 5, 1, 3, 1, 0, 2, 1, 4);
  // By summing over all permutations.
  EXPECT_EQ(m.Det3(), 5);
  EXPECT_EQ(m.Det3(3, 1, 2, 3, 0, 2), 21);
  EXPECT_EQ(m.Det4(), 85);
}

TYPED_TEST(EveryMat4, JoinsStepsAfterOrBefore) {
  using Mat = TypeParam;
  using T = typename Mat::Scalar;
  using Vec3 = typename Mat::Vec3;
  const Mat base = Counted<Mat>();
  const Vec3 v(2, -3, 4);
  const auto turnX = [](T a) { return Mat::MakeRotation(typename Mat::Quat(Vec3::UNIT_X, a)); };
  const auto turnY = [](T a) { return Mat::MakeRotation(typename Mat::Quat(Vec3::UNIT_Y, a)); };
  T const angle = T(0.7);
  T const tolerance = std::is_same_v<T, float> ? T(1e-5) : T(1e-13);
  struct Row {
    const char* what;
    Mat step;
    Mat post;
    Mat pre;
  };
  const Row rows[] = {
      {"translate", Mat::MakeTranslation(v), Mat(base).Translate(v),
       Mat(base).Translate(2, -3, 4, Mat::ORDER_PRE)},
      {"scale", Mat::MakeScale(v), Mat(base).Scale(2, -3, 4), Mat(base).Scale(v, Mat::ORDER_PRE)},
      {"x", turnX(angle), Mat(base).RotateX(angle), Mat(base).RotateX(angle, Mat::ORDER_PRE)},
      {"y", turnY(angle), Mat(base).RotateY(angle),
       Mat(base).RotateY(angle, static_cast<typename Mat::Order>(7))},
      {"z", Mat::MakeRotation(angle), Mat(base).RotateZ(angle),
       Mat(base).RotateZ(angle, Mat::ORDER_PRE)},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.what);
    EXPECT_TRUE(row.post.Equals(base * row.step, tolerance));
    EXPECT_TRUE(row.pre.Equals(row.step * base, tolerance));
    EXPECT_EQ(Mat(base).PostMultiply(row.step), base * row.step);
    EXPECT_EQ(Mat(base).PreMultiply(row.step), row.step * base);
    EXPECT_EQ(Mat(base) *= row.step, base * row.step);
  }
  EXPECT_EQ(Mat(base).RotateX(0), base);
  const typename Mat::Quat turn(Vec3(1, 2, 3), angle);
  EXPECT_TRUE(Mat(base).Rotate(turn).Equals(base * Mat::MakeRotation(turn), tolerance));
}

TYPED_TEST(EveryMat4, TurnsCounterClockwise) {
  using Mat = TypeParam;
  using T = typename Mat::Scalar;
  using Vec3 = typename Mat::Vec3;
  T const right = static_cast<T>(HALF_PI);
  EXPECT_TRUE((Vec3::UNIT_Y * Mat().RotateX(right)).Equals(Vec3::UNIT_Z, 1e-6));
  EXPECT_TRUE((Vec3::UNIT_Z * Mat().RotateY(right)).Equals(Vec3::UNIT_X, 1e-6));
  EXPECT_TRUE((Vec3::UNIT_X * Mat().RotateZ(right)).Equals(Vec3::UNIT_Y, 1e-6));
}

TYPED_TEST(EveryMat4, MultipliesSingleVectors) {
  using Mat = TypeParam;
  using Vec2 = typename Mat::Vec2;
  using Vec3 = typename Mat::Vec3;
  using Vec4 = typename Mat::Vec4;
  const Mat m(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, -28);
  // Homogeneous coordinates: 4 + 16 - 28 = -8, and with z = 1: 4.
  EXPECT_EQ(Vec2(1, 2) * m, Vec2(24 / -8.0F, 28 / -8.0F));
  EXPECT_EQ(Vec3(1, 2, 1) * m, Vec3(33 / 4.0F, 38 / 4.0F, 43 / 4.0F));
  EXPECT_EQ(Vec4(1, 2, 1, 1) * m, Vec4(33, 38, 43, 4));
  EXPECT_EQ(m * Vec4(1, 2, 1, 1), Vec4(12, 32, 52, 28));
  EXPECT_EQ(m.DirMult(Vec3(1, 2, 1)), Vec3(20, 24, 28));
}

TEST(Mat4d, IsClassifiedByExactElements) {
  const Mat4d plane(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 0, 1);
  struct Row {
    const char* why;
    std::size_t index;
    double value;
    Mat4d::Type type;
  };
  const Row rows[] = {
      {"as it stands", 12, 5, Mat4d::TYPE_2D},     {"m32", 14, 7, Mat4d::TYPE_AFFINE},
      {"m22", 10, 2, Mat4d::TYPE_AFFINE},          {"m02", 2, 1e-300, Mat4d::TYPE_AFFINE},
      {"m21", 9, 1, Mat4d::TYPE_AFFINE},           {"m23", 11, 1, Mat4d::TYPE_COMPLEX},
      {"m33", 15, 1 + 1e-15, Mat4d::TYPE_COMPLEX}, {"m03 is -0", 3, -0.0, Mat4d::TYPE_2D},
      {"NaN", 3, NAN, Mat4d::TYPE_COMPLEX},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    Mat4d m = plane;
    EXPECT_EQ(m.GetType(), Mat4d::TYPE_2D);
    m.ToDoubleArray()[row.index] = row.value;
    EXPECT_EQ(m.GetType(), row.type);
    EXPECT_EQ(Mat4d(m).GetType(), row.type);
  }
  EXPECT_EQ(Mat4d::IDENTITY.GetType(), Mat4d::TYPE_IDENTITY);
  EXPECT_EQ(Mat4d::ZERO.GetType(), Mat4d::TYPE_COMPLEX);
  EXPECT_EQ(Mat4d(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1).ClassifyType(),
            Mat4d::TYPE_IDENTITY);
}

TEST(Mat4d, ForgetsItsTypeWithEveryChange) {
  using Change = void (*)(Mat4d&);
  const Change changes[] = {
      [](Mat4d& m) { m[2][1] = 5; },
      [](Mat4d& m) { m.ToDoubleArray()[3] = 5; },
      [](Mat4d& m) { m.SetRow(1, Vec4d(0, 5, 0, 0)); },
      [](Mat4d& m) { m.SetCol(1, Vec4d(0, 5, 0, 0)); },
      [](Mat4d& m) { m.Translate(0, 0, 1); },
      [](Mat4d& m) { m.Translate(0, 1, 0, Mat4d::ORDER_PRE); },
      [](Mat4d& m) { m.Scale(2, 1, 1); },
      [](Mat4d& m) { m.RotateX(1); },
      [](Mat4d& m) { m.Rotate(Quat4d(Vec3d::UNIT_X, 1)); },
      [](Mat4d& m) { m *= Mat4d::MakeScale(Vec3d(1, 1, 2)); },
      [](Mat4d& m) { m.SetTransform(Vec3d::ONE, Quat4d::IDENTITY, Vec3d::ONE); },
      [](Mat4d& m) { Quat4d(Vec3d::UNIT_Z, 1).Get(m); },
  };
  for (const Change change : changes) {
    SCOPED_TRACE(&change - changes);
    Mat4d m;
    EXPECT_TRUE(m.IsIdentity());
    change(m);
    EXPECT_FALSE(m.IsIdentity());
    m.SetIdentity();
    EXPECT_TRUE(m.IsIdentity());
  }
}

TEST(Mat4d, ProductsOfAllTypesAreTheGeneralProduct) {
  SCOPED_TRACE(kSeed);
  Random random;
  for (const Mat4d::Type left : kTypes) {
    for (const Mat4d::Type right : kTypes) {
      for (int i = 0; i < 100; ++i) {
        const Mat4d a = random.Matrix(left);
        const Mat4d b = random.Matrix(right);
        EXPECT_EQ(a.GetType(), left);
        // Equal as numbers: a term that is skipped may leave a zero of the other sign.
        EXPECT_TRUE((a * b).Equals(reference::Product(a, b), 0)) << left << " * " << right;
      }
    }
  }
  const Mat4f f = Mat4f(random.Matrix(Mat4d::TYPE_COMPLEX));
  EXPECT_EQ(f * f.Transpose(), reference::Product(f, f.Transpose()));
}

TEST(Mat4d, ProductsKeepWhatTheTypesTell) {
  Mat4d huge = Mat4d::MakeScale(Vec3d(-INFINITY, -1, 1));
  Mat4d moved = Mat4d::MakeTranslation(Vec3d(1, 1, 1));
  const Mat4d product = huge * moved;
  EXPECT_EQ(product.GetCol(3), Vec4d(0, 0, 0, 1)) << "no infinity times zero";
  EXPECT_FALSE(std::signbit(product[1][3]));
}

// A point for each place: whole numbers, halves, and what is too large.
template <class Source>
std::vector<Source> Points() {
  using T = decltype(Source::x);
  std::vector<Source> points;
  Random random;
  for (int i = 0; i < 101; ++i) {
    const double size = i % 3 == 0 ? 1e10 : 20;
    Source p{};
    p.x = static_cast<T>(std::is_integral_v<T> ? random.Number(-100, 100) : random.Number() * size);
    p.y = static_cast<T>(i - 50) / 2;
    if constexpr (requires { p.z; }) {
      p.z = static_cast<T>(random.Number());
    }
    points.push_back(p);
  }
  return points;
}

template <class Point>
bool SamePoint(const Point& a, const Point& b) {
  bool same = a.x == b.x && a.y == b.y;
  if constexpr (requires { a.z; }) {
    same = same && a.z == b.z;
  }
  return same;
}

template <class Source, class Target>
void ExpectPlainTransform() {
  SCOPED_TRACE(kSeed);
  const std::vector<Source> source = Points<Source>();
  Random random;
  for (const Mat4d::Type type : kTypes) {
    const Mat4d m = random.Matrix(type);
    std::vector<Target> target(source.size());
    m.Transform(source.data(), target.data(), static_cast<unsigned>(source.size()));
    for (std::size_t i = 0; i < source.size(); ++i) {
      const Target expected =
          reference::Transformed<Target>(m, source[i], type == Mat4d::TYPE_COMPLEX);
      ASSERT_TRUE(SamePoint(target[i], expected)) << "type " << type << ", point " << i;
    }
  }
}

TEST(Mat4d, TransformsArraysAsThePlainLoop) {
  ExpectPlainTransform<POINT, Vec2d>();
  ExpectPlainTransform<Vec2d, POINT>();
  ExpectPlainTransform<Vec2d, Vec2d>();
  ExpectPlainTransform<Vec2d, Vec2i>();
  ExpectPlainTransform<Vec3d, POINT>();
  ExpectPlainTransform<Vec3d, Vec3d>();
  ExpectPlainTransform<Vec3d, Vec2d>();
  ExpectPlainTransform<Vec3d, Vec2f>();
  ExpectPlainTransform<Vec3d, Vec2i>();
}

template <class Source, class Target>
void ExpectPlainVecMult() {
  const std::vector<Source> source = Points<Source>();
  const Mat4f m(Random().Matrix(Mat4d::TYPE_COMPLEX));
  std::vector<Target> target(source.size());
  m.VecMult(source.data(), target.data(), static_cast<unsigned>(source.size()));
  for (std::size_t i = 0; i < source.size(); ++i) {
    ASSERT_TRUE(SamePoint(target[i], reference::Transformed<Target>(m, source[i], true))) << i;
  }
}

TEST(Mat4f, TransformsArraysAsThePlainLoop) {
  ExpectPlainVecMult<POINT, Vec2f>();
  ExpectPlainVecMult<Vec2f, POINT>();
  ExpectPlainVecMult<Vec2f, Vec2f>();
  ExpectPlainVecMult<Vec2f, Vec2i>();
  ExpectPlainVecMult<Vec3f, POINT>();
  ExpectPlainVecMult<Vec3f, Vec3f>();
  ExpectPlainVecMult<Vec3f, Vec2f>();
  ExpectPlainVecMult<Vec3f, Vec2i>();
}

TEST(Mat4d, TransformsAnArrayIntoItself) {
  Random random;
  for (const Mat4d::Type type : kTypes) {
    const Mat4d m = random.Matrix(type);
    std::vector<Vec3d> points = Points<Vec3d>();
    std::vector<Vec3d> apart(points.size());
    const auto count = static_cast<unsigned>(points.size());
    m.Transform(points.data(), apart.data(), count);
    m.Transform(points.data(), points.data(), count);
    EXPECT_EQ(points, apart) << type;
  }
}

TEST(Mat4d, LimitsIntegersAndRoundsHalfAwayFromZero) {
  struct Row {
    const char* why;
    double value;
    int expected;
  };
  const Row rows[] = {
      {"half", 0.5, 1},
      {"negative half", -2.5, -3},
      {"just below half", 0.49999999999999994, 0},
      {"the largest", 2147483647.0, 2147483647},
      {"above the largest", 2147483647.25, 2147483647},
      {"half below the largest", 2147483646.5, 2147483647},
      {"the smallest", -2147483648.0, -2147483647 - 1},
      {"far below", -1e300, -2147483647 - 1},
      {"half above the smallest", -2147483647.5, -2147483647 - 1},
      {"infinity", INFINITY, 2147483647},
      {"NaN", NAN, 0},
  };
  const Mat4d scale = Mat4d::MakeScale(Vec3d(2, 1, 1));
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    const Vec2d p(row.value, -1.5);
    Vec2i pixel;
    Mat4d::IDENTITY.Transform(&p, &pixel, 1);
    EXPECT_EQ(pixel, Vec2i(row.expected, -2));
    const Vec3d half(row.value / 2, 0, 0);
    POINT point;
    scale.Transform(&half, &point, 1);
    EXPECT_EQ(Vec2i(point), Vec2i(row.expected, 0));
  }
}

TEST(Mat4d, TransformsTheCornersOfABoxOnly) {
  Mat4d turn;
  turn.RotateZ(PI).Translate(0, 0, 1);
  Box3d box;
  turn.Transform(Box3d(1, 2, 3, 4, 5, 6), box);
  EXPECT_TRUE(box.IsDegenerate());
  EXPECT_TRUE(box.MinCorner().Equals(Vec3d(-1, -2, 4), 1e-15));
  Box2d flat;
  Mat4d::MakeScale(Vec3d(-1, 2, 1)).Transform(Box2d(1, 2, 3, 4), flat);
  EXPECT_EQ(flat, Box2d(-1, 4, -3, 8));
  Box3f single;
  Mat4f::MakeTranslation(Vec3f(1, 1, 1)).Transform(Box3f(1, 2, 3, 4, 5, 6), single);
  EXPECT_EQ(single, Box3f(2, 3, 4, 5, 6, 7));
}

TEST(Mat4d, InverseUndoesEveryType) {
  SCOPED_TRACE(kSeed);
  Random random;
  int inverted = 0;
  for (const Mat4d::Type type : kTypes) {
    for (int i = 0; i < 500; ++i) {
      const Mat4d m = random.Matrix(type);
      if (std::abs(m.Det4()) < 0.1 || std::abs(m[0][0] * m[1][1] - m[0][1] * m[1][0]) < 0.1) {
        continue;  // badly conditioned
      }
      ++inverted;
      Mat4d inverse;
      ASSERT_TRUE(m.Inverse(inverse));
      // Elements up to 2, determinants from 0.1: condition below 1e4.
      EXPECT_TRUE((m * inverse).Equals(Mat4d::IDENTITY, 1e-11)) << type;
      EXPECT_TRUE((inverse * m).Equals(Mat4d::IDENTITY, 1e-11)) << type;
      Mat4d inPlace = m;
      ASSERT_TRUE(inPlace.Inverse());
      EXPECT_EQ(inPlace, inverse);

      const Mat4f f(m);
      Mat4f inverseF;
      ASSERT_TRUE(f.Inverse(inverseF));
      EXPECT_TRUE((f * inverseF).Equals(Mat4f::IDENTITY, 2e-3F)) << type;
    }
  }
  EXPECT_GT(inverted, 1500);
}

TEST(Mat4d, SingularMatricesLeaveTheOutput) {
  struct Row {
    const char* why;
    Mat4d m;
    Mat4d::Type type;
  };
  Mat4d noBlock = Mat4d::MakeTranslation(Vec3d(1, 2, 3));
  noBlock.Scale(0, 0, 0, Mat4d::ORDER_PRE);
  Mat4d nan = noBlock;
  nan[1][1] = NAN;
  const Row rows[] = {
      {"zero", Mat4d::ZERO, Mat4d::TYPE_COMPLEX},
      {"zero scale in the plane", Mat4d::MakeScale(Vec3d(0, 0, 1)), Mat4d::TYPE_2D},
      {"parallel rows", Mat4d(3, 1, 0, 0, 9, 3, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1), Mat4d::TYPE_2D},
      {"flat", Mat4d::MakeScale(Vec3d(2, 3, 0)), Mat4d::TYPE_AFFINE},
      {"rows that add up", Mat4d(1, 2, 3, 0, 4, 5, 6, 0, 5, 7, 9, 0, 1, 1, 1, 1),
       Mat4d::TYPE_AFFINE},
      {"no block at all", noBlock, Mat4d::TYPE_AFFINE},
      {"NaN", nan, Mat4d::TYPE_AFFINE},
      {"regular, but not its upper left block",
       Mat4d(0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 0, 0, 1, 0, 0, 0), Mat4d::TYPE_COMPLEX},
      {"no pivot for the third column", Mat4d(1, 0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2),
       Mat4d::TYPE_COMPLEX},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(row.m.GetType(), row.type);
    Mat4d out = Counted<Mat4d>();
    EXPECT_FALSE(row.m.Inverse(out));
    EXPECT_EQ(out, Counted<Mat4d>());
    Mat4d inPlace = row.m;
    EXPECT_FALSE(inPlace.Inverse());
    EXPECT_EQ(inPlace, row.m);

    Mat4f f(row.m);
    const bool isRegular =
        row.m.Det4() != 0 && !std::isnan(row.m.Det4()) && row.type == Mat4d::TYPE_COMPLEX;
    EXPECT_EQ(f.Inverse(), isRegular) << "elimination finds every inverse";
    EXPECT_EQ(f == Mat4f(row.m), !isRegular);
  }
  EXPECT_TRUE(Mat4d::MakeScale(Vec3d(1e-80, 1e-80, 1e-80)).Inverse(noBlock)) << "small is regular";
}

TEST(Mat4d, TellsTurnAspectAndShearOfThePlane) {
  EXPECT_DOUBLE_EQ(Mat4d::MakeRotation(0.5).GetRotation2(), 0.5);
  constexpr double kLargest = 3.4028234663852886e38;
  const auto aspect = [](double x, double y) {
    return Mat4d::MakeScale(Vec3d(x, y, 1)).GetAspect2();
  };
  EXPECT_EQ(aspect(2, 6), 3);
  EXPECT_EQ(aspect(1e-200, 1), kLargest);
  EXPECT_EQ(aspect(0, 0), kLargest) << "too small to divide by";
  EXPECT_EQ(aspect(1, 1e-39), 0);
  Mat4d m(1, 1, 0, 0, -1, 1.5, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
  EXPECT_FALSE(m.IsSheared2(0.5));
  EXPECT_TRUE(m.IsSheared2(0.25));
  m[3][3] = 2;
  EXPECT_TRUE(m.IsSheared2(1));
}

TYPED_TEST(EveryMat4, IsMadeOfItsFactorsInOrder) {
  using Mat = TypeParam;
  using T = typename Mat::Scalar;
  using Quat = typename Mat::Quat;
  using Vec3 = typename Mat::Vec3;
  const Vec3 translation(4, 5, 6);
  const Vec3 scale(2, 3, -1);
  const Vec3 center(1, -2, 3);
  const Quat rotation(Vec3(1, 2, 3), T(0.9));
  const Quat axes(Vec3(-1, 1, 2), T(0.4));
  T const tolerance = std::is_same_v<T, float> ? T(1e-5) : T(1e-13);
  Mat m;
  m.SetTransform(translation, rotation, scale);
  EXPECT_TRUE(m.Equals(
      Mat::MakeScale(scale) * Mat::MakeRotation(rotation) * Mat::MakeTranslation(translation),
      tolerance));
  m.SetTransform(translation, rotation, scale, axes, center);
  EXPECT_TRUE(m.Equals(Mat::MakeTranslation(-center) * Mat::MakeRotation(axes.Inverse()) *
                           Mat::MakeScale(scale) * Mat::MakeRotation(axes) *
                           Mat::MakeRotation(rotation) * Mat::MakeTranslation(translation + center),
                       tolerance));
  // And back: the factors make the same matrix, about the same center.
  Vec3 t;
  Vec3 s;
  Quat r;
  Quat o;
  m.GetTransform(t, r, s, o, center);
  EXPECT_TRUE(t.Equals(translation, 1e-5));
  Mat again;
  again.SetTransform(t, r, s, o, center);
  EXPECT_TRUE(again.Equals(m, T(1e-5)));
}

TEST(Mat4d, FactorsAreUndoneByTheHomogeneousElement) {
  Mat4d m = Mat4d::MakeScale(Vec3d(2, 4, 6));
  m.Translate(10, 0, 0);
  m[3][3] = 2;
  Vec3d t;
  Vec3d s;
  Quat4d r;
  Quat4d o;
  m.GetTransform(t, r, s, o);
  EXPECT_EQ(t, Vec3d(5, 0, 0));
  EXPECT_TRUE(s.Equals(Vec3d(1, 2, 3), 1e-12));
  m[3][3] = 0;
  m.GetTransform(t, r, s, o);
  EXPECT_EQ(t, Vec3d(10, 0, 0)) << "0 divides nothing";
  EXPECT_TRUE(s.Equals(Vec3d(2, 4, 6), 1e-12));
}

}  // namespace
}  // namespace vlm

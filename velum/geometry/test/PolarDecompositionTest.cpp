#include <velum/geometry/detail/PolarDecomposition.h>

#include <velum/geometry/Constants.h>
#include <velum/geometry/Mat4d.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <random>

namespace vlm::detail {
namespace {

Mat3d Linear(const Mat4d& m) {
  return Mat3d(m[0][0], m[0][1], m[0][2], m[1][0], m[1][1], m[1][2], m[2][0], m[2][1], m[2][2]);
}

Mat3d Composed(const Stretch& s) {
  Mat4d m;
  m.SetTransform(Vec3d::ZERO, s.rotation, s.scale, s.orientation, Vec3d::ZERO);
  return Linear(m);
}

double Largest(const Mat3d& m) {
  double largest = 0;
  for (std::size_t i = 0; i < 9; ++i) {
    largest = std::fmax(largest, std::abs(m.ToDoubleArray()[i]));
  }
  return largest;
}

// What holds for the factors of any finite matrix.
void ExpectFactorsOf(const Mat3d& m) {
  const Stretch s = Decompose(m);
  EXPECT_TRUE(s.rotation.IsUnit(1e-5));
  EXPECT_TRUE(s.orientation.IsUnit(1e-6));
  // A whole turn has 24 ways to name three axes: the nearest is at most 62.8 degrees away.
  EXPECT_GE(s.orientation.w, std::cos(62.8 / 2 * DEG_TO_RAD));
  EXPECT_TRUE(Composed(s).Equals(m, 1e-6 * Largest(m)));
}

class Random {
 public:
  double Number() { return number_(random_); }
  Vec3d Vector() { return Vec3d(Number(), Number(), Number()); }
  Quat4d Rotation() {
    Quat4d q(Number(), Number(), Number(), Number());
    q.Normalize();
    return q;
  }

 private:
  std::mt19937 random_{1992};
  std::uniform_real_distribution<double> number_{-1, 1};
};

TEST(PolarDecomposition, FactorsRandomMatrices) {
  SCOPED_TRACE("seed 1992");
  Random random;
  for (int i = 0; i < 1000; ++i) {
    Mat3d m;
    for (std::size_t r = 0; r < 3; ++r) {
      m.SetRow(r, random.Vector() * std::pow(10, 8 * random.Number()));
    }
    ExpectFactorsOf(m);
  }
}

TEST(PolarDecomposition, FindsTheFactorsThatMadeTheMatrix) {
  SCOPED_TRACE("seed 1992");
  Random random;
  for (int i = 0; i < 200; ++i) {
    const double sign = i % 2 == 0 ? 1 : -1;
    const Vec3d scale = Vec3d(3, 2, 1) * sign;
    const Quat4d rotation = random.Rotation();
    const Quat4d axes(random.Vector(), 0.5);
    Mat4d m;
    m.SetTransform(Vec3d::ZERO, rotation, scale, axes, Vec3d::ZERO);
    const Stretch s = Decompose(Linear(m));
    EXPECT_TRUE(s.scale.Equals(scale, 1e-9));
    EXPECT_NEAR(std::abs((s.rotation * rotation.UnitInverse()).w), 1, 1e-12);
    EXPECT_NEAR((s.orientation * axes.UnitInverse()).w, 1, 1e-12);
  }
}

TEST(PolarDecomposition, KeepsTheAxesOfWhatStretchesAlongThem) {
  Mat4d turn;
  turn.RotateX(1).RotateY(2);
  const Stretch pure = Decompose(Linear(turn));
  EXPECT_TRUE(pure.scale.Equals(Vec3d::ONE, 1e-12));
  EXPECT_EQ(pure.orientation, Quat4d::IDENTITY) << "equal scales choose no axes";
  const Stretch scaled = Decompose(Linear(Mat4d::MakeScale(Vec3d(1, 5, 3)) * turn));
  EXPECT_TRUE(scaled.scale.Equals(Vec3d(1, 5, 3), 1e-9)) << "not sorted";
  EXPECT_NEAR(scaled.orientation.w, 1, 1e-12);
  const Stretch mirrored = Decompose(Mat3d(2, 0, 0, 0, 2, 0, 0, 0, -2));
  EXPECT_TRUE(mirrored.scale.Equals(Vec3d(-2, -2, -2), 1e-12)) << "one sign for all";
}

TEST(PolarDecomposition, TakesWhatIsSingular) {
  SCOPED_TRACE("seed 1992");
  Random random;
  const Mat3d rows[] = {
      Mat3d::ZERO,
      Mat3d(1, 2, 3, 2, 4, 6, 3, 6, 9),
      Mat3d(1, 2, 3, 4, 5, 6, 5, 7, 9),
      Mat3d(0, 0, 0, 0, 7, 0, 0, 0, 0),
      Mat3d(0, 5, 0, 0, 0, 0, 0, 0, 0),
      Mat3d(0, 1, 0, -1, 0, 0, 0, 0, 0),
      Mat3d(1e-200, 0, 0, 0, 1e-200, 0, 0, 0, 1e-200),
      Mat3d(1e200, 0, 0, 0, 1e200, 0, 0, 1e200, 1e200),
      Mat3d(1, 0, 0, 0, 1, 0, 0, 0, 1e-15),
      Mat3d(1, 0, 0, 0, 1e-9, 0, 0, 0, -1e-9),
  };
  for (const Mat3d& m : rows) {
    SCOPED_TRACE(&m - rows);
    ExpectFactorsOf(m);
  }
  for (int i = 0; i < 500; ++i) {
    const Vec3d a = random.Vector();
    const Vec3d b = random.Vector();
    const Vec3d c = random.Vector();
    ExpectFactorsOf(Mat3d(a.x * b.x, a.x * b.y, a.x * b.z, a.y * b.x, a.y * b.y, a.y * b.z,
                          a.z * b.x, a.z * b.y, a.z * b.z));
    Mat3d rank2;
    rank2.SetRow(0, a);
    rank2.SetRow(1, b);
    rank2.SetRow(2, a * c.x + b * c.y);
    ExpectFactorsOf(rank2);
  }
}

TEST(PolarDecomposition, EndsWhateverTheElementsAre) {
  for (const double strange : {NAN, INFINITY, -INFINITY}) {
    for (std::size_t i = 0; i < 9; ++i) {
      Mat3d m(1, 2, 3, -3, 1, 2, 2, 2, 5);
      m.ToDoubleArray()[i] = strange;
      const Vec3d scale = Decompose(m).scale;
      EXPECT_FALSE(std::isfinite(scale.x) && std::isfinite(scale.y) && std::isfinite(scale.z));
    }
  }
}

}  // namespace
}  // namespace vlm::detail

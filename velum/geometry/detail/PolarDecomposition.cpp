#include <velum/geometry/detail/PolarDecomposition.h>

#include <velum/geometry/Constants.h>
#include <velum/geometry/Mat4d.h>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace vlm::detail {
namespace {

double LargestElement(const Mat3d& m) noexcept {
  double largest = 0;
  for (std::size_t i = 0; i < 9; ++i) {
    largest = std::max(largest, std::abs(m.ToDoubleArray()[i]));
  }
  return largest;
}

// The largest sum of magnitudes of a column.
double OneNorm(const Mat3d& m) noexcept {
  double norm = 0;
  for (std::size_t c = 0; c < 3; ++c) {
    norm = std::max(norm, std::abs(m[0][c]) + std::abs(m[1][c]) + std::abs(m[2][c]));
  }
  return norm;
}

double InfinityNorm(const Mat3d& m) noexcept { return OneNorm(m.Transpose()); }

Mat3d Blend(double a, const Mat3d& m, double b, const Mat3d& n) noexcept {
  Mat3d sum;
  for (std::size_t i = 0; i < 9; ++i) {
    sum.ToDoubleArray()[i] = a * m.ToDoubleArray()[i] + b * n.ToDoubleArray()[i];
  }
  return sum;
}

// The determinant times the transposed inverse, which a singular matrix has as well.
Mat3d Cofactors(const Mat3d& m) noexcept {
  Mat3d cofactors;
  for (std::size_t r = 0; r < 3; ++r) {
    cofactors.SetRow(r, m.GetRow((r + 1) % 3).Cross(m.GetRow((r + 2) % 3)));
  }
  return cofactors;
}

// For column vectors, as all matrices of this file.
Mat3d ToMatrix(const Quat4d& q) noexcept {
  Mat4d m;
  q.Get(m);
  return Mat3d(m[0][0], m[1][0], m[2][0], m[0][1], m[1][1], m[2][1], m[0][2], m[1][2], m[2][2]);
}

Quat4d ToQuaternion(const Mat3d& m) noexcept {
  return Quat4d(Mat4d(m[0][0], m[1][0], m[2][0], 0, m[0][1], m[1][1], m[2][1], 0, m[0][2], m[1][2],
                      m[2][2], 0, 0, 0, 0, 1));
}

// A rotation that takes the only direction which `m`, of rank 1 or 0, does not drop to its image.
Mat3d RotationOfRankOne(const Mat3d& m) noexcept {
  std::size_t longest = 0;
  for (std::size_t r = 1; r < 3; ++r) {
    longest = m.GetRow(r).LengthSquared() > m.GetRow(longest).LengthSquared() ? r : longest;
  }
  Vec3d kept = m.GetRow(longest);
  if (!kept.Normalize()) {
    return Mat3d::IDENTITY;
  }
  return ToMatrix(Quat4d(kept, m * kept));
}

// The orthogonal matrix Q of the factors M = Q S, by Newton's iteration for the nearest one. Its
// determinant has the sign of that of M where this has one.
Mat3d OrthogonalFactor(Mat3d q) noexcept {
  // A handful of steps do, however badly M is conditioned; NaN ends the loop at once.
  constexpr int kMostSteps = 50;
  for (int step = 0; step < kMostSteps; ++step) {
    const Mat3d cofactors = Cofactors(q);
    const double determinant = q.GetRow(0).Dot(cofactors.GetRow(0));
    const double one = OneNorm(q);
    const double cofactorsOne = OneNorm(cofactors);
    if (std::abs(determinant) <= 8 * EPSILON * one * one * one) {
      // Zero but for rounding. The cofactors have the singular vectors of M, with something in the
      // direction that M drops: adding them leaves the factor and makes the matrix regular.
      if (cofactorsOne <= 8 * EPSILON * one * one) {
        return RotationOfRankOne(q);
      }
      q = Blend(1, q, 1 / std::sqrt(cofactorsOne), cofactors);
      continue;
    }
    const double ratio = cofactorsOne * InfinityNorm(cofactors) / (one * InfinityNorm(q));
    const double gamma = std::sqrt(std::sqrt(ratio) / std::abs(determinant));
    const Mat3d next = Blend(gamma / 2, q, 1 / (2 * gamma * determinant), cofactors);
    const double change = OneNorm(Blend(1, next, -1, q));
    q = next;
    if (!(change > one * 1e-6)) {
      break;
    }
  }
  return q;
}

// One turn of Jacobi's method: makes the elements (p, q) of the symmetric `s` zero and gathers the
// turn in `axes`.
void Annihilate(Mat3d& s, Mat3d& axes, std::size_t p, std::size_t q) noexcept {
  const double element = s[p][q];
  const double difference = s[q][q] - s[p][p];
  s[p][q] = s[q][p] = 0;
  if (std::abs(difference) + 100 * std::abs(element) == std::abs(difference)) {
    return;
  }
  const double theta = difference / (2 * element);
  const double tangent = std::copysign(1 / (std::abs(theta) + std::sqrt(theta * theta + 1)), theta);
  const double cosine = 1 / std::sqrt(tangent * tangent + 1);
  const double sine = tangent * cosine;
  const std::size_t other = 3 - p - q;
  s[p][p] -= tangent * element;
  s[q][q] += tangent * element;
  const double atP = s[other][p];
  const double atQ = s[other][q];
  s[other][p] = s[p][other] = cosine * atP - sine * atQ;
  s[other][q] = s[q][other] = sine * atP + cosine * atQ;
  for (std::size_t r = 0; r < 3; ++r) {
    const double a = axes[r][p];
    const double b = axes[r][q];
    axes[r][p] = cosine * a - sine * b;
    axes[r][q] = sine * a + cosine * b;
  }
}

// Makes the symmetric `s` diagonal and returns the turn whose columns are its axes.
Mat3d Diagonalize(Mat3d& s) noexcept {
  Mat3d axes;
  for (int sweep = 0; sweep < 20; ++sweep) {
    if (std::abs(s[0][1]) + std::abs(s[0][2]) + std::abs(s[1][2]) == 0) {
      break;
    }
    Annihilate(s, axes, 0, 1);
    Annihilate(s, axes, 0, 2);
    Annihilate(s, axes, 1, 2);
  }
  return axes;
}

// The one of the 24 rotations of a cube that, followed by `axes`, turns least. They are the
// quaternions of equal components 0, 1 or -1, of which one, two or four are not 0.
Quat4d NearestPermutation(const Quat4d& axes) noexcept {
  Quat4d nearest = Quat4d::IDENTITY;
  // Others must win by more than rounding.
  double largest = std::abs(axes.w) + 1e-12;
  for (int code = 0; code < 81; ++code) {
    const Quat4d q(code % 3 - 1, code / 3 % 3 - 1, code / 9 % 3 - 1, code / 27 - 1);
    const double norm = q.Norm();
    if (norm == 0 || norm == 3) {
      continue;
    }
    const double w = std::abs((q * axes).w) / std::sqrt(norm);
    if (w > largest) {
      largest = w;
      nearest = q;
    }
  }
  nearest.Normalize();
  return nearest;
}

// The stretch along the axis that a rotation of the cube takes `axis` to.
double Along(const Vec3d& axis, const Quat4d& permutation, const Mat3d& stretch) noexcept {
  const Vec3d along = permutation.MultVec(axis).GetClosestAxis();
  return along.x != 0 ? stretch[0][0] : along.y != 0 ? stretch[1][1] : stretch[2][2];
}

}  // namespace

Stretch Decompose(const Mat3d& linear) noexcept {
  // A power of two near the largest element keeps determinants from under- and overflowing, and has
  // no influence on the bits otherwise.
  int exponent = 0;
  std::frexp(LargestElement(linear), &exponent);
  const double unit = std::ldexp(1.0, std::clamp(exponent, -1000, 1000));
  const Mat3d m = Blend(1 / unit, linear.Transpose(), 0, Mat3d::ZERO);

  Mat3d q = OrthogonalFactor(m);
  Mat3d stretch = q.Transpose() * m;
  stretch = Blend(0.5, stretch, 0.5, stretch.Transpose());
  const double sign = q.GetRow(0).Dot(Cofactors(q).GetRow(0)) < 0 ? -1 : 1;
  q = Blend(sign, q, 0, Mat3d::ZERO);

  // Equal factors have no axes of their own: what rounding leaves beside them must not choose any.
  const double rounding = 8 * EPSILON * LargestElement(stretch);
  for (std::size_t r = 0; r < 3; ++r) {
    const std::size_t c = (r + 1) % 3;
    if (std::abs(stretch[r][c]) <= rounding) {
      stretch[r][c] = stretch[c][r] = 0;
    }
  }
  const Quat4d axes = ToQuaternion(Diagonalize(stretch));
  const Quat4d permutation = NearestPermutation(axes);

  Stretch result;
  result.rotation = ToQuaternion(q);
  result.scale.Set(Along(Vec3d::UNIT_X, permutation, stretch),
                   Along(Vec3d::UNIT_Y, permutation, stretch),
                   Along(Vec3d::UNIT_Z, permutation, stretch));
  result.scale *= sign;
  result.scale *= unit;
  result.orientation = permutation * axes;
  if (result.orientation.w < 0) {
    result.orientation = Quat4d(-result.orientation.x, -result.orientation.y, -result.orientation.z,
                                -result.orientation.w);
  }
  return result;
}

}  // namespace vlm::detail

#include <velum/geometry/Mat4d.h>

#include <velum/geometry/Constants.h>
#include <velum/geometry/Mat4f.h>
#include <velum/geometry/detail/Inverse4.h>
#include <velum/geometry/detail/Pair.inl.h>

#include <cmath>
#include <cstddef>

namespace vlm {
namespace {

using detail::Both;
using detail::LoadPair;
using detail::Pair;
using detail::StorePair;

// Half a row of a product: the row `a` by two columns of the right matrix, of which `b` holds the
// four rows. `kHasThird` says whether the third product may be other than 0.
template <Mat4d::Type kLeft, std::size_t kRow, bool kHasThird>
Pair RowByColumns(const double* a, const Pair (&b)[4]) noexcept {
  Pair sum = Both(a[0]) * b[0] + Both(a[1]) * b[1];
  if constexpr (kLeft != Mat4d::TYPE_2D && kHasThird) {
    sum += Both(a[2]) * b[2];
  }
  if constexpr (kLeft == Mat4d::TYPE_COMPLEX) {
    sum += Both(a[3]) * b[3];
  } else if constexpr (kRow == 3) {
    sum += b[3];
  }
  return sum;
}

// One row of the product of matrices of known types, neither of them the identity.
template <Mat4d::Type kLeft, Mat4d::Type kRight, std::size_t kRow>
void MultiplyRow(const double* a, const Pair (&xy)[4], const Pair (&zw)[4], double* out) noexcept {
  if constexpr (kLeft == Mat4d::TYPE_2D && kRow == 2) {
    StorePair(out, xy[2]);
    StorePair(out + 2, zw[2]);
  } else {
    const double w = kLeft == Mat4d::TYPE_COMPLEX ? a[3] : kRow == 3 ? 1 : 0;
    Pair right;
    if constexpr (kRight == Mat4d::TYPE_2D) {
      right = Pair{kLeft == Mat4d::TYPE_2D ? 0 : a[2], w};
    } else {
      right = RowByColumns<kLeft, kRow, true>(a, zw);
      if constexpr (kRight == Mat4d::TYPE_AFFINE) {
        right[1] = w;
      }
    }
    StorePair(out, RowByColumns<kLeft, kRow, kRight != Mat4d::TYPE_2D>(a, xy));
    StorePair(out + 2, right);
  }
}

// Not inlined: compilers would compute what several types have in common before they look at the
// type, more than the registers hold.
template <Mat4d::Type kLeft, Mat4d::Type kRight>
[[gnu::noinline]] void Multiply(const double* a, const double* b, double* out) noexcept {
  const Pair xy[] = {LoadPair(b), LoadPair(b + 4), LoadPair(b + 8), LoadPair(b + 12)};
  const Pair zw[] = {LoadPair(b + 2), LoadPair(b + 6), LoadPair(b + 10), LoadPair(b + 14)};
  MultiplyRow<kLeft, kRight, 0>(a, xy, zw, out);
  MultiplyRow<kLeft, kRight, 1>(a + 4, xy, zw, out + 4);
  MultiplyRow<kLeft, kRight, 2>(a + 8, xy, zw, out + 8);
  MultiplyRow<kLeft, kRight, 3>(a + 12, xy, zw, out + 12);
}

// The right matrix of a complex left one is never complex here.
template <Mat4d::Type kLeft>
void MultiplyByType(const double* a, const double* b, Mat4d::Type right, double* out) noexcept {
  switch (right) {
    case Mat4d::TYPE_2D:
      return Multiply<kLeft, Mat4d::TYPE_2D>(a, b, out);
    case Mat4d::TYPE_AFFINE:
      return Multiply<kLeft, Mat4d::TYPE_AFFINE>(a, b, out);
    default:
      return Multiply<kLeft, Mat4d::TYPE_COMPLEX>(a, b, out);
  }
}

}  // namespace

Mat4d::Mat4d(const Mat4f& m) noexcept : type_(TYPE_UNKNOWN) {
  const float* const from = m.ToFloatArray();
  for (std::size_t i = 0; i < 16; ++i) {
    m_[i] = from[i];
  }
}

Mat4d::Type Mat4d::ClassifyType() const noexcept {
  if (m_[3] != 0 || m_[7] != 0 || m_[11] != 0 || m_[15] != 1) {
    return type_ = TYPE_COMPLEX;
  }
  if (m_[10] != 1 || m_[2] != 0 || m_[8] != 0 || m_[6] != 0 || m_[9] != 0 || m_[14] != 0) {
    return type_ = TYPE_AFFINE;
  }
  if (m_[0] != 1 || m_[5] != 1 || m_[12] != 0 || m_[13] != 0 || m_[4] != 0 || m_[1] != 0) {
    return type_ = TYPE_2D;
  }
  return type_ = TYPE_IDENTITY;
}

double Mat4d::GetRotation2() const noexcept { return std::atan2(m_[1], m_[0]); }

double Mat4d::GetAspect2() const noexcept {
  constexpr double kLargest = 3.4028234663852886e38;
  constexpr double kSmallest = 1.1754943508222875e-38;
  const double alongY = std::hypot(m_[4], m_[5]);
  const double alongX = std::hypot(m_[0], m_[1]);
  if (alongY > alongX * kLargest) {
    return kLargest;
  }
  if (alongX * kSmallest > alongY) {
    return 0;
  }
  return alongX < kSmallest ? kLargest : alongY / alongX;
}

bool Mat4d::IsSheared2(double tolerance) const noexcept {
  if (m_[3] != 0 || m_[7] != 0 || m_[11] != 0 || m_[15] != 1) {
    return true;
  }
  return std::abs(m_[4] * m_[0] + m_[5] * m_[1]) > tolerance;
}

Mat4d Mat4d::Multiply2D(const Mat4d& m) const noexcept {
  const Type right = m.GetType();
  if (right == TYPE_IDENTITY) {
    return *this;
  }
  Mat4d product{NoValue()};
  MultiplyByType<TYPE_2D>(m_, m.m_, right, product.m_);
  return product;
}

Mat4d Mat4d::MultiplyAffine(const Mat4d& m) const noexcept {
  const Type right = m.GetType();
  if (right == TYPE_IDENTITY) {
    return *this;
  }
  Mat4d product{NoValue()};
  MultiplyByType<TYPE_AFFINE>(m_, m.m_, right, product.m_);
  return product;
}

Mat4d Mat4d::MultiplyComplexBySimpler(const Mat4d& m) const noexcept {
  const Type right = m.GetType();
  if (right == TYPE_IDENTITY) {
    return *this;
  }
  Mat4d product{NoValue()};
  MultiplyByType<TYPE_COMPLEX>(m_, m.m_, right, product.m_);
  return product;
}

bool Mat4d::Invert2D(Mat4d& out) const noexcept {
  const double a = m_[0] * m_[5];
  const double b = m_[1] * m_[4];
  const double determinant = a - b;
  if (!((std::abs(a) + std::abs(b)) * EPSILON < std::abs(determinant))) {
    return false;
  }
  const double reciprocal = 1 / determinant;
  const double m00 = m_[5] * reciprocal;
  const double m01 = -m_[1] * reciprocal;
  const double m10 = -m_[4] * reciprocal;
  const double m11 = m_[0] * reciprocal;
  const double x = -(m_[12] * m00 + m_[13] * m10);
  const double y = -(m_[12] * m01 + m_[13] * m11);
  out = Mat4d(m00, m01, 0, 0, m10, m11, 0, 0, 0, 0, 1, 0, x, y, 0, 1);
  out.type_ = TYPE_2D;
  return true;
}

bool Mat4d::InvertAffine(Mat4d& out) const noexcept {
  if (!detail::InvertAffine(m_, out.m_)) {
    return false;
  }
  out.type_ = TYPE_AFFINE;
  return true;
}

bool Mat4d::InvertComplex(Mat4d& out) const noexcept {
  if (!detail::InvertByBlocks(m_, out.m_)) {
    return false;
  }
  out.type_ = TYPE_UNKNOWN;
  return true;
}

bool Mat4d::InvertGeneral(Mat4d& out) const noexcept {
  if (!detail::InvertByMinors(m_, out.m_)) {
    return false;
  }
  out.type_ = TYPE_UNKNOWN;
  return true;
}

}  // namespace vlm

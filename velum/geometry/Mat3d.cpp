#include <velum/geometry/Mat3d.h>

#include <velum/geometry/Box2.h>
#include <velum/geometry/detail/Pair.inl.h>

#include <cmath>
#include <cstddef>

namespace vlm {

using detail::Both;
using detail::LoadPair;
using detail::Pair;
using detail::StorePair;

Mat3d Mat3d::MakeRotation(double angle) noexcept {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  return Mat3d(c, s, -s, c, 0, 0);
}

bool Mat3d::Equals(const Mat3d& m, double tolerance) const noexcept {
  for (std::size_t i = 0; i < 9; ++i) {
    if (!(std::abs(m_[i] - m.m_[i]) <= tolerance)) {
      return false;
    }
  }
  return true;
}

Mat3d Mat3d::Transpose() const noexcept {
  return Mat3d(m_[0], m_[3], m_[6], m_[1], m_[4], m_[7], m_[2], m_[5], m_[8]);
}

bool Mat3d::Inverse(Mat3d& out) const noexcept {
  // Pairs select without branches, which random signs would mislead; NaN counts as negative.
  const Pair terms{m_[0] * m_[4], -(m_[1] * m_[3])};
  const Pair positives = terms > Both(0) ? terms : Both(0);
  const Pair negatives = terms > Both(0) ? Both(0) : terms;
  const double positive = positives[0] + positives[1];
  const double negative = negatives[0] + negatives[1];
  const double determinant = positive + negative;
  const double range = positive - negative;
  if (!(range >= 2.2250738585072014e-308 && std::isfinite(range)) ||
      !(range * 1.1920928955078125e-7 <= std::abs(determinant))) {
    return false;
  }
  const Pair r = Both(1 / determinant);
  const Pair row0 = Pair{m_[4], -m_[1]} * r;
  const Pair row1 = Pair{-m_[3], m_[0]} * r;
  const Pair offset = -(Both(m_[6]) * row0 + Both(m_[7]) * row1);
  StorePair(out.m_, row0);
  StorePair(out.m_ + 3, row1);
  StorePair(out.m_ + 6, offset);
  return true;
}

bool Mat3d::Inverse() noexcept {
  Mat3d inverse;
  if (!Inverse(inverse)) {
    return false;
  }
  *this = inverse;
  return true;
}

void Mat3d::VecMult(const Vec2d* source, Vec2d* target, unsigned int count) const noexcept {
  const Pair rows[] = {LoadPair(m_), LoadPair(m_ + 3), LoadPair(m_ + 6)};
  const bool isAffine = IsAffine();
  for (unsigned int i = 0; i < count; ++i) {
    const Vec2d p = source[i];
    Pair xy = Both(p.x) * rows[0] + Both(p.y) * rows[1] + rows[2];
    if (!isAffine) {
      xy /= Both(p.x * m_[2] + p.y * m_[5] + m_[8]);
    }
    StorePair(&target[i].x, xy);
  }
}

void Mat3d::Transform(const Box2d& source, Box2d& target) const noexcept {
  target.Set(source.MinCorner() * *this, source.MaxCorner() * *this);
}

bool Mat3d::GetTransform(Vec2d* translation, Vec2d* scale, double* rotation,
                         double* shear) const noexcept {
  if (m_[4] * m_[0] - m_[3] * m_[1] == 0) {
    return false;
  }
  Vec2d row0(m_[0], m_[1]);
  Vec2d row1(m_[3], m_[4]);
  const double scaleX = std::hypot(row0.x, row0.y);
  row0.Set(row0.x / scaleX, row0.y / scaleX);
  const double along = row0.Dot(row1);
  row1 -= row0 * along;
  double scaleY = std::hypot(row1.x, row1.y);
  if (scaleY == 0) {
    return false;
  }
  double slope = along / scaleY;
  if (row0.x * row1.y - row0.y * row1.x < 0) {
    scaleY = -scaleY;
    slope = -slope;
  }
  if (translation != nullptr) {
    translation->Set(m_[6], m_[7]);
  }
  if (scale != nullptr) {
    scale->Set(scaleX, scaleY);
  }
  if (rotation != nullptr) {
    *rotation = std::atan2(row0.y, row0.x);
  }
  if (shear != nullptr) {
    *shear = slope;
  }
  return true;
}

Mat3d& Mat3d::Translate(const Vec2d& offset, Order order) noexcept {
  if (order == ORDER_POST) {
    for (std::size_t r = 0; r < 9; r += 3) {
      m_[r] += m_[r + 2] * offset.x;
      m_[r + 1] += m_[r + 2] * offset.y;
    }
  } else {
    for (std::size_t c = 0; c < 3; ++c) {
      m_[6 + c] = offset.x * m_[c] + offset.y * m_[3 + c] + m_[6 + c];
    }
  }
  return *this;
}

Mat3d& Mat3d::Scale(const Vec2d& factors, Order order) noexcept {
  // Columns are scaled after the transform, rows before it.
  const std::size_t axisStep = order == ORDER_POST ? 1 : 3;
  const std::size_t elementStep = order == ORDER_POST ? 3 : 1;
  for (std::size_t i = 0; i < 3; ++i) {
    m_[i * elementStep] *= factors.x;
    m_[i * elementStep + axisStep] *= factors.y;
  }
  return *this;
}

Mat3d& Mat3d::Rotate(double angle) noexcept {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  for (std::size_t r = 0; r < 9; r += 3) {
    const double x = m_[r];
    const double y = m_[r + 1];
    m_[r] = x * c - y * s;
    m_[r + 1] = x * s + y * c;
  }
  return *this;
}

void Mat3d::SetTransform(const Vec2d& translation, const Vec2d& scale, double rotation,
                         double shear) noexcept {
  *this = MakeScale(scale);
  PostMultiply(Mat3d(1, 0, shear, 1, 0, 0));
  Rotate(rotation);
  Translate(translation, ORDER_POST);
}

}  // namespace vlm

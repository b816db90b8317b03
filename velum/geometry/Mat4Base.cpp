#include <velum/geometry/Mat4Base.h>

#include <velum/geometry/Mat3d.h>
#include <velum/geometry/Mat4d.h>
#include <velum/geometry/Mat4f.h>
#include <velum/geometry/Quat4.h>
#include <velum/geometry/detail/PolarDecomposition.h>

#include <cmath>
#include <cstddef>

namespace vlm {

template <class Mat, class T>
Mat Mat4Base<Mat, T>::MakeTranslation(const Vec3& offset) noexcept {
  return Mat(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, offset.x, offset.y, offset.z, 1);
}

template <class Mat, class T>
Mat Mat4Base<Mat, T>::MakeScale(const Vec3& factors) noexcept {
  return Mat(factors.x, 0, 0, 0, 0, factors.y, 0, 0, 0, 0, factors.z, 0, 0, 0, 0, 1);
}

template <class Mat, class T>
Mat Mat4Base<Mat, T>::MakeRotation(T angle) noexcept {
  T const c = std::cos(angle);
  T const s = std::sin(angle);
  return Mat(c, s, 0, 0, -s, c, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);
}

template <class Mat, class T>
Mat Mat4Base<Mat, T>::MakeRotation(const Quat& rotation) noexcept {
  Mat m;
  rotation.Get(m);
  return m;
}

template <class Mat, class T>
bool Mat4Base<Mat, T>::Equals(const Mat& m, T tolerance) const noexcept {
  for (std::size_t i = 0; i < 16; ++i) {
    if (!(std::abs(m_[i] - m.m_[i]) <= tolerance)) {
      return false;
    }
  }
  return true;
}

template <class Mat, class T>
Mat Mat4Base<Mat, T>::Transpose() const noexcept {
  Mat m = Self();
  for (std::size_t r = 0; r < 4; ++r) {
    m.SetRow(r, GetCol(r));
  }
  return m;
}

template <class Mat, class T>
T Mat4Base<Mat, T>::Det3(std::size_t r1, std::size_t r2, std::size_t r3, std::size_t c1,
                         std::size_t c2, std::size_t c3) const noexcept {
  const Mat4Base& m = *this;
  return m[r1][c1] * (m[r2][c2] * m[r3][c3] - m[r2][c3] * m[r3][c2]) -
         m[r2][c1] * (m[r1][c2] * m[r3][c3] - m[r1][c3] * m[r3][c2]) +
         m[r3][c1] * (m[r1][c2] * m[r2][c3] - m[r1][c3] * m[r2][c2]);
}

template <class Mat, class T>
T Mat4Base<Mat, T>::Det4() const noexcept {
  return m_[0] * Det3(1, 2, 3, 1, 2, 3) - m_[4] * Det3(0, 2, 3, 1, 2, 3) +
         m_[8] * Det3(0, 1, 3, 1, 2, 3) - m_[12] * Det3(0, 1, 2, 1, 2, 3);
}

template <class Mat, class T>
void Mat4Base<Mat, T>::GetTransform(Vec3& translation, Quat& rotation, Vec3& scale,
                                    Quat& scaleOrientation) const noexcept {
  const detail::Stretch stretch =
      detail::Decompose(Mat3d(m_[0], m_[1], m_[2], m_[4], m_[5], m_[6], m_[8], m_[9], m_[10]));
  const double w = m_[15] == 0 ? 1 : m_[15];
  translation = Vec3(Vec3d(m_[12] / w, m_[13] / w, m_[14] / w));
  rotation = Quat(stretch.rotation);
  scale = Vec3(Vec3d(stretch.scale.x / w, stretch.scale.y / w, stretch.scale.z / w));
  scaleOrientation = Quat(stretch.orientation);
}

template <class Mat, class T>
void Mat4Base<Mat, T>::GetTransform(Vec3& translation, Quat& rotation, Vec3& scale,
                                    Quat& scaleOrientation, const Vec3& center) const noexcept {
  Mat m = Self();
  m.Translate(center, ORDER_PRE).Translate(-center, ORDER_POST);
  m.GetTransform(translation, rotation, scale, scaleOrientation);
}

template <class Mat, class T>
Mat& Mat4Base<Mat, T>::Translate(const Vec3& offset, Order order) noexcept {
  T(&m)[16] = Changed().m_;
  if (order == ORDER_POST) {
    for (std::size_t r = 0; r < 16; r += 4) {
      m[r] += m[r + 3] * offset.x;
      m[r + 1] += m[r + 3] * offset.y;
      m[r + 2] += m[r + 3] * offset.z;
    }
  } else {
    for (std::size_t c = 0; c < 4; ++c) {
      m[12 + c] = offset.x * m[c] + offset.y * m[4 + c] + offset.z * m[8 + c] + m[12 + c];
    }
  }
  return Self();
}

template <class Mat, class T>
Mat& Mat4Base<Mat, T>::Scale(const Vec3& factors, Order order) noexcept {
  T(&m)[16] = Changed().m_;
  // Columns are scaled after the transform, rows before it.
  const std::size_t axisStep = order == ORDER_POST ? 1 : 4;
  const std::size_t elementStep = order == ORDER_POST ? 4 : 1;
  for (std::size_t i = 0; i < 4; ++i) {
    T* const element = m + i * elementStep;
    element[0] *= factors.x;
    element[axisStep] *= factors.y;
    element[2 * axisStep] *= factors.z;
  }
  return Self();
}

template <class Mat, class T>
Mat& Mat4Base<Mat, T>::RotateX(T angle, Order order) noexcept {
  return RotateInPlane(1, 2, angle, order);
}

template <class Mat, class T>
Mat& Mat4Base<Mat, T>::RotateY(T angle, Order order) noexcept {
  return RotateInPlane(2, 0, angle, order);
}

template <class Mat, class T>
Mat& Mat4Base<Mat, T>::RotateZ(T angle, Order order) noexcept {
  return RotateInPlane(0, 1, angle, order);
}

template <class Mat, class T>
Mat& Mat4Base<Mat, T>::RotateInPlane(std::size_t from, std::size_t to, T angle,
                                     Order order) noexcept {
  if (angle == 0) {
    return Self();
  }
  T(&m)[16] = Changed().m_;
  T const c = std::cos(angle);
  T const s = std::sin(angle);
  for (std::size_t i = 0; i < 4; ++i) {
    if (order == ORDER_POST) {
      T* const row = m + 4 * i;
      T const f = row[from];
      T const t = row[to];
      row[from] = f * c - t * s;
      row[to] = f * s + t * c;
    } else {
      T* const column = m + i;
      T const f = column[4 * from];
      T const t = column[4 * to];
      column[4 * from] = c * f + s * t;
      column[4 * to] = c * t - s * f;
    }
  }
  return Self();
}

template <class Mat, class T>
Mat& Mat4Base<Mat, T>::Rotate(const Quat& rotation) noexcept {
  const Mat turn = MakeRotation(rotation);
  T(&m)[16] = Changed().m_;
  for (std::size_t r = 0; r < 16; r += 4) {
    const Vec3 v = turn.DirMult(Vec3(m[r], m[r + 1], m[r + 2]));
    m[r] = v.x;
    m[r + 1] = v.y;
    m[r + 2] = v.z;
  }
  return Self();
}

template <class Mat, class T>
void Mat4Base<Mat, T>::SetTransform(const Vec3& translation, const Quat& rotation,
                                    const Vec3& scale) noexcept {
  Self() = MakeScale(scale);
  if (!(rotation == Quat::IDENTITY)) {
    Rotate(rotation);
  }
  if (translation != Vec3::ZERO) {
    Translate(translation, ORDER_POST);
  }
}

template <class Mat, class T>
void Mat4Base<Mat, T>::SetTransform(const Vec3& translation, const Quat& rotation,
                                    const Vec3& scale, const Quat& scaleOrientation,
                                    const Vec3& center) noexcept {
  Self() = MakeTranslation(-center);
  if (scale != Vec3::ONE) {
    const bool isTurned = !(scaleOrientation == Quat::IDENTITY);
    if (isTurned) {
      Rotate(scaleOrientation.Inverse());
    }
    Scale(scale, ORDER_POST);
    if (isTurned) {
      Rotate(scaleOrientation);
    }
  }
  if (!(rotation == Quat::IDENTITY)) {
    Rotate(rotation);
  }
  Translate(translation + center, ORDER_POST);
}

template class Mat4Base<Mat4d, double>;
template class Mat4Base<Mat4f, float>;

}  // namespace vlm

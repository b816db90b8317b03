#include <velum/geometry/Quat4.h>

#include <velum/geometry/Mat4d.h>
#include <velum/geometry/Mat4f.h>

#include <cmath>
#include <cstddef>

namespace vlm {

template <class T>
BasicQuat4<T> BasicQuat4<T>::Slerp(const BasicQuat4& a, const BasicQuat4& b, T t) noexcept {
  if (t <= 0) {
    return a;
  }
  if (t >= 1) {
    return b;
  }
  constexpr T kSmallest = T(1.1920928955078125e-7);
  T cosine = a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
  T const sign = cosine < 0 ? T(-1) : T(1);
  cosine *= sign;
  T fromA = 1 - t;
  T fromB = t;
  if (1 - cosine > kSmallest) {
    T const omega = std::acos(cosine);
    T const sine = std::sin(omega);
    if (sine > kSmallest) {
      fromA = std::sin((1 - t) * omega) / sine;
      fromB = std::sin(t * omega) / sine;
    }
  }
  fromB *= sign;
  return BasicQuat4(fromA * a.x + fromB * b.x, fromA * a.y + fromB * b.y, fromA * a.z + fromB * b.z,
                    fromA * a.w + fromB * b.w);
}

template <class T>
void BasicQuat4<T>::Get(Vec3& axis, T& angle) const noexcept {
  T const square = x * x + y * y + z * z;
  if (square > kSmallestNorm) {
    T const length = std::sqrt(square);
    axis.Set(x / length, y / length, z / length);
    angle = 2 * std::acos(w < -1 ? T(-1) : w > 1 ? T(1) : w);
  } else {
    axis = Vec3::UNIT_Z;
    angle = 0;
  }
}

template <class T>
void BasicQuat4<T>::Get(Mat4& m) const noexcept {
  T const xx = 2 * x * x;
  T const yy = 2 * y * y;
  T const zz = 2 * z * z;
  T const xy = 2 * x * y;
  T const xz = 2 * x * z;
  T const yz = 2 * y * z;
  T const wx = 2 * w * x;
  T const wy = 2 * w * y;
  T const wz = 2 * w * z;
  m = Mat4(1 - (yy + zz), xy + wz, xz - wy, 0,  //
           xy - wz, 1 - (xx + zz), yz + wx, 0,  //
           xz + wy, yz - wx, 1 - (xx + yy), 0,  //
           0, 0, 0, 1);
}

template <class T>
bool BasicQuat4<T>::IsUnit(T tolerance) const noexcept {
  return std::abs(Norm() - 1) <= tolerance * tolerance;
}

template <class T>
BasicQuat4<T> BasicQuat4<T>::Inverse() const noexcept {
  T const norm = Norm();
  return norm > kSmallestNorm ? BasicQuat4(-x / norm, -y / norm, -z / norm, w / norm) : ZERO;
}

template <class T>
BasicVec3<T> BasicQuat4<T>::MultVec(const Vec3& v) const noexcept {
  Mat4 m;
  Get(m);
  return m.DirMult(v);
}

template <class T>
void BasicQuat4<T>::Set(const Vec3& axis, T angle) noexcept {
  T const half = angle / 2;
  T const factor = std::sin(half) / static_cast<T>(axis.Length());
  Set(axis.x * factor, axis.y * factor, axis.z * factor, std::cos(half));
}

template <class T>
void BasicQuat4<T>::Set(const Mat4& m) noexcept {
  // The largest diagonal element, the later one of equals, tells what is safe to divide by.
  std::size_t i = m[1][1] >= m[0][0] ? 1 : 0;
  i = m[2][2] >= m[i][i] ? 2 : i;
  T const trace = m[0][0] + m[1][1] + m[2][2];
  if (trace > m[i][i]) {
    T const root = std::sqrt(trace + m[3][3]) / 2;
    T const four = 4 * root;
    Set((m[1][2] - m[2][1]) / four, (m[2][0] - m[0][2]) / four, (m[0][1] - m[1][0]) / four, root);
    return;
  }
  const std::size_t j = (i + 1) % 3;
  const std::size_t k = (i + 2) % 3;
  T const root = std::sqrt(m[i][i] - m[j][j] - m[k][k] + m[3][3]) / 2;
  T const four = 4 * root;
  T q[3];
  q[i] = root;
  q[j] = (m[j][i] + m[i][j]) / four;
  q[k] = (m[k][i] + m[i][k]) / four;
  Set(q[0], q[1], q[2], (m[j][k] - m[k][j]) / four);
}

template <class T>
void BasicQuat4<T>::Set(const Vec3& from, const Vec3& to) noexcept {
  const Vec3 a = from.Normalized();
  const Vec3 b = to.Normalized();
  T const cosine = static_cast<T>(a.Dot(b));
  constexpr T kParallel = T(0.99999);
  if (cosine > kParallel) {
    *this = IDENTITY;
  } else if (cosine >= -kParallel) {
    const Vec3 axis = a.Cross(b).Normalized() * std::sqrt((1 - cosine) / 2);
    Set(axis.x, axis.y, axis.z, std::sqrt((1 + cosine) / 2));
  } else {
    Vec3 axis = a.Cross(Vec3::UNIT_X);
    if (axis.Length() < 1e-5) {
      axis = a.Cross(Vec3::UNIT_Y);
    }
    axis = axis.Normalized();
    Set(axis.x, axis.y, axis.z, 0);
  }
}

template <class T>
bool BasicQuat4<T>::Invert() noexcept {
  T const norm = Norm();
  if (!(norm > kSmallestNorm)) {
    return false;
  }
  T const factor = -1 / norm;
  Set(x * factor, y * factor, z * factor, w * factor);
  return true;
}

template <class T>
bool BasicQuat4<T>::Normalize() noexcept {
  T const length = std::sqrt(Norm());
  if (!(length > kSmallestNorm)) {
    return false;
  }
  Set(x / length, y / length, z / length, w / length);
  return true;
}

template <class T>
void BasicQuat4<T>::ScaleAngle(T factor) noexcept {
  Vec3 axis;
  T angle;
  Get(axis, angle);
  Set(axis, angle * factor);
}

// One by one: compilers differ on which inline members come with a whole class.
template Quat4f BasicQuat4<float>::Slerp(const Quat4f& a, const Quat4f& b, float t) noexcept;
template void BasicQuat4<float>::Get(Vec3f& axis, float& angle) const noexcept;
template void BasicQuat4<float>::Get(Mat4f& m) const noexcept;
template bool BasicQuat4<float>::IsUnit(float tolerance) const noexcept;
template Quat4f BasicQuat4<float>::Inverse() const noexcept;
template Vec3f BasicQuat4<float>::MultVec(const Vec3f& v) const noexcept;
template void BasicQuat4<float>::Set(const Vec3f& axis, float angle) noexcept;
template void BasicQuat4<float>::Set(const Mat4f& m) noexcept;
template void BasicQuat4<float>::Set(const Vec3f& from, const Vec3f& to) noexcept;
template bool BasicQuat4<float>::Invert() noexcept;
template bool BasicQuat4<float>::Normalize() noexcept;
template void BasicQuat4<float>::ScaleAngle(float factor) noexcept;

template Quat4d BasicQuat4<double>::Slerp(const Quat4d& a, const Quat4d& b, double t) noexcept;
template void BasicQuat4<double>::Get(Vec3d& axis, double& angle) const noexcept;
template void BasicQuat4<double>::Get(Mat4d& m) const noexcept;
template bool BasicQuat4<double>::IsUnit(double tolerance) const noexcept;
template Quat4d BasicQuat4<double>::Inverse() const noexcept;
template Vec3d BasicQuat4<double>::MultVec(const Vec3d& v) const noexcept;
template void BasicQuat4<double>::Set(const Vec3d& axis, double angle) noexcept;
template void BasicQuat4<double>::Set(const Mat4d& m) noexcept;
template void BasicQuat4<double>::Set(const Vec3d& from, const Vec3d& to) noexcept;
template bool BasicQuat4<double>::Invert() noexcept;
template bool BasicQuat4<double>::Normalize() noexcept;
template void BasicQuat4<double>::ScaleAngle(double factor) noexcept;

}  // namespace vlm

#pragma once

/// \file
/// What the 4x4 matrices share. Include Mat4d.h or Mat4f.h; the members told here are members of
/// both.
///
///     vlm::Mat4d m;  // the identity
///     m.Scale(2, 2, 2).Translate(10, 0, 0);
///     vlm::Vec3d p = vlm::Vec3d(1, 1, 1) * m;  // (12, 2, 2)

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/Vec2.h>
#include <velum/geometry/Vec3.h>
#include <velum/geometry/Vec4.h>

#include <cstddef>
#include <cstring>

namespace vlm {

/// The operations of the matrix class `Mat` on sixteen elements of type `T`, stored row by row.
/// `Mat` names itself here, so that results are matrices again.
///
/// Matrices transform row vectors: a point is taken to `p * m`, `a * b` applies `a` first, and the
/// translation stands in the last row. Rows and columns are counted from 0, angles are radians and
/// turn counter-clockwise when the axis points at the viewer. Matrices are plain values, and
/// nothing throws.
template <class Mat, class T>
class VELUM_API Mat4Base {
 public:
  /// The type of an element.
  using Scalar = T;
  /// The plane vector of the same number type.
  using Vec2 = BasicVec2<T>;
  /// The vector of the same number type.
  using Vec3 = BasicVec3<T>;
  /// The row or column of the same number type.
  using Vec4 = BasicVec4<T>;
  /// The quaternion of the same number type.
  using Quat = BasicQuat4<T>;

  /// On which side a further transform joins those that the matrix holds.
  enum Order : int {
    ORDER_PRE = 0,  ///< It is applied before them: this = transform * this.
    ORDER_POST = 1  ///< It is applied after them: this = this * transform.
  };

  /// Returns the matrix that moves points by `offset`.
  [[nodiscard]] static Mat MakeTranslation(const Vec3& offset) noexcept;
  /// Returns the matrix that multiplies the coordinates of points by `factors`.
  [[nodiscard]] static Mat MakeScale(const Vec3& factors) noexcept;
  /// Returns the turn about the z axis, with rows (cos, sin) and (-sin, cos) in the upper left.
  [[nodiscard]] static Mat MakeRotation(T angle) noexcept;
  /// Returns the matrix of a unit quaternion, as `Get` of the quaternion does.
  [[nodiscard]] static Mat MakeRotation(const Quat& rotation) noexcept;

  /// Returns a row for reading. Of `row` the lowest two bits count. *Lifetime*: that of the matrix.
  [[nodiscard]] constexpr const T* operator[](std::size_t row) const noexcept {
    return m_ + 4 * (row & 3);
  }
  /// Returns a row.
  [[nodiscard]] constexpr Vec4 GetRow(std::size_t row) const noexcept {
    const T* const r = (*this)[row];
    return Vec4(r[0], r[1], r[2], r[3]);
  }
  /// Returns a column. Of `column` the lowest two bits count.
  [[nodiscard]] constexpr Vec4 GetCol(std::size_t column) const noexcept {
    const T* const c = m_ + (column & 3);
    return Vec4(c[0], c[4], c[8], c[12]);
  }

  /// Tells whether every element differs from that of `m` by at most `tolerance`.
  [[nodiscard]] bool Equals(const Mat& m, T tolerance) const noexcept;
  /// Returns the matrix mirrored at its diagonal.
  [[nodiscard]] Mat Transpose() const noexcept;
  /// Returns the determinant of the upper left 3x3 block, expanded along its first column.
  [[nodiscard]] T Det3() const noexcept { return Det3(0, 1, 2, 0, 1, 2); }
  /// Returns the determinant of three rows and three columns, expanded along column `c1`.
  [[nodiscard]] T Det3(std::size_t r1, std::size_t r2, std::size_t r3, std::size_t c1,
                       std::size_t c2, std::size_t c3) const noexcept;
  /// Returns the determinant, expanded along the first column.
  [[nodiscard]] T Det4() const noexcept;
  /// Transforms a direction: multiplies by the upper left 3x3 block alone.
  [[nodiscard]] constexpr Vec3 DirMult(const Vec3& direction) const noexcept {
    return Vec3(Sum3(direction, 0), Sum3(direction, 1), Sum3(direction, 2));
  }

  /// Factors the matrix into what `SetTransform` of the same arguments, with a center at the
  /// origin, makes it of. The factors are good to about 1e-6 and better.
  ///
  /// - The upper left 3x3 block is rotation times stretch; a reflection comes out as three negative
  ///   scales. The stretch axes are named so that `scaleOrientation` turns as little as
  ///   possible: it is the identity where the matrix stretches along the coordinate axes.
  /// - A singular block has scales of 0, and a rotation that fits what is left of it.
  /// - The element m33 divides translation and scale unless it is 0; the rest of the last column is
  ///   not looked at.
  /// - An element that is infinite or NaN: the results mean nothing.
  ///
  /// *Source*: Shoemake and Duff, Matrix animation and polar decomposition, 1992.
  void GetTransform(Vec3& translation, Quat& rotation, Vec3& scale,
                    Quat& scaleOrientation) const noexcept;
  /// Factors the matrix about `center`, which is given: into what `SetTransform` of the same
  /// arguments makes it of.
  void GetTransform(Vec3& translation, Quat& rotation, Vec3& scale, Quat& scaleOrientation,
                    const Vec3& center) const noexcept;

  /// Returns a row for writing. *Lifetime*: that of the matrix; see the note on the type at Mat4d.
  [[nodiscard]] constexpr T* operator[](std::size_t row) noexcept {
    return Changed().m_ + 4 * (row & 3);
  }
  /// Sets a row.
  constexpr void SetRow(std::size_t row, const Vec4& v) noexcept { Assign((*this)[row], 1, v); }
  /// Sets a column. Of `column` the lowest two bits count.
  constexpr void SetCol(std::size_t column, const Vec4& v) noexcept {
    Assign(Changed().m_ + (column & 3), 4, v);
  }
  /// Makes the matrix the identity.
  void SetIdentity() noexcept { Self() = Mat(); }

  /// Sets this = this * m.
  Mat& PostMultiply(const Mat& m) noexcept { return Self() = Self() * m; }
  /// Sets this = m * this.
  Mat& PreMultiply(const Mat& m) noexcept { return Self() = m * Self(); }
  /// Sets this = this * m.
  Mat& operator*=(const Mat& m) noexcept { return PostMultiply(m); }

  /// Joins a translation.
  Mat& Translate(const Vec3& offset, Order order = ORDER_POST) noexcept;
  /// Joins a translation.
  Mat& Translate(T x, T y, T z, Order order = ORDER_POST) noexcept {
    return Translate(Vec3(x, y, z), order);
  }
  /// Joins a scale.
  Mat& Scale(const Vec3& factors, Order order = ORDER_POST) noexcept;
  /// Joins a scale.
  Mat& Scale(T x, T y, T z, Order order = ORDER_POST) noexcept {
    return Scale(Vec3(x, y, z), order);
  }
  /// Joins a turn about the x axis. An angle of 0 leaves the matrix as it is.
  Mat& RotateX(T angle, Order order = ORDER_POST) noexcept;
  /// Joins a turn about the y axis. An angle of 0 leaves the matrix as it is.
  Mat& RotateY(T angle, Order order = ORDER_POST) noexcept;
  /// Joins a turn about the z axis. An angle of 0 leaves the matrix as it is.
  Mat& RotateZ(T angle, Order order = ORDER_POST) noexcept;
  /// Sets this = this * the matrix of a unit quaternion.
  Mat& Rotate(const Quat& rotation) noexcept;

  /// Sets the matrix to a scale, then a rotation, then a translation.
  void SetTransform(const Vec3& translation, const Quat& rotation, const Vec3& scale) noexcept;
  /// Sets the matrix to a scale along turned axes, a rotation and a translation about a center. In
  /// the order of their application: move `center` to the origin; turn back by `scaleOrientation`,
  /// scale, turn by `scaleOrientation`; rotate; move by `translation` + `center`.
  void SetTransform(const Vec3& translation, const Quat& rotation, const Vec3& scale,
                    const Quat& scaleOrientation, const Vec3& center) noexcept;

  /// Compares the bits of the elements: 0 differs from -0, and a NaN equals itself.
  [[nodiscard]] friend bool operator==(const Mat& a, const Mat& b) noexcept {
    return std::memcmp(a.m_, b.m_, sizeof a.m_) == 0;
  }

  /// Transforms a point of the plane z = 0 and divides by its homogeneous coordinate.
  [[nodiscard]] friend constexpr Vec2 operator*(const Vec2& p, const Mat& m) noexcept {
    T const w = m.Sum2(p, 3);
    return Vec2(m.Sum2(p, 0) / w, m.Sum2(p, 1) / w);
  }
  /// Transforms a point and divides by its homogeneous coordinate.
  [[nodiscard]] friend constexpr Vec3 operator*(const Vec3& p, const Mat& m) noexcept {
    T const w = m.Sum3(p, 3) + m.m_[15];
    return Vec3((m.Sum3(p, 0) + m.m_[12]) / w, (m.Sum3(p, 1) + m.m_[13]) / w,
                (m.Sum3(p, 2) + m.m_[14]) / w);
  }
  /// Returns the product of a row and the matrix; nothing is divided.
  [[nodiscard]] friend constexpr Vec4 operator*(const Vec4& row, const Mat& m) noexcept {
    return Vec4(Dot(row, m.GetCol(0)), Dot(row, m.GetCol(1)), Dot(row, m.GetCol(2)),
                Dot(row, m.GetCol(3)));
  }
  /// Returns the product of the matrix and a column; nothing is divided.
  [[nodiscard]] friend constexpr Vec4 operator*(const Mat& m, const Vec4& column) noexcept {
    return Vec4(Dot(m.GetRow(0), column), Dot(m.GetRow(1), column), Dot(m.GetRow(2), column),
                Dot(m.GetRow(3), column));
  }

 protected:
  /// Leaves the elements without a value.
  Mat4Base() noexcept {}
  /// Sets the elements row by row.
  constexpr Mat4Base(T m00, T m01, T m02, T m03, T m10, T m11, T m12, T m13, T m20, T m21, T m22,
                     T m23, T m30, T m31, T m32, T m33) noexcept
      : m_{m00, m01, m02, m03, m10, m11, m12, m13, m20, m21, m22, m23, m30, m31, m32, m33} {}

  alignas(
      16) T m_[16];  ///< The elements row by row; aligned, so that two or four are read at once.

 private:
  constexpr Mat& Self() noexcept { return static_cast<Mat&>(*this); }
  constexpr const Mat& Self() const noexcept { return static_cast<const Mat&>(*this); }
  // Says that an element is about to change.
  constexpr Mat& Changed() noexcept {
    Self().ForgetType();
    return Self();
  }

  static constexpr void Assign(T* element, std::size_t step, const Vec4& v) noexcept {
    element[0] = v.x;
    element[step] = v.y;
    element[2 * step] = v.z;
    element[3 * step] = v.w;
  }

  // In T, as all else here, where Vec4f::Dot computes in double.
  static constexpr T Dot(const Vec4& a, const Vec4& b) noexcept {
    return a.x * b.x + a.y * b.y + a.z * b.z + a.w * b.w;
  }
  constexpr T Sum2(const Vec2& v, std::size_t column) const noexcept {
    return v.x * m_[column] + v.y * m_[4 + column] + m_[12 + column];
  }
  constexpr T Sum3(const Vec3& v, std::size_t column) const noexcept {
    return v.x * m_[column] + v.y * m_[4 + column] + v.z * m_[8 + column];
  }

  // Turns in the plane of two axes, `from` towards `to`.
  Mat& RotateInPlane(std::size_t from, std::size_t to, T angle, Order order) noexcept;
};

}  // namespace vlm

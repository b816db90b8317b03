#pragma once

/// \file
/// The 3x3 matrix of the plane.
///
///     vlm::Mat3d m;  // the identity
///     m.Scale(2, 2).Translate(10, 0);
///     vlm::Vec2d p = vlm::Vec2d(1, 1) * m;  // (12, 2)

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/PointerTo.h>
#include <velum/geometry/Vec2.h>
#include <velum/geometry/Vec3.h>

#include <cstddef>
#include <cstring>

namespace vlm {

/// A homogeneous transform of the plane: nine doubles row by row.
///
/// It transforms row vectors: a point is taken to `p * m`, and `a * b` applies `a` first. Rows 0
/// and 1 hold the linear part in their first two columns, row 2 the translation; the third column
/// of an affine transform is (0, 0, 1). Rows and columns are counted from 0, angles are radians and
/// turn counter-clockwise. A plain value; nothing throws, and any number of threads may read one
/// matrix.
class VELUM_API Mat3d {
 public:
  /// On which side a further transform joins those that the matrix holds.
  enum Order : int {
    ORDER_PRE = 0,  ///< It is applied before them: this = transform * this.
    ORDER_POST = 1  ///< It is applied after them: this = this * transform.
  };

  static const Mat3d IDENTITY;  ///< The identity.
  static const Mat3d ZERO;      ///< All elements 0.

  /// Makes the identity.
  constexpr Mat3d() noexcept : Mat3d(1, 0, 0, 1, 0, 0) {}
  /// Makes an affine transform: the third column is (0, 0, 1).
  constexpr Mat3d(double m00, double m01, double m10, double m11, double m20, double m21) noexcept
      : Mat3d(m00, m01, 0, m10, m11, 0, m20, m21, 1) {}
  /// Makes a matrix of its elements row by row.
  constexpr Mat3d(double m00, double m01, double m02, double m10, double m11, double m12,
                  double m20, double m21, double m22) noexcept
      : m_{m00, m01, m02, m10, m11, m12, m20, m21, m22} {}
  /// Makes a matrix of the first nine elements of an array, row by row.
  explicit constexpr Mat3d(PointerTo<double> auto m) noexcept
      : Mat3d(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8]) {}

  /// Returns the matrix that moves points by `offset`.
  [[nodiscard]] static constexpr Mat3d MakeTranslation(const Vec2d& offset) noexcept {
    return Mat3d(1, 0, 0, 1, offset.x, offset.y);
  }
  /// Returns the matrix that multiplies the coordinates of points by `factors`.
  [[nodiscard]] static constexpr Mat3d MakeScale(const Vec2d& factors) noexcept {
    return Mat3d(factors.x, 0, 0, factors.y, 0, 0);
  }
  /// Returns the turn about the origin, with rows (cos, sin) and (-sin, cos).
  [[nodiscard]] static Mat3d MakeRotation(double angle) noexcept;

  /// Returns a row for reading; `row` is 0 to 2. *Lifetime*: that of the matrix.
  [[nodiscard]] constexpr const double* operator[](std::size_t row) const noexcept {
    return m_ + 3 * row;
  }
  /// Returns the nine elements for reading. *Lifetime*: that of the matrix.
  [[nodiscard]] constexpr const double* ToDoubleArray() const noexcept { return m_; }
  /// Returns a row; `row` is 0 to 2.
  [[nodiscard]] constexpr Vec3d GetRow(std::size_t row) const noexcept {
    return Vec3d((*this)[row]);
  }
  /// Returns a column; `column` is 0 to 2.
  [[nodiscard]] constexpr Vec3d GetCol(std::size_t column) const noexcept {
    return Vec3d(m_[column], m_[3 + column], m_[6 + column]);
  }
  /// Tells whether the matrix equals `IDENTITY` bit for bit.
  [[nodiscard]] bool IsIdentity() const noexcept { return *this == IDENTITY; }
  /// Tells whether every element differs from that of `m` by at most `tolerance`.
  [[nodiscard]] bool Equals(const Mat3d& m, double tolerance) const noexcept;
  /// Returns the matrix mirrored at its diagonal.
  [[nodiscard]] Mat3d Transpose() const noexcept;

  /// Writes the inverse of an affine transform: the first two columns of `out`. The third columns,
  /// that of `out` and that of this matrix, are left alone. A matrix may be inverted into itself.
  ///
  /// - A determinant below 1.1920928955078125e-7 of what it sums, or nothing above
  ///   2.2250738585072014e-308 to sum: singular, `false`, and `out` stays as it was. So do
  ///   infinities and NaN in the determinant.
  bool Inverse(Mat3d& out) const noexcept;
  /// Inverts this transform, and sets its third column to (0, 0, 1). Where it is singular it stays
  /// as it was, `false`.
  bool Inverse() noexcept;

  /// Transforms `count` points and divides by the homogeneous coordinate, which an affine transform
  /// does not have. `source` and `target` are apart, or one array.
  void VecMult(const Vec2d* source, Vec2d* target, unsigned int count) const noexcept;
  /// Does what `VecMult` does.
  void Transform(const Vec2d* source, Vec2d* target, unsigned int count) const noexcept {
    VecMult(source, target, count);
  }
  /// Transforms the two corners of a box and nothing more: under a rotation they don't bound the
  /// transformed box, and a scale below 0 inverts it.
  void Transform(const Box2d& source, Box2d& target) const noexcept;
  /// Transforms a direction: multiplies by the linear part alone.
  [[nodiscard]] constexpr Vec2d DirMult(const Vec2d& direction) const noexcept {
    return Vec2d(direction.x * m_[0] + direction.y * m_[3],
                 direction.x * m_[1] + direction.y * m_[4]);
  }

  /// Factors the matrix into what `SetTransform` makes it of. Each pointer may be null. The scale
  /// along x is never below 0; a mirrored matrix has a scale below 0 along y.
  ///
  /// - A linear part that is singular, or whose rows can't be told from parallel ones: `false`, and
  ///   nothing is written.
  bool GetTransform(Vec2d* translation, Vec2d* scale, double* rotation,
                    double* shear) const noexcept;

  /// Returns a row for writing; `row` is 0 to 2. *Lifetime*: that of the matrix.
  [[nodiscard]] constexpr double* operator[](std::size_t row) noexcept { return m_ + 3 * row; }
  /// Returns the nine elements for writing. *Lifetime*: that of the matrix.
  [[nodiscard]] constexpr double* ToDoubleArray() noexcept { return m_; }
  /// Sets an affine transform: the third column becomes (0, 0, 1).
  constexpr void Set(double m00, double m01, double m10, double m11, double m20,
                     double m21) noexcept {
    *this = Mat3d(m00, m01, m10, m11, m20, m21);
  }
  /// Sets the elements row by row.
  constexpr void Set(double m00, double m01, double m02, double m10, double m11, double m12,
                     double m20, double m21, double m22) noexcept {
    *this = Mat3d(m00, m01, m02, m10, m11, m12, m20, m21, m22);
  }
  /// Sets a row; `row` is 0 to 2.
  constexpr void SetRow(std::size_t row, const Vec3d& v) noexcept {
    m_[3 * row] = v.x;
    m_[3 * row + 1] = v.y;
    m_[3 * row + 2] = v.z;
  }
  /// Sets a column; `column` is 0 to 2.
  constexpr void SetCol(std::size_t column, const Vec3d& v) noexcept {
    m_[column] = v.x;
    m_[3 + column] = v.y;
    m_[6 + column] = v.z;
  }
  /// Makes the matrix the identity.
  constexpr void SetIdentity() noexcept { *this = Mat3d(); }

  /// Sets this = this * m.
  Mat3d& PostMultiply(const Mat3d& m) noexcept { return *this = *this * m; }
  /// Sets this = m * this.
  Mat3d& PreMultiply(const Mat3d& m) noexcept { return *this = m * *this; }
  /// Sets this = this * m.
  Mat3d& operator*=(const Mat3d& m) noexcept { return PostMultiply(m); }

  /// Joins a translation.
  Mat3d& Translate(const Vec2d& offset, Order order = ORDER_POST) noexcept;
  /// Joins a translation.
  Mat3d& Translate(double x, double y, Order order = ORDER_POST) noexcept {
    return Translate(Vec2d(x, y), order);
  }
  /// Joins a scale.
  Mat3d& Scale(const Vec2d& factors, Order order = ORDER_POST) noexcept;
  /// Joins a scale.
  Mat3d& Scale(double x, double y, Order order = ORDER_POST) noexcept {
    return Scale(Vec2d(x, y), order);
  }
  /// Sets this = this * the turn by `angle`.
  Mat3d& Rotate(double angle) noexcept;

  /// Sets the matrix to a scale, then a shear (x grows by `shear` times y), then a rotation, then a
  /// translation.
  void SetTransform(const Vec2d& translation, const Vec2d& scale, double rotation,
                    double shear) noexcept;

  /// Returns the product: the transform `a` followed by `b`. Each element is the sum of its three
  /// products in order.
  [[nodiscard]] friend constexpr Mat3d operator*(const Mat3d& a, const Mat3d& b) noexcept {
    Mat3d product;
    for (std::size_t r = 0; r < 3; ++r) {
      product.SetRow(r, Vec3d(a[r]) * b);
    }
    return product;
  }
  /// Transforms a point: divides by its homogeneous coordinate, unless the third column is (0, 0,
  /// 1).
  [[nodiscard]] friend constexpr Vec2d operator*(const Vec2d& p, const Mat3d& m) noexcept {
    const Vec2d affine(p.x * m.m_[0] + p.y * m.m_[3] + m.m_[6],
                       p.x * m.m_[1] + p.y * m.m_[4] + m.m_[7]);
    if (m.IsAffine()) {
      return affine;
    }
    const double w = p.x * m.m_[2] + p.y * m.m_[5] + m.m_[8];
    return Vec2d(affine.x / w, affine.y / w);
  }
  /// Returns the product of a row and the matrix; nothing is divided.
  [[nodiscard]] friend constexpr Vec3d operator*(const Vec3d& row, const Mat3d& m) noexcept {
    return Vec3d(row.Dot(m.GetCol(0)), row.Dot(m.GetCol(1)), row.Dot(m.GetCol(2)));
  }
  /// Returns the product of the matrix and a column; nothing is divided.
  [[nodiscard]] friend constexpr Vec3d operator*(const Mat3d& m, const Vec3d& column) noexcept {
    return Vec3d(m.GetRow(0).Dot(column), m.GetRow(1).Dot(column), m.GetRow(2).Dot(column));
  }
  /// Compares the bits of the elements: 0 differs from -0, and a NaN equals itself.
  [[nodiscard]] friend bool operator==(const Mat3d& a, const Mat3d& b) noexcept {
    return std::memcmp(a.m_, b.m_, sizeof a.m_) == 0;
  }

 private:
  [[nodiscard]] constexpr bool IsAffine() const noexcept {
    return m_[2] == 0 && m_[5] == 0 && m_[8] == 1;
  }

  double m_[9];
};

/// \cond definitions of the constants, told above
inline constexpr Mat3d Mat3d::IDENTITY;
inline constexpr Mat3d Mat3d::ZERO(0, 0, 0, 0, 0, 0, 0, 0, 0);
/// \endcond

static_assert(sizeof(Mat3d) == 9 * sizeof(double));

}  // namespace vlm

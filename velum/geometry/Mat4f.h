#pragma once

/// \file
/// The 4x4 matrix of space, in `float`.
///
///     vlm::Mat4f m = vlm::Mat4f::MakeScale(vlm::Vec3f(2, 2, 2));
///     float const* forGraphicsCard = m.ToFloatArray();

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/Mat4Base.h>
#include <velum/geometry/PointerTo.h>
#include <velum/platform/Types.h>

#include <cstddef>

namespace vlm {

/// \cond the members are compiled into the library
extern template class Mat4Base<Mat4f, float>;
/// \endcond

/// A homogeneous transform of space in `float`. Mat4Base.h tells the members that it shares with
/// Mat4d. In memory it is sixteen floats row by row, with the translation at the indices 12, 13 and
/// 14.
///
/// A plain value that remembers no type: products and transforms take one general way, in `float`.
/// Any number of threads may read one matrix.
class VELUM_API Mat4f : public Mat4Base<Mat4f, float> {
 public:
  static const Mat4f IDENTITY;  ///< The identity.
  static const Mat4f ZERO;      ///< All elements 0.

  /// Makes the identity.
  constexpr Mat4f() noexcept : Mat4Base(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1) {}
  /// Makes a matrix of its elements row by row.
  constexpr Mat4f(float m00, float m01, float m02, float m03, float m10, float m11, float m12,
                  float m13, float m20, float m21, float m22, float m23, float m30, float m31,
                  float m32, float m33) noexcept
      : Mat4Base(m00, m01, m02, m03, m10, m11, m12, m13, m20, m21, m22, m23, m30, m31, m32, m33) {}
  /// Makes a matrix of the first sixteen elements of an array, row by row.
  explicit constexpr Mat4f(PointerTo<float> auto m) noexcept
      : Mat4f(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11], m[12],
              m[13], m[14], m[15]) {}
  /// Converts from `double`, each element rounded.
  explicit Mat4f(const Mat4d& m) noexcept;

  /// Returns the sixteen elements for reading. *Lifetime*: that of the matrix.
  [[nodiscard]] constexpr const float* ToFloatArray() const noexcept { return m_; }
  /// Returns the sixteen elements for writing. *Lifetime*: that of the matrix.
  [[nodiscard]] constexpr float* ToFloatArray() noexcept { return m_; }

  /// Tells whether the matrix equals `IDENTITY` bit for bit.
  [[nodiscard]] bool IsIdentity() const noexcept { return *this == IDENTITY; }

  /// Writes the inverse. A matrix may be inverted into itself.
  ///
  /// - Affine, with a determinant (in `double`) below 2.220446049250313e-16 of what it sums, or
  ///   with nothing to sum: singular.
  /// - Otherwise singular where an elimination step finds no pivot but 0.
  /// - Infinities and NaN where they reach a determinant or a choice of pivot: not inverted.
  /// - Singular or not inverted: `false`, and `out` stays as it was.
  bool Inverse(Mat4f& out) const noexcept;
  /// Inverts this matrix. Where there is no inverse it stays as it was, `false`.
  bool Inverse() noexcept { return Inverse(*this); }

  /// Transforms `count` points, with z = 0 where they have none, and divides by the homogeneous
  /// coordinate. Integer targets are rounded half away from zero and limited to what 32 bits hold;
  /// NaN gives 0. `source` and `target` are apart, or one array.
  void VecMult(const POINT* source, Vec2f* target, unsigned int count) const noexcept;
  /// Transforms points of the plane to integers.
  void VecMult(const Vec2f* source, POINT* target, unsigned int count) const noexcept;
  /// Transforms points of the plane.
  void VecMult(const Vec2f* source, Vec2f* target, unsigned int count) const noexcept;
  /// Transforms points of the plane to integers.
  void VecMult(const Vec2f* source, Vec2i* target, unsigned int count) const noexcept;
  /// Transforms points to integers and drops z.
  void VecMult(const Vec3f* source, POINT* target, unsigned int count) const noexcept;
  /// Transforms points.
  void VecMult(const Vec3f* source, Vec3f* target, unsigned int count) const noexcept;
  /// Transforms points and drops z.
  void VecMult(const Vec3f* source, Vec2f* target, unsigned int count) const noexcept;
  /// Transforms points to integers and drops z.
  void VecMult(const Vec3f* source, Vec2i* target, unsigned int count) const noexcept;
  /// Transforms the two corners of a box and nothing more: under a rotation they don't bound the
  /// transformed box, and a scale below 0 inverts it.
  void Transform(const Box2f& source, Box2f& target) const noexcept;
  /// Transforms the two corners of a box and nothing more, as for `Box2f`.
  void Transform(const Box3f& source, Box3f& target) const noexcept;

  /// Returns the product: this transform followed by `m`. Each element is the sum of its four
  /// products in order.
  [[nodiscard]] Mat4f operator*(const Mat4f& m) const noexcept {
    Mat4f product{NoValue()};
    for (std::size_t r = 0; r < 16; r += 4) {
      for (std::size_t c = 0; c < 4; ++c) {
        product.m_[r + c] = m_[r] * m.m_[c] + m_[r + 1] * m.m_[4 + c] + m_[r + 2] * m.m_[8 + c] +
                            m_[r + 3] * m.m_[12 + c];
      }
    }
    return product;
  }

 private:
  friend Mat4Base<Mat4f, float>;

  struct NoValue {};
  explicit Mat4f(NoValue) noexcept {}

  // There is no type to forget.
  constexpr void ForgetType() const noexcept {}
};

/// \cond definitions of the constants, told above
inline constexpr Mat4f Mat4f::IDENTITY;
inline constexpr Mat4f Mat4f::ZERO(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
/// \endcond

static_assert(sizeof(Mat4f) == 16 * sizeof(float));

}  // namespace vlm

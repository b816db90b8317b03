#pragma once

/// \file
/// The 4x4 matrix of space, in `double`.
///
///     vlm::Mat4d m;
///     m.RotateZ(vlm::HALF_PI).Translate(5, 0, 0);
///     vlm::Vec3d const corners[] = {{0, 0, 0}, {1, 0, 0}};
///     vlm::Vec2i pixels[2];
///     m.Transform(corners, pixels, 2);  // (5, 0) and (5, 1)

#include <velum/core/Api.h>
#include <velum/geometry/Forward.h>
#include <velum/geometry/Mat4Base.h>
#include <velum/geometry/PointerTo.h>
#include <velum/geometry/detail/Pair.inl.h>
#include <velum/platform/Types.h>

namespace vlm {

/// \cond the members are compiled into the library
extern template class Mat4Base<Mat4d, double>;
/// \endcond

/// A homogeneous transform of space in `double`. Mat4Base.h tells the members that it shares with
/// Mat4f. In memory it is sixteen doubles row by row, with the translation at the indices 12, 13
/// and 14, and then its type; it is aligned to 16 bytes.
///
/// A matrix remembers what kind of transform it is, so that products, inverses and the transforms
/// of arrays take the shortest way. Handing out a writable row or array, and every other change,
/// forgets the type; the next operation that needs it works it out again. So write through such a
/// pointer before the matrix is next used, not later.
///
/// A value; but the type is filled in by const operations too: two threads must not use one matrix
/// at the same time without a lock, not even to read it, unless its type is known already.
/// `GetType` makes it known. That of `IDENTITY` and `ZERO` is.
class VELUM_API Mat4d : public Mat4Base<Mat4d, double> {
 public:
  /// What kind of transform a matrix is, by its exact elements.
  enum Type : int {
    TYPE_UNKNOWN = 0,   ///< Not worked out yet.
    TYPE_IDENTITY = 1,  ///< The identity.
    TYPE_2D = 2,        ///< A transform of the plane: third row and column of the identity, affine.
    TYPE_AFFINE = 3,    ///< The last column is (0, 0, 0, 1).
    TYPE_COMPLEX = 4    ///< Anything else.
  };

  static const Mat4d IDENTITY;  ///< The identity.
  static const Mat4d ZERO;      ///< All elements 0.

  /// Makes the identity.
  constexpr Mat4d() noexcept
      : Mat4Base(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1), type_(TYPE_IDENTITY) {}
  /// Makes a matrix of its elements row by row.
  constexpr Mat4d(double m00, double m01, double m02, double m03, double m10, double m11,
                  double m12, double m13, double m20, double m21, double m22, double m23,
                  double m30, double m31, double m32, double m33) noexcept
      : Mat4Base(m00, m01, m02, m03, m10, m11, m12, m13, m20, m21, m22, m23, m30, m31, m32, m33),
        type_(TYPE_UNKNOWN) {}
  /// Makes a matrix of the first sixteen elements of an array, row by row.
  explicit constexpr Mat4d(PointerTo<double> auto m) noexcept
      : Mat4d(m[0], m[1], m[2], m[3], m[4], m[5], m[6], m[7], m[8], m[9], m[10], m[11], m[12],
              m[13], m[14], m[15]) {}
  /// Converts from `float`.
  Mat4d(const Mat4f& m) noexcept;

  /// Returns the sixteen elements for reading. *Lifetime*: that of the matrix.
  [[nodiscard]] const double* ToDoubleArray() const noexcept { return m_; }
  /// Returns the sixteen elements for writing and forgets the type. *Lifetime*: that of the matrix.
  [[nodiscard]] double* ToDoubleArray() noexcept {
    ForgetType();
    return m_;
  }

  /// Returns the type, worked out if need be; never `TYPE_UNKNOWN`.
  Type GetType() const noexcept { return type_ == TYPE_UNKNOWN ? ClassifyType() : type_; }
  /// Works the type out from the elements, remembers and returns it. Elements are compared exactly;
  /// 0 and -0 are the same.
  Type ClassifyType() const noexcept;
  /// Tells whether the type is `TYPE_IDENTITY`.
  [[nodiscard]] bool IsIdentity() const noexcept { return GetType() == TYPE_IDENTITY; }

  /// Returns the angle by which the x axis is turned in the plane: atan2(m01, m00).
  [[nodiscard]] double GetRotation2() const noexcept;
  /// Returns how much more the matrix stretches along y than along x in the plane: the length of
  /// (m10, m11) by that of (m00, m01), limited to 3.4028234663852886e38 and 0 where a length is too
  /// small to divide by, or beside the other.
  ///
  /// - The length along x below 1.1754943508222875e-38, along y not below the same part of it:
  ///   3.4028234663852886e38.
  [[nodiscard]] double GetAspect2() const noexcept;
  /// Tells whether the matrix shears the plane: whether the product of (m00, m01) and (m10, m11) is
  /// above `tolerance` in magnitude. A matrix whose last column is not (0, 0, 0, 1) is sheared.
  [[nodiscard]] bool IsSheared2(double tolerance) const noexcept;

  /// Writes the inverse. A matrix may be inverted into itself.
  ///
  /// - A plane transform with a determinant not above 2.220446049250313e-16 of what it sums is
  ///   singular.
  /// - So is an affine one with a determinant below that part of what it sums, or with nothing to
  ///   sum.
  /// - Complex, with the determinant of the upper left 2x2 block, or of what is left after it (its
  ///   Schur complement), below 1e-11 in magnitude: not inverted, although it may be regular.
  /// - Infinities and NaN where they reach a determinant: not inverted.
  /// - Singular or not inverted: `false`, and `out` stays as it was.
  bool Inverse(Mat4d& out) const noexcept {
    switch (GetType()) {
      case TYPE_IDENTITY:
        out = IDENTITY;
        return true;
      case TYPE_2D:
        return Invert2D(out);
      case TYPE_AFFINE:
        return InvertAffine(out);
      default:
        return InvertComplex(out);
    }
  }
  /// Inverts this matrix. Where there is no inverse it stays as it was, `false`.
  bool Inverse() noexcept { return Inverse(*this); }

  /// Transforms `count` points, with z = 0 where they have none. Points are divided by their
  /// homogeneous coordinate where the matrix is complex. Integer targets are rounded half away from
  /// zero and limited to what 32 bits hold; NaN gives 0. `source` and `target` are apart, or one
  /// array. *Cost*: one look at the type, then the least arithmetic that it allows.
  void Transform(const POINT* source, Vec2d* target, unsigned int count) const noexcept;
  /// Transforms points of the plane to integers.
  void Transform(const Vec2d* source, POINT* target, unsigned int count) const noexcept;
  /// Transforms points of the plane.
  void Transform(const Vec2d* source, Vec2d* target, unsigned int count) const noexcept;
  /// Transforms points of the plane to integers.
  void Transform(const Vec2d* source, Vec2i* target, unsigned int count) const noexcept;
  /// Transforms points to integers and drops z.
  void Transform(const Vec3d* source, POINT* target, unsigned int count) const noexcept;
  /// Transforms points. A plane transform passes z through.
  void Transform(const Vec3d* source, Vec3d* target, unsigned int count) const noexcept;
  /// Transforms points and drops z.
  void Transform(const Vec3d* source, Vec2d* target, unsigned int count) const noexcept;
  /// Transforms points, drops z and rounds to `float`.
  void Transform(const Vec3d* source, Vec2f* target, unsigned int count) const noexcept;
  /// Transforms points to integers and drops z.
  void Transform(const Vec3d* source, Vec2i* target, unsigned int count) const noexcept;
  /// Transforms the two corners of a box and nothing more: under a rotation they don't bound the
  /// transformed box, and a scale below 0 inverts it.
  void Transform(const Box2d& source, Box2d& target) const noexcept;
  /// Transforms the two corners of a box and nothing more, as for `Box2d`.
  void Transform(const Box3d& source, Box3d& target) const noexcept;

  /// Returns the product: this transform followed by `m`. Elements that the types tell to be 0 or 1
  /// are used as such; otherwise each element is the sum of its four products in order.
  [[nodiscard]] Mat4d operator*(const Mat4d& m) const noexcept {
    if (type_ == TYPE_COMPLEX && m.type_ == TYPE_COMPLEX) return MultiplyComplex(m);
    switch (GetType()) {
      case TYPE_IDENTITY:
        return m;
      case TYPE_2D:
        return Multiply2D(m);
      case TYPE_AFFINE:
        return MultiplyAffine(m);
      default:
        return m.GetType() == TYPE_COMPLEX ? MultiplyComplex(m) : MultiplyComplexBySimpler(m);
    }
  }

 private:
  friend Mat4Base<Mat4d, double>;

  struct NoValue {};
  explicit Mat4d(NoValue) noexcept : type_(TYPE_UNKNOWN) {}
  // Zero, of a type that is known.
  explicit constexpr Mat4d(Type type) noexcept
      : Mat4Base(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0), type_(type) {}

  constexpr void ForgetType() noexcept { type_ = TYPE_UNKNOWN; }

  [[nodiscard]] Mat4d Multiply2D(const Mat4d& m) const noexcept;
  [[nodiscard]] Mat4d MultiplyAffine(const Mat4d& m) const noexcept;
  [[nodiscard]] inline Mat4d MultiplyComplex(const Mat4d& m) const noexcept;
  [[nodiscard]] Mat4d MultiplyComplexBySimpler(const Mat4d& m) const noexcept;

  bool Invert2D(Mat4d& out) const noexcept;
  bool InvertAffine(Mat4d& out) const noexcept;
  bool InvertComplex(Mat4d& out) const noexcept;
  bool InvertGeneral(Mat4d& out) const noexcept;

  mutable Type type_;
};

// In the header, since beside its arithmetic a call would show.
inline Mat4d Mat4d::MultiplyComplex(const Mat4d& m) const noexcept {
  using detail::Both;
  using detail::LoadPair;
  using detail::Pair;
  const double* const b = m.m_;
  const Pair xy[] = {LoadPair(b), LoadPair(b + 4), LoadPair(b + 8), LoadPair(b + 12)};
  const Pair zw[] = {LoadPair(b + 2), LoadPair(b + 6), LoadPair(b + 10), LoadPair(b + 14)};
  Mat4d product{NoValue()};
  const auto row = [&](const double* from, double* out) {
    const Pair a[] = {Both(from[0]), Both(from[1]), Both(from[2]), Both(from[3])};
    detail::StorePair(out, a[0] * xy[0] + a[1] * xy[1] + a[2] * xy[2] + a[3] * xy[3]);
    detail::StorePair(out + 2, a[0] * zw[0] + a[1] * zw[1] + a[2] * zw[2] + a[3] * zw[3]);
  };
  row(m_, product.m_);
  row(m_ + 4, product.m_ + 4);
  row(m_ + 8, product.m_ + 8);
  row(m_ + 12, product.m_ + 12);
  return product;
}

/// \cond definitions of the constants, told above
inline constexpr Mat4d Mat4d::IDENTITY;
inline constexpr Mat4d Mat4d::ZERO(Mat4d::TYPE_COMPLEX);
/// \endcond

static_assert(sizeof(Mat4d) == 18 * sizeof(double));

}  // namespace vlm

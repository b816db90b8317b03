#pragma once

/// \file
/// Arithmetic element by element.
///
///     vlm::RVector v;
///     vlm::Ones(v, 3);
///     vlm::Multiply(v, 2.5);  // 2.5 2.5 2.5
///
/// With two operands, the first one's size counts. `out` may be an operand here, if its size is
/// that of the first one. Nothing is tested: a division by 0 gives an infinity or NaN, the root of
/// a number below 0 gives NaN. What else holds for all functions on matrices is told in Matrices.h.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

namespace vlm {

/// Sets `x` to `a * x + y`.
VELUM_API void Update_axpy(double a, RVector& x, const RVector& y) noexcept;
/// Sets `x` to `x + a * y`.
VELUM_API void Update_xpay(RVector& x, double a, const RVector& y) noexcept;

/// Sets each element to its negative.
VELUM_API void Negate(RVector& v) noexcept;
/// Writes the negative of each element.
VELUM_API void Negate(const RVector& v, RVector& out);
/// Sets each element to its negative.
VELUM_API void Negate(RMatrix& a) noexcept;
/// Writes the negative of each element.
VELUM_API void Negate(const RMatrix& a, RMatrix& out);

/// Sets each element to its square root.
VELUM_API void Sqrt(RVector& v) noexcept;
/// Writes the square root of each element.
VELUM_API void Sqrt(const RVector& v, RVector& out);
/// Sets each element to its square root.
VELUM_API void Sqrt(RMatrix& a) noexcept;
/// Writes the square root of each element.
VELUM_API void Sqrt(const RMatrix& a, RMatrix& out);

/// Sets each element to itself plus `x`.
VELUM_API void Add(RVector& v, double x) noexcept;
/// Writes each element plus `x`.
VELUM_API void Add(const RVector& v, double x, RVector& out);
/// Sets each element to itself plus `x`.
VELUM_API void Add(RMatrix& a, double x) noexcept;
/// Writes each element plus `x`.
VELUM_API void Add(const RMatrix& a, double x, RMatrix& out);

/// Sets each element to itself minus `x`.
VELUM_API void Subtract(RVector& v, double x) noexcept;
/// Writes each element minus `x`.
VELUM_API void Subtract(const RVector& v, double x, RVector& out);
/// Sets each element to itself minus `x`.
VELUM_API void Subtract(RMatrix& a, double x) noexcept;
/// Writes each element minus `x`.
VELUM_API void Subtract(const RMatrix& a, double x, RMatrix& out);

/// Sets each element to itself times `x`.
VELUM_API void Multiply(RVector& v, double x) noexcept;
/// Writes each element times `x`.
VELUM_API void Multiply(const RVector& v, double x, RVector& out);
/// Sets each element to itself times `x`.
VELUM_API void Multiply(RMatrix& a, double x) noexcept;
/// Writes each element times `x`.
VELUM_API void Multiply(const RMatrix& a, double x, RMatrix& out);

/// Sets each element to itself divided by `x`.
VELUM_API void Divide(RVector& v, double x) noexcept;
/// Writes each element divided by `x`.
VELUM_API void Divide(const RVector& v, double x, RVector& out);
/// Sets each element to itself divided by `x`.
VELUM_API void Divide(RMatrix& a, double x) noexcept;
/// Writes each element divided by `x`.
VELUM_API void Divide(const RMatrix& a, double x, RMatrix& out);

/// Sets each element of `v` to itself plus that of `w`.
VELUM_API void Add(RVector& v, const RVector& w) noexcept;
/// Writes each element of `v` plus that of `w`.
VELUM_API void Add(const RVector& v, const RVector& w, RVector& out);
/// Sets each element of `a` to itself plus that of `b`.
VELUM_API void Add(RMatrix& a, const RMatrix& b) noexcept;
/// Writes each element of `a` plus that of `b`.
VELUM_API void Add(const RMatrix& a, const RMatrix& b, RMatrix& out);

/// Sets each element of `v` to itself minus that of `w`.
VELUM_API void Subtract(RVector& v, const RVector& w) noexcept;
/// Writes each element of `v` minus that of `w`.
VELUM_API void Subtract(const RVector& v, const RVector& w, RVector& out);
/// Sets each element of `a` to itself minus that of `b`.
VELUM_API void Subtract(RMatrix& a, const RMatrix& b) noexcept;
/// Writes each element of `a` minus that of `b`.
VELUM_API void Subtract(const RMatrix& a, const RMatrix& b, RMatrix& out);

}  // namespace vlm

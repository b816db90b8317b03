#pragma once

/// \file
/// Questions about vectors and matrices, with a tolerance.
///
///     vlm::RMatrix a;
///     vlm::Eye(a, 3, 3);
///     bool identity = vlm::IsIdentity(a, 0);  // true
///
/// A tolerance bounds absolute values and includes its bound: with 0 only exact values pass. A NaN
/// is within none. Apart from IsNull, the answer about an empty operand is false.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

namespace vlm {

/// Tells whether the vector is empty.
[[nodiscard]] VELUM_API bool IsNull(const RVector& v) noexcept;
/// Tells whether the matrix is empty.
[[nodiscard]] VELUM_API bool IsNull(const RMatrix& a) noexcept;
/// Tells whether there are as many rows as columns.
[[nodiscard]] VELUM_API bool IsSquare(const RMatrix& a) noexcept;

/// Tells whether every element is 0, within `tol`.
[[nodiscard]] VELUM_API bool IsZero(const RVector& v, double tol) noexcept;
/// Tells whether every element is 0, within `tol`.
[[nodiscard]] VELUM_API bool IsZero(const RMatrix& a, double tol) noexcept;
/// Tells whether the lengths are the same, and every two elements within `tol`.
[[nodiscard]] VELUM_API bool IsEqual(const RVector& v, const RVector& w, double tol) noexcept;
/// Tells whether the sizes are the same, and every two elements within `tol`.
[[nodiscard]] VELUM_API bool IsEqual(const RMatrix& a, const RMatrix& b, double tol) noexcept;

/// Tells whether a matrix is square, and every two elements that mirror each other at the diagonal
/// are the same within `tol`.
[[nodiscard]] VELUM_API bool IsSymmetric(const RMatrix& a, double tol) noexcept;
/// Tells whether a matrix is square, and every element off the diagonal is 0 within `tol`.
[[nodiscard]] VELUM_API bool IsDiagonal(const RMatrix& a, double tol) noexcept;
/// Tells whether a matrix is square, and every element that is neither on the diagonal nor next to
/// it is 0 within `tol`.
[[nodiscard]] VELUM_API bool IsTriDiagonal(const RMatrix& a, double tol) noexcept;
/// Tells whether a matrix is diagonal, and every element on its diagonal is 1, both within `tol`.
[[nodiscard]] VELUM_API bool IsIdentity(const RMatrix& a, double tol) noexcept;

}  // namespace vlm

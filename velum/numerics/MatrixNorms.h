#pragma once

/// \file
/// Norms and sums of vectors and matrices.
///
///     vlm::RVector v;
///     vlm::Initialize(v, "3,-4");
///     double length = vlm::L2Norm(v);  // 5
///
/// The result for an empty operand is 0. Sums run in the order of the indices; squares are not
/// scaled, so that those of elements beyond 1e154 overflow.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

namespace vlm {

/// Returns the sum of the absolute values.
[[nodiscard]] VELUM_API double L1Norm(const RVector& v) noexcept;
/// Returns the square root of the sum of the squares.
///
/// - A sum that is NaN: 0.
[[nodiscard]] VELUM_API double L2Norm(const RVector& v) noexcept;
/// Returns the largest absolute value, passing over NaN.
[[nodiscard]] VELUM_API double LInfNorm(const RVector& v) noexcept;

/// Returns the Frobenius norm: the square root of the sum of the squares, row by row.
///
/// - A sum that is NaN: 0.
[[nodiscard]] VELUM_API double FNorm(const RMatrix& a) noexcept;
/// Returns the largest of the columns' sums of absolute values, passing over NaN.
[[nodiscard]] VELUM_API double L1Norm(const RMatrix& a) noexcept;
/// Returns the largest of the rows' sums of absolute values, passing over NaN.
[[nodiscard]] VELUM_API double LInfNorm(const RMatrix& a) noexcept;

/// Returns the sum of the diagonal of a square matrix.
[[nodiscard]] VELUM_API double Trace(const RMatrix& a) noexcept;
/// Returns the sum of the absolute values off the diagonal: of those above it, row by row, and then
/// of those below it.
///
/// - One row, or one column: 0.
[[nodiscard]] VELUM_API double Off(const RMatrix& a) noexcept;
/// Returns two times the sum of the absolute values above the diagonal, row by row: what Off gives
/// for a symmetric matrix, up to rounding.
///
/// - One row: 0.
[[nodiscard]] VELUM_API double SymOff(const RMatrix& a) noexcept;

/// Writes the sum of each row.
VELUM_API void HSum(const RMatrix& a, RVector& out);
/// Writes the sum of each column.
VELUM_API void VSum(const RMatrix& a, RVector& out);

}  // namespace vlm

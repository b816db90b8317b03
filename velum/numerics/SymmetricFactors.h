#pragma once

/// \file
/// Symmetric matrices as products of triangular ones: Cholesky's, the one with a diagonal between,
/// and Aasen's with a tridiagonal matrix between.
///
///     vlm::RMatrix a;
///     vlm::Initialize(a, "4,2;2,3");
///     vlm::RVector x;
///     vlm::Initialize(x, "8,7");
///     if (vlm::CholeskyDecomposition(a)) vlm::CholeskySolve(a, x);  // (1.25, 1.5)
///
/// What holds for all solvers is told in Solvers.h.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

namespace vlm {

/// Factors a symmetric matrix into L times its transpose. L overwrites the lower triangle; the
/// upper one is neither read nor written.
///
/// - A matrix that is not positive definite, or has a pivot below epsilon: false.
///
/// *Cost:* n^3 / 6 products.
[[nodiscard]] VELUM_API bool CholeskyDecomposition(RMatrix& a);
/// Solves a system after `CholeskyDecomposition`.
VELUM_API void CholeskySolve(const RMatrix& a, RVector& v) noexcept;
/// Solves the same for each column.
VELUM_API void CholeskySolve(const RMatrix& a, RMatrix& b) noexcept;

/// Factors a symmetric matrix into L times a diagonal times the transpose of L. The diagonal
/// overwrites that of `a`, and L, whose own diagonal is all ones, what is below it; the upper
/// triangle is neither read nor written. Rows are not exchanged: the matrix need not be definite,
/// but pivots may come out singular, or small and lose accuracy.
///
/// - A singular pivot: false.
///
/// *Cost:* n^3 / 6 products.
[[nodiscard]] VELUM_API bool SymmetricDecomposition(RMatrix& a);
/// Solves a system after `SymmetricDecomposition`.
VELUM_API void SymmetricSolve(const RMatrix& a, RVector& v) noexcept;
/// Solves the same for each column.
VELUM_API void SymmetricSolve(const RMatrix& a, RMatrix& b) noexcept;

/// Factors a symmetric matrix, of which both triangles are read: with rows and columns exchanged by
/// a permutation P, P a P' = L T L'. T is tridiagonal; L has ones on the diagonal, zeros below the
/// first of them, and elsewhere nothing beyond 1 in absolute value, but for columns where T falls
/// into two parts: any numbers are right there. In `a` then stand
///
/// - on the diagonal and right above it those of T,
/// - below the diagonal L,
/// - in row 0 the permutation, from column 2 on: for each such j, in their order, the rows and the
///   columns j - 1 and a(0, j) were exchanged.
///
/// *Cost:* n^3 / 6 products. *Source:* J. O. Aasen, On the reduction of a symmetric matrix to
/// tridiagonal form, 1971.
VELUM_API void AasenDecomposition(RMatrix& a);

}  // namespace vlm

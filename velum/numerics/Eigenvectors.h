#pragma once

/// \file
/// Eigenvalues and eigenvectors of symmetric matrices, and systems solved by them.
///
///     vlm::RMatrix a;
///     vlm::Initialize(a, "2,1;1,2");
///     vlm::RVector s;
///     bool isThere = vlm::CyclicJacobi(a, s);  // s is (3, 1), the columns of a their vectors
///
/// Parts of a right-hand side whose eigenvalue is at most 1e-9 of the largest are dropped: a system
/// that is singular, or nearly so, has the shortest solution and not a failure.
///
/// What holds for all solvers is told in Solvers.h.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

namespace vlm {

/// Finds eigenvalues and eigenvectors of a symmetric matrix, of which the upper triangle is read.
/// `s` gets the eigenvalues by decreasing absolute value, equal ones in the order of the diagonal;
/// the columns of `a` become their vectors.
///
/// - What is off the diagonal does not fall below 1e-16 of its size in 99 sweeps, or is not finite:
///   false; `a` and `s` are what the sweeps left, with NaN at the end.
/// - A matrix that is diagonal already, or becomes so exactly: true.
///
/// *Cost:* 20 to 35 sweeps, each of which rotates about n^3 / 3 pairs of elements. *Source:* C. G.
/// J. Jacobi, 1846.
[[nodiscard]] VELUM_API bool CyclicJacobi(RMatrix& a, RVector& s);

/// Solves a symmetric system by the eigenvectors `v`, in columns, and the eigenvalues `s` that
/// `CyclicJacobi` gives.
VELUM_API void SVDSolve(const RMatrix& v, const RVector& s, RVector& x);
/// Solves the same for each column.
VELUM_API void SVDSolve(const RMatrix& v, const RVector& s, RMatrix& x);

/// Solves a symmetric system, of which the upper triangle is read, by its eigenvectors. `x` may be
/// `b`.
///
/// - `CyclicJacobi` fails: false; `x` is what it was.
[[nodiscard]] VELUM_API bool GeneralizedSolve(const RMatrix& a, const RVector& b, RVector& x);

/// Solves a x + b' y = c and b x = 0, for a symmetric `a`, by eigenvectors of `a` and then of b
/// times the inverse of a times b'. `x` and `y` are sized.
///
/// - `CyclicJacobi` fails, or `b` is one row and the second matrix singular: false.
[[nodiscard]] VELUM_API bool AlternateSolve(const RMatrix& a, const RMatrix& b, const RVector& c,
                                            RVector& x, RVector& y);
/// Solves the same for each column of `c`, by eigenvectors of the whole system: for an `a` that is
/// singular as well.
///
/// - `CyclicJacobi` fails: false; `x` and `y` are what they were.
[[nodiscard]] VELUM_API bool AlternateSolve(const RMatrix& a, const RMatrix& b, const RMatrix& c,
                                            RMatrix& x, RMatrix& y);

}  // namespace vlm

#pragma once

/// \file
/// Symmetric matrices in tridiagonal form, and systems with them.
///
///     vlm::RMatrix a;
///     vlm::Initialize(a, "4,1,2;1,3,0;2,0,5");
///     vlm::RVector d, e, x;
///     vlm::Initialize(x, "1,2,3");
///     vlm::TridiagonalDecomposition(a, d, e);
///     bool isSolved = vlm::TridiagonalSolve(a, d, e, x);
///
/// What holds for all solvers is told in Solvers.h.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

namespace vlm {

/// Solves a system with the symmetric tridiagonal matrix that has `d` on the diagonal and `e`, one
/// element shorter, beside it. `d` and `e` become its factors. Rows are not exchanged.
///
/// - A singular pivot: false; `x` is what it was.
///
/// *Cost:* linear in n.
[[nodiscard]] VELUM_API bool TridiagonalSolve(RVector& d, RVector& e, RVector& x) noexcept;
/// Solves a system with Q T Q', what `TridiagonalDecomposition` gives.
///
/// - A singular pivot: false; `x` is then Q' times what it was.
///
/// *Cost:* 2 n^2 products.
[[nodiscard]] VELUM_API bool TridiagonalSolve(const RMatrix& q, RVector& d, RVector& e, RVector& x);

/// Turns a vector into the reflection I - beta w w' that maps its direction onto the first axis,
/// forwards: the first element becomes beta, and the others those of w, whose first is 1.
///
/// - Nothing beyond the first element, or nothing at all: beta is 0, which is no reflection.
///
/// *Source:* A. S. Householder, Unitary Triangularization of a Nonsymmetric Matrix (1958), in the
/// form of G. H. Golub and C. F. Van Loan, Matrix Computations (1996), algorithm 5.1.1.
VELUM_API void Householder(RVector& v) noexcept;

/// Reduces a symmetric matrix, of which both triangles are read, to Q T Q'. Q overwrites `a`; T has
/// `d` on the diagonal and `e`, one element shorter, beside it. Returns true.
///
/// The elements of `e` but the last one are lengths and not negative. Where a column holds nothing
/// beyond its first element below the diagonal, there is no reflection, and e has that element
/// without its sign: so Q T Q' is `a` with such elements made positive.
///
/// *Cost:* 5 n^3 / 3 products. *Source:* Golub and Van Loan, algorithm 8.3.1.
VELUM_API bool TridiagonalDecomposition(RMatrix& a, RVector& d, RVector& e);

}  // namespace vlm

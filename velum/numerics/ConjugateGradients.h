#pragma once

/// \file
/// Systems with constraints, by conjugate gradients.
///
///     // The least of x'ax / 2 - b'x where the elements of x sum to 0.
///     vlm::RMatrix a, c;
///     vlm::Initialize(a, "2,0,0;0,3,0;0,0,4");
///     vlm::Initialize(c, "1,1,1");
///     vlm::RVector b, x(3), multipliers;
///     vlm::Initialize(b, "1,0,0");
///     bool isSolved = vlm::CPDSolve(a, c, b, x, multipliers);
///
/// What holds for all solvers is told in Solvers.h.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

namespace vlm {

/// Projects `x` onto the null space of `c`: takes from it the part that is made of the rows of `c`.
/// `l` is the Cholesky factor of c times its transpose. `work` gets the coefficients of that part.
VELUM_API void CPDProject(const RMatrix& c, const RMatrix& l, RVector& x, RVector& work);

/// Solves a x + c' work = b for an x with c x = 0, by conjugate gradients from the `x` that the
/// caller gives. `a` is symmetric, and positive definite where c x = 0: a matrix that is
/// conditionally positive definite. `work` gets one element for each row of `c`.
///
/// The end is reached when what the projected residual leaves, as a sum of squares, falls below
/// 1e-18 times that of `b`, or epsilon if that is more.
///
/// - Rows of `c` that depend on each other, more rows than columns among them: false.
/// - An end that is not reached after 8 rounds of as many steps as there are degrees of freedom:
///   false.
/// - NaN in any operand: false.
///
/// *Cost:* n^2 products for each step, of which there are at most 8 n. *Source:* M. R. Hestenes and
/// E. Stiefel, Methods of Conjugate Gradients for Solving Linear Systems (1952), with the residual
/// projected in each step.
[[nodiscard]] VELUM_API bool CPDSolve(const RMatrix& a, const RMatrix& c, const RVector& b,
                                      RVector& x, RVector& work);

}  // namespace vlm

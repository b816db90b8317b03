#pragma once

/// \file
/// Least squares.
///
///     vlm::RMatrix a;  // a line through three points
///     vlm::Initialize(a, "1,0;1,1;1,2");
///     vlm::RVector b, x(2);
///     vlm::Initialize(b, "1,2,6");
///     bool isSolved = vlm::MGSLeastSquares(a, x, b);  // (0.5, 2.5)
///
/// What holds for all solvers is told in Solvers.h.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

namespace vlm {

/// Finds the `x` for which a x comes nearest to `b`, by the modified method of Gram and Schmidt.
/// `a` becomes a matrix of orthonormal columns, and `b` the residual. `x` has as many elements as
/// `a` columns already.
///
/// - A column for which the columns before it leave a sum of squares below epsilon: false. Those
///   before it are done then.
/// - Columns that nearly depend on each other: the worse their condition, the less orthogonal is
///   what is left in `b`; `x` is as good as that of other methods.
///
/// *Cost:* m n^2 products for m rows and n columns. *Source:* Å. Björck, Solving Linear Least
/// Squares Problems by Gram-Schmidt Orthogonalization, BIT 7 (1967).
[[nodiscard]] VELUM_API bool MGSLeastSquares(RMatrix& a, RVector& x, RVector& b);
/// Does the same for each column of `b`, which leads to the same column of `x`. `x` has its size
/// already.
[[nodiscard]] VELUM_API bool MGSLeastSquares(RMatrix& a, RMatrix& x, RMatrix& b);

}  // namespace vlm

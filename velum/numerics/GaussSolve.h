#pragma once

/// \file
/// Systems with any square matrix, and small ones.
///
///     vlm::RMatrix a;
///     vlm::Initialize(a, "0,2;1,1");
///     vlm::RVector b;
///     vlm::Initialize(b, "4,5");
///     bool isSolved = vlm::GaussSolve(a, b);  // (3, 2)
///
/// What holds for all solvers is told in Solvers.h.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

namespace vlm {

/// Solves a system by elimination with exchanges of rows: the pivot is the element of its column
/// that has the largest absolute value, the first of equal ones. `a` is used up.
///
/// - A singular pivot: false.
///
/// *Cost:* n^3 / 3 products.
[[nodiscard]] VELUM_API bool GaussSolve(RMatrix& a, RVector& b);

/// Solves a system of 3 equations by Cramer's rule. `x` has 3 elements already, and may be `b`.
///
/// - A determinant below `SUKOSHI`, such as every negative one: false; `x` is what it was. Exchange
///   two equations to change its sign.
[[nodiscard]] VELUM_API bool Solve3x3(const RMatrix& a, const RVector& b, RVector& x) noexcept;

}  // namespace vlm

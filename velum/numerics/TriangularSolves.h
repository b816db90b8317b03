#pragma once

/// \file
/// Solves with a diagonal, or with a triangle, of a matrix.
///
///     vlm::RMatrix l;
///     vlm::Initialize(l, "2,0;1,4");
///     vlm::RVector v;
///     vlm::Initialize(v, "2,9");
///     vlm::ForwardElimination(l, v);  // (1, 2)
///
/// A triangle is always the lower one: what stands above the diagonal is never read.
///
/// *Cost:* n^2 / 2 products for each right-hand side, n for a diagonal. What holds for all solvers
/// is told in Solvers.h.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

namespace vlm {

/// Divides by the diagonal of `a`. False at the first singular element; those before it are
/// divided then.
VELUM_API bool DiagonalSolve(const RMatrix& a, RVector& v) noexcept;
/// Divides each column by the diagonal of `a`.
VELUM_API bool DiagonalSolve(const RMatrix& a, RMatrix& b) noexcept;

/// Solves L x = v, where L is the lower triangle of `a` with its diagonal. False at the first
/// singular element of the diagonal.
VELUM_API bool ForwardElimination(const RMatrix& a, RVector& v) noexcept;
/// Solves the same for each column.
VELUM_API bool ForwardElimination(const RMatrix& a, RMatrix& b) noexcept;

/// Solves for the transpose of that L. False at the last singular element of the diagonal.
VELUM_API bool BackSubstitution(const RMatrix& a, RVector& v) noexcept;
/// Solves the same for each column.
VELUM_API bool BackSubstitution(const RMatrix& a, RMatrix& b) noexcept;

/// Solves L x = v, where L is the lower triangle of `a` with ones on the diagonal.
VELUM_API void UnitForwardElimination(const RMatrix& a, RVector& v) noexcept;
/// Solves the same for each column.
VELUM_API void UnitForwardElimination(const RMatrix& a, RMatrix& b) noexcept;

/// Solves for the transpose of that L.
VELUM_API void UnitBackSubstitution(const RMatrix& a, RVector& v) noexcept;
/// Solves the same for each column.
VELUM_API void UnitBackSubstitution(const RMatrix& a, RMatrix& b) noexcept;

}  // namespace vlm

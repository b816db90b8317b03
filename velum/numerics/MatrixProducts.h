#pragma once

/// \file
/// Products of vectors and matrices, and the transpose.
///
///     vlm::RMatrix a, b, c;
///     vlm::Initialize(a, "1,2;3,4");
///     vlm::Initialize(b, "0,1;1,0");
///     vlm::Product(a, b, c);  // (2 1) over (4 3)
///
/// An inner product has the transpose of its first operand, an outer product that of its second.
/// Each element of a product is one sum in the order of the indices: the fast ways, by blocks and
/// with several elements side by side, have the same bits as the plain loops.
///
/// What holds for all functions on matrices is told in Matrices.h.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

namespace vlm {

/// Returns the dot product, over the length of `v`.
[[nodiscard]] VELUM_API double DotProduct(const RVector& v, const RVector& w) noexcept;
/// Writes the dot product, over the length of `v`.
VELUM_API void InnerProduct(const RVector& v, const RVector& w, double& out) noexcept;
/// Writes the matrix of all products of an element of `v`, its rows, and one of `w`, its columns.
VELUM_API void OuterProduct(const RVector& v, const RVector& w, RMatrix& out);

/// Writes `a` times `v`.
VELUM_API void Product(const RMatrix& a, const RVector& v, RVector& out);
/// Sets `v` to `a` times `v`.
VELUM_API void Product(const RMatrix& a, RVector& v);
/// Writes the transpose of `a`, times `v`.
VELUM_API void InnerProduct(const RMatrix& a, const RVector& v, RVector& out);
/// Sets `v` to the transpose of `a`, times `v`.
VELUM_API void InnerProduct(const RMatrix& a, RVector& v);

/// Writes `a` times `b`.
VELUM_API void Product(const RMatrix& a, const RMatrix& b, RMatrix& out);
/// Sets `a` to `a` times `b`.
VELUM_API void Product(RMatrix& a, const RMatrix& b);
/// Writes the transpose of `a`, times `b`.
VELUM_API void InnerProduct(const RMatrix& a, const RMatrix& b, RMatrix& out);
/// Sets `a` to the transpose of `a`, times `b`.
VELUM_API void InnerProduct(RMatrix& a, const RMatrix& b);
/// Writes `a` times the transpose of `b`.
VELUM_API void OuterProduct(const RMatrix& a, const RMatrix& b, RMatrix& out);
/// Sets `a` to `a` times the transpose of `b`.
VELUM_API void OuterProduct(RMatrix& a, const RMatrix& b);

/// Returns the transpose of `u`, times `a`, times `v`: the sum over the rows of `a` of the element
/// of `u` times the dot product of the row and `v`.
///
/// - An empty `u`: 0.
[[nodiscard]] VELUM_API double QuadraticProduct(const RVector& u, const RMatrix& a,
                                                const RVector& v) noexcept;
/// Writes what the form above returns.
VELUM_API void QuadraticProduct(const RVector& u, const RMatrix& a, const RVector& v,
                                double& out) noexcept;

/// Writes the transpose.
VELUM_API void Transpose(const RMatrix& a, RMatrix& out);
/// Transposes `a`.
VELUM_API void Transpose(RMatrix& a);

}  // namespace vlm

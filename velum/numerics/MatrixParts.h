#pragma once

/// \file
/// Rows, columns, diagonals and blocks: taken out, put in, and joined.
///
///     vlm::RMatrix a, b;
///     vlm::Initialize(a, "1,2;3,4");
///     vlm::RVector v;
///     vlm::ExtractCol(a, 1, v);          // (2, 4)
///     vlm::ConcatenateCols(a, v, b);     // (1 2 2) over (3 4 4)
///
/// What holds for all functions on matrices is told in Matrices.h.

#include <velum/core/Api.h>
#include <velum/numerics/Forward.h>

namespace vlm {

/// Copies row `i` into a vector.
///
/// - An empty `a`: the result is empty.
VELUM_API void ExtractRow(const RMatrix& a, unsigned i, RVector& out);
/// Copies column `j` into a vector.
///
/// - An empty `a`: the result is empty.
VELUM_API void ExtractCol(const RMatrix& a, unsigned j, RVector& out);
/// Copies the main diagonal into a vector.
///
/// - An empty `a`: the result is empty.
VELUM_API void ExtractDiagonal(const RMatrix& a, RVector& out);

/// Copies as many elements of `v` as a row has into row `i`.
VELUM_API void AssignRow(const RVector& v, unsigned i, RMatrix& a) noexcept;
/// Copies all elements of `v` into column `j`, from its top.
VELUM_API void AssignCol(const RVector& v, unsigned j, RMatrix& a) noexcept;
/// Copies as many elements of `v` as the main diagonal has into that diagonal.
VELUM_API void AssignDiagonal(const RVector& v, RMatrix& a) noexcept;

/// Appends the elements of `w` to `v`.
VELUM_API void Concatenate(RVector& v, const RVector& w);
/// Writes the elements of `v`, then those of `w`.
VELUM_API void Concatenate(const RVector& v, const RVector& w, RVector& out);

/// Writes `a` with a further last column, `v`. The number of rows is that of `a`.
///
/// - An empty `a`: the result is empty.
VELUM_API void ConcatenateCols(const RMatrix& a, const RVector& v, RMatrix& out);
/// Writes `a` with a further first column, `v`. The number of rows is that of `a`.
///
/// - An empty `a`: the result is empty.
VELUM_API void ConcatenateCols(const RVector& v, const RMatrix& a, RMatrix& out);
/// Writes `a` and, to the right of it, `b`. The number of rows is that of `a`.
///
/// - An empty `a`: the result is empty.
VELUM_API void ConcatenateCols(const RMatrix& a, const RMatrix& b, RMatrix& out);
/// Gives `a` a further last column, `v`.
///
/// - An empty `a`: the result is empty.
VELUM_API void ConcatenateCols(RMatrix& a, const RVector& v);
/// Gives `a` a further first column, `v`.
///
/// - An empty `a`: the result is empty.
VELUM_API void ConcatenateCols(const RVector& v, RMatrix& a);
/// Gives `a` the columns of `b` as further last ones.
///
/// - An empty `a`: the result is empty.
VELUM_API void ConcatenateCols(RMatrix& a, const RMatrix& b);

/// Writes `a` with a further last row, `v`. The number of columns is that of `a`.
///
/// - An empty `a`: the result is empty.
VELUM_API void ConcatenateRows(const RMatrix& a, const RVector& v, RMatrix& out);
/// Writes `a` with a further first row, `v`. The number of columns is that of `a`.
///
/// - An empty `a`: the result is empty.
VELUM_API void ConcatenateRows(const RVector& v, const RMatrix& a, RMatrix& out);
/// Writes `a` and, below it, `b`. The number of columns is that of `a`.
///
/// - An empty `a`: the result is empty.
VELUM_API void ConcatenateRows(const RMatrix& a, const RMatrix& b, RMatrix& out);
/// Gives `a` a further last row, `v`.
///
/// - An empty `a`: the result is empty.
VELUM_API void ConcatenateRows(RMatrix& a, const RVector& v);
/// Gives `a` a further first row, `v`.
///
/// - An empty `a`: the result is empty.
VELUM_API void ConcatenateRows(const RVector& v, RMatrix& a);
/// Gives `a` the rows of `b` as further last ones.
///
/// - An empty `a`: the result is empty.
VELUM_API void ConcatenateRows(RMatrix& a, const RMatrix& b);

/// Writes the matrix of blocks with `a` and `b` above, `c` and `d` below. It has as many rows as
/// `a` and `c` together, as many columns as `a` and `b` together; `d` begins below the rows of `b`
/// and to the right of the columns of `c`.
VELUM_API void ComposeMatrix(const RMatrix& a, const RMatrix& b, const RMatrix& c, const RMatrix& d,
                             RMatrix& out);
/// Writes the matrix of blocks with `a` and the transpose of `b` above, `b` and `c` below, which is
/// symmetric if `a` and `c` are. It has as many rows as `a` and `b` together; `c` begins at row and
/// column `b.nCols()`.
VELUM_API void ComposeMatrix(const RMatrix& a, const RMatrix& b, const RMatrix& c, RMatrix& out);

}  // namespace vlm

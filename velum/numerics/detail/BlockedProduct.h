#pragma once

/// \file
/// Products of matrices, or of parts of them, block by block.
///
///     // out = a times the transpose of b
///     BlockedProduct(a.nRows(), b.nRows(), a.nCols(), {a.Base(), a.nCols(), 1},
///                    {b.Base(), 1, b.nCols()}, {out.Base(), out.nCols()});

#include <velum/numerics/detail/ProductTile.h>

#include <cstddef>

namespace vlm::detail {

/// A matrix that is read: element (i, j) stands at `first[i * rowStride + j * colStride]`.
struct ProductOperand {
  const double* first;    ///< Element (0, 0).
  std::size_t rowStride;  ///< From a row to the next one.
  std::size_t colStride;  ///< From a column to the next one.
};

/// A matrix that is written: element (i, j) stands at `first[i * rowStride + j]`.
struct ProductTarget {
  double* first;           ///< Element (0, 0).
  std::size_t rowStride;   ///< From a row to the next one.
  bool continues = false;  ///< Sums go on from what is there; otherwise they begin with 0.
};

/// Writes the product of `a`, `rows` by `depth`, and `b`, `depth` by `cols`, which `out` must not
/// overlap. Each element is one sum in the order of the index that runs over the depth, with the
/// bits of the plain loop.
///
/// *Errors:* `std::bad_alloc`, from the room for a copy of parts of the operands, at most 3 MB.
void BlockedProduct(std::size_t rows, std::size_t cols, std::size_t depth, const ProductOperand& a,
                    const ProductOperand& b, const ProductTarget& out);

/// Does the same with one of the functions of ProductTile.h.
void BlockedProduct(std::size_t rows, std::size_t cols, std::size_t depth, const ProductOperand& a,
                    const ProductOperand& b, const ProductTarget& out, TileFunction* tile);

}  // namespace vlm::detail

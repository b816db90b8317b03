#pragma once

/// \file
/// The products of matrices, as the loops that define them.

#include <velum/numerics/RMatrix.h>

namespace vlm::reference {

/// Returns the product of two matrices, each of them transposed or not.
inline RMatrix PlainProduct(const RMatrix& a, bool transposeA, const RMatrix& b, bool transposeB) {
  const unsigned rows = transposeA ? a.nCols() : a.nRows();
  const unsigned cols = transposeB ? b.nRows() : b.nCols();
  const unsigned depth = transposeA ? a.nRows() : a.nCols();
  RMatrix out(rows, cols);
  for (unsigned i = 0; i < out.nRows(); ++i) {
    for (unsigned j = 0; j < out.nCols(); ++j) {
      double sum = 0;
      for (unsigned k = 0; k < depth; ++k) {
        sum += (transposeA ? a(k, i) : a(i, k)) * (transposeB ? b(j, k) : b(k, j));
      }
      out(i, j) = sum;
    }
  }
  return out;
}

}  // namespace vlm::reference

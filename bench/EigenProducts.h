#pragma once

/// \file
/// Products by Eigen, compiled for two instruction sets.
///
///     eigenAvx2.product(n, a, b, out);

/// Products of square matrices of n rows, row by row; `b` and `out` may be vectors.
struct EigenProducts {
  /// `out` has its room already.
  using Function = void(unsigned n, const double* a, const double* b, double* out);

  Function* product;                 ///< a times b
  Function* innerProduct;            ///< The transpose of a, times b
  Function* outerProduct;            ///< a times the transpose of b
  Function* productWithVector;       ///< a times the vector b
  Function* innerProductWithVector;  ///< The transpose of a, times the vector b
};

extern const EigenProducts eigenAvx2;  ///< With AVX2 and without fused multiply-add, as Velum.
extern const EigenProducts eigenFma;   ///< With fused multiply-add: its sums have other bits.

#pragma once

// Products of square matrices by Eigen, compiled for AVX2 and for AVX2 with fused multiply-add.
// Matrices are n by n, row by row.

#define VELUM_PEER_PRODUCTS(peer)                                                         \
  namespace peer {                                                                        \
  void Product(unsigned n, const double* a, const double* b, double* out);                \
  void InnerProduct(unsigned n, const double* a, const double* b, double* out);           \
  void OuterProduct(unsigned n, const double* a, const double* b, double* out);           \
  void ProductWithVector(unsigned n, const double* a, const double* v, double* out);      \
  void InnerProductWithVector(unsigned n, const double* a, const double* v, double* out); \
  }

VELUM_PEER_PRODUCTS(eigen_avx2)
VELUM_PEER_PRODUCTS(eigen_fma)

#undef VELUM_PEER_PRODUCTS

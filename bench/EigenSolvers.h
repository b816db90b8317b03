#pragma once

/// \file
/// Decompositions and solvers of Eigen, compiled for two instruction sets.
///
///     solversAvx2.cholesky(n, n, a, b);

/// What is done with a matrix of `rows` by `cols`, row by row, and a right-hand side: both may be
/// overwritten, and the solution stands at the beginning of `b`.
struct EigenSolvers {
  using Function = void(unsigned rows, unsigned cols, double* a, double* b);

  Function* cholesky;      ///< LLT, without a right-hand side
  Function* gauss;         ///< PartialPivLU
  Function* leastSquares;  ///< HouseholderQR
  Function* symmetric;     ///< LDLT, which exchanges rows, without a right-hand side
  Function* tridiagonal;   ///< Tridiagonalization and its orthogonal matrix
  Function* eigenvectors;  ///< SelfAdjointEigenSolver
};

extern const EigenSolvers solversAvx2;  ///< With AVX2 and without fused multiply-add, as Velum.
extern const EigenSolvers solversFma;   ///< With fused multiply-add.

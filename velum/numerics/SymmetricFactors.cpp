#include <velum/numerics/SymmetricFactors.h>

#include <velum/geometry/Constants.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>
#include <velum/numerics/TriangularSolves.h>
#include <velum/numerics/detail/BlockedProduct.h>
#include <velum/numerics/detail/Singular.h>
#include <velum/numerics/detail/SolverKernels.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace vlm {

namespace {

// The columns that are factored together.
constexpr unsigned kBlock = 48;

enum class Form { kCholesky, kWithDiagonal };

// What the rows of the block at `left` are multiplied with, for the columns before it: themselves,
// or their products with the diagonal.
template <Form kForm>
detail::ProductOperand FactorsOf(const RMatrix& a, unsigned left, unsigned width,
                                 std::vector<double>& scaled) noexcept {
  if constexpr (kForm == Form::kCholesky) return {a.Base(left, 0), a.nCols(), 1};
  for (unsigned j = 0; j < width; ++j) {
    for (unsigned k = 0; k < left; ++k) {
      scaled[std::size_t{j} * left + k] = a(left + j, k) * a(k, k);
    }
  }
  return {scaled.data(), left, 1};
}

// The pivot that a sum leaves. False if it is too small.
template <Form kForm>
bool TakePivot(double& pivot) noexcept {
  if constexpr (kForm == Form::kWithDiagonal) return !detail::IsSingular(pivot);
  if (pivot < EPSILON) return false;
  pivot = std::sqrt(pivot);
  return true;
}

// Row j of `sums` holds the sums that belong to column j of a block, for the rows of `a` from the
// block on. Those over the columns before the block are one product; each column of the block adds
// its part when it is done, in the same order.
template <Form kForm>
bool Factor(RMatrix& a) {
  const unsigned n = a.nRows();
  const detail::SolverKernelSet& kernels = detail::SolverKernels();
  const unsigned most = std::min(n, kBlock);
  std::vector<double> sums(std::size_t{most} * n);
  std::vector<double> column(n);
  std::vector<double> scaled(kForm == Form::kWithDiagonal ? sums.size() : 0);
  for (unsigned left = 0; left < n; left += kBlock) {
    const unsigned width = std::min(kBlock, n - left);
    const unsigned rows = n - left;
    detail::BlockedProduct(width, rows, left, FactorsOf<kForm>(a, left, width, scaled),
                           {a.Base(left, 0), 1, n}, {sums.data(), rows});
    for (unsigned j = 0; j < width; ++j) {
      double* const sumsOfJ = sums.data() + std::size_t{j} * rows;
      double* const elements = a.Base(left, left + j);
      for (std::size_t i = j; i < rows; ++i) column[i] = elements[i * n] - sumsOfJ[i];
      const bool isDone = TakePivot<kForm>(column[j]);
      const double pivot = column[j];
      for (std::size_t i = j + 1; isDone && i < rows; ++i) column[i] /= pivot;
      for (std::size_t i = j; i < rows; ++i) elements[i * n] = column[i];
      if (!isDone) return false;
      for (unsigned k = j + 1; k < width; ++k) {
        const double factor = kForm == Form::kCholesky ? column[k] : column[k] * pivot;
        kernels.addMultiple(rows - k, factor, column.data() + k,
                            sums.data() + std::size_t{k} * rows + k);
      }
    }
  }
  return true;
}

}  // namespace

bool CholeskyDecomposition(RMatrix& a) { return Factor<Form::kCholesky>(a); }

void CholeskySolve(const RMatrix& a, RVector& v) noexcept {
  ForwardElimination(a, v);
  BackSubstitution(a, v);
}

void CholeskySolve(const RMatrix& a, RMatrix& b) noexcept {
  ForwardElimination(a, b);
  BackSubstitution(a, b);
}

bool SymmetricDecomposition(RMatrix& a) { return Factor<Form::kWithDiagonal>(a); }

void SymmetricSolve(const RMatrix& a, RVector& v) noexcept {
  UnitForwardElimination(a, v);
  DiagonalSolve(a, v);
  UnitBackSubstitution(a, v);
}

void SymmetricSolve(const RMatrix& a, RMatrix& b) noexcept {
  UnitForwardElimination(a, b);
  DiagonalSolve(a, b);
  UnitBackSubstitution(a, b);
}

}  // namespace vlm

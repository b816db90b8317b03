#include <velum/numerics/SymmetricFactors.h>

#include <velum/geometry/Constants.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>
#include <velum/numerics/detail/SolverKernels.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace vlm {

namespace {

// Works on the transpose, so that what the text of the method calls a column lies in a row: sums
// over the columns are then made for all rows side by side.
class Aasen {
 public:
  explicit Aasen(RMatrix& a);

  void Run() noexcept;
  void Give(RMatrix& a) const noexcept;

 private:
  double& Row(unsigned i, unsigned j) noexcept { return turned_(j, i); }
  void TakeRowOfFactor(unsigned j) noexcept;
  void FindDiagonal(unsigned j) noexcept;
  void FindColumn(unsigned j) noexcept;
  [[nodiscard]] unsigned LargestFrom(unsigned first) const noexcept;
  void Exchange(unsigned p, unsigned q) noexcept;

  unsigned n_;
  RMatrix turned_;  // column j of the matrix below its diagonal becomes column j + 1 of L
  RVector l_;       // the row of L in hand
  RVector h_;       // its product with T
  RVector alpha_;   // the diagonal of T
  RVector beta_;    // what is beside it, from 1 on
  RVector v_;
  RVector sums_;
  RVector pivots_;
};

Aasen::Aasen(RMatrix& a)
    : n_(a.nRows()),
      turned_(n_, n_),
      l_(n_),
      h_(n_),
      alpha_(n_),
      beta_(n_),
      v_(n_),
      sums_(n_),
      pivots_(n_) {
  for (unsigned i = 0; i < n_; ++i) {
    for (unsigned j = 0; j < n_; ++j) Row(i, j) = a(i, j);
  }
}

void Aasen::Run() noexcept {
  for (unsigned j = 0; j < n_; ++j) {
    TakeRowOfFactor(j);
    FindDiagonal(j);
    if (j + 1 == n_) return;
    FindColumn(j);
    const unsigned q = LargestFrom(j + 1);
    pivots_(j) = q;
    std::swap(v_(j + 1), v_(q));
    Exchange(j + 1, q);
    beta_(j + 1) = v_(j + 1);
    if (j + 2 < n_ && std::abs(v_(j + 1)) > EPSILON) {
      for (unsigned i = j + 2; i < n_; ++i) Row(i, j) = v_(i) / v_(j + 1);
    }
  }
}

void Aasen::TakeRowOfFactor(unsigned j) noexcept {
  l_(0) = 0;
  for (unsigned k = 1; k < j; ++k) l_(k) = Row(j, k - 1);
  l_(j) = 1;
}

void Aasen::FindDiagonal(unsigned j) noexcept {
  if (j == 0) {
    h_(0) = alpha_(0) = Row(0, 0);
    return;
  }
  double sum = 0;
  for (unsigned k = 1; k < j; ++k) {
    h_(k) = beta_(k + 1) * l_(k + 1) + alpha_(k) * l_(k) + beta_(k) * l_(k - 1);
    sum += l_(k) * h_(k);
  }
  h_(j) = Row(j, j) - sum;
  alpha_(j) = h_(j) - l_(j - 1) * beta_(j);
}

// What is left of column j below the diagonal when the columns of L before are taken from it.
void Aasen::FindColumn(unsigned j) noexcept {
  const detail::SolverKernelSet& kernels = detail::SolverKernels();
  const unsigned first = j + 1;
  const std::size_t count = n_ - first;
  std::fill_n(sums_.Base(first), count, 0.0);
  kernels.addMultiples(count, j, h_.Base(1), turned_.Base(0, first), n_, sums_.Base(first));
  const double* const column = turned_.Base(j, 0);
  for (unsigned i = first; i < n_; ++i) v_(i) = column[i] - sums_(i);
}

unsigned Aasen::LargestFrom(unsigned first) const noexcept {
  unsigned largest = first;
  for (unsigned i = first + 1; i < n_; ++i) {
    if (std::abs(v_(i)) > std::abs(v_(largest))) largest = i;
  }
  return largest;
}

// Rows across all columns, and then columns in the rows from p on.
void Aasen::Exchange(unsigned p, unsigned q) noexcept {
  if (p == q) return;
  for (unsigned j = 0; j < n_; ++j) std::swap(Row(p, j), Row(q, j));
  std::swap_ranges(turned_.Base(p, p), turned_.Base(p, 0) + n_, turned_.Base(q, p));
}

void Aasen::Give(RMatrix& a) const noexcept {
  for (unsigned i = 0; i < n_; ++i) {
    double* const row = a.Base(i, 0);
    if (i > 0) row[0] = 0;
    for (unsigned j = 1; j < i; ++j) row[j] = turned_(j - 1, i);
    row[i] = alpha_(i);
    if (i + 1 < n_) row[i + 1] = beta_(i + 1);
    for (unsigned j = i + 2; j < n_; ++j) row[j] = i == 0 ? pivots_(j - 2) : turned_(j, i);
  }
}

}  // namespace

void AasenDecomposition(RMatrix& a) {
  if (a.empty()) return;
  Aasen aasen(a);
  aasen.Run();
  aasen.Give(a);
}

}  // namespace vlm

#include <velum/numerics/GaussSolve.h>

#include <velum/geometry/Constants.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>
#include <velum/numerics/detail/BlockedProduct.h>
#include <velum/numerics/detail/DotKernels.h>
#include <velum/numerics/detail/Singular.h>
#include <velum/numerics/detail/SolverKernels.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace vlm {

namespace {

// The columns that are eliminated together.
constexpr unsigned kBlock = 32;

// Elimination by blocks: inside of a block column by column; to the right of it, first the rows of
// its pivots and then all others at once. Each element has its subtractions in the order of the
// columns.
class Elimination {
 public:
  Elimination(RMatrix& a, RVector& b)
      : a_(a),
        b_(b),
        n_(b.Length()),
        factors_(n_, std::min(n_, kBlock)),
        kernels_(detail::SolverKernels()) {}

  [[nodiscard]] bool Run();

 private:
  [[nodiscard]] bool ExchangeRows(unsigned left, unsigned k) noexcept;
  void EliminateInBlock(unsigned left, unsigned end, unsigned k) noexcept;
  void EliminateToTheRight(unsigned left, unsigned end, unsigned done);

  RMatrix& a_;
  RVector& b_;
  unsigned n_;
  RMatrix factors_;  // for each row, what it adds of the block's pivots' rows: less than 0 times m
  const detail::SolverKernelSet& kernels_;
};

bool Elimination::Run() {
  for (unsigned left = 0; left < n_; left += kBlock) {
    const unsigned end = std::min(left + kBlock, n_);
    for (unsigned k = left; k < end; ++k) {
      if (!ExchangeRows(left, k)) {
        EliminateToTheRight(left, end, k - left);
        return false;
      }
      EliminateInBlock(left, end, k);
    }
    EliminateToTheRight(left, end, end - left);
  }
  return true;
}

bool Elimination::ExchangeRows(unsigned left, unsigned k) noexcept {
  unsigned pivot = k;
  double largest = std::abs(a_(k, k));
  for (unsigned i = k + 1; i < n_; ++i) {
    const double x = std::abs(a_(i, k));
    if (!(x > largest)) continue;
    largest = x;
    pivot = i;
  }
  if (detail::IsSingular(largest)) return false;
  if (pivot == k) return true;
  std::swap_ranges(a_.Base(k, k), a_.Base(k, 0) + n_, a_.Base(pivot, k));
  std::swap_ranges(factors_.Base(k, 0), factors_.Base(k, k - left), factors_.Base(pivot, 0));
  std::swap(b_(k), b_(pivot));
  return true;
}

void Elimination::EliminateInBlock(unsigned left, unsigned end, unsigned k) noexcept {
  const double* const pivotRow = a_.Base(k, 0);
  const double pivot = pivotRow[k];
  const double right = b_(k);
  for (unsigned i = k + 1; i < n_; ++i) {
    double* const row = a_.Base(i, 0);
    const double m = row[k] / pivot;
    factors_(i, k - left) = -m;
    kernels_.addMultiple(end - k - 1, -m, pivotRow + k + 1, row + k + 1);
    b_(i) -= m * right;
  }
}

void Elimination::EliminateToTheRight(unsigned left, unsigned end, unsigned done) {
  if (end == n_ || done == 0) return;
  const std::size_t cols = n_ - end;
  for (unsigned k = left; k < left + done; ++k) {
    for (unsigned i = k + 1; i < end; ++i) {
      kernels_.addMultiple(cols, factors_(i, k - left), a_.Base(k, end), a_.Base(i, end));
    }
  }
  detail::BlockedProduct(n_ - end, cols, done, {factors_.Base(end, 0), factors_.nCols(), 1},
                         {a_.Base(left, end), a_.nCols(), 1},
                         {a_.Base(end, end), a_.nCols(), true});
}

}  // namespace

bool GaussSolve(RMatrix& a, RVector& b) {
  const unsigned n = b.Length();
  if (!Elimination(a, b).Run()) return false;
  for (unsigned i = n; i-- > 0;) {
    b(i) = (b(i) - detail::Dot(n - i - 1, a.Base(i, 0) + i + 1, b.Base(i) + 1)) / a(i, i);
  }
  return true;
}

bool Solve3x3(const RMatrix& a, const RVector& b, RVector& x) noexcept {
  if (a.empty()) return true;
  const auto minor = [&a](unsigned row, unsigned col) {
    const unsigned r = (row + 1) % 3;
    const unsigned s = (row + 2) % 3;
    const unsigned c = (col + 1) % 3;
    const unsigned d = (col + 2) % 3;
    return a(r, c) * a(s, d) - a(r, d) * a(s, c);
  };
  const double det = a(0, 0) * minor(0, 0) + a(1, 0) * minor(1, 0) + a(2, 0) * minor(2, 0);
  if (det < SUKOSHI) return false;
  const double right[] = {b(0), b(1), b(2)};
  for (unsigned i = 0; i < 3; ++i) {
    x(i) = (minor(0, i) * right[0] + minor(1, i) * right[1] + minor(2, i) * right[2]) / det;
  }
  return true;
}

}  // namespace vlm

#include <velum/numerics/MatrixNorms.h>

#include <velum/numerics/MatrixFill.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>
#include <velum/numerics/detail/DotKernels.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace vlm {

namespace {

double AbsoluteSum(const double* first, const double* last, double sum = 0) noexcept {
  for (; first != last; ++first) sum += std::abs(*first);
  return sum;
}

// A comparison with NaN is false, so that NaN never becomes the largest.
double Larger(double largest, double x) noexcept { return x > largest ? x : largest; }

double RootOfSquares(std::ptrdiff_t count, const double* elements) noexcept {
  const double sum = detail::SumOfSquares(static_cast<std::size_t>(count), elements);
  return sum > 0 ? std::sqrt(sum) : 0;
}

double SumAbove(const RMatrix& a) noexcept {
  double sum = 0;
  for (unsigned i = 0; i + 1 < a.nCols() && i < a.nRows(); ++i) {
    const double* const row = a.Base(i, 0);
    sum = AbsoluteSum(row + i + 1, row + a.nCols(), sum);
  }
  return sum;
}

}  // namespace

double L1Norm(const RVector& v) noexcept { return AbsoluteSum(v.begin(), v.end()); }

double L2Norm(const RVector& v) noexcept { return RootOfSquares(v.end() - v.begin(), v.begin()); }

double LInfNorm(const RVector& v) noexcept {
  double largest = 0;
  for (const double x : v) largest = Larger(largest, std::abs(x));
  return largest;
}

double FNorm(const RMatrix& a) noexcept { return RootOfSquares(a.end() - a.begin(), a.begin()); }

// Several columns at a time, so that what is read lies side by side.
double L1Norm(const RMatrix& a) noexcept {
  constexpr unsigned kColumns = 64;
  double largest = 0;
  for (unsigned first = 0; first < a.nCols(); first += kColumns) {
    const unsigned count = std::min(kColumns, a.nCols() - first);
    std::array<double, kColumns> sums{};
    for (unsigned i = 0; i < a.nRows(); ++i) {
      const double* const row = a.Base(i, first);
      for (unsigned j = 0; j < count; ++j) sums[j] += std::abs(row[j]);
    }
    for (const double sum : sums) largest = Larger(largest, sum);
  }
  return largest;
}

double LInfNorm(const RMatrix& a) noexcept {
  double largest = 0;
  for (unsigned i = 0; i < a.nRows(); ++i) {
    largest = Larger(largest, AbsoluteSum(a.Base(i, 0), a.Base(i, 0) + a.nCols()));
  }
  return largest;
}

double Trace(const RMatrix& a) noexcept {
  double sum = 0;
  for (unsigned i = 0; i < a.nRows(); ++i) sum += a(i, i);
  return sum;
}

double Off(const RMatrix& a) noexcept {
  double sum = a.nRows() > 1 ? SumAbove(a) : 0;
  for (unsigned i = 1; a.nCols() > 1 && i < a.nRows(); ++i) {
    const double* const row = a.Base(i, 0);
    sum = AbsoluteSum(row, row + std::min(i, a.nCols()), sum);
  }
  return sum;
}

double SymOff(const RMatrix& a) noexcept { return a.nRows() > 1 ? 2 * SumAbove(a) : 0; }

void HSum(const RMatrix& a, RVector& out) {
  out.Resize(a.nRows());
  for (unsigned i = 0; i < a.nRows(); ++i) {
    double sum = 0;
    for (unsigned j = 0; j < a.nCols(); ++j) sum += a(i, j);
    out(i) = sum;
  }
}

void VSum(const RMatrix& a, RVector& out) {
  Zeros(out, a.nCols());
  for (unsigned i = 0; i < a.nRows(); ++i) {
    const double* const row = a.Base(i, 0);
    for (unsigned j = 0; j < a.nCols(); ++j) out(j) += row[j];
  }
}

}  // namespace vlm

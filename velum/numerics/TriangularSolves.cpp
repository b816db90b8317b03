#include <velum/numerics/TriangularSolves.h>

#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>
#include <velum/numerics/detail/DotKernels.h>
#include <velum/numerics/detail/Singular.h>

#include <algorithm>
#include <cstddef>

namespace vlm {

namespace {

using detail::IsSingular;

// Columns of a right-hand side whose sums are made side by side.
constexpr unsigned kSums = 32;

// Subtracts from row i of `b` the sums over the rows from `first` to before `last`, each times its
// factor, which are `stride` apart.
void SubtractSums(RMatrix& b, unsigned i, unsigned first, unsigned last, const double* factors,
                  std::size_t stride) noexcept {
  for (unsigned left = 0; left < b.nCols(); left += kSums) {
    const unsigned width = std::min(kSums, b.nCols() - left);
    double sums[kSums] = {};
    for (unsigned k = first; k < last; ++k) {
      const double factor = factors[(k - first) * stride];
      const double* const row = b.Base(k, left);
      for (unsigned j = 0; j < width; ++j) sums[j] += factor * row[j];
    }
    double* const out = b.Base(i, left);
    for (unsigned j = 0; j < width; ++j) out[j] -= sums[j];
  }
}

void DivideRow(RMatrix& b, unsigned i, double divisor) noexcept {
  for (double* x = b.Base(i, 0); x != b.Base(i, 0) + b.nCols(); ++x) *x /= divisor;
}

template <bool kUnit>
bool Forward(const RMatrix& a, RVector& v) noexcept {
  for (unsigned i = 0; i < v.Length(); ++i) {
    if (!kUnit && IsSingular(a(i, i))) return false;
    v(i) -= detail::Dot(i, a.Base(i, 0), v.Base());
    if (!kUnit) v(i) /= a(i, i);
  }
  return true;
}

template <bool kUnit>
bool Forward(const RMatrix& a, RMatrix& b) noexcept {
  for (unsigned i = 0; i < b.nRows(); ++i) {
    if (!kUnit && IsSingular(a(i, i))) return false;
    SubtractSums(b, i, 0, i, a.Base(i, 0), 1);
    if (!kUnit) DivideRow(b, i, a(i, i));
  }
  return true;
}

template <bool kUnit>
bool Back(const RMatrix& a, RVector& v) noexcept {
  const unsigned n = a.nRows();
  for (unsigned i = n; i-- > 0;) {
    if (!kUnit && IsSingular(a(i, i))) return false;
    if (i + 1 < n) v(i) -= detail::Dot(n - i - 1, v.Base(i + 1), a.Base(i + 1, i), a.nCols());
    if (!kUnit) v(i) /= a(i, i);
  }
  return true;
}

template <bool kUnit>
bool Back(const RMatrix& a, RMatrix& b) noexcept {
  const unsigned n = a.nRows();
  for (unsigned i = n; i-- > 0;) {
    if (!kUnit && IsSingular(a(i, i))) return false;
    if (i + 1 < n) SubtractSums(b, i, i + 1, n, a.Base(i + 1, i), a.nCols());
    if (!kUnit) DivideRow(b, i, a(i, i));
  }
  return true;
}

}  // namespace

bool DiagonalSolve(const RMatrix& a, RVector& v) noexcept {
  for (unsigned i = 0; i < v.Length(); ++i) {
    if (IsSingular(a(i, i))) return false;
    v(i) /= a(i, i);
  }
  return true;
}

bool DiagonalSolve(const RMatrix& a, RMatrix& b) noexcept {
  for (unsigned i = 0; i < b.nRows(); ++i) {
    if (IsSingular(a(i, i))) return false;
    DivideRow(b, i, a(i, i));
  }
  return true;
}

bool ForwardElimination(const RMatrix& a, RVector& v) noexcept { return Forward<false>(a, v); }

bool ForwardElimination(const RMatrix& a, RMatrix& b) noexcept { return Forward<false>(a, b); }

bool BackSubstitution(const RMatrix& a, RVector& v) noexcept { return Back<false>(a, v); }

bool BackSubstitution(const RMatrix& a, RMatrix& b) noexcept { return Back<false>(a, b); }

void UnitForwardElimination(const RMatrix& a, RVector& v) noexcept { Forward<true>(a, v); }

void UnitForwardElimination(const RMatrix& a, RMatrix& b) noexcept { Forward<true>(a, b); }

void UnitBackSubstitution(const RMatrix& a, RVector& v) noexcept { Back<true>(a, v); }

void UnitBackSubstitution(const RMatrix& a, RMatrix& b) noexcept { Back<true>(a, b); }

}  // namespace vlm

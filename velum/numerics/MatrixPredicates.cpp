#include <velum/numerics/MatrixPredicates.h>

#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>

#include <algorithm>
#include <cmath>

namespace vlm {

namespace {

// A NaN is near nothing.
bool AllNear(const double* first, const double* last, double target, double tol) noexcept {
  return std::all_of(first, last, [=](double x) { return std::abs(x - target) <= tol; });
}

bool AllNearOther(const double* first, const double* last, const double* other,
                  double tol) noexcept {
  return std::equal(first, last, other, [=](double x, double y) { return std::abs(x - y) <= tol; });
}

// Tells whether all elements that are `distance` and more from the diagonal are 0, within `tol`.
bool IsZeroBeside(const RMatrix& a, unsigned distance, double tol) noexcept {
  const unsigned n = a.nCols();
  for (unsigned i = 0; i < a.nRows(); ++i) {
    const double* const row = a.Base(i, 0);
    const unsigned left = i < distance ? 0 : i - distance + 1;
    const unsigned right = n - i < distance ? n : i + distance;
    if (!AllNear(row, row + left, 0, tol) || !AllNear(row + right, row + n, 0, tol)) return false;
  }
  return true;
}

}  // namespace

bool IsNull(const RVector& v) noexcept { return v.empty(); }

bool IsNull(const RMatrix& a) noexcept { return a.empty(); }

bool IsSquare(const RMatrix& a) noexcept { return !a.empty() && a.nRows() == a.nCols(); }

bool IsZero(const RVector& v, double tol) noexcept {
  return !v.empty() && AllNear(v.begin(), v.end(), 0.0, tol);
}

bool IsZero(const RMatrix& a, double tol) noexcept {
  return !a.empty() && AllNear(a.begin(), a.end(), 0.0, tol);
}

bool IsEqual(const RVector& v, const RVector& w, double tol) noexcept {
  return !v.empty() && v.Length() == w.Length() && AllNearOther(v.begin(), v.end(), w.begin(), tol);
}

bool IsEqual(const RMatrix& a, const RMatrix& b, double tol) noexcept {
  return !a.empty() && a.nRows() == b.nRows() && a.nCols() == b.nCols() &&
         AllNearOther(a.begin(), a.end(), b.begin(), tol);
}

bool IsSymmetric(const RMatrix& a, double tol) noexcept {
  if (!IsSquare(a)) return false;
  for (unsigned i = 1; i < a.nRows(); ++i) {
    for (unsigned j = 0; j < i; ++j) {
      if (!(std::abs(a(i, j) - a(j, i)) <= tol)) return false;
    }
  }
  return true;
}

bool IsDiagonal(const RMatrix& a, double tol) noexcept {
  return IsSquare(a) && IsZeroBeside(a, 1, tol);
}

bool IsTriDiagonal(const RMatrix& a, double tol) noexcept {
  return IsSquare(a) && IsZeroBeside(a, 2, tol);
}

bool IsIdentity(const RMatrix& a, double tol) noexcept {
  if (!IsDiagonal(a, tol)) return false;
  for (unsigned i = 0; i < a.nRows(); ++i) {
    if (!(std::abs(a(i, i) - 1) <= tol)) return false;
  }
  return true;
}

}  // namespace vlm

#include <velum/numerics/MatrixFill.h>

#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>

#include <algorithm>

namespace vlm {

void Fill(RVector& v, double x) noexcept { std::fill(v.begin(), v.end(), x); }

void Fill(RMatrix& a, double x) noexcept { std::fill(a.begin(), a.end(), x); }

void Ones(RVector& v, unsigned length) {
  v.Resize(length);
  Fill(v, 1);
}

void Ones(RMatrix& a, unsigned rows, unsigned cols) {
  a.Resize(rows, cols);
  Fill(a, 1);
}

void Zeros(RVector& v, unsigned length) {
  v.Resize(length);
  Fill(v, 0);
}

void Zeros(RMatrix& a, unsigned rows, unsigned cols) {
  a.Resize(rows, cols);
  Fill(a, 0);
}

void Unit(RVector& v, unsigned length, unsigned i) {
  Zeros(v, length);
  v(i) = 1;
}

void Eye(RMatrix& a, unsigned rows, unsigned cols) {
  Zeros(a, rows, cols);
  for (unsigned i = 0; i < std::min(a.nRows(), a.nCols()); ++i) a(i, i) = 1;
}

void Initialize(RVector& v, unsigned length, const double* elements) {
  v.Resize(length);
  std::copy_n(elements, length, v.begin());
}

void Initialize(RMatrix& a, unsigned rows, unsigned cols, const double* elements) {
  a.Resize(rows, cols);
  std::copy(elements, elements + (a.end() - a.begin()), a.begin());
}

}  // namespace vlm

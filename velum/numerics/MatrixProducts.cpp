#include <velum/numerics/MatrixProducts.h>

#include <velum/numerics/MatrixFill.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>
#include <velum/numerics/detail/BlockedProduct.h>
#include <velum/numerics/detail/DotKernels.h>

#include <algorithm>
#include <cstddef>

namespace vlm {

namespace {

detail::ProductOperand AsItIs(const RMatrix& m) noexcept { return {m.Base(), m.nCols(), 1}; }

detail::ProductOperand Transposed(const RMatrix& m) noexcept { return {m.Base(), 1, m.nCols()}; }

detail::ProductTarget Into(RMatrix& m) noexcept { return {m.Base(), m.nCols()}; }

}  // namespace

double DotProduct(const RVector& v, const RVector& w) noexcept {
  return detail::Dot(v.Length(), v.Base(), w.Base());
}

void InnerProduct(const RVector& v, const RVector& w, double& out) noexcept {
  out = DotProduct(v, w);
}

void OuterProduct(const RVector& v, const RVector& w, RMatrix& out) {
  out.Resize(v.Length(), w.Length());
  for (unsigned i = 0; i < out.nRows(); ++i) {
    std::transform(w.begin(), w.end(), out.Base(i, 0), [x = v(i)](double y) { return x * y; });
  }
}

// The sums of one row wait for each other: several rows at a time keep the processor busy.
void Product(const RMatrix& a, const RVector& v, RVector& out) {
  constexpr unsigned kRows = 8;
  const unsigned cols = a.nCols();
  out.Resize(a.nRows());
  unsigned i = 0;
  for (; a.nRows() - i >= kRows; i += kRows) {
    double sums[kRows] = {};
    const double* const rows = a.Base(i, 0);
    for (unsigned k = 0; k < cols; ++k) {
#pragma GCC unroll 8
      for (unsigned r = 0; r < kRows; ++r) sums[r] += rows[std::size_t{r} * cols + k] * v(k);
    }
    std::copy_n(sums, kRows, out.Base(i));
  }
  for (; i < a.nRows(); ++i) out(i) = detail::Dot(cols, a.Base(i, 0), v.Base());
}

void Product(const RMatrix& a, RVector& v) {
  RVector product;
  Product(a, v, product);
  v = product;
}

// Several rows at a time, so that the sums are seldom taken from memory and put back.
void InnerProduct(const RMatrix& a, const RVector& v, RVector& out) {
  const std::size_t cols = a.nCols();
  Zeros(out, a.nCols());
  double* __restrict const sums = out.Base();
  unsigned i = 0;
  for (; a.nRows() - i >= 4; i += 4) {
    const double* const row = a.Base(i, 0);
    const double factors[] = {v(i), v(i + 1), v(i + 2), v(i + 3)};
    for (std::size_t j = 0; j < cols; ++j) {
      sums[j] = sums[j] + row[j] * factors[0] + row[j + cols] * factors[1] +
                row[j + 2 * cols] * factors[2] + row[j + 3 * cols] * factors[3];
    }
  }
  for (; i < a.nRows(); ++i) {
    const double* const row = a.Base(i, 0);
    const double factor = v(i);
    for (std::size_t j = 0; j < cols; ++j) sums[j] += row[j] * factor;
  }
}

void InnerProduct(const RMatrix& a, RVector& v) {
  RVector product;
  InnerProduct(a, v, product);
  v = product;
}

void Product(const RMatrix& a, const RMatrix& b, RMatrix& out) {
  out.Resize(a.nRows(), b.nCols());
  detail::BlockedProduct(out.nRows(), out.nCols(), a.nCols(), AsItIs(a), AsItIs(b), Into(out));
}

void Product(RMatrix& a, const RMatrix& b) {
  RMatrix product;
  Product(a, b, product);
  a = product;
}

void InnerProduct(const RMatrix& a, const RMatrix& b, RMatrix& out) {
  out.Resize(a.nCols(), b.nCols());
  detail::BlockedProduct(out.nRows(), out.nCols(), a.nRows(), Transposed(a), AsItIs(b), Into(out));
}

void InnerProduct(RMatrix& a, const RMatrix& b) {
  RMatrix product;
  InnerProduct(a, b, product);
  a = product;
}

void OuterProduct(const RMatrix& a, const RMatrix& b, RMatrix& out) {
  out.Resize(a.nRows(), b.nRows());
  detail::BlockedProduct(out.nRows(), out.nCols(), a.nCols(), AsItIs(a), Transposed(b), Into(out));
}

void OuterProduct(RMatrix& a, const RMatrix& b) {
  RMatrix product;
  OuterProduct(a, b, product);
  a = product;
}

double QuadraticProduct(const RVector& u, const RMatrix& a, const RVector& v) noexcept {
  double sum = 0;
  for (unsigned i = 0; i < u.Length(); ++i) {
    sum += u(i) * detail::Dot(a.nCols(), a.Base(i, 0), v.Base());
  }
  return sum;
}

void QuadraticProduct(const RVector& u, const RMatrix& a, const RVector& v, double& out) noexcept {
  out = QuadraticProduct(u, a, v);
}

// Small squares at a time, so that neither the rows nor the columns leave the cache.
void Transpose(const RMatrix& a, RMatrix& out) {
  constexpr unsigned kSquare = 8;
  out.Resize(a.nCols(), a.nRows());
  for (unsigned top = 0; top < a.nRows(); top += kSquare) {
    const unsigned bottom = std::min(a.nRows(), top + kSquare);
    for (unsigned left = 0; left < a.nCols(); left += kSquare) {
      const unsigned right = std::min(a.nCols(), left + kSquare);
      for (unsigned j = left; j < right; ++j) {
        for (unsigned i = top; i < bottom; ++i) out(j, i) = a(i, j);
      }
    }
  }
}

void Transpose(RMatrix& a) {
  RMatrix transpose;
  Transpose(a, transpose);
  a = transpose;
}

}  // namespace vlm

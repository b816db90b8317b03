#include <velum/numerics/MatrixArithmetic.h>

#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace vlm {

namespace {

void ResizeLike(const RVector& v, RVector& out) { out.Resize(v.Length()); }

void ResizeLike(const RMatrix& a, RMatrix& out) { out.Resize(a.nRows(), a.nCols()); }

// Vectors and matrices alike are runs of elements here.
template <class Run, class Function>
void Apply(Run& run, Function function) noexcept {
  std::transform(run.begin(), run.end(), run.begin(), function);
}

template <class Run, class Function>
void Apply(const Run& run, Run& out, Function function) {
  ResizeLike(run, out);
  std::transform(run.begin(), run.end(), out.begin(), function);
}

template <class Run, class Function>
void ApplyTwo(Run& run, const Run& other, Function function) noexcept {
  std::transform(run.begin(), run.end(), other.begin(), run.begin(), function);
}

template <class Run, class Function>
void ApplyTwo(const Run& run, const Run& other, Run& out, Function function) {
  ResizeLike(run, out);
  std::transform(run.begin(), run.end(), other.begin(), out.begin(), function);
}

double SquareRoot(double x) noexcept { return std::sqrt(x); }

auto Plus(double x) noexcept {
  return [x](double element) { return element + x; };
}

auto Minus(double x) noexcept {
  return [x](double element) { return element - x; };
}

auto Times(double x) noexcept {
  return [x](double element) { return element * x; };
}

auto Over(double x) noexcept {
  return [x](double element) { return element / x; };
}

}  // namespace

void Update_axpy(double a, RVector& x, const RVector& y) noexcept {
  ApplyTwo(x, y, [a](double xi, double yi) { return a * xi + yi; });
}

void Update_xpay(RVector& x, double a, const RVector& y) noexcept {
  ApplyTwo(x, y, [a](double xi, double yi) { return xi + a * yi; });
}

void Negate(RVector& v) noexcept { Apply(v, std::negate<double>()); }

void Negate(const RVector& v, RVector& out) { Apply(v, out, std::negate<double>()); }

void Negate(RMatrix& a) noexcept { Apply(a, std::negate<double>()); }

void Negate(const RMatrix& a, RMatrix& out) { Apply(a, out, std::negate<double>()); }

void Sqrt(RVector& v) noexcept { Apply(v, SquareRoot); }

void Sqrt(const RVector& v, RVector& out) { Apply(v, out, SquareRoot); }

void Sqrt(RMatrix& a) noexcept { Apply(a, SquareRoot); }

void Sqrt(const RMatrix& a, RMatrix& out) { Apply(a, out, SquareRoot); }

void Add(RVector& v, double x) noexcept { Apply(v, Plus(x)); }

void Add(const RVector& v, double x, RVector& out) { Apply(v, out, Plus(x)); }

void Add(RMatrix& a, double x) noexcept { Apply(a, Plus(x)); }

void Add(const RMatrix& a, double x, RMatrix& out) { Apply(a, out, Plus(x)); }

void Subtract(RVector& v, double x) noexcept { Apply(v, Minus(x)); }

void Subtract(const RVector& v, double x, RVector& out) { Apply(v, out, Minus(x)); }

void Subtract(RMatrix& a, double x) noexcept { Apply(a, Minus(x)); }

void Subtract(const RMatrix& a, double x, RMatrix& out) { Apply(a, out, Minus(x)); }

void Multiply(RVector& v, double x) noexcept { Apply(v, Times(x)); }

void Multiply(const RVector& v, double x, RVector& out) { Apply(v, out, Times(x)); }

void Multiply(RMatrix& a, double x) noexcept { Apply(a, Times(x)); }

void Multiply(const RMatrix& a, double x, RMatrix& out) { Apply(a, out, Times(x)); }

void Divide(RVector& v, double x) noexcept { Apply(v, Over(x)); }

void Divide(const RVector& v, double x, RVector& out) { Apply(v, out, Over(x)); }

void Divide(RMatrix& a, double x) noexcept { Apply(a, Over(x)); }

void Divide(const RMatrix& a, double x, RMatrix& out) { Apply(a, out, Over(x)); }

void Add(RVector& v, const RVector& w) noexcept { ApplyTwo(v, w, std::plus<double>()); }

void Add(const RVector& v, const RVector& w, RVector& out) {
  ApplyTwo(v, w, out, std::plus<double>());
}

void Add(RMatrix& a, const RMatrix& b) noexcept { ApplyTwo(a, b, std::plus<double>()); }

void Add(const RMatrix& a, const RMatrix& b, RMatrix& out) {
  ApplyTwo(a, b, out, std::plus<double>());
}

void Subtract(RVector& v, const RVector& w) noexcept { ApplyTwo(v, w, std::minus<double>()); }

void Subtract(const RVector& v, const RVector& w, RVector& out) {
  ApplyTwo(v, w, out, std::minus<double>());
}

void Subtract(RMatrix& a, const RMatrix& b) noexcept { ApplyTwo(a, b, std::minus<double>()); }

void Subtract(const RMatrix& a, const RMatrix& b, RMatrix& out) {
  ApplyTwo(a, b, out, std::minus<double>());
}

}  // namespace vlm

#include <velum/numerics/Tridiagonal.h>

#include <velum/geometry/Constants.h>
#include <velum/numerics/MatrixFill.h>
#include <velum/numerics/MatrixNorms.h>
#include <velum/numerics/MatrixProducts.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>
#include <velum/numerics/detail/DotKernels.h>
#include <velum/numerics/detail/Singular.h>
#include <velum/numerics/detail/SolverKernels.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

namespace vlm {

namespace {

using detail::IsSingular;

// What remains to be divided by, and the factor of the reflection, for a first element and the sum
// of the squares of the others.
struct Reflection {
  double divisor;
  double beta;
};

Reflection ReflectionFor(double first, double squares) noexcept {
  const double length = std::sqrt(squares + first * first);
  const double w = first > 0 ? -squares / (length + first) : first - length;
  return {w, 2 * w * w / (w * w + squares)};
}

class Tridiagonal {
 public:
  explicit Tridiagonal(RMatrix& a)
      : a_(a), n_(a.nRows()), v_(n_), p_(n_), q_(n_), kernels_(detail::SolverKernels()) {}

  // Takes column k, and does the reflection of the block to the right of it and below.
  void Reduce(unsigned k, RVector& d, RVector& e);
  // Turns the reflections that are left in the columns into their product.
  void FormQ() noexcept;

 private:
  [[nodiscard]] double TakeReflection(unsigned k, double largest) noexcept;
  void UpdateBlock(unsigned k, double beta);

  RMatrix& a_;
  unsigned n_;
  RVector v_;  // that of the reflection in hand, in the places of its column
  RVector p_;
  RVector q_;
  const detail::SolverKernelSet& kernels_;
};

void Tridiagonal::Reduce(unsigned k, RVector& d, RVector& e) {
  double largest = 0;
  for (unsigned i = k + 1; i < n_; ++i) {
    v_(i) = a_(i, k);
    if (std::abs(v_(i)) > largest) largest = std::abs(v_(i));
  }
  d(k) = a_(k, k);
  if (largest < EPSILON) {
    e(k) = 0;
    a_(k, k) = 0;
    return;
  }
  const double squares = detail::SumOfSquares(n_ - k - 1, v_.Base(k + 1));
  const double beta = TakeReflection(k, largest);
  UpdateBlock(k, beta);
  e(k) = std::sqrt(squares);
  a_(k, k + 1) = e(k);
  a_(k, k) = beta;
  for (unsigned i = k + 1; i < n_; ++i) a_(i, k) = v_(i);
}

double Tridiagonal::TakeReflection(unsigned k, double largest) noexcept {
  constexpr double kLeast = 1.0020841800044864e-292;
  double* const v = v_.Base(k + 1);
  const unsigned count = n_ - k - 1;
  for (unsigned i = 0; i < count; ++i) v[i] /= largest;
  const double squares = detail::SumOfSquares(count - 1, v + 1);
  if (!(squares >= kLeast)) {
    std::fill_n(v, count, 0.0);
    return 0;
  }
  const Reflection reflection = ReflectionFor(v[0], squares);
  v[0] = 1;
  for (unsigned i = 1; i < count; ++i) v[i] /= reflection.divisor;
  return reflection.beta;
}

void Tridiagonal::UpdateBlock(unsigned k, double beta) {
  const unsigned first = k + 1;
  const std::size_t count = n_ - first;
  kernels_.multiplyRows(count, count, a_.Base(first, first), n_, v_.Base(first), p_.Base(first));
  for (unsigned j = first; j < n_; ++j) p_(j) = beta * p_(j);
  const double t = 0.5 * beta * detail::Dot(count, v_.Base(first), p_.Base(first));
  for (unsigned j = first; j < n_; ++j) q_(j) = p_(j) - t * v_(j);
  const double* const q = q_.Base();
  const double* const v = v_.Base();
  for (unsigned i = first; i < n_; ++i) {
    double* const row = a_.Base(i, 0);
    for (unsigned j = first; j < n_; ++j) row[j] -= q[j] * v[i] + v[j] * q[i];
  }
}

void Tridiagonal::FormQ() noexcept {
  for (unsigned k = n_ - 2; k-- > 0;) {
    const unsigned first = k + 1;
    const std::size_t count = n_ - first;
    const double beta = a_(k, k);
    for (unsigned i = first; i < n_; ++i) v_(i) = a_(i, k);
    std::fill_n(p_.Base(first), count, 0.0);
    kernels_.addMultiples(count, count, v_.Base(first), a_.Base(first, first), n_, p_.Base(first));
    for (unsigned j = first; j < n_; ++j) p_(j) = beta * p_(j);
    for (unsigned i = first; i < n_; ++i) {
      kernels_.addMultiple(count, -v_(i), p_.Base(first), a_.Base(i, first));
      a_(i, k) = 0;
      a_(k, i) = 0;
    }
    a_(k, k) = 1;
  }
}

}  // namespace

bool TridiagonalSolve(RVector& d, RVector& e, RVector& x) noexcept {
  const unsigned n = d.Length();
  if (n == 0) return true;
  if (IsSingular(d(0))) return false;
  for (unsigned i = 1; i < n; ++i) {
    const double t = e(i - 1);
    e(i - 1) = t / d(i - 1);
    d(i) -= t * e(i - 1);
    if (IsSingular(d(i))) return false;
  }
  for (unsigned i = 1; i < n; ++i) x(i) -= e(i - 1) * x(i - 1);
  x(n - 1) /= d(n - 1);
  for (unsigned i = n - 1; i-- > 0;) x(i) = x(i) / d(i) - e(i) * x(i + 1);
  return true;
}

bool TridiagonalSolve(const RMatrix& q, RVector& d, RVector& e, RVector& x) {
  InnerProduct(q, x);
  if (!TridiagonalSolve(d, e, x)) return false;
  Product(q, x);
  return true;
}

void Householder(RVector& v) noexcept {
  const double largest = LInfNorm(v);
  if (v.empty() || largest == 0) return;
  for (double& x : v) x /= largest;
  const double squares = detail::SumOfSquares(v.Length() - 1, v.Base(1));
  if (squares < SUKOSHI) {
    v(0) = 0;
    return;
  }
  const Reflection reflection = ReflectionFor(v(0), squares);
  for (unsigned i = 1; i < v.Length(); ++i) v(i) /= reflection.divisor;
  v(0) = reflection.beta;
}

bool TridiagonalDecomposition(RMatrix& a, RVector& d, RVector& e) {
  const unsigned n = a.nRows();
  if (n < 2) {
    Zeros(d, n);
    e.Clear();
    if (n == 1) d(0) = std::exchange(a(0, 0), 1);
    return true;
  }
  d.Resize(n);
  e.Resize(n - 1);
  Tridiagonal work(a);
  for (unsigned k = 0; k + 2 < n; ++k) work.Reduce(k, d, e);
  d(n - 2) = a(n - 2, n - 2);
  d(n - 1) = a(n - 1, n - 1);
  e(n - 2) = a(n - 1, n - 2);
  a(n - 2, n - 2) = a(n - 1, n - 1) = 1;
  a(n - 1, n - 2) = a(n - 2, n - 1) = 0;
  work.FormQ();
  return true;
}

}  // namespace vlm

#include <velum/numerics/ConjugateGradients.h>

#include <velum/geometry/Constants.h>
#include <velum/numerics/MatrixPredicates.h>
#include <velum/numerics/MatrixProducts.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>
#include <velum/numerics/SymmetricFactors.h>
#include <velum/numerics/detail/DotKernels.h>
#include <velum/numerics/detail/SolverKernels.h>

#include <cmath>

namespace vlm {

namespace {

constexpr double kFloatEpsilon = 1.1920928955078125e-7;

double SquaresOf(const RVector& v) noexcept { return detail::SumOfSquares(v.Length(), v.Base()); }

// The iteration of CPDSolve.
class Gradients {
 public:
  Gradients(const RMatrix& a, const RMatrix& c, const RMatrix& l, const RVector& b, RVector& x,
            RVector& work)
      : a_(a), c_(c), l_(l), b_(b), x_(x), work_(work), isSymmetric_(IsSymmetric(a, 0)) {}

  // Projects x, and begins with what is left of b then. The sum of its squares is in `squares`.
  void Restart() {
    CPDProject(c_, l_, x_, work_);
    TimesA(x_, product_);
    r_ = b_;
    for (unsigned i = 0; i < r_.Length(); ++i) r_(i) -= product_(i);
    CPDProject(c_, l_, r_, work_);
    squares = SquaresOf(r_);
  }

  // Does steps until the residual falls below the tolerance, or they do not help any more.
  void Descend(unsigned steps, double tolerance) {
    p_ = r_;
    for (unsigned step = 0; step < steps; ++step) {
      TimesA(p_, product_);
      const double curvature = DotProduct(p_, product_);
      if (curvature < kFloatEpsilon * squares) return;
      const double alpha = squares / curvature;
      for (unsigned i = 0; i < x_.Length(); ++i) {
        x_(i) += alpha * p_(i);
        r_(i) -= alpha * product_(i);
      }
      CPDProject(c_, l_, r_, work_);
      const double before = squares;
      squares = SquaresOf(r_);
      const double beta = squares / before;
      if (squares < tolerance || std::isnan(squares)) return;
      for (unsigned i = 0; i < p_.Length(); ++i) p_(i) = beta * p_(i) + r_(i);
    }
  }

  double squares = 0;

 private:
  // Half of a symmetric matrix is enough to read, and a large one is read for most of the time.
  void TimesA(const RVector& v, RVector& out) const {
    if (isSymmetric_) {
      out.Resize(v.Length());
      detail::SolverKernels().multiplySymmetric(v.Length(), a_.Base(), a_.nCols(), v.Base(),
                                                out.Base());
    } else {
      Product(a_, v, out);
    }
  }

  const RMatrix& a_;
  const RMatrix& c_;
  const RMatrix& l_;
  const RVector& b_;
  RVector& x_;
  RVector& work_;
  bool isSymmetric_;
  RVector r_;
  RVector p_;
  RVector product_;
};

}  // namespace

void CPDProject(const RMatrix& c, const RMatrix& l, RVector& x, RVector& work) {
  Product(c, x, work);
  CholeskySolve(l, work);
  if (c.empty()) return;
  RVector part;
  InnerProduct(c, work, part);
  for (unsigned i = 0; i < x.Length(); ++i) x(i) -= part(i);
}

bool CPDSolve(const RMatrix& a, const RMatrix& c, const RVector& b, RVector& x, RVector& work) {
  constexpr int kRounds = 8;
  double tolerance = 1e-18 * SquaresOf(b);
  if (tolerance < EPSILON) tolerance = EPSILON;
  RMatrix l;
  OuterProduct(c, c, l);
  if (!CholeskyDecomposition(l)) return false;
  const unsigned n = a.nRows();
  const unsigned steps = n > c.nRows() ? n - c.nRows() : 0;
  Gradients gradients(a, c, l, b, x, work);
  gradients.Restart();
  if (gradients.squares < tolerance) return true;
  for (int round = 0; round < kRounds; ++round) {
    gradients.Descend(steps, tolerance);
    gradients.Restart();
    if (gradients.squares < tolerance || std::isnan(gradients.squares)) break;
  }
  return gradients.squares <= tolerance;
}

}  // namespace vlm

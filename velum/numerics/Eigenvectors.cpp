#include <velum/numerics/Eigenvectors.h>

#include <velum/numerics/Matrices.h>
#include <velum/numerics/detail/JacobiSweeps.h>
#include <velum/numerics/detail/Singular.h>
#include <velum/numerics/detail/SolverKernels.h>

#include <algorithm>
#include <cmath>

namespace vlm {

bool CyclicJacobi(RMatrix& a, RVector& s) {
  if (a.empty()) {
    s.Clear();
    return true;
  }
  detail::JacobiSweeps sweeps(a, detail::SolverKernels());
  const bool isDone = sweeps.Run();
  sweeps.Give(a, s);
  return isDone;
}

void SVDSolve(const RMatrix& v, const RVector& s, RVector& x) {
  if (s.empty()) return;
  RVector t;
  InnerProduct(v, x, t);
  const double limit = std::abs(s(0)) * 1e-9;
  for (unsigned i = 0; i < s.Length(); ++i) t(i) = std::abs(s(i)) > limit ? t(i) / s(i) : 0;
  Product(v, t, x);
}

void SVDSolve(const RMatrix& v, const RVector& s, RMatrix& x) {
  if (s.empty()) return;
  RMatrix t;
  InnerProduct(v, x, t);
  const double limit = std::abs(s(0)) * 1e-9;
  for (unsigned i = 0; i < s.Length(); ++i) {
    double* const row = t.Base(i, 0);
    const bool counts = std::abs(s(i)) > limit;
    for (unsigned j = 0; j < t.nCols(); ++j) row[j] = counts ? row[j] / s(i) : 0;
  }
  Product(v, t, x);
}

bool GeneralizedSolve(const RMatrix& a, const RVector& b, RVector& x) {
  RMatrix v = a;
  RVector s;
  if (!CyclicJacobi(v, s)) return false;
  x = b;
  SVDSolve(v, s, x);
  return true;
}

bool AlternateSolve(const RMatrix& a, const RMatrix& b, const RVector& c, RVector& x, RVector& y) {
  RMatrix v = a;
  RVector s;
  if (!CyclicJacobi(v, s)) return false;
  RVector t = c;
  SVDSolve(v, s, t);
  if (b.empty()) {
    x = t;
    y.Clear();
    return true;
  }
  RMatrix g;
  Transpose(b, g);
  SVDSolve(v, s, g);
  RMatrix w = b;
  RMatrix schur;
  Product(b, g, schur);
  if (schur.nRows() < 2) {
    const double only = schur(0, 0);
    if (detail::IsSingular(only)) return false;
    Divide(w, only);
  } else {
    RVector sizes;
    if (!CyclicJacobi(schur, sizes)) return false;
    SVDSolve(schur, sizes, w);
  }
  Product(w, t, y);
  RVector pulled;
  Product(g, y, pulled);
  Subtract(t, pulled, x);
  return true;
}

bool AlternateSolve(const RMatrix& a, const RMatrix& b, const RMatrix& c, RMatrix& x, RMatrix& y) {
  RMatrix v;
  ComposeMatrix(a, b, RMatrix(b.nRows(), b.nRows()), v);
  RVector s;
  if (!CyclicJacobi(v, s)) return false;
  RMatrix solution;
  ConcatenateRows(c, RMatrix(b.nRows(), c.nCols()), solution);
  SVDSolve(v, s, solution);
  x.Resize(a.nRows(), c.nCols());
  y.Resize(b.nRows(), c.nCols());
  std::copy_n(solution.begin(), x.end() - x.begin(), x.begin());
  std::copy_n(solution.begin() + (x.end() - x.begin()), y.end() - y.begin(), y.begin());
  return true;
}

}  // namespace vlm

#include <velum/numerics/LeastSquares.h>

#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>
#include <velum/numerics/detail/GramSchmidt.h>

namespace vlm {

bool MGSLeastSquares(RMatrix& a, RVector& x, RVector& b) {
  if (a.empty()) return true;
  return detail::GramSchmidt(a).Solve({x.Base(), 1, 1}, {b.Base(), 1, 1});
}

bool MGSLeastSquares(RMatrix& a, RMatrix& x, RMatrix& b) {
  if (a.empty()) return true;
  return detail::GramSchmidt(a).Solve({x.Base(), b.nCols(), x.nCols()},
                                      {b.Base(), b.nCols(), b.nCols()});
}

}  // namespace vlm

#pragma once

/// \file
/// The decompositions and solvers, as the loops that define them: one element after the other.

#include <velum/numerics/MatrixNorms.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace vlm::reference {

constexpr double kEpsilon = 2.220446049250313e-16;

inline bool PlainForward(const RMatrix& a, RVector& v) {
  for (unsigned i = 0; i < v.Length(); ++i) {
    if (std::abs(a(i, i)) < kEpsilon) return false;
    double sum = 0;
    for (unsigned k = 0; k < i; ++k) sum += a(i, k) * v(k);
    v(i) = (v(i) - sum) / a(i, i);
  }
  return true;
}

inline bool PlainBack(const RMatrix& a, RVector& v) {
  for (unsigned i = a.nRows(); i-- > 0;) {
    if (std::abs(a(i, i)) < kEpsilon) return false;
    double sum = 0;
    for (unsigned k = i + 1; k < a.nRows(); ++k) sum += a(k, i) * v(k);
    v(i) = (v(i) - sum) / a(i, i);
  }
  return true;
}

inline bool PlainSymmetric(RMatrix& a) {
  const unsigned n = a.nRows();
  RVector w(n);
  for (unsigned j = 0; j < n; ++j) {
    for (unsigned i = 0; i < j; ++i) w(i) = a(j, i) * a(i, i);
    for (unsigned k = j; k < n; ++k) {
      double sum = 0;
      for (unsigned i = 0; i < j; ++i) sum += a(k, i) * w(i);
      a(k, j) -= sum;
    }
    if (std::abs(a(j, j)) < kEpsilon) return false;
    for (unsigned k = j + 1; k < n; ++k) a(k, j) /= a(j, j);
  }
  return true;
}

inline bool PlainCholesky(RMatrix& a) {
  const unsigned n = a.nRows();
  for (unsigned j = 0; j < n; ++j) {
    // The row of j itself comes last, since the others read it.
    for (unsigned i = n; i-- > j;) {
      double sum = 0;
      for (unsigned k = 0; k < j; ++k) sum += a(i, k) * a(j, k);
      a(i, j) -= sum;
    }
    if (a(j, j) < kEpsilon) return false;
    a(j, j) = std::sqrt(a(j, j));
    for (unsigned i = j + 1; i < n; ++i) a(i, j) /= a(j, j);
  }
  return true;
}

inline bool PlainLeastSquares(RMatrix& a, RVector& x, RVector& b) {
  const unsigned m = a.nRows();
  const unsigned n = a.nCols();
  const auto dot = [m](auto p, auto q) {
    double sum = 0;
    for (unsigned i = 0; i < m; ++i) sum += p(i) * q(i);
    return sum;
  };
  const auto column = [&a](unsigned j) { return [&a, j](unsigned i) { return a(i, j); }; };
  RMatrix r(n, n);
  for (unsigned k = 0; k < n; ++k) {
    const double squares = dot(column(k), column(k));
    if (squares < kEpsilon) return false;
    r(k, k) = std::sqrt(squares);
    for (unsigned i = 0; i < m; ++i) a(i, k) /= r(k, k);
    for (unsigned j = k + 1; j < n; ++j) {
      r(k, j) = dot(column(k), column(j));
      for (unsigned i = 0; i < m; ++i) a(i, j) -= r(k, j) * a(i, k);
    }
    x(k) = dot(column(k), b);
    for (unsigned i = 0; i < m; ++i) b(i) -= x(k) * a(i, k);
  }
  for (unsigned i = n; i-- > 0;) {
    double sum = 0;
    for (unsigned k = i + 1; k < n; ++k) sum += r(i, k) * x(k);
    if (std::abs(r(i, i)) < kEpsilon) return false;
    x(i) = (x(i) - sum) / r(i, i);
  }
  return true;
}

inline bool PlainGauss(RMatrix& a, RVector& b) {
  const unsigned n = b.Length();
  for (unsigned k = 0; k + 1 < n; ++k) {
    unsigned pivot = k;
    for (unsigned i = k + 1; i < n; ++i) {
      if (std::abs(a(i, k)) > std::abs(a(pivot, k))) pivot = i;
    }
    if (std::abs(a(pivot, k)) < kEpsilon) return false;
    for (unsigned j = k; j < n && pivot != k; ++j) std::swap(a(k, j), a(pivot, j));
    std::swap(b(k), b(pivot));
    for (unsigned i = k + 1; i < n; ++i) {
      const double m = a(i, k) / a(k, k);
      for (unsigned j = k + 1; j < n; ++j) a(i, j) -= m * a(k, j);
      b(i) -= m * b(k);
    }
  }
  if (std::abs(a(n - 1, n - 1)) < kEpsilon) return false;
  for (unsigned i = n; i-- > 0;) {
    double sum = 0;
    for (unsigned k = i + 1; k < n; ++k) sum += a(i, k) * b(k);
    b(i) = (b(i) - sum) / a(i, i);
  }
  return true;
}

inline void PlainAasen(RMatrix& a) {
  const unsigned n = a.nRows();
  RVector l(n), h(n), alpha(n), beta(n), v(n), pivots(n);
  for (unsigned j = 0; j < n; ++j) {
    l(0) = 0;
    for (unsigned k = 1; k < j; ++k) l(k) = a(j, k - 1);
    l(j) = 1;
    if (j == 0) {
      h(0) = alpha(0) = a(0, 0);
    } else {
      double sum = 0;
      for (unsigned k = 1; k < j; ++k) {
        h(k) = beta(k + 1) * l(k + 1) + alpha(k) * l(k) + beta(k) * l(k - 1);
        sum += l(k) * h(k);
      }
      h(j) = a(j, j) - sum;
      alpha(j) = h(j) - l(j - 1) * beta(j);
    }
    if (j + 1 == n) break;
    for (unsigned i = j + 1; i < n; ++i) {
      double sum = 0;
      for (unsigned k = 0; k < j; ++k) sum += a(i, k) * h(k + 1);
      v(i) = a(i, j) - sum;
    }
    unsigned q = j + 1;
    for (unsigned i = q; i < n; ++i) {
      if (std::abs(v(i)) > std::abs(v(q))) q = i;
    }
    pivots(j) = q;
    std::swap(v(j + 1), v(q));
    for (unsigned k = 0; k < n; ++k) std::swap(a(j + 1, k), a(q, k));
    for (unsigned i = j + 1; i < n; ++i) std::swap(a(i, j + 1), a(i, q));
    beta(j + 1) = v(j + 1);
    if (std::abs(v(j + 1)) > kEpsilon && j + 2 < n) {
      for (unsigned i = j + 2; i < n; ++i) a(i, j) = v(i) / v(j + 1);
    }
  }
  for (unsigned i = n; i-- > 0;) {
    for (unsigned j = i; j-- > 0;) a(i, j) = j == 0 ? 0 : a(i, j - 1);
    a(i, i) = alpha(i);
    if (i > 0) a(i - 1, i) = beta(i);
  }
  for (unsigned j = 2; j < n; ++j) a(0, j) = pivots(j - 2);
}

inline void PlainTridiagonal(RMatrix& a, RVector& d, RVector& e) {
  const unsigned n = a.nRows();
  d.Resize(n);
  e.Resize(n - 1);
  RVector v(n), p(n), q(n);
  for (unsigned k = 0; k + 2 < n; ++k) {
    double m = 0;
    double unscaled = 0;
    for (unsigned i = k + 1; i < n; ++i) {
      v(i) = a(i, k);
      m = std::max(m, std::abs(v(i)));
      unscaled += v(i) * v(i);
    }
    if (m < kEpsilon) {
      d(k) = a(k, k);
      e(k) = a(k, k) = 0;
      continue;
    }
    double squares = 0;
    for (unsigned i = k + 1; i < n; ++i) v(i) /= m;
    for (unsigned i = k + 2; i < n; ++i) squares += v(i) * v(i);
    double beta = 0;
    if (squares >= 1.0020841800044864e-292) {
      const double first = v(k + 1);
      const double mu = std::sqrt(squares + first * first);
      const double w = first > 0 ? -squares / (mu + first) : first - mu;
      beta = 2 * w * w / (w * w + squares);
      v(k + 1) = 1;
      for (unsigned i = k + 2; i < n; ++i) v(i) /= w;
    } else {
      for (unsigned i = k + 1; i < n; ++i) v(i) = 0;
    }
    double vp = 0;
    for (unsigned j = k + 1; j < n; ++j) {
      double sum = 0;
      for (unsigned i = k + 1; i < n; ++i) sum += a(j, i) * v(i);
      p(j) = beta * sum;
      vp += v(j) * p(j);
    }
    const double t = 0.5 * beta * vp;
    for (unsigned j = k + 1; j < n; ++j) q(j) = p(j) - t * v(j);
    a(k + 1, k) = a(k, k + 1) = std::sqrt(unscaled);
    for (unsigned i = k + 1; i < n; ++i) {
      for (unsigned j = k + 1; j < n; ++j) a(i, j) -= q(j) * v(i) + v(j) * q(i);
    }
    d(k) = a(k, k);
    e(k) = a(k + 1, k);
    a(k, k) = beta;
    for (unsigned i = k + 1; i < n; ++i) a(i, k) = v(i);
  }
  d(n - 2) = a(n - 2, n - 2);
  d(n - 1) = a(n - 1, n - 1);
  e(n - 2) = a(n - 1, n - 2);
  a(n - 2, n - 2) = a(n - 1, n - 1) = 1;
  a(n - 1, n - 2) = a(n - 2, n - 1) = 0;
  for (unsigned k = n - 2; k-- > 0;) {
    const double beta = a(k, k);
    for (unsigned j = k + 1; j < n; ++j) {
      double t = 0;
      for (unsigned i = k + 1; i < n; ++i) t += a(i, k) * a(i, j);
      for (unsigned i = k + 1; i < n; ++i) a(i, j) -= beta * t * a(i, k);
    }
    for (unsigned i = k + 1; i < n; ++i) a(i, k) = a(k, i) = 0;
    a(k, k) = 1;
  }
}

/// Without the success for a matrix that is diagonal already.
inline bool PlainJacobi(RMatrix& a, RVector& s) {
  const unsigned n = a.nCols();
  const double tolerance = 1e-16 * SymOff(a);
  RMatrix v(n, n);
  for (unsigned i = 0; i < n; ++i) v(i, i) = 1;
  bool isDone = false;
  for (int sweep = 0; sweep < 100 && !isDone; ++sweep) {
    const double off = SymOff(a);
    isDone = off < tolerance;
    const double limit = off / (double{1} * n * n);
    for (unsigned p = 0; p + 1 < n && !isDone; ++p) {
      for (unsigned q = p + 1; q < n; ++q) {
        if (!(std::abs(a(p, q)) > limit)) continue;
        const double theta = (a(q, q) - a(p, p)) / (2 * a(p, q));
        const double t =
            theta < 0 ? -1 / (std::hypot(1, theta) - theta) : 1 / (std::hypot(1, theta) + theta);
        const double c = 1 / std::hypot(1, t);
        const double sn = c * t;
        const auto rotate = [c, sn](double& u, double& w) {
          const double before = u;
          u = c * u - sn * w;
          w = c * w + sn * before;
        };
        for (unsigned k = 0; k < p; ++k) rotate(a(k, p), a(k, q));
        for (unsigned k = p + 1; k < q; ++k) rotate(a(p, k), a(k, q));
        for (unsigned k = q + 1; k < n; ++k) rotate(a(p, k), a(q, k));
        a(p, p) -= t * a(p, q);
        a(q, q) += t * a(p, q);
        a(p, q) = 0;
        for (unsigned k = 0; k < n; ++k) rotate(v(k, p), v(k, q));
      }
    }
  }
  std::vector<std::pair<double, unsigned>> order;
  for (unsigned i = 0; i < n; ++i) order.emplace_back(-std::abs(a(i, i)), i);
  std::sort(order.begin(), order.end());
  s.Resize(n);
  for (unsigned i = 0; i < n; ++i) s(i) = a(order[i].second, order[i].second);
  for (unsigned k = 0; k < n; ++k) {
    for (unsigned i = 0; i < n; ++i) a(k, i) = v(k, order[i].second);
  }
  return isDone;
}

inline void PlainProject(const RMatrix& c, const RMatrix& l, RVector& x, RVector& work) {
  work.Resize(c.nRows());
  for (unsigned i = 0; i < c.nRows(); ++i) {
    double sum = 0;
    for (unsigned k = 0; k < c.nCols(); ++k) sum += c(i, k) * x(k);
    work(i) = sum;
  }
  PlainForward(l, work);
  PlainBack(l, work);
  for (unsigned k = 0; k < c.nCols(); ++k) {
    double sum = 0;
    for (unsigned i = 0; i < c.nRows(); ++i) sum += c(i, k) * work(i);
    x(k) -= sum;
  }
}

inline bool PlainConjugateGradients(const RMatrix& a, const RMatrix& c, const RVector& b,
                                    RVector& x, RVector& work) {
  const unsigned n = a.nRows();
  const auto dot = [n](const RVector& v, const RVector& w) {
    double sum = 0;
    for (unsigned i = 0; i < n; ++i) sum += v(i) * w(i);
    return sum;
  };
  const auto times = [n, &a](const RVector& v) {
    RVector out(n);
    for (unsigned i = 0; i < n; ++i) {
      for (unsigned k = 0; k < n; ++k) out(i) += a(i, k) * v(k);
    }
    return out;
  };
  const double tolerance = std::max(1e-18 * dot(b, b), kEpsilon);
  RMatrix l(c.nRows(), c.nRows());
  for (unsigned i = 0; i < c.nRows(); ++i) {
    for (unsigned j = 0; j < c.nRows(); ++j) {
      for (unsigned k = 0; k < n; ++k) l(i, j) += c(i, k) * c(j, k);
    }
  }
  if (!PlainCholesky(l)) return false;
  RVector r(n), p(n);
  const auto restart = [&] {
    PlainProject(c, l, x, work);
    const RVector product = times(x);
    for (unsigned i = 0; i < n; ++i) r(i) = b(i) - product(i);
    PlainProject(c, l, r, work);
    return dot(r, r);
  };
  double rr = restart();
  if (rr < tolerance) return true;
  for (int pass = 0; pass < 8; ++pass) {
    p = r;
    for (unsigned step = 0; step < n - c.nRows(); ++step) {
      const RVector q = times(p);
      const double pq = dot(p, q);
      if (pq < 1.1920928955078125e-7 * rr) break;
      const double alpha = rr / pq;
      for (unsigned i = 0; i < n; ++i) x(i) += alpha * p(i);
      for (unsigned i = 0; i < n; ++i) r(i) -= alpha * q(i);
      PlainProject(c, l, r, work);
      const double rr2 = dot(r, r);
      const double beta = rr2 / rr;
      rr = rr2;
      if (rr < tolerance) break;
      for (unsigned i = 0; i < n; ++i) p(i) = beta * p(i) + r(i);
    }
    rr = restart();
    if (rr < tolerance) break;
  }
  return !(rr > tolerance);
}

}  // namespace vlm::reference

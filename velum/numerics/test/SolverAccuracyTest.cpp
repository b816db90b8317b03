// How well the solvers solve, in units of n times the epsilon of double.
#include <velum/numerics/Solvers.h>

#include <velum/numerics/Matrices.h>
#include <velum/numerics/test/MatrixOf.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace vlm {
namespace {

constexpr double kEpsilon = 2.220446049250313e-16;

struct Case {
  std::string name;
  RMatrix a;
};

RMatrix Normal(unsigned rows, unsigned cols, std::mt19937& random) {
  RMatrix a(rows, cols);
  std::normal_distribution<double> number;
  for (double& x : a) x = number(random);
  return a;
}

// Eigenvalues from 1 down to 1 / condition, every other one times `sign`, and any vectors.
RMatrix OfCondition(double condition, unsigned n, double sign, std::mt19937& random) {
  RMatrix q = Normal(n, n, random);
  RVector d, e;
  RMatrix symmetric;
  OuterProduct(q, q, symmetric);
  TridiagonalDecomposition(symmetric, d, e);
  RMatrix scaled = symmetric;
  for (unsigned i = 0; i < n; ++i) {
    for (unsigned j = 0; j < n; ++j) {
      scaled(i, j) *= std::pow(condition, -double(j) / (n - 1)) * (j % 2 ? sign : 1);
    }
  }
  RMatrix a;
  OuterProduct(scaled, symmetric, a);
  for (unsigned i = 0; i < n; ++i) {
    for (unsigned j = 0; j < i; ++j) a(i, j) = a(j, i);
  }
  return a;
}

std::vector<Case> Cases(double sign) {
  std::mt19937 random(23);
  std::vector<Case> cases;
  for (const unsigned n : {10u, 60u}) {
    for (const double condition : {1e2, 1e6, 1e10, 1e14}) {
      cases.push_back({"condition " + std::to_string(condition) + ", n " + std::to_string(n),
                       OfCondition(condition, n, sign, random)});
    }
  }
  RMatrix hilbert(9, 9);
  RMatrix graded = OfCondition(10, 20, sign, random);
  for (unsigned i = 0; i < 9; ++i) {
    for (unsigned j = 0; j < 9; ++j) hilbert(i, j) = 1.0 / (i + j + 1);
  }
  for (unsigned i = 0; i < 20; ++i) {
    for (unsigned j = 0; j < 20; ++j) graded(i, j) *= std::pow(10, 6 - (i + j) / 2.0);
  }
  cases.push_back({"Hilbert, n 9", hilbert});
  cases.push_back({"graded from 1e6 to 1e-13, n 20", graded});
  return cases;
}

// The largest element of a - b c, by long doubles, over n epsilon and the size of `scale`.
double Distance(const RMatrix& a, const RMatrix& b, const RMatrix& c, double scale) {
  long double largest = 0;
  for (unsigned i = 0; i < a.nRows(); ++i) {
    for (unsigned j = 0; j < a.nCols(); ++j) {
      long double x = a(i, j);
      for (unsigned k = 0; k < c.nRows(); ++k) x -= static_cast<long double>(b(i, k)) * c(k, j);
      if (!(std::abs(x) <= largest)) largest = std::abs(x);
    }
  }
  return static_cast<double>(largest / scale / kEpsilon / c.nRows());
}

RMatrix AsColumn(const RVector& v) {
  RMatrix a(v.Length(), 1);
  AssignCol(v, 0, a);
  return a;
}

// The least change of `a`, as a part of its size, that makes `x` its exact solution.
double BackwardError(const RMatrix& a, const RVector& x, const RVector& b) {
  return Distance(AsColumn(b), a, AsColumn(x), LInfNorm(a) * LInfNorm(x) + LInfNorm(b));
}

RVector RightHandSide(unsigned n) {
  std::mt19937 random(29);
  const RMatrix column = Normal(n, 1, random);
  RVector b;
  ExtractCol(column, 0, b);
  return b;
}

std::string Text(double x) {
  std::ostringstream text;
  text << x;
  return text.str();
}

class Worst {
 public:
  explicit Worst(const char* what) : what_(what) {}
  ~Worst() { ::testing::Test::RecordProperty(what_, Text(largest_)); }
  void Take(double error, double limit) {
    if (!(error <= largest_)) largest_ = error;
    EXPECT_LE(error, limit) << what_;
  }

 private:
  std::string what_;
  double largest_ = 0;
};

TEST(SolverAccuracy, FactorsOfDefiniteMatricesMakeThemAgain) {
  Worst cholesky("Cholesky"), solve("CholeskySolve"), factors("SymmetricDecomposition"),
      symmetric("SymmetricSolve");
  for (const Case& c : Cases(1)) {
    SCOPED_TRACE(c.name);
    const unsigned n = c.a.nRows();
    const RVector b = RightHandSide(n);
    RMatrix l = c.a;
    ASSERT_TRUE(CholeskyDecomposition(l));
    RVector x = b;
    CholeskySolve(l, x);
    for (unsigned i = 0; i < n; ++i) {
      for (unsigned j = i + 1; j < n; ++j) l(i, j) = 0;
    }
    RMatrix turned;
    Transpose(l, turned);
    cholesky.Take(Distance(c.a, l, turned, LInfNorm(c.a)), 0.02);
    solve.Take(BackwardError(c.a, x, b), 0.02);
    l = c.a;
    ASSERT_TRUE(SymmetricDecomposition(l));
    x = b;
    SymmetricSolve(l, x);
    symmetric.Take(BackwardError(c.a, x, b), 0.03);
    RMatrix ld(n, n);
    Eye(turned, n, n);
    for (unsigned i = 0; i < n; ++i) {
      for (unsigned j = 0; j < i; ++j) ld(i, j) = (turned(j, i) = l(i, j)) * l(j, j);
      ld(i, i) = l(i, i);
    }
    factors.Take(Distance(c.a, ld, turned, LInfNorm(c.a)), 0.015);
  }
}

TEST(SolverAccuracy, EliminationAndEigenvectors) {
  Worst gauss("GaussSolve"), values("A V - V S"), orthogonal("V'V - 1"),
      general("GeneralizedSolve, condition to 1e7");
  for (const double sign : {1.0, -1.0}) {
    for (const Case& c : Cases(sign)) {
      SCOPED_TRACE(c.name);
      const unsigned n = c.a.nRows();
      const RVector b = RightHandSide(n);
      RMatrix a = c.a;
      RVector x = b;
      ASSERT_TRUE(GaussSolve(a, x));
      gauss.Take(BackwardError(c.a, x, b), 0.05);
      RMatrix v = c.a;
      RVector s;
      ASSERT_TRUE(CyclicJacobi(v, s));
      RMatrix vs = v;
      for (unsigned i = 0; i < n; ++i) {
        for (unsigned j = 0; j < n; ++j) vs(i, j) *= s(j);
        EXPECT_LE(std::abs(s(i)), std::abs(s(i > 0 ? i - 1 : 0)));
      }
      values.Take(Distance(vs, c.a, v, FNorm(c.a)), 0.3);
      RMatrix turned, one;
      Transpose(v, turned);
      Eye(one, n, n);
      orthogonal.Take(Distance(one, turned, v, 1), 2);
      if (std::abs(s(n - 1)) < 1e-7 * std::abs(s(0))) continue;
      ASSERT_TRUE(GeneralizedSolve(c.a, b, x));
      general.Take(BackwardError(c.a, x, b), 0.12);
    }
  }
}

// Of the matrix of doubles, from sweeps with 60 digits (Boost.Multiprecision 1.74).
TEST(SolverAccuracy, EigenvaluesOfHilbertsMatrix) {
  const double expected[] = {1.6188998589243391,     0.24236087057520955,    0.016321521319875826,
                             0.00061574835418264524, 1.2570757122637029e-05, 1.082799484481101e-07};
  RMatrix a(6, 6);
  for (unsigned i = 0; i < 6; ++i) {
    for (unsigned j = 0; j < 6; ++j) a(i, j) = 1.0 / (i + j + 1);
  }
  RVector s;
  ASSERT_TRUE(CyclicJacobi(a, s));
  for (unsigned i = 0; i < 6; ++i) EXPECT_NEAR(s(i), expected[i], 4 * kEpsilon) << i;
}

TEST(SolverAccuracy, TridiagonalForms) {
  Worst reduced("TridiagonalDecomposition"), solve("TridiagonalSolve");
  for (const double sign : {1.0, -1.0}) {
    for (const Case& c : Cases(sign)) {
      SCOPED_TRACE(c.name);
      const unsigned n = c.a.nRows();
      RMatrix q = c.a;
      RVector d, e;
      EXPECT_TRUE(TridiagonalDecomposition(q, d, e));
      RMatrix t(n, n);
      AssignDiagonal(d, t);
      for (unsigned i = 0; i + 1 < n; ++i) t(i, i + 1) = t(i + 1, i) = e(i);
      RMatrix qt, turned;
      Product(q, t, qt);
      Transpose(q, turned);
      reduced.Take(Distance(c.a, qt, turned, FNorm(c.a)), 0.12);
      if (sign < 0) continue;  // without exchanges of rows, only definite matrices are safe
      const RVector b = RightHandSide(n);
      RVector x = b;
      ASSERT_TRUE(TridiagonalSolve(q, d, e, x));
      solve.Take(BackwardError(c.a, x, b), 0.1);
    }
  }
}

TEST(SolverAccuracy, AasensFactors) {
  Worst aasen("AasenDecomposition");
  for (const Case& c : Cases(-1)) {
    SCOPED_TRACE(c.name);
    const unsigned n = c.a.nRows();
    RMatrix factors = c.a;
    AasenDecomposition(factors);
    RMatrix exchanged = c.a;
    RMatrix l, t(n, n), lt, turned;
    Eye(l, n, n);
    for (unsigned j = 2; j < n; ++j) {
      const auto k = static_cast<unsigned>(factors(0, j));
      ASSERT_TRUE(k >= j - 1 && k < n);
      for (unsigned i = 0; i < n; ++i) std::swap(exchanged(j - 1, i), exchanged(k, i));
      for (unsigned i = 0; i < n; ++i) std::swap(exchanged(i, j - 1), exchanged(i, k));
    }
    for (unsigned i = 0; i < n; ++i) {
      for (unsigned j = 0; j < i; ++j) {
        l(i, j) = factors(i, j);
        EXPECT_LE(std::abs(l(i, j)), j > 0 ? 1 : 0);
      }
      t(i, i) = factors(i, i);
      if (i > 0) t(i, i - 1) = t(i - 1, i) = factors(i - 1, i);
    }
    Product(l, t, lt);
    Transpose(l, turned);
    aasen.Take(Distance(exchanged, lt, turned, LInfNorm(c.a)), 0.03);
  }
}

// The columns must stay larger than the square root of epsilon: so the matrices are scaled.
TEST(SolverAccuracy, LeastSquares) {
  Worst exact("MGSLeastSquares, exact data"), normal("MGSLeastSquares, any data");
  std::mt19937 random(31);
  for (const Case& c : Cases(1)) {
    SCOPED_TRACE(c.name);
    const unsigned n = c.a.nRows();
    RMatrix tall = Normal(3 * n, n, random);
    Product(tall, c.a);
    Multiply(tall, 1e8);
    RVector b, ones, x(n);
    Ones(ones, n);
    Product(tall, ones, b);
    RMatrix q = tall;
    RVector residual = b;
    ASSERT_TRUE(MGSLeastSquares(q, x, residual));
    exact.Take(BackwardError(tall, x, b), 0.25);
    b = RightHandSide(3 * n);
    q = tall;
    residual = b;
    ASSERT_TRUE(MGSLeastSquares(q, x, residual));
    long double largest = 0;  // of what remains, along a column
    std::vector<long double> along(n);
    for (unsigned i = 0; i < 3 * n; ++i) {
      long double r = b(i);
      for (unsigned j = 0; j < n; ++j) r -= static_cast<long double>(tall(i, j)) * x(j);
      for (unsigned j = 0; j < n; ++j) along[j] += tall(i, j) * r;
    }
    for (const long double sum : along) largest = std::max(largest, std::abs(sum));
    const double size = FNorm(tall);
    const auto error = static_cast<double>(largest / size / (size * L2Norm(x) + L2Norm(b)));
    normal.Take(error / kEpsilon / n, 0.015);
  }
}

// A spline through points of the plane: conditionally definite, as CPDSolve wants it.
TEST(SolverAccuracy, SystemsWithConstraints) {
  constexpr unsigned kPoints = 100;
  std::mt19937 random(37);
  std::uniform_real_distribution<double> place(-1, 1);
  RMatrix c(3, kPoints), a(kPoints, kPoints);
  for (unsigned j = 0; j < kPoints; ++j) {
    c(0, j) = 1;
    c(1, j) = place(random);
    c(2, j) = place(random);
    for (unsigned i = 0; i < j; ++i) {
      const double r = std::hypot(c(1, i) - c(1, j), c(2, i) - c(2, j));
      a(i, j) = a(j, i) = r * r * std::log(r);
    }
  }
  const RVector b = RightHandSide(kPoints);
  const auto error = [&](const RVector& x, const RVector& y) {
    RVector left, right, none;
    Product(a, x, left);
    InnerProduct(c, y, right);
    Add(left, right);
    Subtract(left, b);
    Product(c, x, none);
    return std::max(LInfNorm(left) / LInfNorm(b), LInfNorm(none) / LInfNorm(x));
  };
  Worst gradients("CPDSolve, of the data"), vectors("AlternateSolve, a vector, of the data"),
      matrices("AlternateSolve, a matrix, of the data");
  RVector x(kPoints), y;
  ASSERT_TRUE(CPDSolve(a, c, b, x, y));
  gradients.Take(error(x, y), 4e-9);
  ASSERT_TRUE(AlternateSolve(a, c, b, x, y));
  vectors.Take(error(x, y), 4e-11);
  RMatrix xs, ys, bs(kPoints, 2);
  AssignCol(b, 1, bs);
  ASSERT_TRUE(AlternateSolve(a, c, bs, xs, ys));
  ExtractCol(xs, 1, x);
  ExtractCol(ys, 1, y);
  matrices.Take(error(x, y), 4e-11);
  EXPECT_TRUE(xs(0, 0) == 0 && ys(0, 0) == 0);
}

// Cramer's rule, where the determinant is not small.
TEST(SolverAccuracy, ThreeEquations) {
  Worst cramer("Solve3x3");
  std::mt19937 random(41);
  for (int i = 0; i < 1000;) {
    const RMatrix a = Normal(3, 3, random);
    const RVector b = RightHandSide(3);
    RVector x(3);
    double det = 0;
    for (unsigned j = 0; j < 3; ++j) {
      const unsigned k = (j + 1) % 3;
      const unsigned l = (j + 2) % 3;
      det += a(0, j) * (a(1, k) * a(2, l) - a(1, l) * a(2, k));
    }
    if (det < 0.1) continue;
    ASSERT_TRUE(Solve3x3(a, b, x));
    ++i;
    cramer.Take(BackwardError(a, x, b), 2);
  }
}

// The last row is the sum of the others, exactly or but for rounding; the system has a solution.
TEST(SolverAccuracy, ARowThatDependsOnTheOthers) {
  constexpr unsigned n = 10;
  Worst gauss("GaussSolve, singular"), symmetric("SymmetricSolve, singular"),
      general("GeneralizedSolve, singular");
  std::mt19937 random(43);
  const auto close = [](RMatrix& a) {
    for (unsigned j = 0; j < n; ++j) {
      a(n - 1, j) = 0;
      for (unsigned i = 0; i + 1 < n; ++i) a(n - 1, j) += a(i, j);
    }
  };
  RVector ones, b, x;
  Ones(ones, n);
  for (const bool isExact : {true, false}) {
    SCOPED_TRACE(isExact ? "whole numbers" : "fractions");
    int eliminated = 0;
    int factored = 0;
    for (int i = 0; i < 100; ++i) {
      RMatrix any(n, n), definite;
      for (double& number : any) {
        number = static_cast<double>(random() % 19) - 9;
        if (!isExact) number /= 7;
      }
      for (unsigned k = 0; k < n; ++k) any(n - 1, k) = 0;
      OuterProduct(any, any, definite);
      close(any);
      close(definite);
      for (unsigned k = 0; k + 1 < n; ++k) definite(k, n - 1) = definite(n - 1, k);
      definite(n - 1, n - 1) = 0;
      for (unsigned k = 0; k + 1 < n; ++k) definite(n - 1, n - 1) += definite(n - 1, k);

      Product(any, ones, b);
      RMatrix used = any;
      x = b;
      if (GaussSolve(used, x)) {
        ++eliminated;
        gauss.Take(BackwardError(any, x, b), 0.1);
      }
      used = any;
      RVector residual = b;
      EXPECT_FALSE(MGSLeastSquares(used, x, residual));
      Product(definite, ones, b);
      used = definite;
      if (SymmetricDecomposition(used)) {
        ++factored;
        x = b;
        SymmetricSolve(used, x);
        symmetric.Take(BackwardError(definite, x, b), 0.05);
      }
      ASSERT_TRUE(GeneralizedSolve(definite, b, x));
      general.Take(BackwardError(definite, x, b), 1);
    }
    // The last pivot is rounding: seldom exactly 0 or below epsilon.
    EXPECT_EQ(eliminated, isExact ? 96 : 90);
    EXPECT_EQ(factored, isExact ? 60 : 59);
  }
}

}  // namespace
}  // namespace vlm

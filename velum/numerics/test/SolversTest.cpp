#include <velum/numerics/Solvers.h>

#include <velum/numerics/Matrices.h>
#include <velum/numerics/test/MatrixOf.h>
#include <testing/FailingAllocations.h>

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <new>

namespace vlm {
namespace {

using testing::MatrixOf;
using testing::SameBits;
using testing::VectorOf;

// What is small enough to be solved by hand.
TEST(Solvers, SolveSmallSystemsExactly) {
  RMatrix a = MatrixOf("2,9;1,4");
  RVector v = VectorOf("2,9");
  EXPECT_TRUE(DiagonalSolve(a, v));
  EXPECT_TRUE(SameBits(VectorOf("1,2.25"), v));
  v = VectorOf("2,9");
  EXPECT_TRUE(ForwardElimination(a, v));
  EXPECT_TRUE(SameBits(VectorOf("1,2"), v));
  EXPECT_TRUE(BackSubstitution(a, v));
  EXPECT_TRUE(SameBits(VectorOf("0.25,0.5"), v)) << "by the column below the diagonal";
  v = VectorOf("2,9");
  UnitForwardElimination(a, v);
  EXPECT_TRUE(SameBits(VectorOf("2,7"), v));
  UnitBackSubstitution(a, v);
  EXPECT_TRUE(SameBits(VectorOf("-5,7"), v));
  RMatrix b = MatrixOf("2,4;9,18");
  UnitForwardElimination(a, b);
  UnitBackSubstitution(a, b);
  EXPECT_TRUE(SameBits(MatrixOf("-5,-10;7,14"), b));
  EXPECT_TRUE(DiagonalSolve(a, b));
  EXPECT_TRUE(SameBits(MatrixOf("-2.5,-5;1.75,3.5"), b));

  a = MatrixOf("4,nan;2,17");
  EXPECT_TRUE(CholeskyDecomposition(a));
  EXPECT_TRUE(SameBits(MatrixOf("2,nan;1,4"), a)) << "nothing above the diagonal is touched";
  b = MatrixOf("8,4;20,2");
  CholeskySolve(a, b);
  EXPECT_TRUE(SameBits(MatrixOf("1.5,1;1,0"), b));
  a = MatrixOf("4,nan;2,-3");
  EXPECT_TRUE(SymmetricDecomposition(a));
  EXPECT_TRUE(SameBits(MatrixOf("4,nan;0.5,-4"), a));
  b = MatrixOf("8,4;0,-2");
  SymmetricSolve(a, b);
  EXPECT_TRUE(SameBits(MatrixOf("1.5,0.5;1,1"), b));

  a = MatrixOf("2");
  v = VectorOf("4");
  EXPECT_TRUE(GaussSolve(a, v));
  EXPECT_EQ(v(0), 2);
  a = MatrixOf("2,0,0;0,0,-1;0,1,0");
  v = VectorOf("4,3,5");
  EXPECT_TRUE(Solve3x3(a, v, v));
  EXPECT_TRUE(SameBits(VectorOf("2,5,-3"), v));
  RVector d = VectorOf("2,2.5,2.5");
  RVector e = VectorOf("1,1");
  v = VectorOf("3,4.5,3.5");
  EXPECT_TRUE(TridiagonalSolve(d, e, v));
  EXPECT_TRUE(SameBits(VectorOf("1,1,1"), v));
  a = MatrixOf("2,1;1,2");
  EXPECT_TRUE(GeneralizedSolve(a, VectorOf("3,3"), v));
  EXPECT_NEAR(v(0), 1, 1e-15);
}

TEST(Solvers, ARowOfEqualPivotsStays) {
  RMatrix a = MatrixOf("2,1;-2,3");
  RVector b = VectorOf("3,1");
  EXPECT_TRUE(GaussSolve(a, b));
  EXPECT_TRUE(SameBits(MatrixOf("2,1;-2,4"), a)) << "the upper one";
  EXPECT_TRUE(SameBits(VectorOf("1,1"), b));
}

TEST(Solvers, SingularMatricesAreRefused) {
  const auto solve = [](auto* function) {
    return [function](RMatrix a) {
      RVector v = VectorOf("1,1,1");
      return function(a, v);
    };
  };
  const auto factor = [](bool (*function)(RMatrix&)) {
    return [function](RMatrix a) { return function(a); };
  };
  const std::function<bool(RMatrix)> gauss = solve(&GaussSolve);
  const std::function<bool(RMatrix)> cholesky = factor(&CholeskyDecomposition);
  const std::function<bool(RMatrix)> symmetric = factor(&SymmetricDecomposition);
  const std::function<bool(RMatrix)> forward =
      solve(static_cast<bool (*)(const RMatrix&, RVector&) noexcept>(&ForwardElimination));
  const std::function<bool(RMatrix)> back =
      solve(static_cast<bool (*)(const RMatrix&, RVector&) noexcept>(&BackSubstitution));
  const std::function<bool(RMatrix)> diagonal =
      solve(static_cast<bool (*)(const RMatrix&, RVector&) noexcept>(&DiagonalSolve));
  const std::function<bool(RMatrix)> cramer = [](const RMatrix& a) {
    RVector x = VectorOf("1,1,1");
    return Solve3x3(a, x, x);
  };
  const std::function<bool(RMatrix)> least = [](RMatrix a) {
    RVector x = VectorOf("1,1,1");
    RVector b = x;
    return MGSLeastSquares(a, x, b);
  };
  const struct {
    const char* why;
    const char* text;
    const std::function<bool(RMatrix)>& function;
    bool expected;
  } rows[] = {
      {"zero", "0,0,0;0,0,0;0,0,0", gauss, false},
      {"equal rows", "1,2,3;1,2,3;4,5,7", gauss, false},
      {"the last pivot", "1,0,0;0,1,0;0,0,0", gauss, false},
      {"a pivot of epsilon", "1,0,0;0,1,0;0,0,2.220446049250313e-16", gauss, true},
      {"a pivot below epsilon", "1,0,0;0,1,0;0,0,2.22044604925031e-16", gauss, false},
      {"a negative diagonal", "1,0,0;0,-1,0;0,0,1", cholesky, false},
      {"the same, which may be", "1,0,0;0,-1,0;0,0,1", symmetric, true},
      {"a zero first", "0,1,0;1,0,0;0,0,1", symmetric, false},
      {"rank 2", "1,1,0;1,1,0;0,0,1", cholesky, false},
      {"rank 2", "1,1,0;1,1,0;0,0,1", symmetric, false},
      {"a pivot of epsilon", "1,0,0;0,2.220446049250313e-16,0;0,0,1", cholesky, true},
      {"a zero on the diagonal", "1,0,0;0,1,0;0,0,0", forward, false},
      {"a zero on the diagonal", "0,0,0;0,1,0;0,0,1", back, false},
      {"a zero on the diagonal", "1,0,0;0,0,0;0,0,1", diagonal, false},
      {"two rows exchanged: -1", "0,1,0;1,0,0;0,0,1", cramer, false},
      {"the determinant SUKOSHI", "1.1754943508222875e-38,0,0;0,1,0;0,0,1", cramer, true},
      {"a zero column", "1,0,0;0,0,0;0,0,1", least, false},
      {"equal columns", "1,1,0;2,2,0;0,0,1", least, false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(row.function(MatrixOf(row.text)), row.expected) << row.why << ": " << row.text;
  }
  RVector v = VectorOf("4,6");
  EXPECT_FALSE(DiagonalSolve(MatrixOf("2,0;0,0"), v));
  EXPECT_TRUE(SameBits(VectorOf("2,6"), v)) << "those before are divided";
  RVector d = VectorOf("1,1");
  RVector e = VectorOf("1");
  EXPECT_FALSE(TridiagonalSolve(d, e, v));
  EXPECT_TRUE(SameBits(VectorOf("2,6"), v));
  d = VectorOf("0,1");
  EXPECT_FALSE(TridiagonalSolve(MatrixOf("0,1;1,0"), d, e, v));
  EXPECT_TRUE(SameBits(VectorOf("6,2"), v)) << "turned, and not turned back";
  RVector x, y;
  EXPECT_FALSE(AlternateSolve(MatrixOf("1,0;0,-1"), MatrixOf("1,1"), VectorOf("1,1"), x, y));
  EXPECT_FALSE(CPDSolve(MatrixOf("1,0;0,1"), MatrixOf("1,1;2,2"), VectorOf("1,0"), v, y));
  EXPECT_FALSE(CPDSolve(MatrixOf("1"), MatrixOf("1;1"), VectorOf("1"), x = VectorOf("0"), y))
      << "more rows than columns";
  EXPECT_FALSE(CPDSolve(MatrixOf("1,0;0,-1"), RMatrix(), VectorOf("1,1"), v, y)) << "not definite";
}

TEST(Solvers, WithNothingToSolveNothingIsRead) {
  RMatrix a, x, y;
  RVector v, w, z;
  EXPECT_TRUE(DiagonalSolve(a, v) && DiagonalSolve(a, x));
  EXPECT_TRUE(ForwardElimination(a, v) && ForwardElimination(a, x));
  EXPECT_TRUE(BackSubstitution(a, v) && BackSubstitution(a, x));
  UnitForwardElimination(a, v);
  UnitBackSubstitution(a, x);
  EXPECT_TRUE(SymmetricDecomposition(a) && CholeskyDecomposition(a));
  SymmetricSolve(a, v);
  CholeskySolve(a, x);
  AasenDecomposition(a);
  Householder(v);
  EXPECT_TRUE(TridiagonalSolve(v, w, z) && TridiagonalSolve(a, v, w, z));
  EXPECT_TRUE(TridiagonalDecomposition(a, v, w));
  EXPECT_TRUE(GaussSolve(a, v) && Solve3x3(a, v, v));
  EXPECT_TRUE(MGSLeastSquares(a, v, w) && MGSLeastSquares(a, x, y));
  CPDProject(a, x, v, w);
  EXPECT_TRUE(CPDSolve(a, x, v, w, z));
  EXPECT_TRUE(CyclicJacobi(a, v));
  SVDSolve(a, v, w);
  SVDSolve(a, v, x);
  EXPECT_TRUE(GeneralizedSolve(a, v, w));
  EXPECT_TRUE(AlternateSolve(a, x, v, w, z));
  const RMatrix nothing;
  EXPECT_TRUE(AlternateSolve(a, nothing, nothing, x, y));
  EXPECT_TRUE(a.empty() && x.empty() && y.empty() && v.empty() && w.empty() && z.empty());
  RVector b = VectorOf("2,9");
  EXPECT_TRUE(AlternateSolve(MatrixOf("1,0;0,3"), nothing, b, w, z)) << "no constraints";
  EXPECT_TRUE(SameBits(VectorOf("2,3"), w));
  EXPECT_TRUE(CPDSolve(MatrixOf("1,0;0,4"), nothing, b, w = VectorOf("0,0"), z));
  EXPECT_NEAR(w(1), 2.25, 1e-12);
}

TEST(Solvers, NumbersThatAreNotFiniteEnd) {
  for (const double special : {double{NAN}, double{INFINITY}, -double{INFINITY}, 1e300}) {
    SCOPED_TRACE(special);
    const RMatrix good = MatrixOf("3,1,0;1,3,1;0,1,3");
    const RMatrix c = MatrixOf("1,1,1");
    RMatrix bad = good;
    bad(1, 0) = bad(0, 1) = special;
    RVector b = VectorOf("1,2,3");
    RVector badB = b;
    badB(2) = special;
    RVector x(3), work, s;
    EXPECT_FALSE(CPDSolve(bad, c, b, x, work));
    if (special != 1e300) {
      EXPECT_FALSE(CPDSolve(good, c, badB, x = RVector(3), work));
      EXPECT_FALSE(CPDSolve(good, c, b, x = badB, work));
    }
    EXPECT_FALSE(CPDSolve(good, MatrixOf("nan,1,1"), b, x = RVector(3), work));
    RMatrix v = bad;
    EXPECT_EQ(CyclicJacobi(v, s), special == 1e300);
    RMatrix diagonal = MatrixOf("1,0;0,1");
    diagonal(0, 0) = special;
    EXPECT_TRUE(CyclicJacobi(diagonal, s));
    EXPECT_TRUE(std::isnan(special) ? std::isnan(s(1)) : s(0) == special);
    v = bad;
    RMatrix other = bad;
    AasenDecomposition(v);
    TridiagonalDecomposition(other, x, s);
    Householder(badB);
  }
}

TEST(Solvers, EigenvaluesOfADiagonalMatrixAreThereAtOnce) {
  RMatrix a = MatrixOf("1,0,0,0;7,-3,0,0;7,7,3,0;7,7,7,-2");
  RVector s;
  EXPECT_TRUE(CyclicJacobi(a, s));
  EXPECT_TRUE(SameBits(VectorOf("-3,3,-2,1"), s)) << "equal ones in their order";
  EXPECT_TRUE(SameBits(MatrixOf("0,0,0,1;1,0,0,0;0,1,0,0;0,0,1,0"), a));
  a = MatrixOf("0,0;0,0");
  EXPECT_TRUE(CyclicJacobi(a, s));
  a = MatrixOf("5e-324,5e-324;5e-324,5e-324");
  EXPECT_TRUE(CyclicJacobi(a, s)) << "a tolerance of 0";
  RMatrix x = MatrixOf("1,10;1,10");
  SVDSolve(MatrixOf("1,0;0,1"), VectorOf("2,2e-10"), x);
  EXPECT_TRUE(SameBits(MatrixOf("0.5,5;0,0"), x)) << "what is small is dropped";
  SVDSolve(MatrixOf("1,0;0,1"), VectorOf("-2,4e-9"), x);
  EXPECT_TRUE(SameBits(MatrixOf("-0.25,-2.5;0,0"), x));
}

TEST(Solvers, ReflectionsAndWhatNeedsNone) {
  RVector v = VectorOf("3,0,4");
  Householder(v);
  // (1, 0, w) with 1 + w^2 = 2 / beta maps (3, 0, 4) to (5, 0, 0).
  EXPECT_NEAR(v(0) * (3 + 4 * v(2)), -2, 1e-15);
  EXPECT_NEAR(v(0) * (1 + v(2) * v(2)), 2, 1e-15);
  // Two elements get the memory of three from most allocators: what stands behind them is not 0.
  v = VectorOf("0,0,nan");
  v.Clear();
  v = VectorOf("4,3");
  Householder(v);
  EXPECT_NEAR(v(0) * (4 + 3 * v(1)), -1, 1e-15) << "to (5, 0)";
  for (const char* text : {"5,0,0", "-5,1e-30,0", "0,0", "0"}) {
    v = VectorOf(text);
    Householder(v);
    EXPECT_EQ(v(0), 0) << text;
  }
  RMatrix a = MatrixOf("1,-2,0,0;-2,3,4,0;0,4,5,-6;0,0,-6,7");
  RVector d, e;
  EXPECT_TRUE(TridiagonalDecomposition(a, d, e));
  EXPECT_TRUE(SameBits(VectorOf("1,3,5,7"), d));
  EXPECT_TRUE(SameBits(VectorOf("2,4,-6"), e)) << "all but the last without a sign";
  EXPECT_TRUE(IsIdentity(a, 0));
  a = MatrixOf("-4");
  EXPECT_TRUE(TridiagonalDecomposition(a, d, e));
  EXPECT_TRUE(a(0, 0) == 1 && d(0) == -4 && e.empty());
}

TEST(Solvers, ConjugateGradientsFindTheLeast) {
  const RMatrix a = MatrixOf("2,0,0;0,4,0;0,0,4");
  const RMatrix c = MatrixOf("1,1,1");
  RVector x(3), work;
  EXPECT_TRUE(CPDSolve(a, c, VectorOf("8,0,0"), x, work));
  EXPECT_NEAR(x(0), 2, 1e-12);
  EXPECT_NEAR(x(1), -1, 1e-12);
  EXPECT_NEAR(work(0), 4, 1e-12) << "a x + c' work = b";
  const RVector solved = x = VectorOf("2,-1,-1");
  EXPECT_TRUE(CPDSolve(a, c, VectorOf("8,0,0"), x, work));
  EXPECT_TRUE(SameBits(solved, x)) << "a start that solves it stays";
  x = VectorOf("4,1,1");
  CPDProject(c, MatrixOf("1.7320508075688772"), x, work);
  EXPECT_NEAR(x(0), 2, 1e-15);
  EXPECT_NEAR(work(0), 2, 1e-15);
}

TEST(Solvers, WithoutMemoryOperandsStayValid) {
  if (!testing::kAllocationsCanFail) GTEST_SKIP() << "the sanitizer keeps operator new";
  for (std::size_t allowed = 0;; ++allowed) {
    RMatrix a = MatrixOf("3,1,0;1,3,1;0,1,3");
    const RMatrix before = a;
    RVector s;
    bool isThrown = false;
    {
      const testing::FailingAllocations failing(allowed);
      try {
        EXPECT_TRUE(CyclicJacobi(a, s));
      } catch (const std::bad_alloc&) {
        isThrown = true;
      }
    }
    if (!isThrown) break;
    EXPECT_TRUE(SameBits(before, a));
    ASSERT_LT(allowed, 100u);
  }
}

}  // namespace
}  // namespace vlm

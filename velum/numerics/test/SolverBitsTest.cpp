// The solvers beside the plain loops that define them, bit for bit.
#include <velum/numerics/Solvers.h>

#include <velum/numerics/Matrices.h>
#include <velum/numerics/test/MatrixOf.h>
#include <velum/numerics/test/reference/PlainProducts.h>
#include <velum/numerics/test/reference/PlainSolvers.h>

#include <gtest/gtest.h>

#include <random>

namespace vlm {
namespace {

using reference::PlainProduct;
using testing::RandomOf;
using testing::SameBits;

enum Kind { kDefinite, kLowRank, kSymmetric, kSparse, kSpecial, kAny };

RMatrix Random(Kind kind, unsigned n, std::mt19937& random) {
  RMatrix a = RandomOf(RMatrix(n, kind == kLowRank ? n / 2 + 1 : n), random, kind == kSpecial);
  if (kind == kAny) return a;
  if (kind == kDefinite || kind == kLowRank) return PlainProduct(a, false, a, true);
  for (unsigned i = 0; i < n; ++i) {
    for (unsigned j = 0; j < i; ++j) {
      if (kind == kSparse && random() % 4) a(i, j) = 0;
      a(j, i) = a(i, j);
    }
  }
  return a;
}

// Calls `check(kind, a, random)` for matrices of all kinds and many sizes, also those on both sides
// of a block.
template <class Check>
void ForAll(unsigned most, Check check) {
  std::mt19937 random(17);
  SCOPED_TRACE("seed 17");
  for (const unsigned n : {1u, 2u, 3u, 7u, 8u, 9u, 16u, 17u, 23u, 33u, 48u, 50u, 97u, 130u}) {
    if (n > most) return;
    for (const Kind kind : {kDefinite, kLowRank, kSymmetric, kSparse, kSpecial, kAny}) {
      SCOPED_TRACE(::testing::Message() << n << " rows, kind " << kind);
      check(kind, Random(kind, n, random), random);
      if (::testing::Test::HasFailure()) return;
    }
  }
}

TEST(SolverBits, Factors) {
  ForAll(130, [](Kind, const RMatrix& a, std::mt19937&) {
    RMatrix actual = a;
    RMatrix expected = a;
    EXPECT_EQ(CholeskyDecomposition(actual), reference::PlainCholesky(expected));
    EXPECT_TRUE(SameBits(expected, actual)) << "Cholesky";
    actual = expected = a;
    EXPECT_EQ(SymmetricDecomposition(actual), reference::PlainSymmetric(expected));
    EXPECT_TRUE(SameBits(expected, actual)) << "with a diagonal";
    actual = expected = a;
    AasenDecomposition(actual);
    reference::PlainAasen(expected);
    EXPECT_TRUE(SameBits(expected, actual)) << "Aasen";
    if (a.nRows() < 2) return;
    actual = expected = a;
    RVector d, e, expectedD, expectedE;
    EXPECT_TRUE(TridiagonalDecomposition(actual, d, e));
    reference::PlainTridiagonal(expected, expectedD, expectedE);
    EXPECT_TRUE(SameBits(expected, actual)) << "tridiagonal";
    EXPECT_TRUE(SameBits(expectedD, d) && SameBits(expectedE, e)) << "tridiagonal";
  });
}

TEST(SolverBits, TrianglesWithOneRightHandSideAndMany) {
  ForAll(130, [](Kind, const RMatrix& a, std::mt19937& random) {
    const unsigned n = a.nRows();
    const RMatrix b = RandomOf(RMatrix(n, 35), random);
    RMatrix forward = b;
    RMatrix back = b;
    const bool isForward = ForwardElimination(a, forward);
    const bool isBack = BackSubstitution(a, back);
    for (const unsigned j : {0u, 34u}) {
      RVector v, w, column;
      ExtractCol(b, j, v);
      w = v;
      EXPECT_EQ(isForward, ForwardElimination(a, v));
      EXPECT_EQ(isForward, reference::PlainForward(a, w));
      EXPECT_TRUE(SameBits(w, v));
      ExtractCol(forward, j, column);
      EXPECT_TRUE(SameBits(w, column));
      ExtractCol(b, j, v);
      w = v;
      EXPECT_EQ(isBack, BackSubstitution(a, v));
      EXPECT_EQ(isBack, reference::PlainBack(a, w));
      EXPECT_TRUE(SameBits(w, v));
      ExtractCol(back, j, column);
      EXPECT_TRUE(SameBits(w, column));
    }
  });
}

TEST(SolverBits, Elimination) {
  ForAll(130, [](Kind, const RMatrix& a, std::mt19937& random) {
    RMatrix actual = a;
    RMatrix expected = a;
    RVector x = RandomOf(RVector(a.nRows()), random);
    RVector expectedX = x;
    EXPECT_EQ(GaussSolve(actual, x), reference::PlainGauss(expected, expectedX));
    EXPECT_TRUE(SameBits(expected, actual));
    EXPECT_TRUE(SameBits(expectedX, x));
  });
}

TEST(SolverBits, LeastSquaresWithOneRightHandSideAndMany) {
  ForAll(130, [](Kind kind, const RMatrix& square, std::mt19937& random) {
    const unsigned n = square.nRows();
    RMatrix a = square;
    if (kind == kAny || kind == kSpecial) a = RandomOf(RMatrix(2 * n + 3, n), random);
    const RMatrix b = RandomOf(RMatrix(a.nRows(), 18), random);
    RMatrix q = a;
    RMatrix x(n, 18);
    RMatrix residuals = b;
    const bool isSolved = MGSLeastSquares(q, x, residuals);
    for (const unsigned j : {0u, 17u}) {
      RMatrix actual = a;
      RMatrix expected = a;
      RVector actualX(n), expectedX(n), actualB, expectedB, column;
      ExtractCol(b, j, actualB);
      expectedB = actualB;
      EXPECT_EQ(isSolved, MGSLeastSquares(actual, actualX, actualB));
      EXPECT_EQ(isSolved, reference::PlainLeastSquares(expected, expectedX, expectedB));
      EXPECT_TRUE(SameBits(expected, actual) && SameBits(expected, q));
      EXPECT_TRUE(SameBits(expectedX, actualX));
      EXPECT_TRUE(SameBits(expectedB, actualB));
      ExtractCol(x, j, column);
      EXPECT_TRUE(SameBits(expectedX, column));
      ExtractCol(residuals, j, column);
      EXPECT_TRUE(SameBits(expectedB, column));
    }
  });
}

TEST(SolverBits, Eigenvectors) {
  ForAll(130, [](Kind, const RMatrix& a, std::mt19937&) {
    RMatrix actual = a;
    RMatrix expected = a;
    RVector s, expectedS;
    const bool isDone = CyclicJacobi(actual, s);
    EXPECT_EQ(isDone, reference::PlainJacobi(expected, expectedS) || SymOff(a) == 0);
    if (std::isnan(SymOff(a)) || std::isinf(SymOff(a))) return;
    EXPECT_TRUE(SameBits(expectedS, s));
    EXPECT_TRUE(SameBits(expected, actual));
  });
}

TEST(SolverBits, ConjugateGradients) {
  ForAll(50, [](Kind kind, const RMatrix& a, std::mt19937& random) {
    const unsigned n = a.nRows();
    if (n < 4 || kind == kSpecial) return;
    const RMatrix c = RandomOf(RMatrix(3, n), random);
    const RVector b = RandomOf(RVector(n), random);
    RVector x(n), expectedX(n), work, expectedWork;
    EXPECT_EQ(CPDSolve(a, c, b, x, work),
              reference::PlainConjugateGradients(a, c, b, expectedX, expectedWork));
    EXPECT_TRUE(SameBits(expectedX, x));
    EXPECT_TRUE(SameBits(expectedWork, work));
  });
}

}  // namespace
}  // namespace vlm

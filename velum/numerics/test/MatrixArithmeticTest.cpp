#include <velum/numerics/MatrixArithmetic.h>

#include <velum/numerics/test/MatrixOf.h>

#include <gtest/gtest.h>

#include <cmath>

namespace vlm {
namespace {

using testing::MatrixOf;
using testing::SameBits;
using testing::VectorOf;

struct OneOperand {
  const char* name;
  void (*vectorInPlace)(RVector&);
  void (*vector)(const RVector&, RVector&);
  void (*matrixInPlace)(RMatrix&);
  void (*matrix)(const RMatrix&, RMatrix&);
  const char* result;
};

// Each of the four forms gives the same elements, also into an operand.
TEST(MatrixArithmetic, OfOneOperand) {
  const OneOperand rows[] = {
      {"Negate", [](RVector& v) { Negate(v); }, [](const RVector& v, RVector& o) { Negate(v, o); },
       [](RMatrix& a) { Negate(a); }, [](const RMatrix& a, RMatrix& o) { Negate(a, o); },
       "-4,-0.25;-0,1"},
      {"Sqrt", [](RVector& v) { Sqrt(v); }, [](const RVector& v, RVector& o) { Sqrt(v, o); },
       [](RMatrix& a) { Sqrt(a); }, [](const RMatrix& a, RMatrix& o) { Sqrt(a, o); },
       "2,0.5;0,nan"},
      {"Add", [](RVector& v) { Add(v, 3); }, [](const RVector& v, RVector& o) { Add(v, 3, o); },
       [](RMatrix& a) { Add(a, 3); }, [](const RMatrix& a, RMatrix& o) { Add(a, 3, o); },
       "7,3.25;3,2"},
      {"Subtract", [](RVector& v) { Subtract(v, 3); },
       [](const RVector& v, RVector& o) { Subtract(v, 3, o); }, [](RMatrix& a) { Subtract(a, 3); },
       [](const RMatrix& a, RMatrix& o) { Subtract(a, 3, o); }, "1,-2.75;-3,-4"},
      {"Multiply", [](RVector& v) { Multiply(v, 3); },
       [](const RVector& v, RVector& o) { Multiply(v, 3, o); }, [](RMatrix& a) { Multiply(a, 3); },
       [](const RMatrix& a, RMatrix& o) { Multiply(a, 3, o); }, "12,0.75;0,-3"},
      {"Divide", [](RVector& v) { Divide(v, 0); },
       [](const RVector& v, RVector& o) { Divide(v, 0, o); }, [](RMatrix& a) { Divide(a, 0); },
       [](const RMatrix& a, RMatrix& o) { Divide(a, 0, o); }, "inf,inf;nan,-inf"},
  };
  for (const OneOperand& row : rows) {
    SCOPED_TRACE(row.name);
    RVector v = VectorOf("4,0.25;0,-1");
    RVector vectorOut;
    row.vector(v, vectorOut);
    row.vectorInPlace(v);
    EXPECT_TRUE(SameBits(VectorOf(row.result), v));
    EXPECT_TRUE(SameBits(v, vectorOut));
    RMatrix a = MatrixOf("4,0.25;0,-1");
    RMatrix matrixOut;
    row.matrix(a, matrixOut);
    row.matrix(a, a);
    EXPECT_TRUE(SameBits(MatrixOf(row.result), matrixOut));
    EXPECT_TRUE(SameBits(matrixOut, a)) << "into itself";
    a = MatrixOf("4,0.25;0,-1");
    row.matrixInPlace(a);
    EXPECT_TRUE(SameBits(matrixOut, a));
  }
}

TEST(MatrixArithmetic, DividesEachElement) {
  RVector v = VectorOf("5");
  Divide(v, 49);
  EXPECT_EQ(v(0), 5.0 / 49);
  EXPECT_NE(v(0), 5 * (1.0 / 49)) << "the reciprocal would give another last bit";
}

TEST(MatrixArithmetic, OfTwoOperands) {
  const RVector w = VectorOf("1,10,100");
  RVector v = VectorOf("4,5");
  RVector vectorOut;
  Add(v, w, vectorOut);
  EXPECT_TRUE(SameBits(VectorOf("5,15"), vectorOut)) << "over the size of the first";
  Add(v, w);
  EXPECT_TRUE(SameBits(vectorOut, v));
  Subtract(v, w, vectorOut);
  EXPECT_TRUE(SameBits(VectorOf("4,5"), vectorOut));
  Subtract(v, v);
  EXPECT_TRUE(SameBits(VectorOf("0,0"), v)) << "one operand twice";

  const RMatrix b = MatrixOf("1,10;100,1000");
  RMatrix a = MatrixOf("1,2;3,4");
  RMatrix matrixOut;
  Add(a, b, matrixOut);
  EXPECT_TRUE(SameBits(MatrixOf("2,12;103,1004"), matrixOut));
  Add(a, b);
  EXPECT_TRUE(SameBits(matrixOut, a));
  Subtract(a, b, matrixOut);
  EXPECT_TRUE(SameBits(MatrixOf("1,2;3,4"), matrixOut));
  Subtract(a, b);
  EXPECT_TRUE(SameBits(matrixOut, a));
}

TEST(MatrixArithmetic, UpdatesRoundTheProductFirst) {
  RVector x = VectorOf("1,2");
  Update_axpy(3, x, VectorOf("10,20"));
  EXPECT_TRUE(SameBits(VectorOf("13,26"), x));
  Update_xpay(x, 3, VectorOf("10,20"));
  EXPECT_TRUE(SameBits(VectorOf("43,86"), x));
  // A fused multiply-add would leave 2^-60.
  const double nearOne = 1 + std::ldexp(1, -30);
  x(0) = nearOne;
  Update_axpy(nearOne, x, VectorOf("-1,0"));
  EXPECT_EQ(x(0), std::ldexp(1, -29));
}

}  // namespace
}  // namespace vlm

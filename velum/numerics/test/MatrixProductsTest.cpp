#include <velum/numerics/MatrixProducts.h>

#include <velum/numerics/test/MatrixOf.h>
#include <velum/numerics/test/reference/PlainProducts.h>

#include <testing/FailingAllocations.h>

#include <gtest/gtest.h>

#include <new>
#include <random>

namespace vlm {
namespace {

using reference::PlainProduct;
using testing::MatrixOf;
using testing::RandomOf;
using testing::SameBits;
using testing::VectorOf;

TEST(MatrixProducts, OfSmallOperands) {
  const RMatrix a = MatrixOf("1,2;3,4;5,6");
  const RMatrix b = MatrixOf("1,0,2;0,1,3");
  const RVector v = VectorOf("1,-1");
  const RVector w = VectorOf("1,2,3");
  RMatrix out;
  Product(a, b, out);
  EXPECT_TRUE(SameBits(MatrixOf("1,2,8;3,4,18;5,6,28"), out));
  InnerProduct(a, a, out);
  EXPECT_TRUE(SameBits(MatrixOf("35,44;44,56"), out));
  OuterProduct(a, a, out);
  EXPECT_TRUE(SameBits(MatrixOf("5,11,17;11,25,39;17,39,61"), out));
  OuterProduct(v, w, out);
  EXPECT_TRUE(SameBits(MatrixOf("1,2,3;-1,-2,-3"), out));
  Transpose(a, out);
  EXPECT_TRUE(SameBits(MatrixOf("1,3,5;2,4,6"), out));

  RVector product;
  Product(a, v, product);
  EXPECT_TRUE(SameBits(VectorOf("-1,-1,-1"), product));
  InnerProduct(a, w, product);
  EXPECT_TRUE(SameBits(VectorOf("22,28"), product));
  double dot = 7;
  InnerProduct(w, w, dot);
  EXPECT_EQ(dot, 14);
  EXPECT_EQ(DotProduct(v, w), -1) << "over the length of the first";
  QuadraticProduct(w, a, v, dot);
  EXPECT_EQ(dot, -6);
  EXPECT_EQ(QuadraticProduct(RVector(), RMatrix(), RVector()), 0);
  EXPECT_EQ(DotProduct(RVector(), RVector()), 0);
}

TEST(MatrixProducts, InPlaceChangeOneOperand) {
  RMatrix a = MatrixOf("1,2;3,4");
  const RMatrix b = MatrixOf("0,1;1,0");
  RVector v = VectorOf("1,10");
  Product(a, v);
  EXPECT_TRUE(SameBits(VectorOf("21,43"), v));
  InnerProduct(MatrixOf("1,2,3;4,5,6"), v);
  EXPECT_TRUE(SameBits(VectorOf("193,257,321"), v)) << "of another length";
  Product(a, b);
  EXPECT_TRUE(SameBits(MatrixOf("2,1;4,3"), a));
  InnerProduct(a, b);
  EXPECT_TRUE(SameBits(MatrixOf("4,2;3,1"), a));
  OuterProduct(a, MatrixOf("1,1;0,1;2,0"));
  EXPECT_TRUE(SameBits(MatrixOf("6,2,8;4,1,6"), a));
  Transpose(a);
  EXPECT_TRUE(SameBits(MatrixOf("6,4;2,1;8,6"), a));
  RMatrix square = MatrixOf("1,1;0,1");
  Product(square, square);
  EXPECT_TRUE(SameBits(MatrixOf("1,2;0,1"), square)) << "with itself";
}

TEST(MatrixProducts, OfNothingAreEmpty) {
  RMatrix out(2, 2);
  Product(RMatrix(), RMatrix(), out);
  EXPECT_TRUE(out.empty());
  RVector product(3);
  InnerProduct(RMatrix(), RVector(), product);
  EXPECT_TRUE(product.empty());
  Transpose(out);
  EXPECT_TRUE(out.empty());
}

// Sizes on both sides of each tile, block and threshold; infinities and NaN as well.
TEST(MatrixProducts, HaveTheBitsOfThePlainLoops) {
  constexpr unsigned kSizes[][3] = {
      {1, 1, 1},    {4, 12, 8},   {5, 13, 3},    {3, 11, 60},   {10, 10, 10},   {50, 50, 50},
      {52, 52, 52}, {53, 53, 53}, {96, 24, 256}, {97, 25, 257}, {1, 1021, 258}, {2, 1040, 7},
      {200, 3, 1},  {7, 1, 600},  {100, 64, 64}, {33, 95, 129},
  };
  std::mt19937 random(11);
  SCOPED_TRACE("seed 11");
  for (const auto& [rows, cols, depth] : kSizes) {
    SCOPED_TRACE(::testing::Message() << rows << " by " << cols << ", depth " << depth);
    const bool special = rows % 2 == 0;
    const RMatrix a = RandomOf(RMatrix(rows, depth), random, special);
    const RMatrix b = RandomOf(RMatrix(depth, cols), random, special);
    RMatrix out;
    Product(a, b, out);
    EXPECT_TRUE(SameBits(PlainProduct(a, false, b, false), out));
    RMatrix transpose;
    Transpose(a, transpose);
    InnerProduct(transpose, b, out);
    EXPECT_TRUE(SameBits(PlainProduct(transpose, true, b, false), out));
    Transpose(b, transpose);
    OuterProduct(a, transpose, out);
    EXPECT_TRUE(SameBits(PlainProduct(a, false, transpose, true), out));
  }
}

TEST(MatrixProducts, WithVectorsHaveTheBitsOfThePlainLoops) {
  std::mt19937 random(12);
  SCOPED_TRACE("seed 12");
  for (const unsigned rows : {1u, 7u, 8u, 9u, 31u, 100u}) {
    const RMatrix a = RandomOf(RMatrix(rows, 45), random);
    const RMatrix across = RandomOf(RMatrix(45, 1), random);
    const RMatrix down = RandomOf(RMatrix(rows, 1), random);
    RVector v, out, expected;
    Initialize(v, 45, across.Base());
    Initialize(expected, rows, PlainProduct(a, false, across, false).Base());
    Product(a, v, out);
    EXPECT_TRUE(SameBits(expected, out)) << rows;
    Initialize(v, rows, down.Base());
    Initialize(expected, 45, PlainProduct(a, true, down, false).Base());
    InnerProduct(a, v, out);
    EXPECT_TRUE(SameBits(expected, out)) << rows;
  }
}

TEST(MatrixProducts, AProductInPlaceLeavesItsOperandWhenMemoryRunsOut) {
  if (!testing::kAllocationsCanFail) GTEST_SKIP();
  RMatrix a = MatrixOf("1,2;3,4");
  const testing::FailingAllocations exhausted;
  EXPECT_THROW(Product(a, a), std::bad_alloc);
  EXPECT_THROW(Transpose(a), std::bad_alloc);
  EXPECT_EQ(a(1, 0), 3);
}

}  // namespace
}  // namespace vlm

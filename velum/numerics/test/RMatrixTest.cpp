#include <velum/numerics/RMatrix.h>

#include <velum/numerics/RVector.h>
#include <velum/numerics/test/MatrixOf.h>

#include <testing/FailingAllocations.h>

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <type_traits>
#include <utility>

namespace vlm {
namespace {

using testing::FailingAllocations;
using testing::MatrixOf;
using testing::SameBits;
using testing::VectorOf;

static_assert(sizeof(RVector) == 2 * sizeof(void*) && sizeof(RMatrix) == 2 * sizeof(void*));
static_assert(!std::is_polymorphic_v<RVector> && !std::is_polymorphic_v<RMatrix>);
static_assert(std::is_nothrow_move_constructible_v<RMatrix>);

TEST(RVector, StartsWithZerosAndEmptyWithoutAnArray) {
  const RVector v(3);
  EXPECT_TRUE(SameBits(VectorOf("0,0,0"), v));
  for (const RVector& empty : {RVector(), RVector(0)}) {
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(empty.Length(), 0u);
    EXPECT_EQ(empty.Base(), nullptr);
    EXPECT_EQ(empty.begin(), empty.end());
  }
}

TEST(RVector, ResizeKeepsTheContentsOfTheSameLengthOnly) {
  RVector v = VectorOf("1,2,3");
  const double* const array = v.Base();
  v.Resize(3);
  EXPECT_EQ(v.Base(), array);
  EXPECT_TRUE(SameBits(VectorOf("1,2,3"), v));
  v.Resize(5);
  EXPECT_EQ(v.end() - v.begin(), 5);
  v.Clear();
  EXPECT_EQ(v.Base(), nullptr);
}

TEST(RMatrix, AnyZeroInItsSizeMakesItEmpty) {
  RMatrix resized(2, 2);
  resized.Resize(3, 0);
  for (const RMatrix& empty : {RMatrix(), RMatrix(0, 5), RMatrix(5, 0), resized}) {
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(empty.nRows(), 0u);
    EXPECT_EQ(empty.nCols(), 0u);
    EXPECT_EQ(empty.Base(), nullptr);
    EXPECT_EQ(empty.begin(), empty.end());
  }
}

TEST(RMatrix, StandsRowByRow) {
  RMatrix a(2, 3);
  EXPECT_TRUE(SameBits(MatrixOf("0,0,0;0,0,0"), a));
  a(1, 0) = 7;
  EXPECT_EQ(a.Base()[3], 7);
  EXPECT_EQ(a.Base(1, 0), a.begin() + 3);
  EXPECT_EQ(a.end() - a.begin(), 6);
}

TEST(RMatrix, ResizeKeepsTheContentsOfTheSameShapeOnly) {
  RMatrix a = MatrixOf("1,2,3;4,5,6");
  a.Resize(2, 3);
  EXPECT_TRUE(SameBits(MatrixOf("1,2,3;4,5,6"), a));
  a.Resize(3, 2);
  EXPECT_EQ(a.nRows(), 3u);
  EXPECT_EQ(a.nCols(), 2u);
  a.Clear();
  EXPECT_TRUE(a.empty());
}

TEST(RMatrix, CopiesAreDeepAndKeepAnArrayOfTheirSize) {
  const RMatrix a = MatrixOf("1,2;3,4");
  RMatrix b(2, 2);
  const double* const array = b.Base();
  b = a;
  EXPECT_EQ(b.Base(), array);
  b(0, 0) = 9;
  EXPECT_EQ(a(0, 0), 1);
  const RMatrix& self = b;
  b = self;
  EXPECT_TRUE(SameBits(MatrixOf("9,2;3,4"), b));
  b = RMatrix();
  EXPECT_TRUE(b.empty());

  RVector v = VectorOf("1,2");
  const RVector w = v;
  v(0) = 5;
  EXPECT_EQ(w(0), 1);
  v = VectorOf("1,2,3");
  EXPECT_EQ(v.Length(), 3u);
}

TEST(RMatrix, IsEmptyOnceMovedFrom) {
  RMatrix a = MatrixOf("1,2;3,4");
  RMatrix b = std::move(a);
  EXPECT_TRUE(SameBits(MatrixOf("1,2;3,4"), b));
  a = std::move(b);
  EXPECT_TRUE(b.empty() && b.nCols() == 0 && !b.Base());  // NOLINT: what is left is the question
  RVector v = VectorOf("1,2");
  const RVector w = std::move(v);
  EXPECT_TRUE(v.empty() && !v.Base() && w.Length() == 2);  // NOLINT
}

TEST(RMatrix, SizesBeyond32BitsOfBytesAreRefused) {
  RVector v = VectorOf("1");
  RMatrix a = MatrixOf("1");
  EXPECT_THROW(v.Resize(1u << 29), std::bad_alloc);
  EXPECT_THROW(v.Resize(0xFFFFFFFF), std::bad_alloc);
  EXPECT_THROW(a.Resize(1u << 15, 1u << 14), std::bad_alloc);
  EXPECT_THROW(a.Resize(1u << 16, 1u << 16), std::bad_alloc) << "a product that is 0 in 32 bits";
  EXPECT_THROW(a.Resize(0xFFFFFFFF, 0xFFFFFFFF), std::bad_alloc);
  EXPECT_THROW(RMatrix(1u << 31, 2), std::bad_alloc);
  EXPECT_TRUE(SameBits(VectorOf("1"), v));
  EXPECT_TRUE(SameBits(MatrixOf("1"), a));
}

TEST(RMatrix, StaysAsItWasWhenMemoryRunsOut) {
  if (!testing::kAllocationsCanFail) GTEST_SKIP();
  RVector v = VectorOf("1,2");
  RMatrix a = MatrixOf("1,2;3,4");
  const RVector otherVector(9);
  const RMatrix otherMatrix(3, 3);
  const std::function<void()> actions[] = {
      [&] { v.Resize(9); },     [&] { v = otherVector; },           [&] { a.Resize(3, 3); },
      [&] { a = otherMatrix; }, [&] { RMatrix copy(otherMatrix); },
  };
  for (const auto& action : actions) {
    const FailingAllocations exhausted;
    EXPECT_THROW(action(), std::bad_alloc);
  }
  EXPECT_TRUE(SameBits(VectorOf("1,2"), v));
  EXPECT_TRUE(SameBits(MatrixOf("1,2;3,4"), a));
}

}  // namespace
}  // namespace vlm

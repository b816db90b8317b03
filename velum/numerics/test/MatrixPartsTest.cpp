#include <velum/numerics/MatrixParts.h>

#include <velum/numerics/test/MatrixOf.h>

#include <gtest/gtest.h>

namespace vlm {
namespace {

using testing::MatrixOf;
using testing::SameBits;
using testing::VectorOf;

TEST(MatrixParts, RowsColumnsAndDiagonalsGoOutAndIn) {
  const RMatrix a = MatrixOf("1,2,3;4,5,6");
  RVector v;
  ExtractRow(a, 1, v);
  EXPECT_TRUE(SameBits(VectorOf("4,5,6"), v));
  ExtractCol(a, 2, v);
  EXPECT_TRUE(SameBits(VectorOf("3,6"), v));
  ExtractDiagonal(a, v);
  EXPECT_TRUE(SameBits(VectorOf("1,5"), v));

  const RVector longer = VectorOf("7,8,9,10");
  RMatrix b = a;
  AssignRow(longer, 0, b);
  EXPECT_TRUE(SameBits(MatrixOf("7,8,9;4,5,6"), b)) << "as many as a row has";
  b = a;
  AssignCol(VectorOf("7"), 1, b);
  EXPECT_TRUE(SameBits(MatrixOf("1,7,3;4,5,6"), b)) << "as many as the vector has";
  b = a;
  AssignDiagonal(longer, b);
  EXPECT_TRUE(SameBits(MatrixOf("7,2,3;4,8,6"), b)) << "as many as the diagonal has";
}

TEST(MatrixParts, VectorsJoin) {
  const RVector v = VectorOf("1,2");
  RVector out;
  Concatenate(v, VectorOf("3"), out);
  EXPECT_TRUE(SameBits(VectorOf("1,2,3"), out));
  Concatenate(out, out);
  EXPECT_TRUE(SameBits(VectorOf("1,2,3,1,2,3"), out)) << "with itself";
  Concatenate(RVector(), RVector(), out);
  EXPECT_TRUE(out.empty());
  Concatenate(out, v);
  Concatenate(out, RVector());
  EXPECT_TRUE(SameBits(v, out));
}

// Each form with a result of its own is held against the form in place.
TEST(MatrixParts, MatricesJoinAcrossAndDown) {
  const RMatrix a = MatrixOf("1,2;3,4");
  const RVector v = VectorOf("8,9");
  const RMatrix b = MatrixOf("5,6,7;5,6,7");
  RMatrix out;
  RMatrix inPlace = a;
  ConcatenateCols(a, v, out);
  ConcatenateCols(inPlace, v);
  EXPECT_TRUE(SameBits(MatrixOf("1,2,8;3,4,9"), out));
  EXPECT_TRUE(SameBits(out, inPlace));
  inPlace = a;
  ConcatenateCols(v, a, out);
  ConcatenateCols(v, inPlace);
  EXPECT_TRUE(SameBits(MatrixOf("8,1,2;9,3,4"), out));
  EXPECT_TRUE(SameBits(out, inPlace));
  inPlace = a;
  ConcatenateCols(a, b, out);
  ConcatenateCols(inPlace, b);
  EXPECT_TRUE(SameBits(MatrixOf("1,2,5,6,7;3,4,5,6,7"), out));
  EXPECT_TRUE(SameBits(out, inPlace));

  inPlace = a;
  ConcatenateRows(a, v, out);
  ConcatenateRows(inPlace, v);
  EXPECT_TRUE(SameBits(MatrixOf("1,2;3,4;8,9"), out));
  EXPECT_TRUE(SameBits(out, inPlace));
  inPlace = a;
  ConcatenateRows(v, a, out);
  ConcatenateRows(v, inPlace);
  EXPECT_TRUE(SameBits(MatrixOf("8,9;1,2;3,4"), out));
  EXPECT_TRUE(SameBits(out, inPlace));
  inPlace = a;
  ConcatenateRows(a, MatrixOf("5,6"), out);
  ConcatenateRows(inPlace, MatrixOf("5,6"));
  EXPECT_TRUE(SameBits(MatrixOf("1,2;3,4;5,6"), out));
  EXPECT_TRUE(SameBits(out, inPlace));
}

TEST(MatrixParts, AMatrixJoinsItselfAndNothing) {
  RMatrix a = MatrixOf("1;2");
  ConcatenateCols(a, a);
  EXPECT_TRUE(SameBits(MatrixOf("1,1;2,2"), a));
  ConcatenateRows(a, a);
  EXPECT_TRUE(SameBits(MatrixOf("1,1;2,2;1,1;2,2"), a));
  ConcatenateRows(a, RMatrix());
  ConcatenateCols(a, RMatrix());
  EXPECT_EQ(a.nRows(), 4u);
  RMatrix empty;
  ConcatenateRows(empty, VectorOf("1,2"));
  EXPECT_TRUE(empty.empty()) << "the number of columns is that of the matrix";
  ConcatenateCols(VectorOf("1,2"), empty);
  EXPECT_TRUE(empty.empty()) << "the number of rows too";
}

TEST(MatrixParts, BlocksCompose) {
  const RMatrix a = MatrixOf("1,2;3,4");
  const RMatrix b = MatrixOf("5;6");
  const RMatrix c = MatrixOf("7,8");
  RMatrix out;
  ComposeMatrix(a, b, c, MatrixOf("9"), out);
  EXPECT_TRUE(SameBits(MatrixOf("1,2,5;3,4,6;7,8,9"), out));
  ComposeMatrix(a, c, MatrixOf("9"), out);
  EXPECT_TRUE(SameBits(MatrixOf("1,2,7;3,4,8;7,8,9"), out)) << "with a transpose to the right";
  ComposeMatrix(a, RMatrix(), RMatrix(), RMatrix(), out);
  EXPECT_TRUE(SameBits(a, out));
}

}  // namespace
}  // namespace vlm

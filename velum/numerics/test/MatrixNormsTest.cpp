#include <velum/numerics/MatrixNorms.h>

#include <velum/numerics/test/MatrixOf.h>

#include <gtest/gtest.h>

#include <cmath>

namespace vlm {
namespace {

using testing::MatrixOf;
using testing::SameBits;
using testing::VectorOf;

TEST(MatrixNorms, OfVectors) {
  const struct {
    const char* text;
    double one, two, most;
  } rows[] = {
      {"", 0, 0, 0},
      {"3,-4", 7, 5, 4},
      {"-1", 1, 1, 1},
      {"nan,2", NAN, 0, 2},
      {"inf,1", INFINITY, INFINITY, INFINITY},
      {"1e200,1", 1e200, INFINITY, 1e200},
  };
  for (const auto& row : rows) {
    const RVector v = VectorOf(row.text);
    const double norms[] = {L1Norm(v), L2Norm(v), LInfNorm(v)};
    const double expected[] = {row.one, row.two, row.most};
    EXPECT_TRUE(SameBits(expected, norms, 3)) << row.text;
  }
}

TEST(MatrixNorms, OfMatrices) {
  const struct {
    const char* text;
    double frobenius, one, most, off, symOff;
  } rows[] = {
      {"", 0, 0, 0, 0, 0},
      {"1,-2;-3,4", std::sqrt(30.0), 6, 7, 5, 4},
      {"3,4", 5, 4, 7, 0, 0},
      {"3;4", 5, 7, 4, 0, 0},
      {"1,2,-3;4,5,6", std::sqrt(91.0), 9, 15, 15, 22},
      {"1,-2;3,4;-5,6", std::sqrt(91.0), 12, 11, 16, 4},
      {"nan,1;1,1", 0, 2, 2, 2, 2},
  };
  for (const auto& row : rows) {
    const RMatrix a = MatrixOf(row.text);
    const double norms[] = {FNorm(a), L1Norm(a), LInfNorm(a), Off(a), SymOff(a)};
    const double expected[] = {row.frobenius, row.one, row.most, row.off, row.symOff};
    EXPECT_TRUE(SameBits(expected, norms, 5)) << row.text;
  }
  EXPECT_EQ(Trace(MatrixOf("1,2;3,4")), 5);
  EXPECT_EQ(Trace(RMatrix()), 0);
  RMatrix wide(2, 130);
  wide(1, 129) = -2;
  wide(0, 129) = 1;
  wide(0, 64) = 2;
  EXPECT_EQ(L1Norm(wide), 3) << "the last of several runs of columns";
}

TEST(MatrixNorms, SumsOfRowsAndColumns) {
  RVector sums;
  HSum(MatrixOf("1,2,3;4,5,6"), sums);
  EXPECT_TRUE(SameBits(VectorOf("6,15"), sums));
  VSum(MatrixOf("1,2,3;4,5,6"), sums);
  EXPECT_TRUE(SameBits(VectorOf("5,7,9"), sums));
  VSum(MatrixOf("1e16,1;1,1;-1e16,1"), sums);
  EXPECT_TRUE(SameBits(VectorOf("0,3"), sums)) << "in the order of the rows";
  HSum(RMatrix(), sums);
  EXPECT_TRUE(sums.empty());
}

}  // namespace
}  // namespace vlm

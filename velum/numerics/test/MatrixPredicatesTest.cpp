#include <velum/numerics/MatrixPredicates.h>

#include <velum/numerics/test/MatrixOf.h>

#include <gtest/gtest.h>

#include <string>

namespace vlm {
namespace {

using testing::MatrixOf;
using testing::VectorOf;

// One letter for each predicate that holds: square, Zero, Symmetric, Diagonal, Tridiagonal,
// Identity.
std::string Shape(const RMatrix& a, double tol) {
  std::string shape;
  if (IsSquare(a)) shape += 'q';
  if (IsZero(a, tol)) shape += 'Z';
  if (IsSymmetric(a, tol)) shape += 'S';
  if (IsDiagonal(a, tol)) shape += 'D';
  if (IsTriDiagonal(a, tol)) shape += 'T';
  if (IsIdentity(a, tol)) shape += 'I';
  return shape;
}

TEST(MatrixPredicates, TellShapes) {
  const struct {
    const char* text;
    double tol;
    const char* shape;
    const char* why;
  } rows[] = {
      {"", 1, "", "an empty matrix has no shape"},
      {"1,0,0;0,1,0;0,0,1", 0, "qSDTI", "the identity"},
      {"2,0;0,3", 0, "qSDT", "a diagonal"},
      {"2,0;0,3", 2, "qSDTI", "the bound is included"},
      {"0,0;0,0", 0, "qZSDT", "zeros"},
      {"0,-0.5;0.5,0", 0.5, "qZDT", "the difference of two that are small may be large"},
      {"7", 0, "qSDT", "one by one"},
      {"nan", 0, "qSDT", "of which the diagonal is not asked"},
      {"1,nan;nan,1", 1e300, "qT", "NaN is within no tolerance"},
      {"1,2,0;3,1,2;0,3,1", 0, "qT", "three diagonals"},
      {"1,2,0;3,1,2;-1,3,1", 0, "q", "one element too many, below"},
      {"1,2,0;3,1,2;-1,3,1", 1, "qST", "within the tolerance"},
      {"1,2,-1;3,1,2;0,3,1", 0.5, "q", "one element too many, above"},
      {"1,0,0;0,1,0", 0, "", "not square"},
      {"0,0,0", 0, "Z", "zeros that are not square"},
      {"1,4,5;4,1,6;5,6,1", 0, "qS", "symmetric"},
      {"1,4,5;4,1,6;5,7,1", 0.9, "q", "not symmetric"},
      {"inf,0;0,1", 1, "qSDT", "an infinity is not near 1"},
  };
  for (const auto& row : rows) EXPECT_EQ(Shape(MatrixOf(row.text), row.tol), row.shape) << row.why;
}

TEST(MatrixPredicates, CompareSizesAndElements) {
  const struct {
    const char* a;
    const char* b;
    double tol;
    bool equal;
    const char* why;
  } rows[] = {
      {"1,2", "1,2", 0, true, "exactly"},
      {"1,2", "1,2.5", 0.5, true, "the bound is included"},
      {"1,2", "1,2.6", 0.5, false, "beyond it"},
      {"1,2", "1,2,3", 9, false, "longer"},
      {"", "", 9, false, "empty"},
      {"", "1", 9, false, "one of them empty"},
      {"nan", "nan", 9, false, "NaN"},
      {"inf", "inf", 9, false, "infinities have no difference"},
      {"0", "-0", 0, true, "zeros of both signs"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(IsEqual(MatrixOf(row.a), MatrixOf(row.b), row.tol), row.equal) << row.why;
    EXPECT_EQ(IsEqual(VectorOf(row.a), VectorOf(row.b), row.tol), row.equal) << row.why;
    EXPECT_EQ(IsEqual(VectorOf(row.b), VectorOf(row.a), row.tol), row.equal) << row.why;
  }
  EXPECT_FALSE(IsEqual(MatrixOf("1,2"), MatrixOf("1;2"), 9)) << "another shape";
  EXPECT_TRUE(IsNull(RVector()) && IsNull(RMatrix()));
  EXPECT_FALSE(IsNull(RVector(1)) || IsNull(RMatrix(1, 1)));
  EXPECT_FALSE(IsZero(RVector(), 9));
  EXPECT_TRUE(IsZero(VectorOf("1,-2"), 2));
  EXPECT_FALSE(IsZero(VectorOf("1,-2.5"), 2));
}

}  // namespace
}  // namespace vlm

#include <velum/numerics/MultivariateStatistics.h>

#include <velum/numerics/test/MatrixOf.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vlm {
namespace {

using testing::MatrixOf;
using testing::SameBits;
using testing::VectorOf;

void ExpectNear(const RMatrix& expected, const RMatrix& actual) {
  ASSERT_EQ(actual.nRows(), expected.nRows());
  ASSERT_EQ(actual.nCols(), expected.nCols());
  for (unsigned i = 0; i < expected.nRows(); ++i) {
    for (unsigned j = 0; j < expected.nCols(); ++j) {
      EXPECT_NEAR(actual(i, j), expected(i, j), 1e-13 * std::abs(expected(i, j))) << i << ' ' << j;
    }
  }
}

TEST(MultivariateStatistics, AgreeWithAnIndependentPackage) {
  const RMatrix x = MatrixOf(
      "1.5,2.0,3.1;2.0,1.0,4.2;3.0,5.0,1.7;4.25,4.0,3.9;5.0,7.0,2.2;6.0,3.0,7.8;7.0,8.0,4.1;8.0,3."
      "0,6.6");
  CMultivariateStatistics stats;
  Load(stats, x);
  EXPECT_EQ(stats.Rows, 8u);
  EXPECT_EQ(stats.Cols, 3u);
  // numpy.cov, numpy.corrcoef and scipy.stats.spearmanr of SciPy 1.10, and numpy.linalg.eigh.
  ExpectNear(MatrixOf("5.498883928571428,2.6294642857142856,2.810714285714285;2.6294642857142856,5."
                      "8392857142857135,-1.8142857142857143;2.810714285714285,-1.8142857142857143,"
                      "4.325714285714285"),
             stats.Covariance);
  ExpectNear(MatrixOf("0.9999999999999998,0.464034357542667,0.5763025076286328;0.464034357542667,0."
                      "9999999999999998,-0.36099143906610004;0.5763025076286327,-0."
                      "36099143906610004,0.9999999999999998"),
             stats.Correlation);
  ExpectNear(
      MatrixOf("1.0,0.47905050476530353,0.5000000000000001;0.4790505047653036,0.9999999999999998,-"
               "0.4191691916696407;0.5000000000000001,-0.4191691916696406,1.0"),
      stats.RankCorrelation);
  const RVector variances = VectorOf("8.470520181201573,6.885792149361126,0.3075715980087309");
  for (unsigned k = 0; k < 3; ++k) {
    EXPECT_NEAR(stats.PrincipalComponents(k, 3), variances(k), 1e-12 * variances(0));
    for (unsigned i = 0; i < 3; ++i) {  // the covariances stretch each direction by its variance
      double image = 0;
      for (unsigned j = 0; j < 3; ++j) {
        image += stats.Covariance(i, j) * stats.PrincipalComponents(j, k);
      }
      EXPECT_NEAR(image, variances(k) * stats.PrincipalComponents(i, k), 1e-12 * variances(0));
    }
  }
  stats.Clear();
  EXPECT_EQ(stats.Rows + stats.Cols, 0u);
  EXPECT_TRUE(stats.Covariance.empty() && stats.PrincipalComponents.empty());
  EXPECT_EQ(stats.Mean.Length(), 3u);
}

TEST(MultivariateStatistics, TiesShareTheMeanOfTheirRanks) {
  const struct {
    const char* values;
    const char* ranks;
  } rows[] = {
      {"10,20,20,30", "1,2.5,2.5,4"}, {"5,5,5", "2,2,2"},           {"3,1,2", "3,1,2"},
      {"0,-0,-1", "2.5,2.5,1"},       {"nan,1,nan,inf", "3,1,4,2"}, {"", ""},
  };
  for (const auto& row : rows) {
    EXPECT_TRUE(SameBits(VectorOf(row.ranks), ComputeTiedRank(VectorOf(row.values)))) << row.values;
  }
}

TEST(MultivariateStatistics, RanksDoNotChangeUnderRisingFunctions) {
  std::mt19937 random(7);
  RMatrix x = testing::RandomOf(RMatrix(200, 4), random);
  const RMatrix ranks = ComputeRankCorrelation(x);
  for (double& element : x) {
    element = std::atan(element) + element * 1e-3;
  }
  EXPECT_TRUE(SameBits(ranks, ComputeRankCorrelation(x)));
}

TEST(MultivariateStatistics, OfFewObservations) {
  const RMatrix none(0, 0);
  EXPECT_TRUE(ComputeMean(none).empty());
  EXPECT_TRUE(ComputeCorrelation(none).empty());
  CMultivariateStatistics stats;
  stats.Mean = VectorOf("7");
  Load(stats, none);
  EXPECT_EQ(stats.Rows, 0u);
  EXPECT_EQ(stats.Mean.Length(), 1u) << "cleared, which leaves it";
  Load(stats, RMatrix(0, 3));
  EXPECT_EQ(stats.Cols, 0u) << "variables without an observation have no figures";
  EXPECT_TRUE(std::isnan(ComputeCovariance(MatrixOf("1,2"))(0, 1)));
  const RMatrix constant = ComputeCorrelation(MatrixOf("1,2;1,3;1,5"));
  EXPECT_EQ(constant(0, 0), 1);
  EXPECT_TRUE(std::isnan(constant(0, 1)));
}

TEST(MultivariateStatistics, ComponentsOfADiagonalMatrixAreItsAxes) {
  const RMatrix components = ComputePrincipalComponents(MatrixOf("2,0;0,5"));
  EXPECT_TRUE(SameBits(MatrixOf("0,1,5;1,0,2"), components));
  EXPECT_TRUE(SameBits(RMatrix(2, 3), ComputePrincipalComponents(MatrixOf("1,nan;nan,1"))));
}

}  // namespace
}  // namespace vlm

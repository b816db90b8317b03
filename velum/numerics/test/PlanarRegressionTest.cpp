#include <velum/numerics/PlanarRegression.h>

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace vlm {
namespace {

struct Point {
  double x, y, z;
};

CPlanarRegression FitOf(const std::vector<Point>& points) {
  const auto n = static_cast<double>(points.size());
  double x = 0, y = 0, z = 0;
  for (const Point& p : points) {
    x += p.x / n;
    y += p.y / n;
    z += p.z / n;
  }
  double sxx = 0, sxy = 0, sxz = 0, syz = 0, syy = 0, szz = 0;
  for (const Point& p : points) {
    sxx += (p.x - x) * (p.x - x);
    sxy += (p.x - x) * (p.y - y);
    sxz += (p.x - x) * (p.z - z);
    syz += (p.y - y) * (p.z - z);
    syy += (p.y - y) * (p.y - y);
    szz += (p.z - z) * (p.z - z);
  }
  CPlanarRegression fit;
  Load(fit, static_cast<unsigned>(points.size()), x, y, z, sxx, sxy, sxz, syz, syy, szz);
  return fit;
}

const std::vector<Point> kPoints = {{1, 2, 3.1}, {2, 1, 4.2}, {3, 5, 1.7}, {4, 4, 3.9},
                                    {5, 7, 2.2}, {6, 3, 7.8}, {7, 8, 4.1}, {8, 6, 6.6}};

TEST(PlanarRegression, AgreesWithAnIndependentLeastSquaresFit) {
  const CPlanarRegression fit = FitOf(kPoints);
  // From the normal equations (X'X) b = X'z and the covariance m (X'X)^-1 in NumPy 1.24, with
  // numpy.corrcoef for the variables.
  const struct {
    double value, expected;
  } rows[] = {
      {fit.SlopeX, 1.1777777777777776},
      {fit.SlopeY, -0.9722222222222222},
      {fit.Intercept, 3.275000000000005},
      {fit.SlopeXError, 0.09977211688964994},
      {fit.SlopeYError, 0.09977211688964996},
      {fit.InterceptError, 0.37521290252631545},
      {fit.SSTotal, 30.279999999999994},
      {fit.SSRegression, 29.2561111111111},
      {fit.SSResidual, 1.023888888888889},
      {fit.MSRegression, 14.62805555555555},
      {fit.MSResidual, 0.2047777777777778},
      {fit.FRatio, 71.4338035811177},
      {fit.RSquared, 0.9661859680023482},
      {fit.CorrSlopeXSlopeY, -0.7142857142857136},
      {fit.CorrSlopeXIntercept, -0.34188172937891426},
      {fit.CorrSlopeYIntercept, -0.34188172937891365},
      {fit.CorrXY, 0.7142857142857144},
      {fit.CorrXZ, 0.5692374405820982},
      {fit.CorrYZ, -0.1542268927685489},
  };
  for (const auto& row : rows) {
    EXPECT_NEAR(row.value, row.expected, std::abs(row.expected) * 1e-11) << row.expected;
  }
  EXPECT_EQ(fit.Count, 8u);
}

TEST(PlanarRegression, WhatCannotBeToldIsNaN) {
  const CPlanarRegression three = FitOf({{0, 0, 1}, {1, 0, 3}, {0, 1, 4}});
  EXPECT_NEAR(three.SlopeX, 2, 1e-12);
  EXPECT_NEAR(three.SlopeY, 3, 1e-12);
  EXPECT_NEAR(three.Intercept, 1, 1e-12);
  for (const double value : {three.MSResidual, three.FRatio, three.SlopeXError, three.SlopeYError,
                             three.InterceptError, three.CorrSlopeXSlopeY}) {
    EXPECT_TRUE(std::isnan(value));
  }
  const CPlanarRegression line = FitOf({{0, 0, 1}, {1, 2, 3}, {2, 4, 2}, {3, 6, 5}});
  EXPECT_TRUE(std::isnan(line.SlopeX));
  EXPECT_TRUE(std::isnan(line.SSTotal));
  EXPECT_NEAR(line.CorrXY, 1, 1e-15);
  EXPECT_DOUBLE_EQ(line.CorrXZ, line.CorrYZ);

  CPlanarRegression none = FitOf(kPoints);
  Load(none, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9);
  EXPECT_EQ(none.Count, 0u);
  EXPECT_TRUE(std::isnan(none.SlopeX) && std::isnan(none.CorrXY) && std::isnan(none.RSquared));
}

}  // namespace
}  // namespace vlm

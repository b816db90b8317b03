#include <velum/numerics/NormalDistribution.h>

#include <boost/math/special_functions/erf.hpp>
#include <boost/multiprecision/cpp_bin_float.hpp>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace vlm {
namespace {

struct Row {
  double argument, value;  // the value from 60 digits of arithmetic
};

TEST(NormalDistribution, ProbabilitiesAreThoseOfManyDigits) {
  const Row rows[] = {
      {-37, 5.7255712225245768227e-300},
      {-30.5, 1.3029379131780763509e-204},
      {-20.25, 1.7761998649495700309e-91},
      {-10, 7.619853024160526066e-24},
      {-7.5, 3.1908916729108962278e-14},
      {-7.071000000000001, 7.6910569813185086311e-13},
      {-7.071, 7.6910569813185578641e-13},
      {-5, 2.8665157187919391167e-7},
      {-3.25, 0.00057702504239076704292},
      {-2, 0.0227501319481792072},
      {-1, 0.15865525393145705141},
      {-0.5, 0.30853753872598689636},
      {-0.001, 0.49960105778608893741},

      {0, 0.5},
      {1e-09, 0.50000000039894228},
      {0.25, 0.59870632568292372424},
      {0.75, 0.77337264762313180067},
      {1, 0.84134474606854294859},
      {1.96, 0.97500210485177956379},
      {3, 0.99865010196836990547},
      {5, 0.99999971334842812081},
      {7.071000000000001, 0.9999999999992308943},
      {8, 0.9999999999999993779},
      {38, 1.0},
  };
  for (const auto& row : rows) {
    const double error = row.argument >= -1 ? 1e-14 : row.argument >= -5 ? 5e-11 : 9e-9;
    EXPECT_NEAR(GaussianCDF(row.argument), row.value, error * row.value) << row.argument;
    EXPECT_EQ(GaussianCDF(3 + row.argument * 2, 3, 2), GaussianCDF((3 + row.argument * 2 - 3) / 2));
  }
  EXPECT_EQ(GaussianCDF(0), 0.5);
  EXPECT_EQ(GaussianCDF(37.5), 1);
  EXPECT_EQ(GaussianCDF(-37.5), 0);
  EXPECT_EQ(GaussianCDF(-INFINITY), 0);
  EXPECT_TRUE(std::isnan(GaussianCDF(NAN)));
}

TEST(NormalDistribution, QuantilesAreThoseOfManyDigits) {
  const Row rows[] = {
      {5e-324, -38.467405617144346251},
      {1e-310, -37.663060331949523732},
      {5e-300, -37.003659431309621592},
      {6e-300, -36.998735572358490179},
      {1e-299, -36.984936496902572229},
      {1e-100, -21.273453560965324294},
      {1e-20, -9.2623400897984075796},
      {1e-10, -6.3613409024040561991},
      {1e-05, -4.2648907939228246102},
      {0.001, -3.0902323061678135354},
      {0.02, -2.0537489106318230443},
      {0.02425, -1.9729610513118848376},
      {0.0243, -1.9720841590292884753},
      {0.1, -1.2815515655446004353},
      {0.25, -0.6744897501960817432},
      {0.4, -0.25334710313579974132},
      {0.499999, -2.5066282745665593779e-6},
      {0.5, 0},
      {0.6, 0.25334710313579974132},
      {0.9, 1.2815515655446005935},
      {0.99, 2.3263478740408407676},
      {0.9999999, 5.1993375822906610937},
      {0.9999999999999999, 8.2095361516013868556},
  };
  for (const auto& row : rows) {
    const double error = row.argument < 5.7e-300 ? 2e-9 : 2e-10;
    EXPECT_NEAR(GaussianInv(row.argument), row.value, error * std::abs(row.value)) << row.argument;
  }
  EXPECT_EQ(GaussianInv(0), -INFINITY);
  EXPECT_EQ(GaussianInv(1), INFINITY);
  for (const double p : {-1e-300, 1.5, double{NAN}}) {
    EXPECT_TRUE(std::isnan(GaussianInv(p))) << p;
  }
}

using Digits = boost::multiprecision::cpp_bin_float_50;

Digits ProbabilityOf(const Digits& x) {
  return boost::math::erfc(Digits(-x / sqrt(Digits(2)))) / 2;
}

// The quantile of a probability: some steps of Newton's method on its logarithm from `x`.
Digits QuantileOf(double probability, Digits x) {
  const Digits rootOfTwoPi = sqrt(2 * boost::math::constants::pi<Digits>());
  for (int i = 0; i < 3; ++i) {
    const Digits found = ProbabilityOf(x);
    x -= (log(found) - log(Digits(probability))) * found * rootOfTwoPi * exp(x * x / 2);
  }
  return x;
}

constexpr int kArguments = 100;  // at random, in each range

TEST(NormalDistribution, ProbabilitiesHaveTheErrorsOfEachRange) {
  const struct {
    double from, to, error;
  } rows[] = {{-37, -7.0711, 1e-8}, {-7.071, -5, 3e-9}, {-5, -1, 5e-11}, {-1, 8, 2.5e-15}};
  std::mt19937_64 random(10);
  for (const auto& row : rows) {
    std::uniform_real_distribution<double> argument(row.from, row.to);
    for (int i = 0; i < kArguments; ++i) {
      const double x = argument(random);
      const Digits exact = ProbabilityOf(x);
      EXPECT_LE(abs(Digits((GaussianCDF(x) - exact) / exact)), row.error) << x;
    }
  }
  EXPECT_EQ(GaussianCDF(-37.0001), 0) << "3e-300 and less";
}

TEST(NormalDistribution, QuantilesHaveTheErrorsOfEachRange) {
  const struct {
    double from, to;  // the decimal exponents of the probability, or of what it is below a half
    bool belowHalf;
    double relative, absolute;
  } rows[] = {{-323, -299.3, false, 2e-9, 0},
              {-299.2, -100, false, 2.5e-14, 0},
              {-100, -1.62, false, 1.6e-10, 0},
              {-13, -0.33, true, 0, 1.5e-15}};
  std::mt19937_64 random(11);
  for (const auto& row : rows) {
    std::uniform_real_distribution<double> exponent(row.from, row.to);
    for (int i = 0; i < kArguments; ++i) {
      const double p = std::pow(10, exponent(random));
      const double probability = row.belowHalf ? 0.5 - p : p;
      const double x = GaussianInv(probability);
      const Digits exact = QuantileOf(probability, x);
      EXPECT_LE(abs(Digits(x - exact)), abs(exact) * row.relative + row.absolute) << probability;
    }
  }
}

TEST(NormalDistribution, DensityIsTheSlopeOfTheProbability) {
  for (double x = -6; x <= 6; x += 0.125) {
    const double step = 1e-4;
    const double slope = (GaussianCDF(x + step) - GaussianCDF(x - step)) / (2 * step);
    EXPECT_NEAR(GaussianPDF(x), slope, 1e-8) << x;
    EXPECT_DOUBLE_EQ(GaussianPDF(10 + 3 * x, 10, 3), GaussianPDF(x) / 3);
  }
}

}  // namespace
}  // namespace vlm

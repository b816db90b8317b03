#include <velum/numerics/detail/RadialKernels.h>

#include <velum/numerics/test/MatrixOf.h>
#include <velum/platform/detail/VectorUnit.h>

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

namespace vlm::detail {
namespace {

using vlm::testing::SameBits;

constexpr RadialForm kForms[] = {RadialForm::kThinPlate, RadialForm::kNaturalCubic,
                                 RadialForm::kMarcov, RadialForm::kExponential,
                                 RadialForm::kRationalQuadratic};

double PhiAt(RadialForm form, double r) {
  constexpr double kOrigin = 0;
  double phi;
  RadialKernels().row(form, r, 0, &kOrigin, &kOrigin, 1, &phi);
  return phi;
}

// The functions as they are written down, with libm's in more digits.
long double PlainPhi(RadialForm form, double distance) {
  const double rounded = distance * distance;
  const long double square = rounded;
  const long double r = std::sqrt(rounded);
  switch (form) {
    case RadialForm::kThinPlate:
      return rounded > 1.1754943508222875e-38 ? 0.5L * square * std::log(square) : 0.0L;
    case RadialForm::kNaturalCubic:
      return r * square;
    case RadialForm::kMarcov:
      return -r;
    case RadialForm::kExponential:
      return std::exp(-r);
    case RadialForm::kRationalQuadratic:
      return -square / (1.0L + square);
  }
  return NAN;
}

TEST(RadialKernels, AreWithinTwoUnitsOfTheTrueValues) {
  std::mt19937 random(5);
  SCOPED_TRACE("seed 5");
  std::uniform_real_distribution<double> exponent(-70, 9.5);
  std::uniform_real_distribution<double> aboutOne(0.5, 1.5);
  for (const RadialForm form : kForms) {
    SCOPED_TRACE(static_cast<int>(form));
    for (int i = 0; i < 100000; ++i) {
      const double r = i % 2 ? std::exp2(exponent(random)) : aboutOne(random);
      const long double expected = PlainPhi(form, r);
      const long double unit = std::max(std::abs(expected) * 2.220446049250313e-16L, 4.94e-324L);
      ASSERT_LE(std::abs(PhiAt(form, r) - expected), 2 * unit) << r;
    }
  }
}

TEST(RadialKernels, AnswerAtTheEndsOfTheNumbers) {
  const struct {
    RadialForm form;
    double r;
    double expected;
  } kRows[] = {
      {RadialForm::kThinPlate, 0, 0},
      {RadialForm::kThinPlate, 1e-19, 0},  // its square is at the threshold
      {RadialForm::kThinPlate, 1, 0},
      {RadialForm::kThinPlate, INFINITY, INFINITY},
      {RadialForm::kThinPlate, NAN, 0},  // is not above the threshold either
      {RadialForm::kNaturalCubic, 2, 8},
      {RadialForm::kMarcov, 0, 0},
      {RadialForm::kMarcov, 3, -3},
      {RadialForm::kExponential, 0, 1},
      {RadialForm::kExponential, 745.5, 0},
      {RadialForm::kExponential, 1e300, 0},
      {RadialForm::kExponential, NAN, NAN},
      {RadialForm::kRationalQuadratic, 0, 0},
      {RadialForm::kRationalQuadratic, 1, -0.5},
      {RadialForm::kRationalQuadratic, NAN, NAN},
  };
  for (const auto& row : kRows) {
    const double phi = PhiAt(row.form, row.r);
    EXPECT_TRUE(phi == row.expected || (std::isnan(phi) && std::isnan(row.expected)))
        << static_cast<int>(row.form) << " of " << row.r << " is " << phi;
  }
  EXPECT_GT(PhiAt(RadialForm::kExponential, 744), 0) << "below the normal numbers";
}

// Rows and sums, in registers of both widths, for any number of control points.
TEST(RadialKernels, HaveTheSameBitsInRegistersOfAnyWidth) {
  std::mt19937 random(6);
  SCOPED_TRACE("seed 6");
  std::uniform_real_distribution<double> coordinate(-2, 2);
  for (const RadialForm form : kForms) {
    for (std::size_t n = 0; n < 23; ++n) {
      SCOPED_TRACE(::testing::Message() << n << " of " << static_cast<int>(form));
      const auto some = [&](std::size_t count) {
        std::vector<double> values(count);
        for (double& value : values) value = coordinate(random);
        return values;
      };
      const std::vector<double> xs = some(n);
      const std::vector<double> ys = some(n);
      const std::vector<double> weights = some(2 * n);
      const std::vector<double> affine = some(6);
      const std::vector<double> x = some(8);
      const std::vector<double> y = some(8);
      const RadialSpline spline = {form, n, xs.data(), ys.data(), weights.data(), affine.data()};
      for (const RadialKernelSet* const kernels :
           {&kRadialKernelsTwoWide, &kRadialKernelsFourWide}) {
        if (kernels == &kRadialKernelsFourWide && !platform::HasFourWide()) continue;
        std::vector<double> sumX = x;
        std::vector<double> sumY = y;
        kernels->sums(spline, sumX.data(), sumY.data(), 8);
        for (unsigned p = 0; p < 8; ++p) {
          std::vector<double> phi(n);
          kernels->row(form, x[p], y[p], xs.data(), ys.data(), n, phi.data());
          double expectedX = affine[0] + affine[2] * x[p] + affine[4] * y[p];
          double expectedY = affine[1] + affine[3] * x[p] + affine[5] * y[p];
          for (std::size_t i = 0; i < n; ++i) {
            double single;
            kRadialKernelsTwoWide.row(form, x[p], y[p], &xs[i], &ys[i], 1, &single);
            ASSERT_TRUE(SameBits(&single, &phi[i], 1));
            expectedX += single * weights[2 * i];
            expectedY += single * weights[2 * i + 1];
          }
          double pointX = x[p];
          double pointY = y[p];
          kernels->sum(spline, pointX, pointY);
          EXPECT_TRUE(SameBits(&expectedX, &pointX, 1));
          EXPECT_TRUE(SameBits(&expectedY, &pointY, 1));
          EXPECT_TRUE(SameBits(&expectedX, &sumX[p], 1));
          EXPECT_TRUE(SameBits(&expectedY, &sumY[p], 1));
        }
      }
    }
  }
}

}  // namespace
}  // namespace vlm::detail

#include <velum/numerics/NormalDistribution.h>

#include <velum/geometry/Constants.h>

#include <cmath>
#include <limits>

namespace vlm {
namespace {

constexpr double kFarthest = 37;  // GaussianCDF is 0 or 1 beyond

// The value of a polynomial by Horner's rule, the coefficient of the highest power first.
template <int n>
double Polynomial(const double (&coefficients)[n], double x) noexcept {
  double value = coefficients[0];
  for (int i = 1; i < n; ++i) {
    value = value * x + coefficients[i];
  }
  return value;
}

// The probability beyond a, which is not negative.
double Tail(double a) noexcept {
  if (a > kFarthest) {
    return 0;
  }
  const double density = std::exp(-a * a / 2);
  if (a > 7.071) {
    const double fraction = a + 1 / (a + 2 / (a + 3 / (a + 4 / (a + 0.65))));
    return density / SQRT_TWO_PI / fraction;
  }
  constexpr double kNumerator[] = {0.035262496599891, 0.7003830644436881, 6.37396220353165,
                                   33.912866078383,   112.07929149787,    221.2135961699311,
                                   220.2068679123761};
  constexpr double kDenominator[] = {0.08838834764831845, 1.755667163182642, 16.06417757920695,
                                     86.78073220294608,   296.5642487796737, 637.3336333788311,
                                     793.8265125199484,   440.4137358247522};
  return density * Polynomial(kNumerator, a) / Polynomial(kDenominator, a);
}

// The quantile of a probability q of at most a half.
double LowerQuantile(double q) noexcept {
  constexpr double kA[] = {-3.969683028665376e+01, 2.209460984245205e+02,  -2.759285104469687e+02,
                           1.383577518672690e+02,  -3.066479806614716e+01, 2.506628277459239e+00};
  constexpr double kB[] = {-5.447609879822406e+01, 1.615858368580409e+02,  -1.556989798598866e+02,
                           6.680131188771972e+01,  -1.328068155288572e+01, 1};
  constexpr double kC[] = {-7.784894002430293e-03, -3.223964580411365e-01, -2.400758277161838e+00,
                           -2.549732539343734e+00, 4.374664141464968e+00,  2.938163982698783e+00};
  constexpr double kD[] = {7.784695709041462e-03, 3.224671290700398e-01, 2.445134137142996e+00,
                           3.754408661907416e+00, 1};
  constexpr double kCentral = 0.02425;
  if (q > kCentral) {
    const double r = q - 0.5;
    return Polynomial(kA, r * r) * r / Polynomial(kB, r * r);
  }
  const double r = std::sqrt(-2 * std::log(q));
  return Polynomial(kC, r) / Polynomial(kD, r);
}

}  // namespace

double GaussianCDF(double x) noexcept {
  const double tail = Tail(std::abs(x));
  return x > 0 ? 1 - tail : tail;
}

double GaussianCDF(double x, double mean, double stddev) noexcept {
  return GaussianCDF((x - mean) / stddev);
}

double GaussianPDF(double x) noexcept { return std::exp(-x * x / 2) / SQRT_TWO_PI; }

double GaussianPDF(double x, double mean, double stddev) noexcept {
  return GaussianPDF((x - mean) / stddev) / stddev;
}

double GaussianInv(double p) noexcept {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  if (!(p >= 0 && p <= 1)) {
    return std::numeric_limits<double>::quiet_NaN();
  }
  if (p == 0 || p == 1) {
    return p == 0 ? -kInfinity : kInfinity;
  }
  const double q = p > 0.5 ? 1 - p : p;
  double x = LowerQuantile(q);
  if (x >= -kFarthest) {
    const double e = (GaussianCDF(x) - q) * SQRT_TWO_PI * std::exp(x * x / 2);
    x -= e / (x * e * 0.5 + 1);
  }
  return p > 0.5 ? -x : x;
}

}  // namespace vlm

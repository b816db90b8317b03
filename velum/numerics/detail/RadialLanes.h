#pragma once

/// \file
/// The kernels of splines for a width of registers that the including source gives.
///
///     const RadialKernelSet kRadialKernelsTwoWide = {FillRow<TwoLanes>, AddSum<TwoLanes>,
///                                                    AddSums<TwoLanes>};
///
/// `Lanes` has the types `Real` and `Bits`, vectors of doubles and of 64-bit words, the constant
/// `kCount`, and the functions `Load`, `Store`, `All` and `Root`. All else is arithmetic on
/// vectors, an element at a time as far as rounding goes.

#include <velum/numerics/detail/RadialKernels.h>

#include <cstddef>
#include <cstdint>

namespace vlm::detail {

/// 40 bits of ln 2, so that its products with exponents are exact, and what they leave.
constexpr double kLn2High = 0x1.62e42fefa2p-1;
constexpr double kLn2Low = 0x1.9ef35793c7673p-41;

/// Returns ln x, for normal numbers above 0; for infinity a number as good as any above 0.
///
/// With x = m 2^k and m about 1, s = (m - 1) / (m + 1): ln m = 2 artanh s, as a series in s^2.
template <class Lanes>
[[nodiscard]] inline typename Lanes::Real Log(typename Lanes::Real x) noexcept {
  using Real = typename Lanes::Real;
  using Bits = typename Lanes::Bits;
  constexpr std::uint64_t kRootOfHalf = 0x3fe6a09e667f3bcd;
  constexpr std::uint64_t kOne = 0x3ff0000000000000;
  constexpr std::uint64_t kTwoTo52 = 0x4330000000000000;
  const Bits bits = reinterpret_cast<Bits>(x);
  const Bits biased = (bits + (kOne - kRootOfHalf)) >> 52;  // k + 1023
  const Real k = reinterpret_cast<Real>(biased | kTwoTo52) - (0x1p52 + 1023);
  const Real f = reinterpret_cast<Real>(bits - (biased << 52) + kOne) - 1.0;  // m - 1
  const Real s = f / (f + 2.0);
  const Real u = s * s;
  const Real u2 = u * u;
  const Real u4 = u2 * u2;
  const Real low = (2.0 / 3 + u * (2.0 / 5)) + u2 * (2.0 / 7 + u * (2.0 / 9));
  const Real middle = (2.0 / 11 + u * (2.0 / 13)) + u2 * (2.0 / 15 + u * (2.0 / 17));
  const Real high = 2.0 / 19 + u * (2.0 / 21);
  const Real series = u * (low + u4 * (middle + u4 * high));  // 2 artanh(s) / s - 2
  const Real half = 0.5 * f * f;
  // 2 s is f - s f, and s f is half - s half: f goes in unrounded, and what is rounded is small.
  return k * kLn2High - ((half - (s * (half + series) + k * kLn2Low)) - f);
}

/// Returns exp(-r), for r not below 0.
template <class Lanes>
[[nodiscard]] inline typename Lanes::Real ExpOfMinus(typename Lanes::Real r) noexcept {
  using Real = typename Lanes::Real;
  using Bits = typename Lanes::Bits;
  constexpr double kRound = 0x1.8p52;  // leaves an integer in the lowest bits
  constexpr double kNothing = 750;     // exp(-750) is 0
  const Bits tooFar = reinterpret_cast<Bits>(r > kNothing);
  const Real x = -reinterpret_cast<Real>((reinterpret_cast<Bits>(Lanes::All(kNothing)) & tooFar) |
                                         (reinterpret_cast<Bits>(r) & ~tooFar));
  const Real shifted = x * 0x1.71547652b82fep0 + kRound;  // x / ln 2
  const Real k = shifted - kRound;
  const Real t = (x - k * kLn2High) - k * kLn2Low;
  const Real t2 = t * t;
  const Real t4 = t2 * t2;
  const Real low = (1.0 / 2 + t * (1.0 / 6)) + t2 * (1.0 / 24 + t * (1.0 / 120));
  const Real middle = (1.0 / 720 + t * (1.0 / 5040)) + t2 * (1.0 / 40320 + t * (1.0 / 362880));
  const Real high =
      (1.0 / 3628800 + t * (1.0 / 39916800)) + t2 * (1.0 / 479001600 + t * (1.0 / 6227020800));
  const Real value = 1.0 + (t + t2 * (low + t4 * (middle + t4 * high)));
  // In two steps, for results below the normal numbers.
  constexpr std::uint64_t kUp = 128;
  const Bits power = (reinterpret_cast<Bits>(shifted) + (1023 + kUp)) << 52;
  return value * reinterpret_cast<Real>(power) * 0x1p-128;
}

/// Returns the function for a distance of these coordinates.
template <class Lanes, RadialForm kForm>
[[nodiscard]] inline typename Lanes::Real PhiOf(typename Lanes::Real dx,
                                                typename Lanes::Real dy) noexcept {
  using Real = typename Lanes::Real;
  using Bits = typename Lanes::Bits;
  const Real square = dx * dx + dy * dy;
  if constexpr (kForm == RadialForm::kThinPlate) {
    const Real phi = 0.5 * square * Log<Lanes>(square);
    const auto isThere = square > 1.1754943508222875e-38;  // SUKOSHI
    return reinterpret_cast<Real>(reinterpret_cast<Bits>(phi) & reinterpret_cast<Bits>(isThere));
  } else if constexpr (kForm == RadialForm::kNaturalCubic) {
    return Lanes::Root(square) * square;
  } else if constexpr (kForm == RadialForm::kMarcov) {
    return -Lanes::Root(square);
  } else if constexpr (kForm == RadialForm::kExponential) {
    return ExpOfMinus<Lanes>(Lanes::Root(square));
  } else {
    return -square / (1.0 + square);
  }
}

/// Does a RadialRow for one function.
template <class Lanes, RadialForm kForm>
void FillRowOf(double x, double y, const double* xs, const double* ys, std::size_t count,
               double* phi) noexcept {
  using Real = typename Lanes::Real;
  const Real allX = Lanes::All(x);
  const Real allY = Lanes::All(y);
  const std::size_t whole = count - count % Lanes::kCount;
  for (std::size_t i = 0; i < whole; i += Lanes::kCount) {
    Lanes::Store(phi + i,
                 PhiOf<Lanes, kForm>(allX - Lanes::Load(xs + i), allY - Lanes::Load(ys + i)));
  }
  if (whole == count) return;
  double lastX[Lanes::kCount] = {};
  double lastY[Lanes::kCount] = {};
  double lastPhi[Lanes::kCount];
  for (std::size_t i = whole; i < count; ++i) {
    lastX[i - whole] = xs[i];
    lastY[i - whole] = ys[i];
  }
  Lanes::Store(lastPhi, PhiOf<Lanes, kForm>(allX - Lanes::Load(lastX), allY - Lanes::Load(lastY)));
  for (std::size_t i = whole; i < count; ++i) phi[i] = lastPhi[i - whole];
}

/// Does RadialSum for one function, with a control point in each lane; their terms are added one
/// after the other.
template <class Lanes, RadialForm kForm>
void AddSumOf(const RadialSpline& spline, double& x, double& y) noexcept {
  constexpr std::size_t kCount = Lanes::kCount;
  const double* const a = spline.affine;
  double sumX = a[0] + a[2] * x + a[4] * y;
  double sumY = a[1] + a[3] * x + a[5] * y;
  const auto addTerms = [&](const double* phi, std::size_t first, std::size_t count) {
    const double* const weights = spline.weights + 2 * first;
    for (std::size_t i = 0; i < count; ++i) {
      sumX += phi[i] * weights[2 * i];
      sumY += phi[i] * weights[2 * i + 1];
    }
  };
  double phi[kCount];
  const std::size_t whole = spline.count - spline.count % kCount;
  for (std::size_t i = 0; i < whole; i += kCount) {
    Lanes::Store(phi, PhiOf<Lanes, kForm>(Lanes::All(x) - Lanes::Load(spline.xs + i),
                                          Lanes::All(y) - Lanes::Load(spline.ys + i)));
    addTerms(phi, i, kCount);
  }
  FillRowOf<Lanes, kForm>(x, y, spline.xs + whole, spline.ys + whole, spline.count - whole, phi);
  addTerms(phi, whole, spline.count - whole);
  x = sumX;
  y = sumY;
}

/// Does RadialSums for one function, with a point in each lane.
template <class Lanes, RadialForm kForm>
void AddSumsOf(const RadialSpline& spline, double* x, double* y, std::size_t count) noexcept {
  using Real = typename Lanes::Real;
  const double* const a = spline.affine;
  for (std::size_t p = 0; p < count; p += Lanes::kCount) {
    const Real px = Lanes::Load(x + p);
    const Real py = Lanes::Load(y + p);
    Real sumX = a[0] + a[2] * px + a[4] * py;
    Real sumY = a[1] + a[3] * px + a[5] * py;
    for (std::size_t i = 0; i < spline.count; ++i) {
      const Real phi = PhiOf<Lanes, kForm>(px - spline.xs[i], py - spline.ys[i]);
      sumX += phi * spline.weights[2 * i];
      sumY += phi * spline.weights[2 * i + 1];
    }
    Lanes::Store(x + p, sumX);
    Lanes::Store(y + p, sumY);
  }
}

/// Is a RadialRow.
template <class Lanes>
void FillRow(RadialForm form, double x, double y, const double* xs, const double* ys,
             std::size_t count, double* phi) noexcept {
  switch (form) {
    case RadialForm::kThinPlate:
      return FillRowOf<Lanes, RadialForm::kThinPlate>(x, y, xs, ys, count, phi);
    case RadialForm::kNaturalCubic:
      return FillRowOf<Lanes, RadialForm::kNaturalCubic>(x, y, xs, ys, count, phi);
    case RadialForm::kMarcov:
      return FillRowOf<Lanes, RadialForm::kMarcov>(x, y, xs, ys, count, phi);
    case RadialForm::kExponential:
      return FillRowOf<Lanes, RadialForm::kExponential>(x, y, xs, ys, count, phi);
    case RadialForm::kRationalQuadratic:
      return FillRowOf<Lanes, RadialForm::kRationalQuadratic>(x, y, xs, ys, count, phi);
  }
}

/// Is a RadialSum.
template <class Lanes>
void AddSum(const RadialSpline& spline, double& x, double& y) noexcept {
  switch (spline.form) {
    case RadialForm::kThinPlate:
      return AddSumOf<Lanes, RadialForm::kThinPlate>(spline, x, y);
    case RadialForm::kNaturalCubic:
      return AddSumOf<Lanes, RadialForm::kNaturalCubic>(spline, x, y);
    case RadialForm::kMarcov:
      return AddSumOf<Lanes, RadialForm::kMarcov>(spline, x, y);
    case RadialForm::kExponential:
      return AddSumOf<Lanes, RadialForm::kExponential>(spline, x, y);
    case RadialForm::kRationalQuadratic:
      return AddSumOf<Lanes, RadialForm::kRationalQuadratic>(spline, x, y);
  }
}

/// Is a RadialSums.
template <class Lanes>
void AddSums(const RadialSpline& spline, double* x, double* y, std::size_t count) noexcept {
  switch (spline.form) {
    case RadialForm::kThinPlate:
      return AddSumsOf<Lanes, RadialForm::kThinPlate>(spline, x, y, count);
    case RadialForm::kNaturalCubic:
      return AddSumsOf<Lanes, RadialForm::kNaturalCubic>(spline, x, y, count);
    case RadialForm::kMarcov:
      return AddSumsOf<Lanes, RadialForm::kMarcov>(spline, x, y, count);
    case RadialForm::kExponential:
      return AddSumsOf<Lanes, RadialForm::kExponential>(spline, x, y, count);
    case RadialForm::kRationalQuadratic:
      return AddSumsOf<Lanes, RadialForm::kRationalQuadratic>(spline, x, y, count);
  }
}

}  // namespace vlm::detail

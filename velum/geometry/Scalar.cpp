#include <velum/geometry/Scalar.h>

#include <velum/geometry/Constants.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <concepts>
#include <cstdint>

namespace vlm {
namespace {

// Maps the bits of a number to an integer that grows with the number, both zeros to the same.
template <std::unsigned_integral Bits>
Bits Rank(Bits bits) noexcept {
  constexpr Bits kSign = Bits(1) << (sizeof(Bits) * 8 - 1);
  return (bits & kSign) != 0 ? Bits(0) - bits : bits | kSign;
}

template <std::unsigned_integral Bits, std::floating_point Number>
bool AlmostEqualBits(Number a, Number b, unsigned int maxUlps) noexcept {
  if (std::isnan(a) || std::isnan(b)) {
    return false;
  }
  const Bits rankA = Rank(std::bit_cast<Bits>(a));
  const Bits rankB = Rank(std::bit_cast<Bits>(b));
  return std::max(rankA, rankB) - std::min(rankA, rankB) <= maxUlps;
}

double NormalizeAngle(double angle, double period) noexcept {
  const double rest = std::fmod(angle, period);
  if (!(rest < 0)) {
    return rest + 0.0;  // a whole number of turns backwards is 0, not -0
  }
  // A tiny negative rest rounds up to the whole period, which is outside the range.
  const double turned = rest + period;
  return turned < period ? turned : 0.0;
}

}  // namespace

bool AlmostEqual(double a, double b, unsigned int maxUlps) noexcept {
  return AlmostEqualBits<std::uint64_t>(a, b, maxUlps);
}

bool AlmostEqual(float a, float b, unsigned int maxUlps) noexcept {
  return AlmostEqualBits<std::uint32_t>(a, b, maxUlps);
}

double hypot(double a, double b, double c) noexcept {
  const double largest = std::max({std::abs(a), std::abs(b), std::abs(c)});
  a /= largest;
  b /= largest;
  c /= largest;
  return std::sqrt(a * a + b * b + c * c) * largest;
}

double Normalize(double value, double low, double high) noexcept {
  return std::clamp((value - low) / (high - low), 0.0, 1.0);
}

double NormalizeAngleDeg(double angle) noexcept { return NormalizeAngle(angle, 360.0); }

double NormalizeAngleRad(double angle) noexcept { return NormalizeAngle(angle, TWO_PI); }

double Trilinear(double u, double v, double w, const double* values) noexcept {
  const double u0 = 1 - u;
  const double v0 = 1 - v;
  const double near =
      values[0] * u0 * v0 + values[1] * u * v0 + values[2] * u * v + values[3] * u0 * v;
  const double far =
      values[4] * u0 * v0 + values[5] * u * v0 + values[6] * u * v + values[7] * u0 * v;
  return near * (1 - w) + far * w;
}

}  // namespace vlm

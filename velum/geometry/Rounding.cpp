#include <velum/geometry/Rounding.h>

#include <velum/geometry/detail/WrapTo.inl.h>

#include <bit>
#include <cmath>
#include <initializer_list>

namespace vlm {
namespace {

// The position of the first significant digit: 0 for 1 to 9, -1 for 0.1 to 0.9.
int DecimalExponent(double value) noexcept {
  return static_cast<int>(std::floor(std::log10(std::abs(value))));
}

template <class Round>
double RoundAtDigit(double value, int digits, Round round) noexcept {
  if (digits < 1 || digits > 15 || value == 0 || !std::isfinite(value)) {
    return value;
  }
  // 10^power itself overflows for the smallest values; their scale takes two factors.
  constexpr int kLargestPower = 308;
  const int power = digits - 1 - DecimalExponent(value);
  const double scale = std::pow(10.0, power < kLargestPower ? power : kLargestPower);
  const double rest = power > kLargestPower ? std::pow(10.0, power - kLargestPower) : 1.0;
  return round(value * scale * rest) / rest / scale;
}

}  // namespace

double ToNearest(double value) noexcept { return std::round(value); }

int ToNearest(int value, int multiple) noexcept {
  if (value == 0 || multiple == 0) {
    return value;
  }
  return detail::WrapTo<int>(ToNearest(double(value) / multiple) * multiple);
}

double ToNearest(double value, double multiple) noexcept {
  if (value == 0 || multiple == 0) {
    return value;
  }
  return ToNearest(value / multiple) * multiple;
}

double RoundSig(double value, int digits) noexcept {
  return RoundAtDigit(value, digits, [](double scaled) { return ToNearest(scaled); });
}

double RoundSigUp(double value, int digits) noexcept {
  return RoundAtDigit(value, digits, [](double scaled) { return std::ceil(scaled); });
}

double RoundSigDown(double value, int digits) noexcept {
  return RoundAtDigit(value, digits, [](double scaled) { return std::floor(scaled); });
}

double RoundUp(double value, int digits) noexcept {
  if (value == 0 || !std::isfinite(value)) {
    return value;
  }
  const double power = double(DecimalExponent(value)) - digits + 1;
  if (power < 0 && power >= -308) {
    // A quotient by a power of ten is the multiple rounded once; its inverse is not exact.
    const double scale = std::pow(10.0, -power);
    const double count = std::ceil(value * scale);
    for (const double multiple : {count / scale, (count + 1) / scale}) {
      if (multiple > value && std::isfinite(multiple)) {
        return multiple;
      }
    }
    return std::nextafter(value, INFINITY);
  }
  const double unit = std::pow(10.0, power);
  if (std::isinf(unit)) {
    return value < 0 ? 0.0 : INFINITY;
  }
  double next = std::ceil(value / unit) * unit;
  // Rounding may leave the product at or below the value. Where the unit no longer changes it, no
  // number of additions would, and the next double is the answer.
  while (next <= value && next + unit > next) {
    next += unit;
  }
  return next > value ? next : std::nextafter(value, INFINITY);
}

void ExpandSingularLimits(double& low, double& high) noexcept {
  if (high > low || !std::isfinite(low)) {
    return;
  }
  const double value = low;
  high = RoundUp(value, 4);
  low = value - (high - value);
  if (std::isinf(high)) {
    high = value;
    low = -RoundUp(-value, 4);
  } else if (std::isinf(low)) {
    low = value;
  }
  if (low >= high) {
    const double middle = (low + high) * 0.5;
    low = middle - 0.001;
    high = middle + 0.001;
  }
}

unsigned int RoundToPowerOf2(unsigned int n) noexcept {
  constexpr unsigned int kLargest = 0x80000000u;
  if (n >= kLargest) {
    return kLargest;
  }
  const unsigned int lower = n < 4 ? 2 : std::bit_floor(n);
  const unsigned int upper = 2 * lower;
  return n < lower || n - lower < upper - n ? lower : upper;
}

unsigned int CeilPowerOf2(unsigned int n) noexcept {
  return n == 0 || n > 0x80000000u ? 0 : std::bit_ceil(n);
}

}  // namespace vlm

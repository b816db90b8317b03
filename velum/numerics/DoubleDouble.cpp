#include <velum/numerics/DoubleDouble.h>

#include <cfloat>
#include <cmath>
#include <limits>

namespace vlm {
namespace {

// Moler and Morrison's iteration for p >= q > 0. The error of p is cubed in each round: what is not
// below the last place after eight is not a number.
doubledouble Pythagoras(doubledouble p, doubledouble q) noexcept {
  for (int round = 0; round < 8; ++round) {
    doubledouble r = sqr(q / p);
    const doubledouble s = r + 4;
    if (s == 4) {
      break;
    }
    r /= s;
    p += 2 * r * p;
    q *= r;
  }
  return p;
}

doubledouble WithoutOverflow(const doubledouble& x) noexcept {
  return std::isinf(x.hi) ? doubledouble(x.hi) : x;
}

}  // namespace

bool doubledouble::CheckPrecision() noexcept { return FLT_EVAL_METHOD == 0; }

doubledouble pow(const doubledouble& x, int n) noexcept {
  // Unsigned, so that the least int has an absolute value.
  unsigned left = n < 0 ? 0u - static_cast<unsigned>(n) : static_cast<unsigned>(n);
  doubledouble result(1);
  for (doubledouble power = x; left != 0; left /= 2) {
    if (left % 2 != 0) {
      result *= power;
    }
    const detail::twofold::RoundedSum square = detail::twofold::Square(power);
    power = doubledouble(square.value, square.error);
  }
  return n > 0 ? result : recip(result);
}

doubledouble hypot(const doubledouble& a, const doubledouble& b) noexcept {
  if (std::isinf(a.hi) || std::isinf(b.hi)) {
    return doubledouble(std::numeric_limits<double>::infinity());
  }
  const doubledouble first = fabs(a);
  const doubledouble second = fabs(b);
  const doubledouble& p = first < second ? second : first;
  const doubledouble& q = first < second ? first : second;
  if (!(std::isfinite(a.hi + a.lo) && std::isfinite(b.hi + b.lo))) {
    return doubledouble(std::numeric_limits<double>::quiet_NaN());
  }
  if (q.hi == 0) {
    return p;
  }
  // Beyond these limits products overflow, or errors of products underflow. A power of 2 out of the
  // way changes no digit.
  if (p.hi > 0x1p990 || p.hi < 0x1p-800) {
    const int exponent = std::ilogb(p.hi);
    return WithoutOverflow(scalb(Pythagoras(scalb(p, -exponent), scalb(q, -exponent)), exponent));
  }
  return Pythagoras(p, q);
}

std::pair<doubledouble, long> partition(const doubledouble& x) noexcept {
  if (!std::isfinite(x.hi)) {
    return {x, 0};
  }
  int exponent = 0;
  static_cast<void>(std::frexp(x.hi, &exponent));
  return {scalb(x, -exponent), exponent};
}

}  // namespace vlm

#include <velum/numerics/DoubleDouble.h>
#include <velum/platform/detail/Ascii.h>

#include <velum/core/Exception.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <ostream>
#include <string>

namespace vlm {
namespace {

constexpr double kMost = std::numeric_limits<double>::max();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

constexpr bool IsSpace(char c) noexcept { return c == ' ' || (c >= '\t' && c <= '\r'); }
using platform::IsDigit;

// Reads an integer as atoi does, stopping short of an overflow.
constexpr long ReadExponent(const char* text) noexcept {
  constexpr long kMostExponent = std::numeric_limits<int>::max();
  while (IsSpace(*text)) {
    ++text;
  }
  const bool isNegative = *text == '-';
  if (isNegative || *text == '+') {
    ++text;
  }
  long value = 0;
  for (; IsDigit(*text); ++text) {
    value = std::min(value * 10 + (*text - '0'), kMostExponent);
  }
  return isNegative ? -value : value;
}

// Returns x * 10 with the bits of the general product: 8 x and 2 x are exact, and so is the error
// of their sum.
constexpr doubledouble TimesTen(const doubledouble& x) noexcept {
  const detail::twofold::RoundedSum product = detail::twofold::QuickTwoSum(8 * x.hi, 2 * x.hi);
  return doubledouble(product.value, product.error + 10 * x.lo);
}

// Returns x / 10 with the bits of the general quotient: what is left of the dividend is exact.
constexpr doubledouble TenthOf(const doubledouble& x) noexcept {
  const double quotient = x.hi / 10;
  const double rest = (x.hi - 8 * quotient) - 2 * quotient + x.lo;
  return doubledouble(quotient, rest / 10);
}

// Takes the steps one by one, as the rounding of each counts, and no step that changes nothing.
constexpr doubledouble TimesPowerOf10(doubledouble x, long exponent) noexcept {
  for (; exponent < 0 && x.hi > 0; ++exponent) {
    x = TenthOf(x);
  }
  for (; exponent > 0 && x.hi > 0; --exponent) {
    if (x.hi > kMost / 10) {
      return doubledouble(kInfinity);
    }
    x = TimesTen(x);
  }
  return x;
}

// The number that digits make: ten times the number before and the digit, again and again. The
// first 30 are taken as two integers, as every step up to there is exact.
class Digits {
 public:
  // False where the number is so large that another digit does not count, and is left out.
  constexpr bool Take(int digit) noexcept {
    if (count_ < 2 * kHalf) {
      std::uint64_t& half = halves_[count_ / kHalf];
      half = half * 10 + static_cast<std::uint64_t>(digit);
      ++count_;
      return true;
    }
    const doubledouble before = Value();
    if (before.hi >= kMostTaken) {
      return false;
    }
    longer_ = TimesTen(before) + digit;
    return true;
  }

  constexpr doubledouble Value() const noexcept {
    if (longer_.hi > 0) {
      return longer_;
    }
    double power = 1;
    for (int i = kHalf; i < count_; ++i) {
      power *= 10;
    }
    return vlm::Multiply(static_cast<double>(halves_[0]), power) + halves_[1];
  }

 private:
  static constexpr int kHalf = 15;
  static constexpr double kMostTaken = 1e300;

  std::uint64_t halves_[2]{};
  int count_ = 0;
  doubledouble longer_;
};

constexpr doubledouble Read(const char* text) noexcept {
  while (IsSpace(*text)) {
    ++text;
  }
  const bool isNegative = *text == '-';
  if (isNegative || *text == '+') {
    ++text;
  }
  Digits digits;
  long exponent = 0;
  bool isFraction = false;
  for (; IsDigit(*text) || (*text == '.' && !isFraction); ++text) {
    if (*text == '.') {
      isFraction = true;
    } else if (digits.Take(*text - '0')) {
      exponent -= isFraction ? 1 : 0;
    } else {
      exponent += isFraction ? 0 : 1;
    }
  }
  if (*text == 'd' || *text == 'D') {
    exponent += ReadExponent(text + 1);
  }
  const doubledouble value = TimesPowerOf10(digits.Value(), exponent);
  if (!isNegative) {
    return value;
  }
  return value.hi < kInfinity ? -value : doubledouble(-kInfinity);
}

// Returns |x| divided by 10 to the power `exponent`. Where that power, or the error of a product
// with it, is out of range, powers of 2 are taken out of the way, which changes no digit.
doubledouble Mantissa(const doubledouble& x, int exponent) noexcept {
  constexpr int kMostPower = 300;
  constexpr int kLeastPower = -290;
  const doubledouble positive = fabs(x);
  const doubledouble ten(10);
  if (exponent > kMostPower) {
    return scalb(positive, -64) / scalb(pow(ten, exponent), -64);
  }
  if (exponent < kLeastPower) {
    constexpr int kPart = 60;  // 10 to this power times 2 to -200 is about 1
    return scalb(positive, 200) * pow(ten, -exponent - kPart) * scalb(pow(ten, kPart), -200);
  }
  return positive / pow(ten, exponent);
}

// Writes the digits of a positive number below 10, or a little above, as many as `count`.
void AppendDigits(std::string& text, doubledouble x, std::streamsize count) {
  for (std::streamsize i = 1; i <= count && x.hi > 0; ++i) {
    if (i == 2) {
      text += '.';
    }
    int digit = static_cast<int>(x.hi);  // floor(x)
    if (digit == x.hi && x.lo < 0) {
      --digit;
    }
    text += digit < 10 ? std::string(1, static_cast<char>('0' + digit)) : std::to_string(digit);
    x = TimesTen(x - digit);
  }
}

void AppendExponent(std::string& text, int exponent, char letter) {
  text += letter;
  text += exponent < 0 ? '-' : '+';
  const std::string digits = std::to_string(std::abs(exponent));
  text.append(3 - std::min<std::size_t>(digits.size(), 3), '0') += digits;
}

}  // namespace

constinit const doubledouble doubledouble::DDPI =
    Read("3.1415926535897932384626433832795028841972");
constinit const doubledouble doubledouble::DDTWOPI =
    Read("6.2831853071795864769252867665590057683943");
constinit const doubledouble doubledouble::PION2 =
    Read("1.5707963267948966192313216916397514420985");
constinit const doubledouble doubledouble::PION4 =
    Read("0.7853981633974483096156608458198757210493");
constinit const doubledouble doubledouble::INVPI =
    Read("0.3183098861837906715377675267450287240689");
constinit const doubledouble doubledouble::LN2 = Read("0.6931471805599453094172321214581765680755");
constinit const doubledouble doubledouble::LN10 = Read("2.302585092994045684017991454684364207601");

doubledouble::doubledouble(const char* text) : doubledouble(atodd(text)) {}

doubledouble atodd(const char* text) {
  if (text == nullptr) {
    ThrowErrorImpl("DoubleDouble", __LINE__, ERR_INTERNAL);
  }
  return Read(text);
}

std::ostream& operator<<(std::ostream& out, const doubledouble& x) {
  const doubledouble y = normalize(x);
  if (std::isinf(x.hi)) {
    return out << x.hi;
  }
  std::string text;
  if (std::isnan(y.hi)) {
    text = "NaN ";
  } else if (y.hi == 0) {
    return out << 0.0;
  } else {
    const int exponent = static_cast<int>(std::floor(std::log10(std::abs(y.hi))));
    if (y.hi < 0) {
      text += '-';
    }
    AppendDigits(text, Mantissa(y, exponent), out.precision());
    if (exponent != 0) {
      AppendExponent(text, exponent, (out.flags() & std::ios_base::uppercase) != 0 ? 'D' : 'd');
    }
  }
  out.width(0);
  return out.write(text.data(), static_cast<std::streamsize>(text.size()));
}

}  // namespace vlm

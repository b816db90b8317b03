#pragma once

/// \file
/// The inlined parts of DoubleDouble.h. Every product that a sum takes passes `Rounded`.
///
/// Where an operand is a plain number, what its `lo` of 0 would give is left out: the bits of the
/// result stay the same.

#include <velum/numerics/DoubleDouble.h>
#include <velum/numerics/detail/ErrorFree.inl.h>

#include <bit>
#include <cmath>
#include <cstdint>

namespace vlm {

constexpr doubledouble::doubledouble(double a, double b) noexcept {
  const detail::twofold::RoundedSum sum = detail::twofold::QuickTwoSum(a, b);
  hi = sum.value;
  lo = sum.error;
}

template <PlainNumber T>
constexpr doubledouble::doubledouble(T x) noexcept {
  if constexpr (std::numeric_limits<T>::digits <= std::numeric_limits<double>::digits) {
    hi = static_cast<double>(x);
  } else {
    *this =
        doubledouble(static_cast<double>(x >> 32) * 0x1p32, static_cast<double>(x & T(0xFFFFFFFF)));
  }
}

constexpr doubledouble::operator int() const noexcept {
  constexpr double kLeast = std::numeric_limits<int>::min();
  constexpr double kMost = std::numeric_limits<int>::max();
  const double x = lo + hi;
  if (x > kLeast && x < kMost) {
    return static_cast<int>(x);
  }
  return static_cast<int>(x <= kLeast ? kLeast : x >= kMost ? kMost : 0);
}

namespace detail::twofold {

/// Returns a number of two fields as they are.
[[nodiscard]] constexpr doubledouble Pair(double hi, double lo) noexcept {
  doubledouble x(hi);
  x.lo = lo;
  return x;
}

/// Returns a plain number as a `double` if that holds all of its type.
template <PlainNumber T>
[[nodiscard]] constexpr auto Exactly(T x) noexcept {
  if constexpr (std::numeric_limits<T>::digits <= std::numeric_limits<double>::digits) {
    return static_cast<double>(x);
  } else {
    return doubledouble(x);
  }
}

/// Returns -a; the negative of a normalised number is one.
[[nodiscard]] constexpr doubledouble Negative(const doubledouble& a) noexcept {
  return Pair(-a.hi, -a.lo);
}
/// Returns -a.
[[nodiscard]] constexpr double Negative(double a) noexcept { return -a; }

/// Returns a + b.
[[nodiscard]] constexpr doubledouble Sum(const doubledouble& a, const doubledouble& b) noexcept {
  const RoundedSum high = TwoSum(a.hi, b.hi);
  const RoundedSum low = TwoSum(a.lo, b.lo);
  const RoundedSum sum = QuickTwoSum(high.value, high.error + low.value);
  return doubledouble(sum.value, sum.error + low.error);
}
/// Returns a + b.
[[nodiscard]] constexpr doubledouble Sum(const doubledouble& a, double b) noexcept {
  const RoundedSum sum = TwoSum(a.hi, b);
  return doubledouble(sum.value, sum.error + a.lo);
}

/// Returns a * b + rest, where `rest` is small beside the product.
[[nodiscard]] constexpr doubledouble ProductAnd(double a, double b, double rest) noexcept {
  const double product = Rounded(a * b);
  return doubledouble(product, TwoProductError(a, b, product) + rest);
}
/// Returns a * b.
[[nodiscard]] constexpr doubledouble Product(const doubledouble& a,
                                             const doubledouble& b) noexcept {
  return ProductAnd(a.hi, b.hi, Rounded(b.lo * a.hi) + Rounded(a.lo * b.hi));
}
/// Returns a * b.
[[nodiscard]] constexpr doubledouble Product(const doubledouble& a, double b) noexcept {
  return ProductAnd(a.hi, b, Rounded(a.lo * b));
}
/// Returns a * b.
[[nodiscard]] constexpr doubledouble Product(double a, const doubledouble& b) noexcept {
  return ProductAnd(a, b.hi, Rounded(b.lo * a));
}

/// A quotient of doubles, and what is left of the dividend.
struct Division {
  double quotient;  ///< a / b, rounded.
  double rest;      ///< a - b * quotient.
};

/// Divides a by b.
[[nodiscard]] constexpr Division Divide(double a, double b) noexcept {
  const double quotient = a / b;
  const double product = Rounded(b * quotient);
  return {quotient, (a - product) - TwoProductError(b, quotient, product)};
}
/// Returns a / b.
[[nodiscard]] constexpr doubledouble Quotient(const doubledouble& a,
                                              const doubledouble& b) noexcept {
  const Division first = Divide(a.hi, b.hi);
  const double rest = first.rest + a.lo - Rounded(b.lo * first.quotient);
  return doubledouble(first.quotient, rest / b.hi);
}
/// Returns a / b.
[[nodiscard]] constexpr doubledouble Quotient(const doubledouble& a, double b) noexcept {
  const Division first = Divide(a.hi, b);
  return doubledouble(first.quotient, (first.rest + a.lo) / b);
}
/// Returns a / b.
[[nodiscard]] constexpr doubledouble Quotient(double a, const doubledouble& b) noexcept {
  const Division first = Divide(a, b.hi);
  return doubledouble(first.quotient, (first.rest - Rounded(b.lo * first.quotient)) / b.hi);
}

/// Returns the square of x as a double and what is missing from it.
[[nodiscard]] constexpr RoundedSum Square(const doubledouble& x) noexcept {
  const double product = Rounded(x.hi * x.hi);
  const RoundedSum parts = Split(x.hi);
  const double middle = Rounded(2 * parts.value * parts.error);
  const double error = Rounded(parts.error * parts.error) +
                       (Rounded(parts.value * parts.value) - product + middle) +
                       Rounded(2 * x.hi * x.lo);
  return {product, error};
}

}  // namespace detail::twofold

constexpr doubledouble operator-(const doubledouble& a) noexcept {
  return doubledouble(-a.hi, -a.lo);
}

constexpr doubledouble operator+(const doubledouble& a, const doubledouble& b) noexcept {
  return detail::twofold::Sum(a, b);
}
template <PlainNumber T>
constexpr doubledouble operator+(const doubledouble& a, T b) noexcept {
  return detail::twofold::Sum(a, detail::twofold::Exactly(b));
}
template <PlainNumber T>
constexpr doubledouble operator+(T a, const doubledouble& b) noexcept {
  return detail::twofold::Sum(b, detail::twofold::Exactly(a));
}

constexpr doubledouble operator-(const doubledouble& a, const doubledouble& b) noexcept {
  return detail::twofold::Sum(a, detail::twofold::Negative(b));
}
template <PlainNumber T>
constexpr doubledouble operator-(const doubledouble& a, T b) noexcept {
  return detail::twofold::Sum(a, detail::twofold::Negative(detail::twofold::Exactly(b)));
}
template <PlainNumber T>
constexpr doubledouble operator-(T a, const doubledouble& b) noexcept {
  return detail::twofold::Sum(detail::twofold::Negative(b), detail::twofold::Exactly(a));
}

constexpr doubledouble operator*(const doubledouble& a, const doubledouble& b) noexcept {
  return detail::twofold::Product(a, b);
}
template <PlainNumber T>
constexpr doubledouble operator*(const doubledouble& a, T b) noexcept {
  return detail::twofold::Product(a, detail::twofold::Exactly(b));
}
template <PlainNumber T>
constexpr doubledouble operator*(T a, const doubledouble& b) noexcept {
  return detail::twofold::Product(detail::twofold::Exactly(a), b);
}

constexpr doubledouble operator/(const doubledouble& a, const doubledouble& b) noexcept {
  return detail::twofold::Quotient(a, b);
}
template <PlainNumber T>
constexpr doubledouble operator/(const doubledouble& a, T b) noexcept {
  return detail::twofold::Quotient(a, detail::twofold::Exactly(b));
}
template <PlainNumber T>
constexpr doubledouble operator/(T a, const doubledouble& b) noexcept {
  return detail::twofold::Quotient(detail::twofold::Exactly(a), b);
}

constexpr doubledouble& operator+=(doubledouble& a, const doubledouble& b) noexcept {
  return a = a + b;
}
template <PlainNumber T>
constexpr doubledouble& operator+=(doubledouble& a, T b) noexcept {
  return a = a + b;
}
constexpr doubledouble& operator-=(doubledouble& a, const doubledouble& b) noexcept {
  return a = a - b;
}
template <PlainNumber T>
constexpr doubledouble& operator-=(doubledouble& a, T b) noexcept {
  return a = a - b;
}
constexpr doubledouble& operator*=(doubledouble& a, const doubledouble& b) noexcept {
  return a = a * b;
}
template <PlainNumber T>
constexpr doubledouble& operator*=(doubledouble& a, T b) noexcept {
  return a = a * b;
}
constexpr doubledouble& operator/=(doubledouble& a, const doubledouble& b) noexcept {
  return a = a / b;
}
template <PlainNumber T>
constexpr doubledouble& operator/=(doubledouble& a, T b) noexcept {
  return a = a / b;
}

constexpr bool operator==(const doubledouble& a, const doubledouble& b) noexcept {
  return a.hi == b.hi && a.lo == b.lo;
}
template <PlainNumber T>
constexpr bool operator==(const doubledouble& a, T b) noexcept {
  return a == doubledouble(b);
}
constexpr bool operator<(const doubledouble& a, const doubledouble& b) noexcept {
  return a.hi < b.hi || (a.hi == b.hi && a.lo < b.lo);
}
template <PlainNumber T>
constexpr bool operator<(const doubledouble& a, T b) noexcept {
  return a < doubledouble(b);
}
template <PlainNumber T>
constexpr bool operator<(T a, const doubledouble& b) noexcept {
  return doubledouble(a) < b;
}
constexpr bool operator<=(const doubledouble& a, const doubledouble& b) noexcept {
  return a.hi < b.hi || (a.hi == b.hi && a.lo <= b.lo);
}
template <PlainNumber T>
constexpr bool operator<=(const doubledouble& a, T b) noexcept {
  return a <= doubledouble(b);
}
template <PlainNumber T>
constexpr bool operator<=(T a, const doubledouble& b) noexcept {
  return doubledouble(a) <= b;
}
constexpr bool operator>(const doubledouble& a, const doubledouble& b) noexcept { return b < a; }
template <PlainNumber T>
constexpr bool operator>(const doubledouble& a, T b) noexcept {
  return doubledouble(b) < a;
}
template <PlainNumber T>
constexpr bool operator>(T a, const doubledouble& b) noexcept {
  return b < doubledouble(a);
}
constexpr bool operator>=(const doubledouble& a, const doubledouble& b) noexcept { return b <= a; }
template <PlainNumber T>
constexpr bool operator>=(const doubledouble& a, T b) noexcept {
  return doubledouble(b) <= a;
}
template <PlainNumber T>
constexpr bool operator>=(T a, const doubledouble& b) noexcept {
  return b <= doubledouble(a);
}

constexpr doubledouble normalize(const doubledouble& x) noexcept {
  const detail::twofold::RoundedSum once = detail::twofold::QuickTwoSum(x.hi, x.lo);
  return doubledouble(once.value, once.error);
}

constexpr doubledouble Multiply(double a, double b) noexcept {
  const double product = detail::twofold::Rounded(a * b);
  return doubledouble(product, detail::twofold::TwoProductError(a, b, product));
}

constexpr doubledouble fabs(const doubledouble& x) noexcept { return x.hi < 0 ? -x : x; }

constexpr doubledouble sqr(const doubledouble& x) noexcept {
  const detail::twofold::RoundedSum square = detail::twofold::Square(x);
  return doubledouble(square.value, square.error);
}

constexpr doubledouble recip(const doubledouble& x) noexcept {
  return detail::twofold::Quotient(1.0, x);
}

inline doubledouble sqrt(const doubledouble& x) noexcept {
  using detail::twofold::Rounded;
  if (x.hi == 0) {
    return doubledouble();
  }
  // One step of Newton's; the square of the root is `sum`, and `missing` from it.
  const double root = std::sqrt(x.hi);
  const double wide = Rounded(detail::twofold::kSplitter * root);
  const double upper = wide + (root - wide);
  const double lower = root - upper;
  const double square = Rounded(upper * upper);
  const double middle = 2 * Rounded(upper * lower);
  const double sum = middle + square;
  const double missing = Rounded(lower * lower) + (middle + (square - sum));
  return doubledouble(root, ((x.hi - sum) - missing + x.lo) / (root + root));
}

inline doubledouble floor(const doubledouble& x) noexcept {
  const double whole = std::floor(x.hi);
  return whole != x.hi ? doubledouble(whole) : doubledouble(whole, std::floor(x.lo));
}

inline doubledouble ceil(const doubledouble& x) noexcept { return -floor(-x); }

inline doubledouble scalb(const doubledouble& x, long n) noexcept {
  if (n >= -1022 && n <= 1023) {
    const double power = std::bit_cast<double>(static_cast<std::uint64_t>(n + 1023) << 52);
    return doubledouble(detail::twofold::Rounded(x.hi * power),
                        detail::twofold::Rounded(x.lo * power));
  }
  return doubledouble(std::scalbln(x.hi, n), std::scalbln(x.lo, n));
}

template <PlainNumber T>
doubledouble hypot(const doubledouble& a, T b) noexcept {
  return hypot(a, doubledouble(b));
}
template <PlainNumber T>
doubledouble hypot(T a, const doubledouble& b) noexcept {
  return hypot(doubledouble(a), b);
}

}  // namespace vlm

#pragma once

/// \file
/// Arithmetic with about 32 decimal digits, on two doubles to a number.
///
///     const vlm::doubledouble third = vlm::doubledouble(1) / 3;
///     std::cout << std::setprecision(32) << third;  // 3.3333333333333333333333333333333d-001
///     vlm::doubledouble area = vlm::doubledouble::DDPI * vlm::sqr(vlm::doubledouble("1.5d2"));
///
/// Results have the same bits under every compiler and on every processor, in a program that lets
/// products and sums fuse, too. Rounding must be to nearest, as it is unless a program changes it;
/// under `-ffast-math` the lower digits are lost.
/// The functions have the names of the standard's: inside the namespace `vlm` write `std::sqrt` for
/// that of a `double`.

#include <velum/core/Api.h>

#include <concepts>
#include <iosfwd>
#include <limits>
#include <utility>

namespace vlm {

/// A plain number that goes with a `doubledouble`: any integer up to 64 bits, `float` or `double`.
template <class T>
concept PlainNumber = (std::integral<T> && std::numeric_limits<T>::digits <= 64) ||
                      std::same_as<T, float> || std::same_as<T, double>;

/// A number of about 32 significant digits: the unevaluated sum of two doubles.
///
/// A plain value of 16 bytes. It is normalised when `hi` is the sum of both rounded, so that `lo`
/// is at most half a unit in the last place of `hi`. The operations expect normalised operands and
/// give normalised results with a relative error of a few times 2 to the power -106. From 1e-290
/// downwards the lower digits run out, since those of `lo` do.
///
/// Nothing throws but the reading of text. Infinities and NaN pass through the operations on
/// doubles: the result of one with an infinity is NaN nearly always, and so is a product or
/// quotient with a factor or a divisor beyond 1.3e300.
class VELUM_API doubledouble {
 public:
  static const doubledouble DDPI;     ///< pi
  static const doubledouble DDTWOPI;  ///< 2 pi
  static const doubledouble PION2;    ///< pi / 2
  static const doubledouble PION4;    ///< pi / 4
  static const doubledouble INVPI;    ///< 1 / pi
  static const doubledouble LN2;      ///< natural logarithm of 2
  static const doubledouble LN10;     ///< natural logarithm of 10

  double hi{};  ///< The number, rounded to a `double`.
  double lo{};  ///< What is missing from `hi`.

  /// Makes 0.
  constexpr doubledouble() noexcept {}
  /// Makes a plain number, such as a `double` or an `int`, exactly.
  template <PlainNumber T>
  constexpr doubledouble(T x) noexcept;
  /// Makes the sum of two numbers, of which `a` is not the smaller in magnitude.
  constexpr doubledouble(double a, double b) noexcept;
  /// Reads a number as `atodd` does.
  doubledouble(const char* text);

  /// Returns `lo + hi`.
  constexpr operator double() const noexcept { return lo + hi; }
  /// Returns `lo + hi` truncated towards 0.
  ///
  /// - Beyond the range of `int`: its nearer end.
  /// - NaN: 0.
  constexpr operator int() const noexcept;

  /// Tells whether arithmetic on doubles rounds every result to 53 bits, as the operations need it.
  ///
  /// True here: the instructions that the library is compiled to have no other precision.
  [[nodiscard]] static bool CheckPrecision() noexcept;
};

/// Returns `a` with the other sign.
[[nodiscard]] constexpr doubledouble operator-(const doubledouble& a) noexcept;

/// Returns the sum of two numbers.
[[nodiscard]] constexpr doubledouble operator+(const doubledouble& a,
                                               const doubledouble& b) noexcept;
/// Returns the sum of a number and a plain one.
template <PlainNumber T>
[[nodiscard]] constexpr doubledouble operator+(const doubledouble& a, T b) noexcept;
/// Returns the sum of a plain number and another.
template <PlainNumber T>
[[nodiscard]] constexpr doubledouble operator+(T a, const doubledouble& b) noexcept;

/// Returns the difference of two numbers.
[[nodiscard]] constexpr doubledouble operator-(const doubledouble& a,
                                               const doubledouble& b) noexcept;
/// Returns the difference of a number and a plain one.
template <PlainNumber T>
[[nodiscard]] constexpr doubledouble operator-(const doubledouble& a, T b) noexcept;
/// Returns the difference of a plain number and another.
template <PlainNumber T>
[[nodiscard]] constexpr doubledouble operator-(T a, const doubledouble& b) noexcept;

/// Returns the product of two numbers.
[[nodiscard]] constexpr doubledouble operator*(const doubledouble& a,
                                               const doubledouble& b) noexcept;
/// Returns the product of a number and a plain one.
template <PlainNumber T>
[[nodiscard]] constexpr doubledouble operator*(const doubledouble& a, T b) noexcept;
/// Returns the product of a plain number and another.
template <PlainNumber T>
[[nodiscard]] constexpr doubledouble operator*(T a, const doubledouble& b) noexcept;

/// Returns the quotient of two numbers. A division by 0 gives NaN.
[[nodiscard]] constexpr doubledouble operator/(const doubledouble& a,
                                               const doubledouble& b) noexcept;
/// Returns the quotient of a number and a plain one. A division by 0 gives NaN.
template <PlainNumber T>
[[nodiscard]] constexpr doubledouble operator/(const doubledouble& a, T b) noexcept;
/// Returns the quotient of a plain number and another. A division by 0 gives NaN.
template <PlainNumber T>
[[nodiscard]] constexpr doubledouble operator/(T a, const doubledouble& b) noexcept;

/// Adds a number to `a`.
constexpr doubledouble& operator+=(doubledouble& a, const doubledouble& b) noexcept;
/// Adds a plain number to `a`.
template <PlainNumber T>
constexpr doubledouble& operator+=(doubledouble& a, T b) noexcept;

/// Subtracts a number from `a`.
constexpr doubledouble& operator-=(doubledouble& a, const doubledouble& b) noexcept;
/// Subtracts a plain number from `a`.
template <PlainNumber T>
constexpr doubledouble& operator-=(doubledouble& a, T b) noexcept;

/// Multiplies `a` by a number.
constexpr doubledouble& operator*=(doubledouble& a, const doubledouble& b) noexcept;
/// Multiplies `a` by a plain number.
template <PlainNumber T>
constexpr doubledouble& operator*=(doubledouble& a, T b) noexcept;

/// Divides `a` by a number.
constexpr doubledouble& operator/=(doubledouble& a, const doubledouble& b) noexcept;
/// Divides `a` by a plain number.
template <PlainNumber T>
constexpr doubledouble& operator/=(doubledouble& a, T b) noexcept;

/// Tells whether `hi` and `lo` are equal.
[[nodiscard]] constexpr bool operator==(const doubledouble& a, const doubledouble& b) noexcept;
/// Tells the same of a plain number `b`.
template <PlainNumber T>
[[nodiscard]] constexpr bool operator==(const doubledouble& a, T b) noexcept;
/// Tells whether `a` is less than `b`: by `hi`, and by `lo` where those are equal. NaN compares
/// false.
[[nodiscard]] constexpr bool operator<(const doubledouble& a, const doubledouble& b) noexcept;
/// Tells the same of a plain number `b`.
template <PlainNumber T>
[[nodiscard]] constexpr bool operator<(const doubledouble& a, T b) noexcept;
/// Tells the same of a plain number `a`.
template <PlainNumber T>
[[nodiscard]] constexpr bool operator<(T a, const doubledouble& b) noexcept;
/// Tells whether `a` is at most `b`.
[[nodiscard]] constexpr bool operator<=(const doubledouble& a, const doubledouble& b) noexcept;
/// Tells the same of a plain number `b`.
template <PlainNumber T>
[[nodiscard]] constexpr bool operator<=(const doubledouble& a, T b) noexcept;
/// Tells the same of a plain number `a`.
template <PlainNumber T>
[[nodiscard]] constexpr bool operator<=(T a, const doubledouble& b) noexcept;
/// Tells whether `a` is greater than `b`.
[[nodiscard]] constexpr bool operator>(const doubledouble& a, const doubledouble& b) noexcept;
/// Tells the same of a plain number `b`.
template <PlainNumber T>
[[nodiscard]] constexpr bool operator>(const doubledouble& a, T b) noexcept;
/// Tells the same of a plain number `a`.
template <PlainNumber T>
[[nodiscard]] constexpr bool operator>(T a, const doubledouble& b) noexcept;
/// Tells whether `a` is at least `b`.
[[nodiscard]] constexpr bool operator>=(const doubledouble& a, const doubledouble& b) noexcept;
/// Tells the same of a plain number `b`.
template <PlainNumber T>
[[nodiscard]] constexpr bool operator>=(const doubledouble& a, T b) noexcept;
/// Tells the same of a plain number `a`.
template <PlainNumber T>
[[nodiscard]] constexpr bool operator>=(T a, const doubledouble& b) noexcept;

/// Returns `x` normalised, for fields that were set one by one.
[[nodiscard]] constexpr doubledouble normalize(const doubledouble& x) noexcept;
/// Returns the exact product of two doubles. *Source*: Dekker, 1971.
[[nodiscard]] constexpr doubledouble Multiply(double a, double b) noexcept;
/// Returns the absolute value.
[[nodiscard]] constexpr doubledouble fabs(const doubledouble& x) noexcept;
/// Returns the square.
[[nodiscard]] constexpr doubledouble sqr(const doubledouble& x) noexcept;
/// Returns 1 / x; NaN for 0.
[[nodiscard]] constexpr doubledouble recip(const doubledouble& x) noexcept;
/// Returns the square root; NaN for a negative number. *Source*: Dekker, 1971.
[[nodiscard]] inline doubledouble sqrt(const doubledouble& x) noexcept;
/// Returns the greatest whole number that is not above `x`.
[[nodiscard]] inline doubledouble floor(const doubledouble& x) noexcept;
/// Returns the least whole number that is not below `x`.
[[nodiscard]] inline doubledouble ceil(const doubledouble& x) noexcept;
/// Returns `x` times 2 to the power `n`, exact while both fields stay normal numbers.
[[nodiscard]] inline doubledouble scalb(const doubledouble& x, long n) noexcept;

/// Returns `x` to the power `n` by repeated squaring; 1 for `n` = 0, whatever `x` is.
///
/// *Cost*: at most 62 products. The error grows with `n`.
[[nodiscard]] VELUM_API doubledouble pow(const doubledouble& x, int n) noexcept;
/// Returns the square root of a² + b², without overflow on the way.
///
/// - An infinity, whatever the other is: infinity.
/// - NaN: NaN.
/// - A result beyond the largest `double`: infinity.
///
/// *Source*: C. Moler and D. Morrison, 1983.
[[nodiscard]] VELUM_API doubledouble hypot(const doubledouble& a, const doubledouble& b) noexcept;
/// The same with a plain number.
template <PlainNumber T>
[[nodiscard]] doubledouble hypot(const doubledouble& a, T b) noexcept;
/// The same with a plain number.
template <PlainNumber T>
[[nodiscard]] doubledouble hypot(T a, const doubledouble& b) noexcept;
/// Splits `x` into a number whose `hi` is in 0.5 to 1, 1 excluded, and the power of 2 that it is to
/// be multiplied by.
///
/// - 0, infinities and NaN: themselves and 0.
[[nodiscard]] VELUM_API std::pair<doubledouble, long> partition(const doubledouble& x) noexcept;

/// Reads a decimal number: white space, a sign, digits with a point, an exponent after "d" or "D".
///
/// Reading stops at the first character that fits nowhere; what stands before it counts, or else 0.
/// The point is ".", whatever the locale. A power of 10 is taken in single steps, each of which is
/// rounded.
/// - `"1.5d2"` gives 150, and `"1.5e2"` 1.5;
/// - beyond the largest `double` the result is an infinity, below the least one 0.
///
/// *Errors*: `ERR_INTERNAL` from "DoubleDouble" for a null pointer.
/// *Cost*: grows with the length of the text, not with the exponent: at most 1300 steps for that.
[[nodiscard]] VELUM_API doubledouble atodd(const char* text);

/// Writes `x` with as many significant digits as the precision of the stream says, in a form that
/// `atodd` reads: `1.5d+003`, or `1.5` where the exponent is 0.
///
/// Digits end where the number does. The exponent's letter is "D" with `std::uppercase`; other
/// flags and the width have no effect.
/// - 0 and infinities: as the stream writes the `double`;
/// - NaN: "NaN " with a blank.
VELUM_API std::ostream& operator<<(std::ostream& out, const doubledouble& x);

}  // namespace vlm

#include <velum/numerics/detail/DoubleDouble.inl.h>

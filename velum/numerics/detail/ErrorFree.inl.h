#pragma once

/// \file
/// Sums and products of doubles together with what rounding took from them: the steps that
/// double-double arithmetic is made of. *Source*: T. J. Dekker, 1971; D. E. Knuth, 1969.

#include <type_traits>

namespace vlm::detail::twofold {

/// A rounded result and its error: the exact result is their sum.
struct RoundedSum {
  double value;  ///< The rounded result.
  double error;  ///< What is missing from it.
};

/// Returns `x`, a product, such that no compiler joins it with a sum into one operation that rounds
/// once. It takes no instruction.
[[nodiscard]] constexpr double Rounded(double x) noexcept {
#if __has_builtin(__builtin_assoc_barrier)
  return __builtin_assoc_barrier(x);  // it also lets loops go several numbers wide
#else
  if (!std::is_constant_evaluated()) {
    asm("" : "+x"(x));  // says that the register changes
  }
  return x;
#endif
}

/// Returns a + b with its error, for |a| at least |b| or a = 0.
[[nodiscard]] constexpr RoundedSum QuickTwoSum(double a, double b) noexcept {
  const double sum = a + b;
  return {sum, a - sum + b};
}

/// Returns a + b with its error, for any two numbers.
[[nodiscard]] constexpr RoundedSum TwoSum(double a, double b) noexcept {
  const double sum = a + b;
  const double ofB = sum - a;
  return {sum, (b - ofB) + (a - (sum - ofB))};
}

/// 2 to the power 27, plus 1: multiplying by it halves the digits of a number.
inline constexpr double kSplitter = 134217729.0;

/// Returns `a` as a sum of two numbers of 26 bits, the upper one as the value. NaN from about
/// 1.3e300 on, where the product with `kSplitter` overflows.
[[nodiscard]] constexpr RoundedSum Split(double a) noexcept {
  const double wide = Rounded(a * kSplitter);
  const double upper = wide - (wide - a);
  return {upper, a - upper};
}

/// Returns the error of a product: a * b - product, where `product` is a * b rounded.
[[nodiscard]] constexpr double TwoProductError(double a, double b, double product) noexcept {
  const RoundedSum as = Split(a);
  const RoundedSum bs = Split(b);
  return Rounded(as.value * bs.error) + (Rounded(bs.value * as.value) - product) +
         Rounded(bs.value * as.error) + Rounded(as.error * bs.error);
}

}  // namespace vlm::detail::twofold

#pragma once

/// \file
/// Rounding: to whole numbers and multiples, to significant digits, to powers of 2.
///
///     double label = vlm::RoundSig(1234.5, 2);  // 1200
///     double next = vlm::RoundUp(1234.5, 2);    // 1300
///     int pixel = vlm::ToNearest(37, 5);        // 35

#include <velum/core/Api.h>

#include <concepts>

namespace vlm {

/// Rounds to a whole number, half away from zero.
[[nodiscard]] VELUM_API double ToNearest(double value) noexcept;

/// Rounds to a multiple of `multiple`, half away from zero, computed in `double`.
///
/// - `value` or `multiple` 0: `value`.
/// - A result beyond `int` wraps.
[[nodiscard]] VELUM_API int ToNearest(int value, int multiple) noexcept;

/// Rounds to a multiple of `multiple`, half away from zero.
///
/// - `value` or `multiple` 0: `value`.
[[nodiscard]] VELUM_API double ToNearest(double value, double multiple) noexcept;

/// Rounds to a multiple in `double` where the arguments are of mixed or other number types, such as
/// `ToNearest(7, 2.5)`.
template <class Value, class Multiple>
requires std::convertible_to<Value, double> && std::convertible_to<Multiple, double>
[[nodiscard]] double ToNearest(Value value, Multiple multiple) noexcept {
  return ToNearest(static_cast<double>(value), static_cast<double>(multiple));
}

/// Rounds to `digits` significant decimal digits, half away from zero.
///
/// - `digits` outside 1 to 15, or `value` 0, infinite or NaN: `value`.
[[nodiscard]] VELUM_API double RoundSig(double value, int digits) noexcept;
/// Rounds up, towards positive infinity, to `digits` significant digits; exceptions as `RoundSig`.
[[nodiscard]] VELUM_API double RoundSigUp(double value, int digits) noexcept;
/// Rounds down, towards negative infinity, to `digits` significant digits; exceptions as
/// `RoundSig`.
[[nodiscard]] VELUM_API double RoundSigDown(double value, int digits) noexcept;

/// Returns the next multiple of the unit of the last of `digits` significant digits strictly above
/// `value`: `RoundUp(5, 4)` is 5.001.
///
/// - 0, infinities and NaN: `value`.
/// - A unit too small to change `value`: the next `double` above it.
/// - A unit beyond the largest `double`: 0 below 0, otherwise infinity.
[[nodiscard]] VELUM_API double RoundUp(double value, int digits) noexcept;

/// Widens a range of no width about its value, so that an axis can be drawn.
///
/// - `high` above `low`, or `low` infinite or NaN: nothing.
/// - `low` 0: the range becomes -0.001 to 0.001.
/// - Otherwise it reaches from `low` by one unit of its fourth significant digit both ways,
///   or one way where the other leads beyond the largest `double`.
VELUM_API void ExpandSingularLimits(double& low, double& high) noexcept;

/// Returns the nearer of the two powers of 2 about `n`, the larger one in the middle. It is never
/// below 2, nor above 2 to the power 31, the largest one there is.
[[nodiscard]] VELUM_API unsigned int RoundToPowerOf2(unsigned int n) noexcept;

/// Returns the smallest power of 2 not below `n`.
///
/// - 0, and above 2 to the power 31, where there is none: 0.
[[nodiscard]] VELUM_API unsigned int CeilPowerOf2(unsigned int n) noexcept;

}  // namespace vlm

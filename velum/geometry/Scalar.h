#pragma once

/// \file
/// Helpers on single numbers: comparison by representation, lengths without overflow, angles,
/// fractions of a range, interpolation in a cube.
///
///     bool same = vlm::AlmostEqual(0.1 + 0.2, 0.3, 1);  // true
///     double a = vlm::NormalizeAngleDeg(-90);           // 270

#include <velum/core/Api.h>

#include <concepts>

namespace vlm {

/// Tells whether two numbers are at most `maxUlps` representable numbers apart.
///
/// - NaN: false, whatever it is compared with.
/// - 0 and -0: equal.
/// - Infinity: one step from the largest finite number.
[[nodiscard]] VELUM_API bool AlmostEqual(double a, double b, unsigned int maxUlps) noexcept;
/// Tells the same of two `float`s, in steps of that type.
[[nodiscard]] VELUM_API bool AlmostEqual(float a, float b, unsigned int maxUlps) noexcept;
/// Tells the same in `double` of numbers of different types, such as a `double` and `INFINITY`.
template <class A, class B>
requires std::convertible_to<A, double> && std::convertible_to<B, double>
[[nodiscard]] bool AlmostEqual(A a, B b, unsigned int maxUlps) noexcept {
  return AlmostEqual(static_cast<double>(a), static_cast<double>(b), maxUlps);
}

/// Returns the square root of a² + b² + c² without overflow on the way.
///
/// - Three zeros, or an infinity or NaN among the arguments: NaN.
[[nodiscard]] VELUM_API double hypot(double a, double b, double c) noexcept;

/// Returns where `value` stands between `low` and `high`: 0 at or before the one, 1 at or behind
/// the other.
///
/// - `high` equal to `low`: 0 or 1 for a value below or above, NaN for that value.
[[nodiscard]] VELUM_API double Normalize(double value, double low, double high) noexcept;

/// Returns the angle in degrees turned into 0 to 360, 360 excluded. Infinities give NaN.
[[nodiscard]] VELUM_API double NormalizeAngleDeg(double angle) noexcept;
/// Returns the angle in radians turned into 0 to `TWO_PI`, `TWO_PI` excluded. Infinities give NaN.
[[nodiscard]] VELUM_API double NormalizeAngleRad(double angle) noexcept;

/// Interpolates between eight values at the corners of the unit cube, given as those at (0, 0, 0),
/// (1, 0, 0), (1, 1, 0), (0, 1, 0) and then the same four at w = 1.
[[nodiscard]] VELUM_API double Trilinear(double u, double v, double w,
                                         const double* values) noexcept;

}  // namespace vlm

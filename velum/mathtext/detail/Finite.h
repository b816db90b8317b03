#pragma once

/// \file
/// Refuses numbers of a math text that leave the range of a double.
///
///     detail::RequireFinite(height * percent / 100.0);

#include <velum/geometry/Vec2.h>
#include <velum/geometry/detail/Finite.h>

#include <cmath>

namespace vlm::detail {

/// Raises `ERR_CUSTOM` "MathText number out of range".
[[noreturn]] void ThrowNumberOutOfRange();

/// Raises "MathText number out of range" for what is infinite or NaN.
inline void RequireFinite(double value) {
  if (!std::isfinite(value)) ThrowNumberOutOfRange();
}

/// Raises "MathText number out of range" if a component is infinite or NaN.
inline void RequireFinite(const Vec2d& vector) {
  if (!IsFinite(vector)) ThrowNumberOutOfRange();
}

}  // namespace vlm::detail

#pragma once

/// \file
/// Which points are finite.

#include <velum/geometry/Vec2.h>

#include <cmath>

namespace vlm::detail {

/// Tells whether both components are finite.
template <class T>
[[nodiscard]] bool IsFinite(const BasicVec2<T>& p) noexcept {
  return std::isfinite(p.x) && std::isfinite(p.y);
}

}  // namespace vlm::detail

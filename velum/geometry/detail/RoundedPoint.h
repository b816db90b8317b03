#pragma once

/// \file
/// Points in integers, as the polygon classes give them.

#include <velum/geometry/Vec2.h>
#include <velum/geometry/detail/Pair.inl.h>
#include <velum/geometry/detail/SaturateTo.h>
#include <velum/platform/Types.h>

namespace vlm::detail {

/// Rounds half away from zero and limits to 32 bits; NaN gives 0.
[[nodiscard]] inline POINT RoundedPoint(const Vec2d& v) noexcept {
  const IntPair rounded = SaturatePair(Pair{v.x, v.y});
  return {rounded[0], rounded[1]};
}

/// Writes a point as it is.
inline void PutPoint(const Vec2d& v, Vec2d& out) noexcept { out = v; }
/// Writes a point in integers.
inline void PutPoint(const Vec2d& v, POINT& out) noexcept { out = RoundedPoint(v); }

}  // namespace vlm::detail

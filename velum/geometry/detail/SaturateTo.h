#pragma once

/// \file
/// How transforms turn coordinates into integers: rounded half away from zero and limited to what
/// the integer holds, with a result for every input.

#include <velum/geometry/detail/Pair.inl.h>

#include <cstdint>

namespace vlm::detail {

/// Two 32-bit integers side by side.
typedef std::int32_t IntPair __attribute__((vector_size(8)));

/// Rounds both numbers half away from zero. Above and below what 32 bits hold they are limited; NaN
/// gives 0.
[[nodiscard]] inline IntPair SaturatePair(Pair v) noexcept {
  using Bits = decltype(v < v);
  const Pair lowest = Both(-2147483648.0);
  const Pair highest = Both(2147483647.0);
  v = v == v ? v : Both(0);
  v = v < lowest ? lowest : v;
  v = v > highest ? highest : v;
  // The rest behind the truncated number is exact, where v + 0.5 would be rounded itself. A number
  // that is limited has none, so that the step never leaves the range.
  const IntPair whole = __builtin_convertvector(v, IntPair);
  const Pair rest = v - __builtin_convertvector(whole, Pair);
  const Bits step = (rest <= Both(-0.5)) - (rest >= Both(0.5));
  return whole + __builtin_convertvector(step, IntPair);
}

}  // namespace vlm::detail

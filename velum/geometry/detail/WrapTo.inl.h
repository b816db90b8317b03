#pragma once

/// \file
/// The one way in which geometry and colour turn a floating-point number into an integer without
/// saturation: with a result for every input, where a plain cast would be undefined.

#include <concepts>
#include <cstdint>

namespace vlm::detail {

/// Truncates `v` towards 0 and keeps the low bits that an `I` holds.
///
/// - Inside the range of `I` this is `static_cast<I>(v)`.
/// - Outside, the whole number wraps modulo 2 to the power of the width: 256.5 as a byte is 0.
/// - NaN, infinities and numbers that need more than 64 bits give 0.
template <std::integral I>
[[nodiscard]] constexpr I WrapTo(double v) noexcept {
  if (!(v > -0x1p63 && v < 0x1p63)) {
    return 0;
  }
  return static_cast<I>(static_cast<std::int64_t>(v));
}

}  // namespace vlm::detail

#pragma once

/// \file
/// Arrays of numbers converted from any of nine types to any other.
///
///     vlm::detail::CastFunctionOf(vlm::PrimInt8, vlm::PrimDouble)(src, dst, 100, 1);

#include <velum/files/PrimType.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace vlm::detail {

/// The integer that a number with a fraction becomes: without the fraction, and 0 for NaN and what
/// 64 bits don't hold.
[[nodiscard]] inline std::int64_t TruncateToWide(double value) noexcept {
  constexpr double kBound = 9223372036854775808.0;
  return value >= -kBound && value < kBound ? static_cast<std::int64_t>(value) : 0;
}

/// Converts the elements 0, `stride`, 2 `stride` ... before `count`.
using CastFunction = void (*)(const void* src, void* dst, std::size_t count, std::size_t stride);

/// The function for two of the nine types.
[[nodiscard]] CastFunction CastFunctionOf(PrimType srcType, PrimType dstType) noexcept;

}  // namespace vlm::detail

#pragma once

/// \file
/// Arrays of numbers converted from any of nine types to any other.
///
///     vlm::detail::CastFunctionOf(vlm::PrimInt8, vlm::PrimDouble)(src, dst, 100, 1);

#include <velum/files/PrimType.h>

#include <cstddef>

namespace vlm::detail {

/// Converts the elements 0, `stride`, 2 `stride` ... before `count`.
using CastFunction = void (*)(const void* src, void* dst, std::size_t count, std::size_t stride);

/// The function for two of the nine types.
[[nodiscard]] CastFunction CastFunctionOf(PrimType srcType, PrimType dstType) noexcept;

}  // namespace vlm::detail

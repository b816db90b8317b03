#pragma once

/// \file
/// Numbers of ten bytes, as 80-bit arithmetic stores them.
///
///     const unsigned char bytes[] = {0, 0, 0, 0, 0, 0, 0, 0xC0, 0x00, 0x40};
///     double three = vlm::Real10ToDouble(bytes);  // 3

#include <velum/core/Api.h>

namespace vlm {

/// Returns the double nearest to an 80-bit extended number, of two equally near ones the even one.
///
/// `bytes` are ten, the lowest first: 8 of the significand with its whole bit, then 15 bits of the
/// exponent and the sign.
///
/// - Beyond the largest double: infinity. Below half of the smallest: 0. Both keep the sign.
/// - A NaN: a quiet NaN with the same sign and the upper bits of its payload.
/// - An exponent above 0 without the whole bit, which is no number to 80-bit arithmetic: NaN.
/// \pre `bytes` isn't null.
[[nodiscard]] VELUM_API double Real10ToDouble(const unsigned char* bytes) noexcept;

}  // namespace vlm

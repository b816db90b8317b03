#pragma once

/// \file
/// The inverse of an affine matrix with four doubles side by side, on processors that have such
/// registers. It has the bits of the other way.
///
///     return HasFourWide() ? InvertAffineFourWide(m, out) : InvertAffineInPairs(m, out);

namespace vlm::detail {

/// True if the processor has AVX2. False before the library's own start, which costs time alone.
[[nodiscard]] bool HasFourWide() noexcept;

/// Does what InvertAffine does; see Inverse4.h. Only where `HasFourWide`.
bool InvertAffineFourWide(const double* m, double* out) noexcept;

}  // namespace vlm::detail

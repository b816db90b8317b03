#pragma once

/// \file
/// The inverse of an affine matrix with four doubles side by side, on processors that have such
/// registers. It has the bits of the other way.
///
///     return platform::HasFourWide() ? InvertAffineFourWide(m, out) : InvertAffineInPairs(m, out);

namespace vlm::detail {

/// Does what InvertAffine does; see Inverse4.h. Only where `platform::HasFourWide`.
bool InvertAffineFourWide(const double* m, double* out) noexcept;

}  // namespace vlm::detail

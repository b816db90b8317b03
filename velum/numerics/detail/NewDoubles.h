#pragma once

/// \file
/// The arrays of vectors and matrices.
///
///     std::unique_ptr<double[]> elements = NewDoubles(std::uint64_t{rows} * cols);

#include <cstdint>
#include <memory>

namespace vlm::detail {

/// Makes an array without values; null for a count of 0.
///
/// *Errors:* `std::bad_alloc` when there is no memory, or its bytes can't be counted in 32 bits.
[[nodiscard]] std::unique_ptr<double[]> NewDoubles(std::uint64_t count);

}  // namespace vlm::detail

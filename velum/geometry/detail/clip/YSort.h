#pragma once

/// \file
/// Sorting vertices by y.

#include <velum/geometry/detail/clip/ClipArray.h>

#include <bit>
#include <cstdint>

namespace vlm::detail {

/// A vertex, by its y.
struct YKey {
  std::uint64_t y;
  Index vertex;
};

/// The bits of a finite y in an order that is that of the numbers; both zeros give the same.
[[nodiscard]] inline std::uint64_t SortableY(double y) noexcept {
  const auto bits = std::bit_cast<std::uint64_t>(y + 0.0);
  return bits >> 63 ? ~bits : bits | std::uint64_t{1} << 63;
}

/// Sorts by y; vertices of one y stay in their order.
///
/// *Errors*: "scanbeam tree insertion". *Cost*: linear in the number of vertices.
void SortKeys(ClipArray<YKey>& keys);

}  // namespace vlm::detail

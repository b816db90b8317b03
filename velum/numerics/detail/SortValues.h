#pragma once

/// \file
/// Values in ascending order.

#include <span>

namespace vlm::detail {

/// Sorts the values in ascending order.
///
/// \pre No value is NaN; there are fewer than 2^32.
///
/// Many are sorted by one byte of their keys after the other, the least important one first.
/// *Errors:* `std::bad_alloc`, with the values unchanged. *Cost:* O(n) for many.
void SortValues(std::span<double> values);

}  // namespace vlm::detail

#pragma once

/// \file
/// Many order statistics of one large sample at once.

#include <cstddef>
#include <span>

namespace vlm::detail {

/// Puts the values in an order in which each one at a rank of `ranks` is the one that a sort would
/// put there, those before it are at most as large, and those after it at least as large.
///
/// \pre There are at most 100 `ranks`; they ascend, each below the number of values; no value is
/// NaN.
///
/// The values are counted in narrow buckets, whose place and width a random part of them tells, and
/// only the buckets that hold a rank are ordered, so that two passes do the work of many
/// selections. *Errors:* `std::bad_alloc`, with the values unchanged. *Cost:* O(n) on average.
void PartitionAtRanks(std::span<double> values, std::span<const std::size_t> ranks);

/// Returns the mean of the values that a sort of the distances |x - centre| would put at `rank` and
/// at `upper`.
///
/// \pre `upper` is `rank` or the next one, and below the number of values; no distance is NaN.
///
/// A random part of the distances tells where to look, and only what lies there is ordered.
/// *Errors:* `std::bad_alloc`. *Cost:* O(n) on average.
double MeanDistanceAtRanks(std::span<const double> values, double centre, std::size_t rank,
                           std::size_t upper);

}  // namespace vlm::detail

#pragma once

/// \file
/// What the warps ask of their control points, and make of them.
///
///     if (!AreControlPoints(from, to, 4)) return false;

#include <velum/geometry/RPoint.h>
#include <velum/numerics/RMatrix.h>

#include <cstddef>

namespace vlm::detail {

/// Tells whether the lists are of one length, hold `least` points or more, and all coordinates are
/// finite.
[[nodiscard]] bool AreControlPoints(const RPoints& from, const RPoints& to,
                                    std::size_t least) noexcept;

/// Returns the number of points. *Errors*: `std::bad_alloc` for more than any matrix can hold.
[[nodiscard]] unsigned CountOf(const RPoints& points);

/// Returns the points as rows of two.
[[nodiscard]] RMatrix RowsOf(const RPoints& points);

/// Tells whether all elements are finite.
[[nodiscard]] bool IsFinite(const double* begin, const double* end) noexcept;

/// The image of a point under a warp that is not calibrated.
[[nodiscard]] RPoint NoPoint() noexcept;

}  // namespace vlm::detail

#pragma once

/// \file
/// The ticks of an axis: a round step for a range of data, the first tick and the last.
///
///     double first, last;
///     double step = vlm::CalcAutoInc(0, 97, 5, &first, &last);         // 20: 0 to 80
///     int intervals = vlm::CalcAxisIntervals(0, 97, 5, &first, &last);  // 4
///     double below = vlm::SyncDownInterval(7, 5);                       // 5
///
/// A step is 1, 2 or 5 times a power of ten. A tick that lies outside the range by at most a
/// hundred-thousandth of the step is a tick of the range; no tick ever lies a step outside, not
/// even where the step is below the last place of the limits. `ExpandSingularLimits` of
/// velum/geometry/Rounding.h makes a range of no width usable.

#include <velum/core/Api.h>

namespace vlm {

/// Returns the number of intervals of an axis from `lo` to `hi` that wants `count` of them, and
/// writes the first and the last tick, each unless its pointer is null.
///
/// The step is the power of ten not above (hi - lo) / count if that is round itself; otherwise the
/// first of 2, 5 and 10 times it that is not below (hi - lo) / count, each only if it is below
/// hi - lo. If none is, it stays the power of ten.
///
/// - `lo` not below `hi`, or a limit that is not finite: 0 intervals; the ticks are the limits.
/// - `count` below 1 counts as 1.
VELUM_API int CalcAxisIntervals(double lo, double hi, int count, double* first,
                                double* last) noexcept;

/// Returns the step of an axis from `lo` to `hi` that wants `count` intervals, and writes the first
/// and the last tick, each unless its pointer is null.
///
/// The step is the power of ten not above (hi - lo) / count, or the first of 2, 5 and 10 times it
/// that is not below (hi - lo) / count. Where these reach hi - lo before that, it is the last one
/// below.
///
/// - `lo` not below `hi`: 1, with ticks at lo - 1 and lo + 1.
/// - Otherwise, a limit that is infinite or NaN: NaN; the ticks are the limits.
/// - `count` below 1 counts as 1.
VELUM_API double CalcAutoInc(double lo, double hi, int count, double* first, double* last) noexcept;

/// Returns the smallest multiple of `step` that is not below `value`.
///
/// - A step that is 0, negative, NaN or infinite, or too small to change `value`: `value`.
[[nodiscard]] VELUM_API double SyncUpInterval(double value, double step) noexcept;
/// Returns the largest multiple of `step` that is not above `value`; exceptions as
/// SyncUpInterval.
[[nodiscard]] VELUM_API double SyncDownInterval(double value, double step) noexcept;

}  // namespace vlm

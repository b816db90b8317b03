#pragma once

/// \file
/// Stored numbers of dates as the records of a published platform interface, and back.
///
///     vlm::SYSTEMTIME time;
///     vlm::VariantTimeToSystemTime(40537.25, &time);  // 25 December 2010, a Saturday, 06:00
///     double date;
///     vlm::SystemTimeToVariantTime(&time, &date);     // 40537.25
///
/// velum/dates/DateTime.h tells what a stored number is.

#include <velum/core/Api.h>
#include <velum/platform/Types.h>

namespace vlm {

/// Takes a stored number apart, rounded to the nearest second, and returns true.
///
/// - NaN, and what is no day from 1 January 100 to 31 December 9999 or is rounded beyond it: false,
///   and nothing is written; the same for a null pointer.
VELUM_API bool VariantTimeToSystemTime(double date, SYSTEMTIME* time) noexcept;

/// Writes the stored number of a date and time and returns true. Milliseconds and the day of the
/// week do not count.
///
/// - What the calendar or the clock does not have, and years below 100 or above 9999: false, and
///   nothing is written; the same for a null pointer. No field is carried into the next.
/// - 1 January 100 after midnight is below `KQDateTime::Min_DTVal`, and written all the same.
VELUM_API bool SystemTimeToVariantTime(const SYSTEMTIME* time, double* date) noexcept;

}  // namespace vlm

#pragma once

/// \file
/// The forms in which dates are written, as numbers and as the format strings of spreadsheets.
///
///     char format[40];
///     vlm::KQMapFmtTypesToExcelFmtStr(12, 3, format, sizeof format);  // m/d/yyyy h:mm:ss
///     int shown = vlm::KQClosestAccurateTimeFmt(0.4275, 1);          // 3: 10:15:36 has seconds
///
/// The types and what they look like stand with `KQDateTime::DATE_FORMAT_TYPE` and
/// `KQDateTime::TIME_FORMAT_TYPE`.

#include <velum/core/Api.h>
#include <velum/dates/DateTime.h>

namespace vlm {

/// True for the number of a `DATE_FORMAT_TYPE`.
[[nodiscard]] VELUM_API bool KQValidDateFmtType(int dateFmt) noexcept;
/// True for the number of a `TIME_FORMAT_TYPE`.
[[nodiscard]] VELUM_API bool KQValidTimeFmtType(int timeFmt) noexcept;

/// Writes the format string of a date type and a time type, with a blank between them if neither is
/// 0, into `buffer`, which has room for `size` bytes. What has no room is left out; the text is
/// terminated unless `size` is below 1.
///
/// *Errors*: 2 for a null buffer or a number that is no type.
VELUM_API void KQMapFmtTypesToExcelFmtStr(int dateFmt, int timeFmt, char* buffer, int size);
/// Finds the types whose format strings stand anywhere in `text`, the longer before the shorter
/// that it contains; 0 where there is none. A backslash before a character does not count.
///
/// *Errors*: 2 for a null pointer.
VELUM_API void KQMapExcelFmtStrToFmtTypes(const char* text, KQDateTime::DATE_FORMAT_TYPE* dateFmt,
                                          KQDateTime::TIME_FORMAT_TYPE* timeFmt);

/// Returns `dateFmt` if the day of the stored number `date`, written by it, is read as that day
/// again; otherwise the nearest type with the whole year.
///
/// - 1, 2 and 3 give 12; 4, 5, 6, 7, 8, 10, 11 and 15 give 13; the others stay.
/// - The day is the one that has begun, below zero as well: -1.75, 18:00, is of 29 December 1899.
/// - Texts are read as `KQGetDateTextOptions` says, so the answer may change with that.
/// - A text that can't be read counts as 31 December 9999, so for that day 10, 11 and 15 stay.
///
/// *Errors*: 2 for a number that is no type.
[[nodiscard]] VELUM_API int KQClosestAccurateDateFmt(double date, int dateFmt);
/// Returns `timeFmt` if the time of the stored number `date`, written by it, is read as the same
/// second again; otherwise 3 for 1 and 4 for 2, and the others stay.
///
/// *Errors*: 2 for a number that is no type.
[[nodiscard]] VELUM_API int KQClosestAccurateTimeFmt(double date, int timeFmt);

}  // namespace vlm

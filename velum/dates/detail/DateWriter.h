#pragma once

/// \file
/// Writes days and times in the types of `KQDateTime`.
///
///     detail::TextOut out;
///     detail::WriteDate(KQDateTime::DATE_M_D_YYYY, 40537, out);     // 12/25/2010
///     detail::WriteTime(KQDateTime::TIME_H_MM, 40537.25, moment, out);  // 6:00

#include <velum/dates/detail/Moment.h>
#include <velum/dates/detail/TextOut.h>

namespace vlm::detail {

/// Writes a day by a date type, which is one.
void WriteDate(int dateFmt, int day, TextOut& out) noexcept;

/// Writes a time of day by a time type, which is one; `date` is the stored number of `moment`.
void WriteTime(int timeFmt, double date, const Moment& moment, TextOut& out) noexcept;

}  // namespace vlm::detail

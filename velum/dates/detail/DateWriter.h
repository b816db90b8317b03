#pragma once

/// \file
/// Writes days and times in the types of `KQDateTime`, without terminator.
///
///     char text[detail::kLongestText];
///     char* end = detail::WriteDate(text, KQDateTime::DATE_M_D_YYYY, 40537);  // 12/25/2010

#include <velum/dates/detail/Moment.h>

namespace vlm::detail {

/// Writes a day by a date type, which is one; gives the end of the text.
char* WriteDate(char* out, int dateFmt, int day) noexcept;

/// Writes a time of day by a time type, which is one; gives the end of the text. `date` is the
/// stored number of `moment`.
char* WriteTime(char* out, int timeFmt, double date, const Moment& moment) noexcept;

}  // namespace vlm::detail

#pragma once

/// \file
/// Date and time patterns of math text, as users write them in `\dt("...")`, and the formats of
/// `strftime`:
///
///     const vlm::GString format = vlm::MathTextDTToPrintfFormat("h:nn tt");     // "%#I:%M %p"
///     const vlm::GString pattern = vlm::PrintfToMathTextDTFormat("%m/%d/%y");  // "mm/dd/yy"
///
/// | Pattern | Format | Stands for |
/// |---|---|---|
/// | d, dd, ddd, dddd | `%#d`, `%d`, `%a`, `%A` | day: 7, 07, Tue, Tuesday |
/// | m, mm, mmm, mmmm | `%#m`, `%m`, `%b`, `%B` | month: 4, 04, Apr, April |
/// | yy, yyyy | `%y`, `%Y` | year: 26, 2026 |
/// | h, hh, HH | `%#I`, `%#H`, `%H` | hour: 3 of twelve; 7 of 24; 07 of 24 |
/// | nn, ss | `%M`, `%S` | minutes, seconds |
/// | tt | `%p` | AM or PM |
///
/// The flag `#` drops the leading zero.

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// Converts a date and time pattern of math text to a format.
///
/// At each place the longest entry of the table is converted. The character right behind an entry
/// is copied as it stands even if it could begin another: "mm/dd" gives `%m/%d`, but "ddmm" gives
/// `%dm%#m`. What is no entry is copied; capitals matter.
[[nodiscard]] VELUM_API GString MathTextDTToPrintfFormat(const GString& pattern);

/// Converts a format back to a date and time pattern, by the same rules with the table turned
/// round.
[[nodiscard]] VELUM_API GString PrintfToMathTextDTFormat(const GString& format);

}  // namespace vlm

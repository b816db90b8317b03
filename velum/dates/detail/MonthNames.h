#pragma once

/// \file
/// The English names of months and days.
///
///     detail::MonthName(3);               // "March"
///     detail::MonthName(3).substr(0, 3);  // "Mar"

#include <array>
#include <string_view>

namespace vlm::detail {

/// The months' names; the first is at 0.
inline constexpr std::array<std::string_view, 12> kMonthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};

/// The days' names, from Sunday.
inline constexpr std::array<std::string_view, 7> kWeekdayNames = {
    "Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};

/// The name of a month from 1 to 12.
[[nodiscard]] constexpr std::string_view MonthName(unsigned int month) noexcept {
  return kMonthNames[month - 1];
}

}  // namespace vlm::detail

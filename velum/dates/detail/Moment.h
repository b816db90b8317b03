#pragma once

/// \file
/// A stored number as a day, a second of it and a fraction of that.
///
///     detail::Moment moment;
///     detail::MomentOfDate(40537.25, moment);   // day 40537, second 21600

#include <velum/dates/detail/Calendar.h>

#include <cmath>
#include <cstdint>

namespace vlm::detail {

/// A place on the line of time. A plain value.
struct Moment {
  int day;          ///< from 30 December 1899 on
  int second;       ///< of the day, from 0
  double fraction;  ///< of the second: from 0 on, below 1
};

/// The numeric form of a stored number.
[[nodiscard]] inline double NumericForm(double date) noexcept {
  if (date >= 0.0) return date;
  const double day = std::ceil(date);
  return date == day ? date : day - (date - day);
}

/// Splits a stored number; false for NaN and what is no day from 1 January 100 to 31 December 9999.
[[nodiscard]] inline bool MomentOfDate(double date, Moment& moment) noexcept {
  if (!(date > kFirstDay - 1 && date < kLastDay + 1)) return false;
  const double seconds = NumericForm(date) * kSecondsOfDay;
  auto whole = static_cast<std::int64_t>(seconds);
  double fraction = seconds - static_cast<double>(whole);
  if (fraction < 0.0) {
    // Of so little below a second that it is no fraction of the one before, nothing is left.
    fraction += 1.0;
    if (fraction < 1.0) {
      --whole;
    } else {
      fraction = 0.0;
    }
  }
  const auto sinceFirst =
      static_cast<std::uint64_t>(whole - std::int64_t{kFirstDay} * kSecondsOfDay);
  const auto days = static_cast<std::uint32_t>(sinceFirst / kSecondsOfDay);
  moment.day = kFirstDay + static_cast<int>(days);
  moment.second = static_cast<int>(sinceFirst - std::uint64_t{days} * kSecondsOfDay);
  moment.fraction = fraction;
  // A time just before midnight may have been rounded to the day after the last.
  return moment.day <= kLastDay;
}

/// The nearest whole second, up from half on. On the first and the last day there is nothing but
/// midnight.
[[nodiscard]] inline Moment Rounded(Moment moment) noexcept {
  if (moment.fraction >= 0.5 && ++moment.second == kSecondsOfDay) {
    moment.second = 0;
    ++moment.day;
  }
  moment.fraction = 0.0;
  if (moment.day >= kLastDay) return {kLastDay, 0, 0.0};
  if (moment.day <= kFirstDay) return {kFirstDay, 0, 0.0};
  return moment;
}

/// Raises the internal error in the name of dates.
[[noreturn]] void RaiseMisuse(int line);

/// The moment of a stored number; misuse, told as coming from `line`, for one that has none.
[[nodiscard]] inline Moment MomentOf(double date, int line) {
  Moment moment;
  if (!MomentOfDate(date, moment)) RaiseMisuse(line);
  return moment;
}

}  // namespace vlm::detail

#pragma once

/// \file
/// A stored number as a day, a second of it and a fraction of that.
///
///     detail::Moment moment;
///     detail::MomentOfDate(40537.25, moment);   // day 40537, second 21600

namespace vlm::detail {

/// A place on the line of time. A plain value.
struct Moment {
  int day;          ///< from 30 December 1899 on
  int second;       ///< of the day, from 0
  double fraction;  ///< of the second: from 0 on, below 1
};

/// Splits a stored number; false for NaN and what is no day from 1 January 100 to 31 December 9999.
bool MomentOfDate(double date, Moment& moment) noexcept;

/// The nearest whole second, up from half on. On the first and the last day there is nothing but
/// midnight.
[[nodiscard]] Moment Rounded(Moment moment) noexcept;

/// Raises the internal error in the name of dates.
[[noreturn]] void RaiseMisuse(int line);

}  // namespace vlm::detail

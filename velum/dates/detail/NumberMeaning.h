#pragma once

/// \file
/// What the options of dates mean for the numbers that are read.
///
///     unsigned month = 25, day = 12;
///     detail::PutInOrder(KQDateTextOptions(), month, day);  // month 12, day 25

#include <velum/dates/DateText.h>

#include <utility>

namespace vlm::detail {

/// Makes two numbers, given in the order of the text, a month and a day.
inline void PutInOrder(const KQDateTextOptions& options, unsigned int& month,
                       unsigned int& day) noexcept {
  if (options.order == KQDateTextOptions::DayMonthYear) std::swap(month, day);
  if (month > 12 && options.eitherOrder) std::swap(month, day);
}

/// The year that two digits mean.
[[nodiscard]] constexpr unsigned int YearInWindow(const KQDateTextOptions& options,
                                                  unsigned int twoDigits) noexcept {
  const auto start = static_cast<unsigned int>(options.windowStart);
  return start + (twoDigits + 100 - start % 100) % 100;
}

}  // namespace vlm::detail

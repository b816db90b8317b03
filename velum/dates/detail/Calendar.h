#pragma once

/// \file
/// The Gregorian calendar over day numbers.
///
///     detail::CivilDate date = detail::CivilOfDay(40537);   // 25 December 2010
///     int day = detail::DayOfCivil(2010, 12, 25);           // 40537
///
/// Day 0 is 30 December 1899. The arithmetic is that of C. Neri and L. Schneider, "Euclidean affine
/// functions and their application to calendar algorithms", Software: Practice and Experience 53
/// (2023): multiplications in place of divisions, and years that begin in March.

#include <velum/platform/Types.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace vlm::detail {

inline constexpr int kFirstDay = -657434;                      ///< 1 January 100
inline constexpr int kLastDay = 2958465;                       ///< 31 December 9999
inline constexpr double kLastMoment = kLastDay + 1 - 0x1p-31;  ///< just before the year 10000
inline constexpr int kSecondsOfDay = 86400;

/// A day of the calendar. A plain value.
struct CivilDate {
  unsigned int year;
  unsigned int month;  ///< from 1
  unsigned int day;    ///< from 1
};

/// From 1 March of the year 0 to day 0.
inline constexpr int kDaysBeforeDay0 = 693899;

/// The date of a day, which lies from kFirstDay to kLastDay.
[[nodiscard]] constexpr CivilDate CivilOfDay(int day) noexcept {
  const auto sinceMarch0 = static_cast<std::uint32_t>(day + kDaysBeforeDay0);
  const std::uint32_t quarters = 4 * sinceMarch0 + 3;
  const std::uint32_t century = quarters / 146097;
  const std::uint32_t ofCentury = quarters % 146097 / 4;
  // 2939745 / 2^32 is 1 / 1461, closely enough.
  const std::uint64_t scaled = std::uint64_t{2939745} * (4 * ofCentury + 3);
  const auto yearOfCentury = static_cast<std::uint32_t>(scaled >> 32);
  const std::uint32_t ofYear = static_cast<std::uint32_t>(scaled) / 2939745 / 4;
  const std::uint32_t monthAndDay = 2141 * ofYear + 197913;
  const std::uint32_t isNextYear = ofYear >= 306 ? 1 : 0;
  return {100 * century + yearOfCentury + isNextYear, (monthAndDay >> 16) - 12 * isNextYear,
          (monthAndDay & 0xFFFF) / 2141 + 1};
}

/// The day of a date, whose year is at least 1.
[[nodiscard]] constexpr int DayOfCivil(unsigned int year, unsigned int month,
                                       unsigned int day) noexcept {
  const std::uint32_t isEarly = month <= 2 ? 1 : 0;
  const std::uint32_t y = year - isEarly;
  const std::uint32_t m = month + 12 * isEarly;
  const std::uint32_t century = y / 100;
  const std::uint32_t daysOfYears = 1461 * y / 4 - century + century / 4;
  return static_cast<int>(daysOfYears + (979 * m - 2919) / 32 + day - 1) - kDaysBeforeDay0;
}

/// True for a date of the years 100 to 9999 that the calendar has.
[[nodiscard]] constexpr bool IsCivil(unsigned int year, unsigned int month,
                                     unsigned int day) noexcept {
  if (year - 100 > 9899 || month - 1 > 11) return false;
  if (day - 1 < 28) return true;
  // A year that 25 divides is a leap year if 16 does, another if 4 does.
  const bool isLeap = (year & (year % 25 == 0 ? 15 : 3)) == 0;
  // From August on it is the even months that are long.
  const unsigned int days = month == 2 ? (isLeap ? 29 : 28) : 30 + ((month ^ month >> 3) & 1);
  return day - 1 < days;
}

/// The day of the week, from 0, Sunday, of a day from kFirstDay on.
[[nodiscard]] constexpr unsigned int WeekdayOfDay(int day) noexcept {
  return static_cast<unsigned int>(day + kDaysBeforeDay0 + 3) % 7;
}

/// The stored number of a day below zero and a fraction of it, below 1.
///
/// There the fraction counts away from the next day. A time so near to that midnight that rounding
/// would take the number to the day before is the next day.
[[nodiscard]] inline double StoredBelowZero(double day, double fraction) noexcept {
  const double stored = day - fraction;
  return std::trunc(stored) == day ? stored : day + 1.0;
}

/// The stored number of a day and a count of seconds from 0 to below 86400.
///
/// A time so near to midnight that the number can't tell it from that is the next day; after the
/// last day there is none.
[[nodiscard]] inline double StoredNumber(int day, double seconds) noexcept {
  const double fraction = seconds / kSecondsOfDay;
  if (day == kLastDay) return std::min(day + fraction, kLastMoment);
  return day >= 0 ? day + fraction : StoredBelowZero(day, fraction);
}

/// The record of a second of a day.
[[nodiscard]] inline SYSTEMTIME SystemTimeOf(int day, int second) noexcept {
  const CivilDate civil = CivilOfDay(day);
  const auto part = [](unsigned int number) { return static_cast<std::uint16_t>(number); };
  const auto s = static_cast<unsigned int>(second);
  return {part(civil.year),
          part(civil.month),
          part(WeekdayOfDay(day)),
          part(civil.day),
          part(s / 3600),
          part(s / 60 % 60),
          part(s % 60),
          0};
}

/// Gives the stored number of a date and time, of which milliseconds and day of the week do not
/// count; false, with `date` unchanged, if the calendar or the clock has no such, or the year is
/// not from 100 to 9999.
[[nodiscard]] inline bool DateOfSystemTime(const SYSTEMTIME& time, double& date) noexcept {
  if (!IsCivil(time.wYear, time.wMonth, time.wDay) || time.wHour > 23 || time.wMinute > 59 ||
      time.wSecond > 59) {
    return false;
  }
  const int second = (time.wHour * 60 + time.wMinute) * 60 + time.wSecond;
  date = StoredNumber(DayOfCivil(time.wYear, time.wMonth, time.wDay), second);
  return true;
}

}  // namespace vlm::detail

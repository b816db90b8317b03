#pragma once

/// \file
/// The present time, where the time zone can't be asked for.
///
///     vlm::platform::PutUtcTime(line);  // 2026-11-23 14:05:33 UTC

#include <velum/platform/detail/SafeText.h>

#include <cstdint>

namespace vlm::platform {

/// Appends a time in seconds since 1970, of any year from then on. Safe in the handler of a signal.
constexpr void PutUtcTime(SafeText& out, std::int64_t seconds) noexcept {
  constexpr std::int64_t kDay = 86'400;
  const std::int64_t time = seconds % kDay;
  // Days of years that begin in March, whose last day is the leap day, since the year 0.
  const std::int64_t days = seconds / kDay + 719'468;
  const std::int64_t era = days / 146'097;
  const std::int64_t dayOfEra = days % 146'097;
  const std::int64_t year =
      (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
  const std::int64_t dayOfYear = dayOfEra - (365 * year + year / 4 - year / 100);
  const std::int64_t month = (5 * dayOfYear + 2) / 153;
  out.Decimal(era * 400 + year + (month >= 10 ? 1 : 0), 4).Put("-");
  out.Decimal(month < 10 ? month + 3 : month - 9, 2).Put("-");
  out.Decimal(dayOfYear - (153 * month + 2) / 5 + 1, 2).Put(" ");
  out.Decimal(time / 3600, 2).Put(":").Decimal(time / 60 % 60, 2).Put(":");
  out.Decimal(time % 60, 2).Put(" UTC");
}

/// Appends the present time.
void PutUtcTime(SafeText& out) noexcept;

}  // namespace vlm::platform

#include <velum/dates/detail/Calendar.h>

#include <cmath>

namespace vlm::detail {

bool VariantTimeToSystemTime(double date, SYSTEMTIME& time) noexcept {
  if (!(date > kFirstDay - 1 && date < kLastDay + 1)) return false;
  int day = static_cast<int>(date);
  auto second = static_cast<int>(std::round(std::abs(date - day) * kSecondsOfDay));
  if (second == kSecondsOfDay) {
    second = 0;
    if (++day > kLastDay) return false;
  }
  const CivilDate civil = CivilOfDay(day);
  time.wYear = static_cast<std::uint16_t>(civil.year);
  time.wMonth = static_cast<std::uint16_t>(civil.month);
  time.wDayOfWeek = static_cast<std::uint16_t>(WeekdayOfDay(day));
  time.wDay = static_cast<std::uint16_t>(civil.day);
  time.wHour = static_cast<std::uint16_t>(second / 3600);
  time.wMinute = static_cast<std::uint16_t>(second / 60 % 60);
  time.wSecond = static_cast<std::uint16_t>(second % 60);
  time.wMilliseconds = 0;
  return true;
}

}  // namespace vlm::detail

#include <velum/dates/detail/Calendar.h>

#include <cmath>

namespace vlm::detail {

double StoredNumber(int day, double seconds) noexcept {
  const double fraction = seconds / kSecondsOfDay;
  if (day >= 0) return day + fraction;
  const double stored = day - fraction;
  // Below zero the fraction counts away from the next day, so rounding would take it to the day
  // before.
  return std::trunc(stored) == day ? stored : day + 1;
}

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

bool SystemTimeToVariantTime(const SYSTEMTIME& time, double& date) noexcept {
  if (!IsCivil(time.wYear, time.wMonth, time.wDay) || time.wHour > 23 || time.wMinute > 59 ||
      time.wSecond > 59) {
    return false;
  }
  const int second = (time.wHour * 60 + time.wMinute) * 60 + time.wSecond;
  date = StoredNumber(DayOfCivil(time.wYear, time.wMonth, time.wDay), second);
  return true;
}

}  // namespace vlm::detail

#include <velum/dates/VariantTime.h>

#include <velum/dates/detail/Calendar.h>

#include <cmath>

namespace vlm {

bool VariantTimeToSystemTime(double date, SYSTEMTIME* time) noexcept {
  if (time == nullptr || !(date > detail::kFirstDay - 1 && date < detail::kLastDay + 1)) {
    return false;
  }
  int day = static_cast<int>(date);
  auto second = static_cast<int>(std::round(std::abs(date - day) * detail::kSecondsOfDay));
  if (second == detail::kSecondsOfDay) {
    second = 0;
    if (++day > detail::kLastDay) return false;
  }
  *time = detail::SystemTimeOf(day, second);
  return true;
}

bool SystemTimeToVariantTime(const SYSTEMTIME* time, double* date) noexcept {
  return time != nullptr && date != nullptr && detail::DateOfSystemTime(*time, *date);
}

}  // namespace vlm

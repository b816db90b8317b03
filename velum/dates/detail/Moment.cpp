#include <velum/dates/detail/Moment.h>

#include <velum/core/Exception.h>
#include <velum/dates/DateTime.h>
#include <velum/dates/detail/Calendar.h>

#include <cmath>
#include <cstdint>

namespace vlm::detail {

bool MomentOfDate(double date, Moment& moment) noexcept {
  if (!(date > kFirstDay - 1 && date < kLastDay + 1)) return false;
  const double seconds = KQDoubleFromDate(date) * kSecondsOfDay;
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
  const auto days = static_cast<int>(sinceFirst / kSecondsOfDay);
  moment.day = kFirstDay + days;
  moment.second = static_cast<int>(sinceFirst % kSecondsOfDay);
  moment.fraction = fraction;
  // A time just before midnight may have been rounded to the day after the last.
  return moment.day <= kLastDay;
}

Moment Rounded(Moment moment) noexcept {
  if (moment.fraction >= 0.5 && ++moment.second == kSecondsOfDay) {
    moment.second = 0;
    ++moment.day;
  }
  moment.fraction = 0.0;
  if (moment.day >= kLastDay) return {kLastDay, 0, 0.0};
  if (moment.day <= kFirstDay) return {kFirstDay, 0, 0.0};
  return moment;
}

void RaiseMisuse(int line) { ThrowErrorImpl("DateTime", line, ERR_INTERNAL); }

}  // namespace vlm::detail

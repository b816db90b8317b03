#include <examples/dates/CalendarAxis.h>

#include <velum/dates/DateTime.h>

#include <algorithm>
#include <cmath>

namespace vlm::dates {
namespace {

using examples::Axis;

constexpr double kPadding = 0.03;
constexpr double kMinute = 1.0 / 1440.0;

std::string LabelOf(double numeric, int dateFmt, int timeFmt) {
  char text[40];
  KQDateTime date;
  date.SetNumericDateTime(numeric);
  date.GetDateTimeStr(dateFmt, timeFmt, text, sizeof text);
  return text;
}

KQDateTime::_COMPONENTS PartsOf(double numeric) {
  KQDateTime date;
  KQDateTime::_COMPONENTS parts;
  date.SetNumericDateTime(numeric);
  date.GetDateTime(parts);
  return parts;
}

// Ticks at each step of so many months; false for more than `count` of them.
bool AddMonths(Axis& axis, int step, int count) {
  const KQDateTime::_COMPONENTS first = PartsOf(axis.low);
  const int from = first.Year * 12 + first.Month - 1;
  for (int month = (from + step - 1) / step * step; month / 12 <= 9999; month += step) {
    const KQDateTime date(KQDateTime::_COMPONENTS(month / 12, month % 12 + 1, 1));
    const double tick = date.GetNumericDateTime();
    if (tick > axis.high) break;
    if (tick < axis.low) continue;
    if (static_cast<int>(axis.ticks.size()) == count) return false;
    axis.ticks.push_back(tick);
    axis.labels.push_back(step % 12 == 0 ? std::to_string(month / 12)
                                         : LabelOf(tick, KQDateTime::DATE_MMM_YY, 0));
  }
  return true;
}

// The same at each step of so many days or parts of one.
bool AddDays(Axis& axis, double step, int count) {
  const double first = std::ceil(axis.low / step);
  if (axis.high / step - first >= count) return false;
  for (double i = first; i * step <= axis.high; ++i) {
    const bool isDay = step >= 1.0;
    axis.ticks.push_back(i * step);
    axis.labels.push_back(LabelOf(i * step,
                                  isDay ? KQDateTime::DATE_D_MMM_YY : KQDateTime::DATE_D_MMM,
                                  isDay ? KQDateTime::TIME_NONE : KQDateTime::TIME_H_MM));
  }
  return true;
}

}  // namespace

Axis MakeCalendarAxis(double first, double last, int count) {
  Axis axis;
  const double room = std::max((last - first) * kPadding, kMinute);
  axis.low = first - room;
  axis.high = last + room;
  const auto attempt = [&](auto add, auto step) {
    axis.ticks.clear();
    axis.labels.clear();
    return add(axis, step, count);
  };
  for (const double minutes : {1.0, 2.0, 5.0, 10.0, 15.0, 30.0, 60.0, 120.0, 180.0, 360.0, 720.0,
                               1440.0, 2880.0, 7200.0, 14400.0}) {
    if (attempt(AddDays, minutes * kMinute)) return axis;
  }
  for (const int months : {1, 2, 3, 6, 12, 24, 60, 120, 240, 600, 1200, 2400, 6000, 12000, 24000}) {
    if (attempt(AddMonths, months)) return axis;
  }
  return axis;
}

}  // namespace vlm::dates

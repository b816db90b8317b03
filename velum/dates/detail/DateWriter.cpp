#include <velum/dates/detail/DateWriter.h>

#include <velum/dates/DateTime.h>
#include <velum/dates/detail/Calendar.h>
#include <velum/dates/detail/MonthNames.h>
#include <velum/dates/detail/TextOut.h>

#include <cmath>
#include <string_view>

namespace vlm::detail {
namespace {

struct Clock {
  unsigned int hour;
  unsigned int minute;
  unsigned int second;
};

Clock ClockOf(const Moment& moment) {
  const auto second = static_cast<unsigned int>(moment.second);
  return {second / 3600, second / 60 % 60, second % 60};
}

// ":04" and the like, behind a first field.
char* ThenTwo(char* out, char separator, unsigned int number) {
  return PutTwo(Put(out, separator), number);
}

char* ThenShort(char* out, char separator, unsigned int number) {
  return PutShort(Put(out, separator), number);
}

char* ThenNumber(char* out, char separator, unsigned int number) {
  return PutNumber(Put(out, separator), number);
}

char* MinutesAndSeconds(char* out, const Clock& clock) {
  return ThenTwo(ThenTwo(out, ':', clock.minute), ':', clock.second);
}

// A number below 100 with one decimal, the nearest; of two as near, the even one. Not by the
// runtime, whose point is that of its locale.
char* PutTenths(char* out, double number) {
  const double product = number * 10.0;
  const double lost = std::fma(number, 10.0, -product);  // by rounding
  auto tenths = static_cast<unsigned int>(product);
  const double beyond = product - tenths - 0.5;
  const bool isOdd = tenths % 2 == 1;
  if (beyond > 0.0 || (beyond == 0.0 && (lost > 0.0 || (lost == 0.0 && isOdd)))) ++tenths;
  return PutShort(Put(PutShort(out, tenths / 10), '.'), tenths % 10);
}

char* HalfDay(char* out, const Clock& clock, bool withSeconds) {
  out = PutShort(out, clock.hour % 12 == 0 ? 12 : clock.hour % 12);
  out = withSeconds ? MinutesAndSeconds(out, clock) : ThenTwo(out, ':', clock.minute);
  return Put(out, clock.hour < 12 ? " AM" : " PM");
}

char* Elapsed(char* out, double date) {
  Moment moment;
  // From 1 to 61 the number is a spreadsheet's serial number and one.
  if (!MomentOfDate(date >= 1.0 && date < 61.0 ? date - 1.0 : date, moment)) return out;
  moment = Rounded(moment);
  const Clock clock = ClockOf(moment);
  if (moment.day < 0) out = Put(out, '-');
  const auto days = static_cast<unsigned int>(moment.day < 0 ? -moment.day : moment.day);
  return MinutesAndSeconds(PutNumber(out, days * 24 + clock.hour), clock);
}

}  // namespace

char* WriteDate(char* out, int dateFmt, int day) noexcept {
  if (dateFmt == KQDateTime::DATE_NONE) return out;
  const CivilDate date = CivilOfDay(day);
  const std::string_view name = MonthName(date.month);
  const std::string_view shortName = name.substr(0, 3);
  const unsigned int yy = date.year % 100;
  switch (dateFmt) {
    case KQDateTime::DATE_M_D:
      return ThenShort(PutShort(out, date.month), '/', date.day);
    case KQDateTime::DATE_M_D_YY:
      return ThenTwo(ThenShort(PutShort(out, date.month), '/', date.day), '/', yy);
    case KQDateTime::DATE_MM_DD_YY:
      return ThenTwo(ThenTwo(PutTwo(out, date.month), '/', date.day), '/', yy);
    case KQDateTime::DATE_D_MMM:
      return Put(Put(PutShort(out, date.day), '-'), shortName);
    case KQDateTime::DATE_D_MMM_YY:
      return ThenTwo(Put(Put(PutShort(out, date.day), '-'), shortName), '-', yy);
    case KQDateTime::DATE_DD_MMM_YY:
      return ThenTwo(Put(Put(PutTwo(out, date.day), '-'), shortName), '-', yy);
    case KQDateTime::DATE_MMM_YY:
      return ThenTwo(Put(out, shortName), '-', yy);
    case KQDateTime::DATE_MMMM_YY:
      return ThenTwo(Put(out, name), '-', yy);
    case KQDateTime::DATE_MMMM_D_YYYY:
      return PutNumber(Put(ThenShort(Put(out, name), ' ', date.day), ", "), date.year);
    case KQDateTime::DATE_MMMMM:
      return Put(out, name[0]);
    case KQDateTime::DATE_MMMMM_YY:
      return ThenTwo(Put(out, name[0]), '-', yy);
    case KQDateTime::DATE_M_D_YYYY:
      return ThenNumber(ThenShort(PutShort(out, date.month), '/', date.day), '/', date.year);
    case KQDateTime::DATE_D_MMM_YYYY:
      return ThenNumber(Put(Put(PutShort(out, date.day), '-'), shortName), '-', date.year);
    case KQDateTime::DATE_D_MMMM_YYYY:
      return ThenNumber(Put(Put(PutShort(out, date.day), ' '), name), ' ', date.year);
    case KQDateTime::DATE_D_M_YY:
      return ThenTwo(ThenShort(PutShort(out, date.day), '.', date.month), '.', yy);
    default:
      return ThenNumber(ThenTwo(PutTwo(out, date.day), '/', date.month), '/', date.year);
  }
}

char* WriteTime(char* out, int timeFmt, double date, const Moment& moment) noexcept {
  if (timeFmt == KQDateTime::TIME_NONE) return out;
  const Clock clock = ClockOf(moment);
  const Clock rounded = ClockOf(Rounded(moment));
  switch (timeFmt) {
    case KQDateTime::TIME_H_MM:
      return ThenTwo(PutShort(out, rounded.hour), ':', rounded.minute);
    case KQDateTime::TIME_H_MM_AMPM:
      return HalfDay(out, rounded, false);
    case KQDateTime::TIME_H_MM_SS:
      return MinutesAndSeconds(PutShort(out, rounded.hour), rounded);
    case KQDateTime::TIME_H_MM_SS_AMPM:
      return HalfDay(out, rounded, true);
    case KQDateTime::TIME_MM_SS:
      return ThenTwo(PutTwo(out, clock.minute), ':', clock.second);
    case KQDateTime::TIME_MM_SS_0:
      return PutTenths(Put(PutTwo(out, clock.minute), ':'), clock.second + moment.fraction);
    default:
      return Elapsed(out, date);
  }
}

}  // namespace vlm::detail

#include <velum/dates/detail/DateWriter.h>

#include <velum/dates/DateTime.h>
#include <velum/dates/detail/Calendar.h>
#include <velum/dates/detail/MonthNames.h>

#include <cstdio>

namespace vlm::detail {
namespace {

unsigned int HourOf(const Moment& moment) {
  return static_cast<unsigned int>(moment.second) / 3600;
}
unsigned int MinuteOf(const Moment& moment) {
  return static_cast<unsigned int>(moment.second) / 60 % 60;
}
unsigned int SecondOf(const Moment& moment) {
  return static_cast<unsigned int>(moment.second) % 60;
}

// "/3", ":04" and the like, once the first field stands.
void TwoMore(char separator, unsigned int number, TextOut& out) {
  out.Put(separator);
  out.TwoDigits(number);
}

void More(char separator, unsigned int number, TextOut& out) {
  out.Put(separator);
  out.Number(number);
}

void MinutesAndSeconds(const Moment& rounded, TextOut& out) {
  TwoMore(':', MinuteOf(rounded), out);
  TwoMore(':', SecondOf(rounded), out);
}

void HalfDay(const Moment& rounded, bool withSeconds, TextOut& out) {
  const unsigned int hour = HourOf(rounded);
  out.Number(hour % 12 == 0 ? 12 : hour % 12);
  TwoMore(':', MinuteOf(rounded), out);
  if (withSeconds) TwoMore(':', SecondOf(rounded), out);
  out.Put(hour < 12 ? " AM" : " PM");
}

void Elapsed(double date, TextOut& out) {
  Moment moment;
  // From 1 to 61 the number is a spreadsheet's serial number and one.
  if (!MomentOfDate(date >= 1.0 && date < 61.0 ? date - 1.0 : date, moment)) return;
  moment = Rounded(moment);
  if (moment.day < 0) out.Put('-');
  const int days = moment.day < 0 ? -moment.day : moment.day;
  out.Number(static_cast<unsigned int>(days) * 24 + HourOf(moment));
  MinutesAndSeconds(moment, out);
}

}  // namespace

void WriteDate(int dateFmt, int day, TextOut& out) noexcept {
  if (dateFmt == KQDateTime::DATE_NONE) return;
  const CivilDate date = CivilOfDay(day);
  const std::string_view name = MonthName(date.month);
  const std::string_view shortName = name.substr(0, 3);
  const unsigned int yy = date.year % 100;
  switch (dateFmt) {
    case KQDateTime::DATE_M_D:
      out.Number(date.month);
      return More('/', date.day, out);
    case KQDateTime::DATE_M_D_YY:
      out.Number(date.month);
      More('/', date.day, out);
      return TwoMore('/', yy, out);
    case KQDateTime::DATE_MM_DD_YY:
      out.TwoDigits(date.month);
      TwoMore('/', date.day, out);
      return TwoMore('/', yy, out);
    case KQDateTime::DATE_D_MMM:
    case KQDateTime::DATE_D_MMM_YY:
    case KQDateTime::DATE_D_MMM_YYYY:
      out.Number(date.day);
      out.Put('-');
      out.Put(shortName);
      if (dateFmt == KQDateTime::DATE_D_MMM_YY) TwoMore('-', yy, out);
      if (dateFmt == KQDateTime::DATE_D_MMM_YYYY) More('-', date.year, out);
      return;
    case KQDateTime::DATE_DD_MMM_YY:
      out.TwoDigits(date.day);
      out.Put('-');
      out.Put(shortName);
      return TwoMore('-', yy, out);
    case KQDateTime::DATE_MMM_YY:
      out.Put(shortName);
      return TwoMore('-', yy, out);
    case KQDateTime::DATE_MMMM_YY:
      out.Put(name);
      return TwoMore('-', yy, out);
    case KQDateTime::DATE_MMMM_D_YYYY:
      out.Put(name);
      More(' ', date.day, out);
      out.Put(',');
      return More(' ', date.year, out);
    case KQDateTime::DATE_MMMMM:
      return out.Put(name[0]);
    case KQDateTime::DATE_MMMMM_YY:
      out.Put(name[0]);
      return TwoMore('-', yy, out);
    case KQDateTime::DATE_M_D_YYYY:
      out.Number(date.month);
      More('/', date.day, out);
      return More('/', date.year, out);
    case KQDateTime::DATE_D_MMMM_YYYY:
      out.Number(date.day);
      out.Put(' ');
      out.Put(name);
      return More(' ', date.year, out);
    case KQDateTime::DATE_D_M_YY:
      out.Number(date.day);
      More('.', date.month, out);
      return TwoMore('.', yy, out);
    default:
      out.TwoDigits(date.day);
      TwoMore('/', date.month, out);
      return More('/', date.year, out);
  }
}

void WriteTime(int timeFmt, double date, const Moment& moment, TextOut& out) noexcept {
  switch (timeFmt) {
    case KQDateTime::TIME_NONE:
      return;
    case KQDateTime::TIME_H_MM:
    case KQDateTime::TIME_H_MM_SS: {
      const Moment rounded = Rounded(moment);
      out.Number(HourOf(rounded));
      if (timeFmt == KQDateTime::TIME_H_MM_SS) return MinutesAndSeconds(rounded, out);
      return TwoMore(':', MinuteOf(rounded), out);
    }
    case KQDateTime::TIME_H_MM_AMPM:
      return HalfDay(Rounded(moment), false, out);
    case KQDateTime::TIME_H_MM_SS_AMPM:
      return HalfDay(Rounded(moment), true, out);
    case KQDateTime::TIME_MM_SS:
      out.TwoDigits(MinuteOf(moment));
      return TwoMore(':', SecondOf(moment), out);
    case KQDateTime::TIME_MM_SS_0: {
      char seconds[16];
      const int length =
          std::snprintf(seconds, sizeof seconds, "%.1f", SecondOf(moment) + moment.fraction);
      out.TwoDigits(MinuteOf(moment));
      out.Put(':');
      return out.Put(std::string_view(seconds, static_cast<std::size_t>(length)));
    }
    default:
      return Elapsed(date, out);
  }
}

}  // namespace vlm::detail

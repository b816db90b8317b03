#include <velum/dates/detail/PlainDate.h>

#include <velum/dates/DateTime.h>
#include <velum/dates/detail/Calendar.h>
#include <velum/dates/detail/NumberMeaning.h>

namespace vlm::detail {
namespace {

unsigned int DigitAt(const char* at) { return static_cast<unsigned char>(*at) - unsigned{'0'}; }

// One digit or two. Without a branch on which: that is anybody's guess.
bool TakeShort(const char*& at, unsigned int& number) {
  const unsigned int first = DigitAt(at);
  if (first > 9) return false;
  const unsigned int second = DigitAt(at + 1);
  const bool isTwo = second <= 9;
  number = isTwo ? first * 10 + second : first;
  at += isTwo ? 2 : 1;
  return true;
}

// Two digits below 60 behind a colon.
bool TakeSixtieth(const char*& at, unsigned int& number) {
  if (*at != ':') return false;
  const unsigned int first = DigitAt(at + 1);
  if (first > 5) return false;
  const unsigned int second = DigitAt(at + 2);
  if (second > 9) return false;
  number = first * 10 + second;
  at += 3;
  return true;
}

// Four digits that are no part of more.
bool TakeLong(const char*& at, unsigned int& number) {
  number = 0;
  for (int i = 0; i < 4; ++i, ++at) {
    const unsigned int digit = DigitAt(at);
    if (digit > 9) return false;
    number = number * 10 + digit;
  }
  return DigitAt(at) > 9;
}

}  // namespace

bool ReadPlainDate(const char* text, const KQDateTextOptions& options, double& date,
                   TextForm& form) noexcept {
  const char* at = text;
  unsigned int year = 0, month = 0, day = 0;
  unsigned int hour = 0, minute = 0, second = 0;
  if (!TakeShort(at, month)) return false;
  const bool isYearFirst = DigitAt(at) <= 9;
  if (isYearFirst && !TakeLong(at = text, year)) return false;
  const char separator = *at;
  if (separator != '/' && separator != '-') return false;
  if (!TakeShort(++at, isYearFirst ? month : day) || *at != separator) return false;
  ++at;
  if (isYearFirst ? !TakeShort(at, day) : !TakeLong(at, year)) return false;
  if (!isYearFirst) PutInOrder(options, month, day);
  if (!IsCivil(year, month, day)) return false;
  KQDateTime::TIME_FORMAT_TYPE timeFmt = KQDateTime::TIME_NONE;
  if (*at == ' ') {
    if (!TakeShort(++at, hour) || hour > 23 || !TakeSixtieth(at, minute)) return false;
    timeFmt = KQDateTime::TIME_H_MM;
    if (*at != '\0') {
      if (!TakeSixtieth(at, second)) return false;
      timeFmt = KQDateTime::TIME_H_MM_SS;
    }
    second += (hour * 60 + minute) * 60;
  }
  if (*at != '\0') return false;
  date = StoredNumber(DayOfCivil(year, month, day), second);
  form = {KQDateTime::DATE_M_D_YYYY, timeFmt};
  return true;
}

}  // namespace vlm::detail

// Reads any bytes as a date and holds the result against the general reader and the tables of
// shapes. What was read must come back from what is written of it.
#include <velum/dates/DateFormats.h>
#include <velum/dates/DateText.h>
#include <velum/dates/detail/DateReader.h>
#include <velum/dates/detail/TextShape.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using vlm::KQDateTextOptions;
using vlm::KQDateTime;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

/// What a text is read as.
struct Reading {
  bool isDate = false;
  double date = 9.0;
  KQDateTime::DATE_FORMAT_TYPE dateFmt = KQDateTime::DATE_NONE;
  KQDateTime::TIME_FORMAT_TYPE timeFmt = KQDateTime::TIME_NONE;

  bool operator==(const Reading&) const = default;
};

Reading Read(const std::string& text, const KQDateTextOptions& options) {
  Reading reading;
  reading.isDate = vlm::KQParseDateTimeStr(text.c_str(), &reading.date, &reading.dateFmt,
                                           &reading.timeFmt, options);
  return reading;
}

/// The same without the short way for the commonest texts.
Reading ReadInGeneral(const std::string& text, const KQDateTextOptions& options) {
  Reading reading;
  if (text.empty()) return reading;
  if (vlm::detail::ReadDateText(text.c_str(), options, reading.date)) {
    const vlm::detail::TextForm form = vlm::detail::FormOfText(text.c_str());
    reading.isDate = form.date != 0 || form.time != 0;
    reading.dateFmt = form.date;
    reading.timeFmt = form.time;
  }
  if (!reading.isDate) reading.date = 0.0;
  return reading;
}

void CheckOrders(const std::string& text, const Reading& reading, KQDateTextOptions options) {
  options.eitherOrder = !options.eitherOrder;
  const Reading other = Read(text, options);
  const Reading& strict = options.eitherOrder ? reading : other;
  const Reading& lax = options.eitherOrder ? other : reading;
  if (strict.isDate) Require(strict == lax, "a date of the order chosen stays what it is");
}

void CheckTexts(double date, const KQDateTextOptions& options) {
  const KQDateTime held(date);
  char text[64];
  for (int dateFmt = 0; dateFmt <= 16; ++dateFmt) {
    for (int timeFmt = 0; timeFmt <= 7; ++timeFmt) {
      held.GetDateTimeStr(dateFmt, timeFmt, text, sizeof text);
      Require(std::string(text).size() < 40, "texts are short");
    }
    const int closest = vlm::KQClosestAccurateDateFmt(date, dateFmt);
    Require(vlm::KQClosestAccurateDateFmt(date, closest) == closest, "the closest type stays");
  }
  KQDateTime::_COMPONENTS parts;
  held.GetDateTime(parts);
  parts.RoundToNearestSecond();
  double second = KQDateTime(parts).GetDateTime();
  // A time alone that is rounded to midnight shows no day.
  if (date < 1.0 && second == 1.0) second = 0.0;
  for (const int dateFmt : {9, 12, 13, 14}) {
    // The slashes of the last type are in American order.
    KQDateTextOptions again = options;
    if (dateFmt == 12) again.order = KQDateTextOptions::MonthDayYear;
    for (const int timeFmt : {3, 4}) {
      held.GetDateTimeStr(dateFmt, timeFmt, text, sizeof text);
      const Reading reading = Read(text, again);
      Require(reading.isDate && reading.date == second, "what is written is read as the same");
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  KQDateTextOptions options;
  options.presentYear = 2024;
  vlm::KQSetDateTextOptions(options);
  options.order = data[0] & 1 ? KQDateTextOptions::DayMonthYear : KQDateTextOptions::MonthDayYear;
  options.eitherOrder = (data[0] & 2) == 0;
  if (data[0] & 4) options.windowStart = 1999;
  std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
  text.resize(text.find('\0') == std::string::npos ? text.size() : text.find('\0'));

  KQDateTime::DATE_FORMAT_TYPE dateFmt;
  KQDateTime::TIME_FORMAT_TYPE timeFmt;
  vlm::KQMapExcelFmtStrToFmtTypes(text.c_str(), &dateFmt, &timeFmt);
  Require(vlm::KQValidDateFmtType(dateFmt) && vlm::KQValidTimeFmtType(timeFmt), "types are types");

  const Reading reading = Read(text, options);
  Require(reading == ReadInGeneral(text, options), "the short way leads to the same");
  CheckOrders(text, reading, options);
  if (!reading.isDate) return 0;
  // Of the first and the last day a KQDateTime holds the midnight only.
  Require(reading.date > KQDateTime::Min_DTVal - 1 && reading.date < KQDateTime::Max_DTVal + 1,
          "a date of these years");
  const bool isHeld =
      reading.date >= KQDateTime::Min_DTVal && reading.date <= KQDateTime::Max_DTVal;
  if (isHeld) CheckTexts(reading.date, options);
  return 0;
}

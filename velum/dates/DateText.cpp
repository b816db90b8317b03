#include <velum/dates/DateText.h>

#include <velum/dates/detail/DateReader.h>
#include <velum/dates/detail/Moment.h>
#include <velum/dates/detail/PlainDate.h>
#include <velum/dates/detail/TextShape.h>

#include <atomic>
#include <cstdint>

namespace vlm {
namespace {

// The options in one word, so that they change at once.
constexpr std::uint64_t Packed(const KQDateTextOptions& options) {
  return static_cast<std::uint64_t>(options.windowStart) |
         static_cast<std::uint64_t>(options.presentYear) << 16 |
         std::uint64_t{options.order == KQDateTextOptions::DayMonthYear} << 32 |
         std::uint64_t{options.eitherOrder} << 33;
}

constexpr KQDateTextOptions Unpacked(std::uint64_t word) {
  KQDateTextOptions options;
  options.windowStart = static_cast<int>(word & 0xFFFF);
  options.presentYear = static_cast<int>(word >> 16 & 0xFFFF);
  options.order = static_cast<KQDateTextOptions::Order>(word >> 32 & 1);
  options.eitherOrder = (word >> 33 & 1) != 0;
  return options;
}

constinit std::atomic<std::uint64_t> theOptions{Packed(KQDateTextOptions())};

void Require(const KQDateTextOptions& options) {
  const bool isYear = options.presentYear >= 100 && options.presentYear <= 9999;
  if (options.windowStart < 100 || options.windowStart > 9900 ||
      (options.presentYear != 0 && !isYear)) {
    detail::RaiseMisuse(__LINE__);
  }
}

bool Parse(const char* text, double* date, KQDateTime::DATE_FORMAT_TYPE* dateFmt,
           KQDateTime::TIME_FORMAT_TYPE* timeFmt, const KQDateTextOptions& options) {
  if (text == nullptr) detail::RaiseMisuse(__LINE__);
  if (*text == '\0') return false;
  double read = 0.0;
  detail::TextForm form{};
  bool isDate = detail::ReadPlainDate(text, options, read, form);
  if (!isDate && detail::ReadDateText(text, options, read)) {
    form = detail::FormOfText(text);
    isDate = form.date != KQDateTime::DATE_NONE || form.time != KQDateTime::TIME_NONE;
  }
  if (date != nullptr) *date = isDate ? read : 0.0;
  if (dateFmt != nullptr) *dateFmt = form.date;
  if (timeFmt != nullptr) *timeFmt = form.time;
  return isDate;
}

}  // namespace

void KQSetDateTextOptions(const KQDateTextOptions& options) {
  Require(options);
  theOptions.store(Packed(options), std::memory_order_relaxed);
}

KQDateTextOptions KQGetDateTextOptions() noexcept {
  return Unpacked(theOptions.load(std::memory_order_relaxed));
}

bool KQParseDateTimeStr(const char* text, double* date, KQDateTime::DATE_FORMAT_TYPE* dateFmt,
                        KQDateTime::TIME_FORMAT_TYPE* timeFmt) {
  return Parse(text, date, dateFmt, timeFmt, KQGetDateTextOptions());
}

bool KQParseDateTimeStr(const char* text, double* date, KQDateTime::DATE_FORMAT_TYPE* dateFmt,
                        KQDateTime::TIME_FORMAT_TYPE* timeFmt, const KQDateTextOptions& options) {
  Require(options);
  return Parse(text, date, dateFmt, timeFmt, options);
}

}  // namespace vlm

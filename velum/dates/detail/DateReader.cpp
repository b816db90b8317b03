#include <velum/dates/detail/DateReader.h>

#include <velum/dates/detail/Calendar.h>
#include <velum/dates/detail/Characters.h>
#include <velum/dates/detail/MonthNames.h>
#include <velum/dates/detail/NumberMeaning.h>
#include <velum/platform/detail/LocalTime.h>

#include <cstddef>
#include <string_view>

namespace vlm::detail {
namespace {

/// A run of digits that a date may have.
struct Number {
  unsigned int value = 0;
  int digits = 0;

  [[nodiscard]] bool IsShort() const { return digits <= 2; }
  [[nodiscard]] bool IsWhole() const { return digits == 4; }
};

/// What has been read of a date.
struct DateParts {
  unsigned int year = 0;
  unsigned int month = 0;
  unsigned int day = 1;
  bool isYearFirst = false;  ///< with a month and a day in numbers
};

/// Reads from the front of a text. Each Take gives false where what it takes does not stand, and
/// leaves the place as it was then unless it says otherwise.
class Reader {
 public:
  Reader(const char* text, const KQDateTextOptions& options) : at_(text), options_(options) {}

  // A whole text. After false the place is anywhere.
  bool TakeAll(double& date) {
    SkipBlanks();
    DateParts parts;
    double seconds = 0.0;
    bool hasDate = false;
    if (TakeTime(seconds, Dots::MayBeDate)) {
      if (SkipBlanks(); *at_ != '\0') {
        if (!TakeGap(false) || !TakeDate(parts)) return false;
        hasDate = true;
      }
    } else {
      if (!TakeDate(parts)) return false;
      hasDate = true;
      if (!AtBlankEnd() && !TakeTimeBehind(parts, seconds)) return false;
    }
    if (!AtBlankEnd()) return false;
    int day = 0;
    if (hasDate) {
      if (!IsCivil(parts.year, parts.month, parts.day)) return false;
      day = DayOfCivil(parts.year, parts.month, parts.day);
      if (weekday_ < kWeekdayNames.size() && weekday_ != WeekdayOfDay(day)) return false;
    }
    date = StoredNumber(day, seconds);
    return true;
  }

 private:
  // What numbers with dots between them are where a time may stand.
  enum class Dots { MayBeDate, AreTime };

  void SkipBlanks() {
    while (IsBlank(*at_)) ++at_;
  }

  bool AtBlankEnd() {
    SkipBlanks();
    return *at_ == '\0';
  }

  bool Take(char character) {
    if (*at_ != character) return false;
    ++at_;
    return true;
  }

  bool TakeNumber(Number& number) {
    number = Number();
    const char* at = at_;
    for (; IsDigit(*at) && number.digits < 4; ++at, ++number.digits) {
      number.value = number.value * 10 + static_cast<unsigned int>(*at - '0');
    }
    if (number.digits == 0 || IsDigit(*at)) return false;
    at_ = at;
    return true;
  }

  bool TakeShort(unsigned int below, unsigned int& value) {
    const char* const start = at_;
    Number number;
    if (TakeNumber(number) && number.IsShort() && number.value < below) {
      value = number.value;
      return true;
    }
    at_ = start;
    return false;
  }

  // The letters from here on.
  [[nodiscard]] std::string_view Word() const {
    const char* end = at_;
    while (IsLetter(*end)) ++end;
    return {at_, static_cast<std::size_t>(end - at_)};
  }

  // One of some names, whole or its first three letters.
  template <class Names>
  bool TakeName(const Names& names, unsigned int& index) {
    const std::string_view word = Word();
    for (unsigned int i = 0; i < names.size(); ++i) {
      if (EqualsFolded(word, names[i]) || EqualsFolded(word, names[i].substr(0, 3))) {
        at_ += word.size();
        index = i;
        return true;
      }
    }
    return false;
  }

  bool TakeMonth(unsigned int& month) {
    unsigned int index = 8;
    if (EqualsFolded(Word(), "Sept")) {
      at_ += 4;
    } else if (!TakeName(kMonthNames, index)) {
      return false;
    }
    month = index + 1;
    return true;
  }

  // AM or PM, as 1 or 2.
  bool TakeHalf(int& half) {
    const char* const start = at_;
    SkipBlanks();
    const char letter = Folded(*at_);
    if (letter == 'a' || letter == 'p') {
      ++at_;
      if (Folded(*at_) == 'm') {
        ++at_;
      } else if (*at_ == '.' && Folded(at_[1]) == 'm' && at_[2] == '.') {
        at_ += 3;
      }
      if (!IsLetter(*at_) && !IsDigit(*at_)) {
        half = letter == 'a' ? 1 : 2;
        return true;
      }
    }
    at_ = start;
    return false;
  }

  bool TakeTime(double& seconds, Dots dots) {
    const char* const start = at_;
    if (TakeTimeParts(seconds, dots)) return true;
    at_ = start;
    return false;
  }

  bool TakeTimeParts(double& seconds, Dots dots) {
    unsigned int hour;
    unsigned int minute = 0;
    unsigned int second = 0;
    double fraction = 0.0;
    bool needsHalf = true;
    if (!TakeShort(24, hour)) return false;
    if (*at_ == ':' || *at_ == '.') {
      const bool isColon = *at_++ == ':';
      if (!TakeShort(60, minute)) return false;
      needsHalf = !isColon && dots == Dots::MayBeDate;
      if (isColon && Take(':')) {
        if (!TakeShort(60, second)) return false;
        if (Take('.') && !TakeDecimals(fraction)) return false;
      } else if (Take('.') && !TakeShort(60, second)) {
        return false;
      }
    }
    int half = 0;
    if (TakeHalf(half)) {
      if (hour > 12 || (half == 2 && hour == 0)) return false;
      hour = hour % 12 + (half == 2 ? 12 : 0);
    } else if (needsHalf) {
      return false;
    }
    seconds = (hour * 60 + minute) * 60 + second + fraction;
    return true;
  }

  bool TakeDecimals(double& fraction) {
    double value = 0.0;
    double scale = 1.0;
    int digits = 0;
    for (; IsDigit(*at_) && digits < 9; ++at_, ++digits) {
      value = value * 10.0 + (*at_ - '0');
      scale *= 10.0;
    }
    fraction = value / scale;
    return digits > 0 && !IsDigit(*at_);
  }

  // Between date and time; blanks may have been passed over.
  bool TakeGap(bool orLetter) {
    if (orLetter && Folded(*at_) == 't' && !IsBlank(at_[-1])) {
      ++at_;
      return IsDigit(*at_);
    }
    const bool isBlank = IsBlank(at_[-1]) || IsBlank(*at_);
    const bool isComma = Take(',');
    SkipBlanks();
    return isBlank || isComma;
  }

  bool TakeTimeBehind(const DateParts& parts, double& seconds) {
    if (!TakeGap(parts.isYearFirst) || !TakeTime(seconds, Dots::AreTime)) return false;
    if (parts.isYearFirst && Folded(*at_) == 'z') ++at_;
    return true;
  }

  [[nodiscard]] unsigned int YearOf(const Number& number) const {
    return number.IsShort() ? YearInWindow(options_, number.value) : number.value;
  }

  [[nodiscard]] unsigned int PresentYear() const {
    if (options_.presentYear != 0) return static_cast<unsigned int>(options_.presentYear);
    return static_cast<unsigned int>(platform::PresentLocalTime().tm_year + 1900);
  }

  // After false the place is anywhere; the same for what this calls.
  bool TakeDate(DateParts& parts) {
    if (TakeName(kWeekdayNames, weekday_) && !TakeJoin()) return false;
    Number first;
    if (!TakeNumber(first)) return TakeDateFromName(parts);
    const char separator = *at_;
    if ((separator == '/' || separator == '-' || separator == '.') && IsDigit(at_[1])) {
      return TakeDateInNumbers(first, separator, parts);
    }
    return TakeDateFromNumber(first, parts);
  }

  bool TakeDateInNumbers(const Number& first, char separator, DateParts& parts) {
    Number second;
    Number third;
    ++at_;
    if (!TakeNumber(second)) return false;
    if (*at_ != separator || !IsDigit(at_[1])) return TwoNumbers(first, second, parts);
    ++at_;
    if (!TakeNumber(third) || !second.IsShort()) return false;
    if (!first.IsShort()) {
      parts = {first.value, second.value, third.value, true};
      return first.IsWhole() && third.IsShort();
    }
    SetInOrder(first.value, second.value, YearOf(third), parts);
    return true;
  }

  bool TwoNumbers(const Number& first, const Number& second, DateParts& parts) {
    if (first.IsShort() && second.IsShort()) {
      SetInOrder(first.value, second.value, PresentYear(), parts);
      return true;
    }
    const Number& year = first.IsShort() ? second : first;
    const Number& month = first.IsShort() ? first : second;
    parts.year = year.value;
    parts.month = month.value;
    return year.IsWhole() && month.IsShort();
  }

  void SetInOrder(unsigned int first, unsigned int second, unsigned int year,
                  DateParts& parts) const {
    parts.year = year;
    parts.month = first;
    parts.day = second;
    PutInOrder(options_, parts.month, parts.day);
  }

  bool TakeDateFromNumber(const Number& first, DateParts& parts) {
    if (!TakeJoin() || !TakeMonth(parts.month)) return false;
    Number next;
    if (first.IsShort()) {
      parts.day = first.value;
      parts.year = TakeFurther(next, Dots::AreTime) ? YearOf(next) : PresentYear();
      return true;
    }
    parts.year = first.value;
    if (TakeFurther(next, Dots::AreTime)) parts.day = next.value;
    return first.IsWhole() && next.IsShort();
  }

  bool TakeDateFromName(DateParts& parts) {
    Number first;
    Number next;
    char join = '\0';
    if (!TakeMonth(parts.month) || !TakeFurther(first, Dots::MayBeDate, &join)) return false;
    if (!first.IsShort() || first.value == 0 || first.value > 31) {
      parts.year = YearOf(first);
      return first.digits == 2 || first.IsWhole();
    }
    const bool hasYear = TakeFurther(next, Dots::AreTime);
    parts.year = hasYear ? YearOf(next) : PresentYear();
    parts.day = first.value;
    // A month is written as "Jun-31": what can't be the day is the year.
    const bool maybeYear = !hasYear && (join == '-' || join == '/');
    if (maybeYear && !IsCivil(parts.year, parts.month, parts.day)) {
      parts.year = YearOf(first);
      parts.day = 1;
    }
    return true;
  }

  // A further number of a date with a name, unless a time begins with it.
  bool TakeFurther(Number& number, Dots dots, char* join = nullptr) {
    const char* const start = at_;
    if (TakeJoin(join) && IsDigit(*at_)) {
      const char* const digits = at_;
      double seconds;
      if (!TakeTime(seconds, dots) && TakeNumber(number)) return true;
      at_ = digits;
    }
    at_ = start;
    number = Number();
    return false;
  }

  bool TakeJoin(char* character = nullptr) {
    const char* const start = at_;
    SkipBlanks();
    if (*at_ == '-' || *at_ == '/' || *at_ == '.' || *at_ == ',') {
      if (character != nullptr) *character = *at_;
      ++at_;
    }
    SkipBlanks();
    return at_ != start;
  }

  const char* at_;
  const KQDateTextOptions& options_;
  unsigned int weekday_ = static_cast<unsigned int>(kWeekdayNames.size());  // none
};

}  // namespace

bool ReadDateText(const char* text, const KQDateTextOptions& options, double& date) noexcept {
  return Reader(text, options).TakeAll(date);
}

}  // namespace vlm::detail

#pragma once

/// \file
/// A date with a time of day, kept as one number of days, as spreadsheets and databases keep it.
///
///     vlm::KQDateTime start({2024, 2, 28, 0, 18, 30});
///     start.AddTime(1, 6, 0, 0);                 // a day and six hours
///     vlm::KQDateTime::_COMPONENTS parts;
///     start.GetDateTime(parts);                  // 1 March 2024, 00:30, a Friday
///     double number = start.GetDateTime();       // 45352.020833...
///
/// There are two numbers of a date, in days, and both are 0 at 30 December 1899, 00:00, and whole
/// at midnight in the Gregorian calendar, carried back before its introduction:
///
/// - The *stored number* holds the day in its integer part and the time of day in its fraction,
///   which counts forward below zero as well: -1.25 is 29 December 1899 at 06:00. It does not grow
///   with time there.
/// - The *numeric form* does: the same moment is -0.75. From zero on the two are one.
///
/// Text is read by velum/dates/DateText.h and written in the forms of velum/dates/DateFormats.h.

#include <velum/core/Api.h>
#include <velum/dates/Forward.h>

#include <concepts>
#include <cstdint>

namespace vlm {

/// What a `KQDateTime` holds, and what a change of it came to.
enum DTSTATUS : std::int32_t {
  DT_VALID = 0,    ///< A date; of a change, that it was taken as it is.
  DT_INVALID = 1,  ///< Of a change only: a limit was stored in place of what was asked for.
  DT_NULL = 2,     ///< No date yet.
};

/// A date with a time of day, from 1 January 100 to 31 December 9999.
///
/// A value, of a stored number and a status. One object belongs to one thread at a time.
///
/// What lies outside of the limits is no error: the nearer limit is stored, and the change gives
/// `DT_INVALID`; NaN stores `Max_DTVal`. The limits are limits of the stored number, so each of
/// them is a midnight: of 1 January 100 and of 31 December 9999 there is nothing but 00:00, and
/// what lies later on these days becomes it.
///
/// Without a date (`DT_NULL`) an object may be copied, changed by the setters, and asked for its
/// status. Anything else is error 2, from "DateTime".
class VELUM_API KQDateTime {
 public:
  using DTSTATUS = vlm::DTSTATUS;  ///< The status is also a member, with its values.
  using enum vlm::DTSTATUS;

  static const double Min_DTVal;  ///< -657434, 1 January 100.
  static const double Max_DTVal;  ///< 2958465, 31 December 9999.

  /// How a date is written. The comments are the format strings of spreadsheets.
  enum DATE_FORMAT_TYPE : std::int32_t {
    DATE_NONE = 0,          ///< Not at all.
    DATE_M_D = 1,           ///< "m/d": 3/5
    DATE_M_D_YY = 2,        ///< "m/d/yy": 3/5/09
    DATE_MM_DD_YY = 3,      ///< "mm/dd/yy": 03/05/09
    DATE_D_MMM = 4,         ///< "d-mmm": 5-Mar
    DATE_D_MMM_YY = 5,      ///< "d-mmm-yy": 5-Mar-09
    DATE_DD_MMM_YY = 6,     ///< "dd-mmm-yy": 05-Mar-09
    DATE_MMM_YY = 7,        ///< "mmm-yy": Mar-09
    DATE_MMMM_YY = 8,       ///< "mmmm-yy": March-09
    DATE_MMMM_D_YYYY = 9,   ///< "mmmm d, yyyy": March 5, 2009
    DATE_MMMMM = 10,        ///< "mmmmm": M
    DATE_MMMMM_YY = 11,     ///< "mmmmm-yy": M-09
    DATE_M_D_YYYY = 12,     ///< "m/d/yyyy": 3/5/2009
    DATE_D_MMM_YYYY = 13,   ///< "d-mmm-yyyy": 5-Mar-2009
    DATE_D_MMMM_YYYY = 14,  ///< "d mmmm yyyy": 5 March 2009
    DATE_D_M_YY = 15,       ///< "d.m.yy": 5.3.09
    DATE_DD_MM_YYYY = 16,   ///< "dd/mm/yyyy": 05/03/2009
  };

  /// How a time of day is written. The comments are the format strings of spreadsheets.
  enum TIME_FORMAT_TYPE : std::int32_t {
    TIME_NONE = 0,          ///< Not at all.
    TIME_H_MM = 1,          ///< "h:mm": 15:04
    TIME_H_MM_AMPM = 2,     ///< "h:mm AM/PM": 3:04 PM
    TIME_H_MM_SS = 3,       ///< "h:mm:ss": 15:04:05
    TIME_H_MM_SS_AMPM = 4,  ///< "h:mm:ss AM/PM": 3:04:05 PM
    TIME_MM_SS = 5,         ///< "mm:ss": 04:05
    TIME_MM_SS_0 = 6,       ///< "mm:ss.0": 04:5.3
    TIME_ELAPSED = 7,       ///< "[h]:mm:ss", hours since 30 December 1899: 957063:04:05
  };

  /// A date taken apart. A plain value.
  struct VELUM_API _COMPONENTS {
    std::uint16_t Year;       ///< From 100 to 9999.
    std::uint16_t Month;      ///< From 1, January.
    std::uint16_t Day;        ///< From 1.
    std::uint16_t DayOfWeek;  ///< From 0, Sunday. Filled when a date is read, ignored else.
    std::uint16_t Hour;       ///< From 0 to 23.
    std::uint16_t Minute;     ///< From 0.
    std::uint16_t Second;     ///< From 0.
    double Fraction;          ///< Of a second: from 0 on, below 1.

    /// Makes all parts 0, which are no date.
    constexpr _COMPONENTS() noexcept : _COMPONENTS(0, 0) {}
    /// Takes a year; the other parts are 0.
    constexpr explicit _COMPONENTS(int year) noexcept : _COMPONENTS(year, 0) {}
    /// Takes the parts. One that 16 bits can't hold becomes 65535, which is in no date.
    constexpr _COMPONENTS(int year, int month, int day = 0, int dayOfWeek = 0, int hour = 0,
                          int minute = 0, int second = 0, double fraction = 0.0) noexcept
        : Year(Part(year)),
          Month(Part(month)),
          Day(Part(day)),
          DayOfWeek(Part(dayOfWeek)),
          Hour(Part(hour)),
          Minute(Part(minute)),
          Second(Part(second)),
          Fraction(fraction) {}

    /// Rounds to the nearest second, up from half on, carried into minutes, days and beyond; the
    /// day of the week is set.
    ///
    /// - Parts that are no date, and those of 31 December 9999: the midnight of that day.
    /// - Parts of 1 January 100: its midnight.
    ///
    /// *Errors*: 2 for a negative `Fraction`.
    void RoundToNearestSecond();

   private:
    static constexpr std::uint16_t Part(int value) noexcept {
      return value < 0 || value > 0xFFFF ? std::uint16_t{0xFFFF}
                                         : static_cast<std::uint16_t>(value);
    }
  };

  /// Makes an object without a date.
  KQDateTime() noexcept = default;
  /// Holds the stored number `date`, or the limit that is nearer.
  explicit KQDateTime(double date) noexcept;
  /// The same for a whole number of days.
  template <std::integral Days>
  explicit KQDateTime(Days date) noexcept : KQDateTime(static_cast<double>(date)) {}
  /// Holds the date of `components`, or `Max_DTVal` if they are none; of 1 January 100 after
  /// midnight, `Min_DTVal`.
  ///
  /// *Errors*: 2 for a negative `Fraction`.
  explicit KQDateTime(const _COMPONENTS& components);
  /// Holds the date that `text` is, or `Max_DTVal` if it is none; see `KQParseDateTimeStr`.
  ///
  /// *Errors*: 2 for a null pointer.
  explicit KQDateTime(const char* text);
  /// Copies a date, or none.
  KQDateTime(const KQDateTime& other);
  /// Copies a date, or none.
  KQDateTime& operator=(const KQDateTime& other);
  ~KQDateTime() = default;

  /// Returns whether there is a date.
  [[nodiscard]] DTSTATUS GetStatus() const noexcept { return m_status; }
  /// Returns the stored number.
  [[nodiscard]] double GetDateTime() const;
  /// Returns the numeric form.
  [[nodiscard]] double GetNumericDateTime() const;
  /// Takes the date apart: the second that has begun, and the fraction of it that has passed.
  ///
  /// Few times of day are exact as a fraction of a day: noon is, 12:00:01 may well come out as
  /// 12:00:00 and 0.9999997. `RoundToNearestSecond` sets that right.
  void GetDateTime(_COMPONENTS& components) const;

  /// Writes the date by a `DATE_FORMAT_TYPE` into `buffer`, which has room for `size` bytes. What
  /// has no room is left out; the text is terminated unless `size` is below 1.
  ///
  /// *Errors*: 2 for a null buffer or a number that is no type.
  void GetDateStr(int dateFmt, char* buffer, int size) const;
  /// Writes the time of day by a `TIME_FORMAT_TYPE`, as GetDateStr.
  ///
  /// All types but `TIME_MM_SS` and `TIME_MM_SS_0` round to the nearest second first.
  /// `TIME_MM_SS_0` has a point before its tenths in every locale, and goes up to "59:60.0".
  /// `TIME_ELAPSED` writes the hours of the stored number, 24 a day, with a "-" below zero; from 1
  /// to 61 there are 24 fewer, those of the spreadsheet's serial number.
  void GetTimeStr(int timeFmt, char* buffer, int size) const;
  /// Writes date and time with a blank between them, as GetDateStr and GetTimeStr.
  ///
  /// - A stored number between -1 and 1 is a time alone: `dateFmt` is not looked at.
  /// - A time that rounding takes to midnight is beside the day that begins then.
  void GetDateTimeStr(int dateFmt, int timeFmt, char* buffer, int size) const;

  /// Stores the stored number `date`, or the limit that is nearer.
  DTSTATUS SetDateTime(double date) noexcept;
  /// The same for a whole number of days.
  template <std::integral Days>
  DTSTATUS SetDateTime(Days date) noexcept {
    return SetDateTime(static_cast<double>(date));
  }
  /// Stores the date of `components`; `DT_INVALID` with `Max_DTVal` if they are none.
  ///
  /// - 1 January 100 after midnight: `DT_INVALID` with `Min_DTVal`, with a `Fraction` or without.
  ///
  /// *Errors*: 2 for a negative `Fraction`.
  DTSTATUS SetDateTime(const _COMPONENTS& components);
  /// Stores the date that `text` is; `DT_INVALID` with `Max_DTVal` if it is none; see
  /// `KQParseDateTimeStr`.
  ///
  /// *Errors*: 2 for a null pointer.
  DTSTATUS SetDateTime(const char* text);
  /// Stores the date whose numeric form is `value`, or the limit that is nearer.
  DTSTATUS SetNumericDateTime(double value) noexcept;

  /// Moves the date on by a span of time, whose parts may be of any size and sign.
  DTSTATUS AddTime(double days, double hours, double minutes, double seconds);
  /// Moves the date back by a span of time.
  DTSTATUS SubtractTime(double days, double hours, double minutes, double seconds);

  /// Compares the stored numbers.
  [[nodiscard]] bool operator==(const KQDateTime& other) const;
  /// Compares the stored numbers.
  [[nodiscard]] bool operator!=(const KQDateTime& other) const;
  /// True if this date is the earlier one.
  [[nodiscard]] bool operator<(const KQDateTime& other) const;
  /// True if this date is not the later one.
  [[nodiscard]] bool operator<=(const KQDateTime& other) const;
  /// True if this date is the later one.
  [[nodiscard]] bool operator>(const KQDateTime& other) const;
  /// True if this date is not the earlier one.
  [[nodiscard]] bool operator>=(const KQDateTime& other) const;

 protected:
  /// True from `Min_DTVal` to `Max_DTVal`, both included.
  [[nodiscard]] bool IsValidDateTime(double date) const noexcept;
  /// True for the number of a `DTSTATUS`.
  [[nodiscard]] bool IsValidStatus(int status) const noexcept;
  /// True if status and stored number go together: the status is none of a date, or the number is
  /// within the limits.
  [[nodiscard]] bool IsValid() const noexcept;
  /// Does what SetDateTime does.
  DTSTATUS SetValidDateTime(double date) noexcept;
  /// Takes a stored number apart, as GetDateTime.
  ///
  /// *Errors*: 2 for a number outside of the days from `Min_DTVal` to `Max_DTVal`.
  void ComponentsFromDate(double date, _COMPONENTS& components) const;
  /// Writes the stored number of `components`; `DT_INVALID` with 0 if they are no date, and
  /// `DT_INVALID` with a limit if a `Fraction` was to be added outside of the limits.
  ///
  /// *Errors*: 2 for a null pointer or a negative `Fraction`.
  DTSTATUS DateFromComponents(const _COMPONENTS& components, double* date) const;
  /// Copies number and status of `other`.
  ///
  /// *Errors*: 2 if the status of `other` is `DT_INVALID`.
  void Copy(const KQDateTime& other);

  double m_dt = 0.0;                 ///< The stored number.
  DTSTATUS m_status = vlm::DT_NULL;  ///< Whether there is a date; not `DT_INVALID`.

 private:
  [[gnu::visibility("hidden")]] void RequireDate(int line) const;
  [[gnu::visibility("hidden")]] DTSTATUS Move(double numeric) noexcept;
};

/// Returns the numeric form of the stored number `date`.
[[nodiscard]] VELUM_API double KQDoubleFromDate(double date) noexcept;
/// Returns the stored number of the numeric form `value`.
[[nodiscard]] VELUM_API double KQDateFromDouble(double value) noexcept;
/// Returns how many days lie between two stored numbers, never below 0.
[[nodiscard]] VELUM_API double KQTimeSpanInDays(double date1, double date2) noexcept;

/// Writes the stored number of a spreadsheet's serial number.
///
/// Serial numbers count from 1 at 1 January 1900 and have a 29 February 1900, which never was.
///
/// - From 0 to below 60: `serial` + 1.
/// - Below 0 and from 60 on: `serial`. So 60, the day that never was, is 28 February 1900 as 59 is.
///
/// *Errors*: 2 for a null pointer.
VELUM_API void KQDateFromXLNumber(double serial, double* date);
/// Writes the serial number of a stored number and returns true, or writes `date` and returns false
/// if that is below 1 and has none.
///
/// *Errors*: 2 for a null pointer.
VELUM_API bool KQXLNumberFromDate(double date, double* serial);

/// Writes the English name of a month, from 1 for "January", into `buffer`, which has room for
/// `size` bytes. What has no room is left out; the text is terminated unless `size` is below 1.
///
/// *Errors*: 2 for a number that is no month, or a null buffer.
VELUM_API void KQMapMonthToName(unsigned int month, char* buffer, int size);
/// Writes the first three letters of the English name of a month, as KQMapMonthToName.
VELUM_API void KQMapMonthToShortName(unsigned int month, char* buffer, int size);

}  // namespace vlm

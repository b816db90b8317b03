#pragma once

/// \file
/// Reads dates and times as people type them, and tells in which form they were typed.
///
///     double date;
///     vlm::KQDateTime::DATE_FORMAT_TYPE dateFmt;
///     vlm::KQDateTime::TIME_FORMAT_TYPE timeFmt;
///     if (vlm::KQParseDateTimeStr("25-Dec-10 3:45 PM", &date, &dateFmt, &timeFmt)) {
///       char text[40];
///       vlm::KQDateTime(date).GetDateTimeStr(dateFmt, timeFmt, text, sizeof text);  // the same
///     }
///
/// What is taken, letters in any case, blanks being line ends and tabs as well:
///
///     text      = date | time | time gap date                      blanks around it
///               | date gap (time | dotted)
///               | date gap (time | dotted) "Z"                     year s month s day; no half
///     gap       = blanks | [blanks] "," [blanks] | "T"             "T" behind year s month s day
///     date      = [weekday join] day-of-year                       the weekday must be right
///     day-of-year
///               = month s day s year | day s month s year          in the order chosen
///               | month s day | day s month                        of the present year
///               | year s month s day                               year of 4 digits
///               | month s year | year s month                      year of 4 digits; day 1
///               | day join name [join year]
///               | name join day [join year]
///               | name join year                                   4 digits, or 00, 32 to 99
///               | name hyphen year                                 29 to 31, if that is no day
///               | year join name [join day]                        year of 4 digits
///     s         = "/" | "-" | "."                                  the same one in one date
///     join      = blanks | [blanks] ("-" | "/" | "." | ",") [blanks]
///     hyphen    = [blanks] ("-" | "/") [blanks]
///     name      = "January" ... "December" | "Jan" ... "Dec" | "Sept"
///     weekday   = "Sunday" ... "Saturday" | "Sun" ... "Sat"
///     time      = hour ":" minute [":" second ["." decimals]] [half]
///               | hour ":" minute "." second [half]
///               | dotted half
///               | hour half
///     dotted    = hour "." minute ["." second]
///     half      = [blanks] ("AM" | "PM" | "A" | "P" | "A.M." | "P.M.")
///
/// - Numbers have one or two digits, years up to four, and decimals are 9 at most.
/// - A day must be in its month; hours go from 0 to 23, with AM from 0 to 12, with PM from 1 to 12;
///   there is no second 60.
/// - Behind a month's name 1 to 31 is a day: "Dec-10" and "Dec 10" are 10 December. Only what the
///   month of the present year does not have is a year, with "-" or "/": "Jun-31" is June 1931, and
///   "June 31" is no date.
/// - A year of one or two digits is in the hundred years of the window, 1930 to 2029 unless chosen
///   otherwise.
/// - Of "12/25" and "25/12" only one is a date, which it then is in either order, unless that is
///   switched off.
/// - A time alone has the date part 0. "Z" is passed over: there are no time zones here.
/// - English month names only, and no other letters than those above.
///
/// The form is found by the text's shape, not by what was read, in tables that go back to what
/// spreadsheets show for such text. A few readable texts have no shape of theirs and are refused:
/// "25.12.2010", "12-25", "10:20.5" and "9.3 PM" among them.

#include <velum/core/Api.h>
#include <velum/dates/DateTime.h>

namespace vlm {

/// How texts are read that may mean several dates. A plain value.
struct KQDateTextOptions {
  /// Which number of "3/5/2009" comes first.
  enum Order {
    MonthDayYear = 0,  ///< The month: 5 March.
    DayMonthYear = 1,  ///< The day: 3 May.
  };

  Order order = MonthDayYear;  ///< American, unless chosen otherwise.
  bool eitherOrder = true;     ///< Take a date that is one in the other order only.
  int windowStart = 1930;      ///< The first of the hundred years of two digits; 100 to 9900.
  int presentYear = 0;         ///< The year of dates without one, 100 to 9999; 0: the clock's.

  /// True if all members are equal.
  bool operator==(const KQDateTextOptions& other) const noexcept {
    return order == other.order && eitherOrder == other.eitherOrder &&
           windowStart == other.windowStart && presentYear == other.presentYear;
  }
};

/// Chooses how the process reads dates where nothing else is said: KQParseDateTimeStr without
/// options, the text setters of `KQDateTime`, and `KQClosestAccurateDateFmt`.
///
/// Any thread may call it, and may read dates meanwhile: a text is read by the options from before
/// or from after, never by a mixture.
///
/// *Errors*: 2 for a window or a year out of range.
VELUM_API void KQSetDateTextOptions(const KQDateTextOptions& options);
/// Returns the options of the process.
[[nodiscard]] VELUM_API KQDateTextOptions KQGetDateTextOptions() noexcept;

/// Reads a date, a time or both, and returns whether `text` is one; gives the stored number and the
/// types in which it was typed to the pointers that are not null.
///
/// - The empty text: false, and nothing is written.
/// - Another text that is no date, or none with a type: false, with 0 for date and types.
/// - 1 January 100 after midnight, and 31 December 9999 after midnight, are read, but lie outside
///   of what a `KQDateTime` holds.
/// - Any number of threads may call it.
///
/// *Errors*: 2 for a null `text`.
VELUM_API bool KQParseDateTimeStr(const char* text, double* date,
                                  KQDateTime::DATE_FORMAT_TYPE* dateFmt,
                                  KQDateTime::TIME_FORMAT_TYPE* timeFmt);
/// The same by options of the caller's own.
///
/// *Errors*: also 2 for a window or a year out of range.
VELUM_API bool KQParseDateTimeStr(const char* text, double* date,
                                  KQDateTime::DATE_FORMAT_TYPE* dateFmt,
                                  KQDateTime::TIME_FORMAT_TYPE* timeFmt,
                                  const KQDateTextOptions& options);

}  // namespace vlm

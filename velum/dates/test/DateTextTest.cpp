#include <velum/dates/DateText.h>

#include <velum/core/Exception.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <random>
#include <string>

namespace vlm {
namespace {

using Options = KQDateTextOptions;

Options PresentIs2024(Options::Order order = Options::MonthDayYear) {
  Options options;
  options.order = order;
  options.presentYear = 2024;
  return options;
}

// "2010-12-25 15:45:10 (12, 2)": what a text is read as, and its types. "none" if it is no date.
std::string Read(const char* text, const Options& options = PresentIs2024()) {
  double date = 9.0;
  auto dateFmt = KQDateTime::DATE_D_MMM;
  auto timeFmt = KQDateTime::TIME_MM_SS;
  const bool isDate = KQParseDateTimeStr(text, &date, &dateFmt, &timeFmt, options);
  if (!isDate) return date == 0.0 && dateFmt == 0 && timeFmt == 0 ? "none" : "none, but written";
  KQDateTime::_COMPONENTS parts;
  KQDateTime(date).GetDateTime(parts);
  parts.RoundToNearestSecond();
  char shown[80];
  std::snprintf(shown, sizeof shown, "%u-%02u-%02u %u:%02u:%02u (%d, %d)", parts.Year, parts.Month,
                parts.Day, parts.Hour, parts.Minute, parts.Second, dateFmt, timeFmt);
  return shown;
}

TEST(KQParseDateTimeStr, ReadsWhatPeopleType) {
  const struct {
    const char* text;
    const char* read;
  } rows[] = {
      {"12/25/2010", "2010-12-25 0:00:00 (12, 0)"},
      {"2010-12-25", "2010-12-25 0:00:00 (12, 0)"},
      {"2010/1/5", "2010-01-05 0:00:00 (12, 0)"},
      {"25-Dec-10", "2010-12-25 0:00:00 (5, 0)"},
      {"25-dec-2010", "2010-12-25 0:00:00 (13, 0)"},
      {"2010-DEC-25", "2010-12-25 0:00:00 (13, 0)"},
      {"25/december/2010", "2010-12-25 0:00:00 (13, 0)"},
      {"December 25, 2010", "2010-12-25 0:00:00 (9, 0)"},
      {"Dec 5,2010", "2010-12-05 0:00:00 (9, 0)"},
      {"sept 5, 2010", "2010-09-05 0:00:00 (9, 0)"},
      {"25 December 2010", "2010-12-25 0:00:00 (7, 2)"},
      {"Saturday, December 25, 2010", "2010-12-25 0:00:00 (9, 0)"},
      {"Sat Dec 25, 2010", "2010-12-25 0:00:00 (9, 0)"},
      {"1/2/30", "1930-01-02 0:00:00 (2, 0)"},
      {"1/2/29", "2029-01-02 0:00:00 (2, 0)"},
      {"1-2-3", "2003-01-02 0:00:00 (2, 0)"},
      {"1/2/100", "100-01-02 0:00:00 (12, 0)"},
      {"2/29", "2024-02-29 0:00:00 (1, 0)"},
      {"12/2010", "2010-12-01 0:00:00 (1, 0)"},
      {"25-Dec", "2024-12-25 0:00:00 (4, 0)"},
      {"Dec-25", "2024-12-25 0:00:00 (4, 0)"},
      {"Dec-99", "1999-12-01 0:00:00 (4, 0)"},
      {"Dec-00", "2000-12-01 0:00:00 (4, 0)"},
      {"Jun-31", "1931-06-01 0:00:00 (4, 0)"},
      {"June / 31 10:20", "1931-06-01 10:20:00 (0, 1)"},
      {"Feb-29", "2024-02-29 0:00:00 (4, 0)"},
      {"Feb-30", "1930-02-01 0:00:00 (4, 0)"},
      {"Dec 2010", "2010-12-01 0:00:00 (7, 0)"},
      {"2010-Dec", "2010-12-01 0:00:00 (4, 0)"},
      {"25/12/2010", "2010-12-25 0:00:00 (12, 0)"},
      {"3:45", "1899-12-30 3:45:00 (0, 1)"},
      {"3:45:10", "1899-12-30 3:45:10 (0, 3)"},
      {"3:45:10.75", "1899-12-30 3:45:11 (0, 3)"},
      {"3:45 PM", "1899-12-30 15:45:00 (0, 2)"},
      {"3:45 \t PM", "1899-12-30 15:45:00 (0, 2)"},
      {"3:45pm", "1899-12-30 15:45:00 (0, 2)"},
      {"3:45:10 p.m.", "1899-12-30 15:45:10 (0, 4)"},
      {"3 P", "1899-12-30 15:00:00 (0, 2)"},
      {"3PM", "1899-12-30 15:00:00 (0, 2)"},
      {"12:05 AM", "1899-12-30 0:05:00 (0, 2)"},
      {"12:05 PM", "1899-12-30 12:05:00 (0, 2)"},
      {"0:05 AM", "1899-12-30 0:05:00 (0, 2)"},
      {"  12/25/2010   10:20:30 ", "2010-12-25 10:20:30 (12, 3)"},
      {"12/25/2010, 3:45 PM", "2010-12-25 15:45:00 (12, 2)"},
      {"3:45 PM 12/25/2010", "2010-12-25 15:45:00 (12, 2)"},
      {"10:30, April 5, 2010", "2010-04-05 10:30:00 (9, 1)"},
      {"25 Dec 10:30", "2024-12-25 10:30:00 (7, 2)"},
      {"Dec 25 2010 3 PM", "2010-12-25 15:00:00 (7, 2)"},
      {"2010-12-25T10:20:30", "2010-12-25 10:20:30 (12, 0)"},
      {"2018-01-31T01:49:59Z", "2018-01-31 1:49:59 (12, 4)"},
      {"2018-01-31 01:49:59.999Z", "2018-01-31 1:50:00 (12, 0)"},
      {"12.25.2010 3:45 PM", "2010-12-25 15:45:00 (0, 2)"},
      {"12/25/2010 3.45 PM", "2010-12-25 15:45:00 (12, 2)"},
      {"12/25/2010 3.45", "2010-12-25 3:45:00 (12, 0)"},
      {"12/25/2010, 15.4.10", "2010-12-25 15:04:10 (12, 0)"},
      {"25-Dec 3.45", "2024-12-25 3:45:00 (4, 0)"},
      {"12/25/2010 10:20.5", "2010-12-25 10:20:05 (12, 0)"},
      {"10:2.5 12/25/2010", "2010-12-25 10:02:05 (12, 0)"},
      {"Dec 25.10", "2010-12-25 0:00:00 (7, 0)"},
      {"9.30 PM", "1899-12-30 21:30:00 (0, 2)"},
      {"1/1/1899 18:00", "1899-01-01 18:00:00 (12, 1)"},
      {"12/30/1899", "1899-12-30 0:00:00 (12, 0)"},
      {"1/1/100", "100-01-01 0:00:00 (12, 0)"},
      {"12/31/9999", "9999-12-31 0:00:00 (12, 0)"},
  };
  for (const auto& row : rows) EXPECT_EQ(Read(row.text), row.read) << row.text;
}

TEST(KQParseDateTimeStr, RefusesWhatIsNoDate) {
  const char* rows[] = {
      " ", "x", "12", "2010", "/", ":", "12/", "12/25/", "12//25", "12/25/2010/1", "31 February",
      "February 31", "2/31/2010", "2/29/2023", "13/13/2010", "0/1/2010", "1/0/2010", "4/31",
      "2010-13-01", "2010-25-12", "32-Dec-10", "32 December", "Dec 25 99999", "1/2/20101",
      "1/2/099", "1/2/0099", "1/2-2010", "1/ 2/2010", "12 25 2010", "25Dec2010", "Decem 25, 2010",
      "Friday, December 25, 2010", "25th December 2010", "10-12-25-", "12/100000", "12/201",
      "201/12/5", "Dec 201", "201 Dec", "25:00", "24:00", "3:60", "3:45:60", "13:00 PM", "0:30 PM",
      "3:45 XM", "3:45 PMs", "3:045", "3:45:10.", "3:45:10.1234567890", "3:", "3", "3 PM 4 PM",
      "3:45 3:45", "-3:45", "3.45", "12/25/2010 trailing", "12/25/2010 3:45 PM x",
      "12/25/2010 12/25/2010", "12/25/2010,", "12/25/20103:45", "3:4512/25/2010", "12/25/2010T3:45",
      "2010-12-25T", "2010-12-25 T10:20", "2010-12-25T10:20:30+02:00", "12/25/2010 10:20Z",
      "2010-12-25T10:20:30ZZ", "2010-12-25 10:20 PMZ", "3.45 12/25/2010", "12/25/2010 3.60",
      "12/25/2010 3.45.", "12/25/2010 3.4.5.6", "June 31", "Jun-31-2010", "Jun-32-2010", "Dec-0",
      "Dec 0", "Dec-000", "\xC3\xA9",
      // Read, but of no shape.
      "25.12.2010", "12-25", "9.3 PM", "3.45.10", "10:20.5", "12.25.2010 3.45"};
  for (const char* text : rows) EXPECT_EQ(Read(text), "none") << text;
  const std::string before("12/25/2010\0x", 12);
  EXPECT_EQ(Read(before.c_str()), "2010-12-25 0:00:00 (12, 0)");
  double date = 9.0;
  EXPECT_TRUE(KQParseDateTimeStr("12/31/9999 23:59:59.99999", &date, nullptr, nullptr));
  EXPECT_LT(date, KQDateTime::Max_DTVal + 1.0);
  date = 9.0;
  EXPECT_FALSE(KQParseDateTimeStr("", &date, nullptr, nullptr));
  EXPECT_EQ(date, 9.0) << "of the empty text nothing is written";
  EXPECT_THROW(KQParseDateTimeStr(nullptr, &date, nullptr, nullptr), Exception);
}

TEST(KQParseDateTimeStr, ReadsByTheOptionsGiven) {
  Options options = PresentIs2024(Options::DayMonthYear);
  EXPECT_EQ(Read("3/5/2009", options), "2009-05-03 0:00:00 (12, 0)");
  EXPECT_EQ(Read("3-5", options), "none");
  EXPECT_EQ(Read("12/25/2010", options), "2010-12-25 0:00:00 (12, 0)");
  options.eitherOrder = false;
  EXPECT_EQ(Read("12/25/2010", options), "none");
  EXPECT_EQ(Read("2010-12-25", options), "2010-12-25 0:00:00 (12, 0)");
  options.windowStart = 2000;
  EXPECT_EQ(Read("1/2/99", options), "2099-02-01 0:00:00 (2, 0)");
  options.windowStart = 9900;
  EXPECT_EQ(Read("1/2/00", options), "9900-02-01 0:00:00 (2, 0)");
  options.presentYear = 2023;
  EXPECT_EQ(Read("29/2", options), "none");
  for (const int wrong : {-1, 99, 10000}) {
    Options bad;
    bad.presentYear = wrong;
    EXPECT_THROW(KQSetDateTextOptions(bad), Exception) << wrong;
    bad = Options();
    bad.windowStart = wrong;
    EXPECT_THROW(KQParseDateTimeStr("1/2", nullptr, nullptr, nullptr, bad), Exception) << wrong;
  }
}

TEST(KQParseDateTimeStr, ReadsByTheOptionsOfTheProcess) {
  EXPECT_TRUE(KQGetDateTextOptions() == Options());
  Options options = PresentIs2024(Options::DayMonthYear);
  options.windowStart = 1950;
  options.eitherOrder = false;
  KQSetDateTextOptions(options);
  EXPECT_TRUE(KQGetDateTextOptions() == options);
  EXPECT_EQ(KQDateTime("3/5/49").GetDateTime(), 54546.0);  // 3 May 2049
  EXPECT_EQ(KQDateTime("3/5").GetDateTime(), 45415.0);     // 3 May 2024
  KQSetDateTextOptions(Options());
  KQDateTime date;
  EXPECT_EQ(date.SetDateTime("12/25/2010"), DT_VALID);
  EXPECT_EQ(date.GetDateTime(), 40537.0);
  EXPECT_EQ(date.SetDateTime("no date"), DT_INVALID);
  EXPECT_EQ(date.GetDateTime(), KQDateTime::Max_DTVal);
  EXPECT_EQ(date.SetDateTime("1/1/100 6:00"), DT_INVALID);
  EXPECT_EQ(date.GetDateTime(), KQDateTime::Min_DTVal);
  EXPECT_EQ(KQDateTime("").GetDateTime(), KQDateTime::Max_DTVal);
}

// The types as which the texts of the date types are read; that of the time stays, but for that of
// "5 March 2009", whose shape is that of an hour with a half of the day.
constexpr int kReadAs[17] = {0, 1, 2, 2, 4, 5, 5, 4, 4, 9, 0, 0, 12, 13, 7, 0, 12};

// What each type shows of a date, read again: the day, if it shows one, and the parts that it
// shows. "mm:ss" and elapsed hours are no times of day.
TEST(KQParseDateTimeStr, ReadsTheTextsOfAllTypes) {
  constexpr unsigned kSeed = 17;
  std::mt19937 random(kSeed);
  const auto below = [&random](unsigned count) { return static_cast<double>(random() % count); };
  for (int i = 0; i < 20000; ++i) {
    // The years of two digits by turns with all years.
    const bool isInWindow = i % 2 == 0;
    const double day = isInWindow ? 10959.0 + below(36525) : -657433.0 + below(3615897);
    const double date = KQDateFromDouble(day + below(86400) / 86400.0);
    KQDateTime::_COMPONENTS parts;
    KQDateTime(date).GetDateTime(parts);
    parts.RoundToNearestSecond();
    for (int type = 1; type <= 16; ++type) {
      const bool hasWholeYear = type == 9 || (type >= 12 && type != 15);
      if (!isInWindow && !hasWholeYear) continue;
      const bool isDayFirst = type == 15 || type == 16;
      Options options;
      options.order = isDayFirst ? Options::DayMonthYear : Options::MonthDayYear;
      options.eitherOrder = false;
      options.presentYear = parts.Year;
      // Behind a month's name two digits are a day if they can be.
      const KQDateTime::_COMPONENTS yearAsDay(parts.Year, parts.Month, parts.Year % 100);
      const bool isDay = KQDateTime().SetDateTime(yearAsDay) == DT_VALID;
      const bool isOfMonth = type == 7 || type == 8;
      const int shownDay = !isOfMonth ? parts.Day : isDay ? yearAsDay.Day : 1;
      for (const int time : {0, 1, 2, 3, 4}) {
        char text[40];
        KQDateTime(date).GetDateTimeStr(type, time, text, sizeof text);
        double read;
        auto dateFmt = KQDateTime::DATE_NONE;
        auto timeFmt = KQDateTime::TIME_NONE;
        const bool isRead = KQParseDateTimeStr(text, &read, &dateFmt, &timeFmt, options);
        // A letter is no month, and numbers with dots have no shape but with seconds or AM and PM.
        const bool isLetter = type == 10 || type == 11;
        const bool hasDots = type == 15 && time <= 1;
        ASSERT_EQ(isRead, !isLetter && !hasDots) << text << " seed " << kSeed;
        if (!isRead) continue;
        ASSERT_EQ(dateFmt, kReadAs[type]) << text;
        ASSERT_EQ(timeFmt, type == 14 && time != 4 ? 2 : time) << text;
        KQDateTime::_COMPONENTS again;
        KQDateTime(read).GetDateTime(again);
        again.RoundToNearestSecond();
        ASSERT_TRUE(again.Year == parts.Year && again.Month == parts.Month && again.Day == shownDay)
            << text << " seed " << kSeed;
        const bool isTime = time == 0 ? again.Hour + again.Minute + again.Second == 0
                                      : again.Hour == parts.Hour && again.Minute == parts.Minute &&
                                            (time <= 2 || again.Second == parts.Second);
        ASSERT_TRUE(isTime) << text << " seed " << kSeed;
      }
    }
  }
}

}  // namespace
}  // namespace vlm

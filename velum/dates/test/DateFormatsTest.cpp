#include <velum/dates/DateFormats.h>

#include <velum/core/Exception.h>
#include <velum/dates/DateText.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>

namespace vlm {
namespace {

std::string DateText(double date, int type, int size = 40) {
  char text[40] = "before";
  KQDateTime(date).GetDateStr(type, text, size);
  return text;
}

std::string TimeText(double date, int type, int size = 40) {
  char text[40] = "before";
  KQDateTime(date).GetTimeStr(type, text, size);
  return text;
}

std::string BothText(double date, int dateFmt, int timeFmt, int size = 40) {
  char text[40] = "before";
  KQDateTime(date).GetDateTimeStr(dateFmt, timeFmt, text, size);
  return text;
}

double Stored(int year, int month, int day, int hour = 0, int minute = 0, double second = 0) {
  const int whole = static_cast<int>(second);
  return KQDateTime(
             KQDateTime::_COMPONENTS(year, month, day, 0, hour, minute, whole, second - whole))
      .GetDateTime();
}

TEST(KQDateTime, DatesAreWrittenByTheirType) {
  const char* early[] = {"",         "3/5",       "3/5/09",   "03/05/09",   "5-Mar",
                         "5-Mar-09", "05-Mar-09", "Mar-09",   "March-09",   "March 5, 2009",
                         "M",        "M-09",      "3/5/2009", "5-Mar-2009", "5 March 2009",
                         "5.3.09",   "05/03/2009"};
  const char* late[] = {"",          "11/30",     "11/30/65",  "11/30/65",    "30-Nov",
                        "30-Nov-65", "30-Nov-65", "Nov-65",    "November-65", "November 30, 165",
                        "N",         "N-65",      "11/30/165", "30-Nov-165",  "30 November 165",
                        "30.11.65",  "30/11/165"};
  for (int type = 0; type <= 16; ++type) {
    EXPECT_EQ(DateText(Stored(2009, 3, 5, 23, 59, 59.75), type), early[type]) << type;
    EXPECT_EQ(DateText(Stored(165, 11, 30, 6), type), late[type]) << type;
  }
}

TEST(KQDateTime, TimesAreWrittenByTheirType) {
  const struct {
    double date;
    const char* texts[8];
  } rows[] = {
      {Stored(2009, 3, 5, 15, 4, 5.375),
       {"", "15:04", "3:04 PM", "15:04:05", "3:04:05 PM", "04:05", "04:5.4", "957063:04:05"}},
      {Stored(2009, 3, 1, 23, 59, 59.7),
       {"", "0:00", "12:00 AM", "0:00:00", "12:00:00 AM", "59:59", "59:59.7", "956976:00:00"}},
      {0.5 + 5.0 / 1440,
       {"", "12:05", "12:05 PM", "12:05:00", "12:05:00 PM", "05:00", "05:0.0", "12:05:00"}},
      {1.0 + 5.0 / 1440,
       {"", "0:05", "12:05 AM", "0:05:00", "12:05:00 AM", "05:00", "05:0.0", "0:05:00"}},
      {61.25, {"", "6:00", "6:00 AM", "6:00:00", "6:00:00 AM", "00:00", "00:0.0", "1470:00:00"}},
      {-1.25, {"", "6:00", "6:00 AM", "6:00:00", "6:00:00 AM", "00:00", "00:0.0", "-30:00:00"}},
  };
  for (const auto& row : rows) {
    for (int type = 0; type < 8; ++type) {
      EXPECT_EQ(TimeText(row.date, type), row.texts[type]) << row.date << ' ' << type;
    }
  }
}

// As the C library rounds, but for its comma.
TEST(KQDateTime, TenthsOfSecondsAreRoundedWithAPoint) {
  constexpr unsigned kSeed = 6;
  std::mt19937 random(kSeed);
  const std::string before = std::setlocale(LC_ALL, nullptr);
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
  for (int i = 0; i < 100000; ++i) {
    // Some of the latter lie exactly halfway between tenths.
    const double date = i % 2 == 0 ? static_cast<double>(random() % 60000) / 86400000.0
                                   : static_cast<double>(random() % 65536) / 65536.0;
    KQDateTime::_COMPONENTS parts;
    KQDateTime(date).GetDateTime(parts);
    char expected[40];
    std::snprintf(expected, sizeof expected, "%02u:%.1f", parts.Minute,
                  parts.Second + parts.Fraction);
    *std::strchr(expected, ',') = '.';
    EXPECT_EQ(TimeText(date, 6), expected) << date << " seed " << kSeed;
  }
  std::setlocale(LC_ALL, before.c_str());
}

TEST(KQDateTime, DateAndTimeGoTogether) {
  const double late = Stored(2010, 3, 1, 23, 59, 59.7);
  const struct {
    double date;
    int dateFmt, timeFmt;
    const char* text;
    const char* reason;
  } rows[] = {
      {late, 12, 3, "3/2/2010 0:00:00", "rounded over midnight"},
      {late, 12, 5, "3/1/2010 59:59", "not rounded"},
      {late, 12, 0, "3/1/2010", "a date alone"},
      {late, 0, 3, "0:00:00", "a time alone"},
      {late, 0, 0, "", "nothing"},
      {0.5, 2, 1, "12:00", "day 0 is no date"},
      {-0.5, 2, 1, "12:00", "nor from the other side"},
      {0.5, 2, 0, "", "a time without its type"},
      {0.5, 99, 1, "12:00", "a date type that is not looked at"},
      {-1.25, 12, 1, "12/29/1899 6:00", "below zero"},
      {1.0, 12, 1, "12/31/1899 0:00", "the first date"},
      {2958464.0 + 86399.75 / 86400, 12, 3, "12/31/9999 0:00:00", "into the last day"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(BothText(row.date, row.dateFmt, row.timeFmt), row.text) << row.reason;
  }
}

TEST(KQDateTime, TextIsCutToTheBuffer) {
  const double date = Stored(2010, 12, 25, 10, 20, 30);
  EXPECT_EQ(DateText(date, 9, 9), "December");
  EXPECT_EQ(TimeText(date, 4, 6), "10:20");
  EXPECT_EQ(BothText(date, 12, 3, 14), "12/25/2010 10");
  EXPECT_EQ(BothText(date, 12, 3, 1), "");
  EXPECT_EQ(BothText(date, 12, 3, 0), "before");
  EXPECT_EQ(BothText(date, 12, 3, -1), "before");
}

TEST(KQDateTime, WritingRaisesForMisuse) {
  char text[40];
  const KQDateTime date(40537.25), none;
  for (const int type : {-1, 17}) {
    EXPECT_FALSE(KQValidDateFmtType(type));
    EXPECT_THROW(date.GetDateStr(type, text, 40), Exception);
    EXPECT_THROW(date.GetDateTimeStr(type, 1, text, 40), Exception);
    EXPECT_THROW(KQMapFmtTypesToExcelFmtStr(type, 1, text, 40), Exception);
    EXPECT_THROW((void)KQClosestAccurateDateFmt(1, type), Exception);
  }
  for (const int type : {-1, 8}) {
    EXPECT_FALSE(KQValidTimeFmtType(type));
    EXPECT_THROW(date.GetTimeStr(type, text, 40), Exception);
    EXPECT_THROW(date.GetDateTimeStr(1, type, text, 40), Exception);
    EXPECT_THROW(KQMapFmtTypesToExcelFmtStr(1, type, text, 40), Exception);
    EXPECT_THROW((void)KQClosestAccurateTimeFmt(1, type), Exception);
  }
  EXPECT_THROW(date.GetDateStr(1, nullptr, 40), Exception);
  EXPECT_THROW(date.GetTimeStr(1, nullptr, 40), Exception);
  EXPECT_THROW(date.GetDateTimeStr(1, 1, nullptr, 40), Exception);
  EXPECT_THROW(none.GetDateStr(1, text, 40), Exception);
  EXPECT_THROW(none.GetTimeStr(1, text, 40), Exception);
  EXPECT_THROW(none.GetDateTimeStr(1, 1, text, 40), Exception);
  KQDateTime::DATE_FORMAT_TYPE dateFmt;
  KQDateTime::TIME_FORMAT_TYPE timeFmt;
  EXPECT_THROW(KQMapExcelFmtStrToFmtTypes(nullptr, &dateFmt, &timeFmt), Exception);
  EXPECT_THROW(KQMapExcelFmtStrToFmtTypes("", nullptr, &timeFmt), Exception);
  EXPECT_THROW(KQMapExcelFmtStrToFmtTypes("", &dateFmt, nullptr), Exception);
}

TEST(FormatStrings, GiveTheirTypesBack) {
  for (int date = 0; date <= 16; ++date) {
    for (int time = 0; time <= 7; ++time) {
      char format[40];
      KQMapFmtTypesToExcelFmtStr(date, time, format, sizeof format);
      KQDateTime::DATE_FORMAT_TYPE dateFmt;
      KQDateTime::TIME_FORMAT_TYPE timeFmt;
      KQMapExcelFmtStrToFmtTypes(format, &dateFmt, &timeFmt);
      EXPECT_TRUE(dateFmt == date && timeFmt == time) << format;
    }
  }
}

TEST(FormatStrings, AreFoundInLongerOnes) {
  const struct {
    const char* text;
    int date, time;
  } rows[] = {
      {"m/d/yyyy h:mm:ss", 12, 3},
      {"d\\-mmm\\-yy", 5, 0},
      {"[$-409]mmmm d\\, yyyy;@", 9, 0},
      {"[$-409]h:mm:ss AM/PM;@", 0, 4},
      {"General", 0, 0},
      {"yyyy-mm-dd", 0, 0},
      {"\\\\m/d\\", 1, 0},
      {"", 0, 0},
  };
  for (const auto& row : rows) {
    KQDateTime::DATE_FORMAT_TYPE dateFmt;
    KQDateTime::TIME_FORMAT_TYPE timeFmt;
    KQMapExcelFmtStrToFmtTypes(row.text, &dateFmt, &timeFmt);
    EXPECT_TRUE(dateFmt == row.date && timeFmt == row.time) << row.text;
  }
  char format[40];
  KQMapFmtTypesToExcelFmtStr(12, 3, format, 40);
  EXPECT_STREQ(format, "m/d/yyyy h:mm:ss");
  KQMapFmtTypesToExcelFmtStr(12, 3, format, 8);
  EXPECT_STREQ(format, "m/d/yyy");
}

TEST(ClosestAccurateFormat, ShowsTheWholeDate) {
  const struct {
    double date;
    int closest[17];
  } rows[] = {
      {Stored(1850, 3, 5, 18), {0, 12, 12, 12, 13, 13, 13, 13, 13, 9, 13, 13, 12, 13, 14, 13, 16}},
      {Stored(1950, 3, 5, 18), {0, 12, 2, 3, 13, 5, 6, 13, 13, 9, 13, 13, 12, 13, 14, 13, 16}},
      {Stored(1950, 3, 1), {0, 12, 2, 3, 13, 5, 6, 7, 8, 9, 13, 13, 12, 13, 14, 13, 16}},
      {Stored(9999, 12, 31), {0, 12, 12, 12, 13, 13, 13, 13, 13, 9, 10, 11, 12, 13, 14, 15, 16}},
  };
  for (const auto& row : rows) {
    for (int type = 0; type <= 16; ++type) {
      EXPECT_EQ(KQClosestAccurateDateFmt(row.date, type), row.closest[type]) << type;
    }
  }
  // Below zero the evening belongs to the day that has begun.
  KQDateTextOptions options;
  options.windowStart = 1830;
  KQSetDateTextOptions(options);
  EXPECT_EQ(KQClosestAccurateDateFmt(Stored(1899, 12, 1, 18), 7), 7);
  EXPECT_EQ(KQClosestAccurateDateFmt(Stored(1899, 11, 30, 18), 7), 13);
  KQSetDateTextOptions(KQDateTextOptions());
}

TEST(ClosestAccurateFormat, ShowsTheWholeTime) {
  const struct {
    double date;
    int closest[8];
  } rows[] = {
      {Stored(2010, 12, 25, 10, 15, 30), {0, 3, 4, 3, 4, 5, 6, 7}},
      {Stored(1850, 12, 25, 10, 15, 30), {0, 3, 4, 3, 4, 5, 6, 7}},
      {Stored(2010, 12, 25, 10, 15), {0, 1, 2, 3, 4, 5, 6, 7}},
  };
  for (const auto& row : rows) {
    for (int type = 0; type < 8; ++type) {
      EXPECT_EQ(KQClosestAccurateTimeFmt(row.date, type), row.closest[type]) << type;
    }
  }
}

}  // namespace
}  // namespace vlm

#include <velum/dates/DateTime.h>

#include <velum/core/Exception.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <type_traits>

namespace vlm {
namespace {

using Parts = KQDateTime::_COMPONENTS;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kMin = -657434.0;
constexpr double kMax = 2958465.0;

std::string Text(const Parts& p) {
  char text[80];
  std::snprintf(text, sizeof text, "%u-%u-%u %u %u:%u:%u %g", p.Year, p.Month, p.Day, p.DayOfWeek,
                p.Hour, p.Minute, p.Second, p.Fraction);
  return text;
}

Parts PartsOf(double date) {
  Parts parts;
  KQDateTime(date).GetDateTime(parts);
  return parts;
}

void ExpectMisuse(const std::function<void()>& misuse, const char* what) {
  try {
    misuse();
    ADD_FAILURE() << what << " raises nothing";
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetErrCode(), ERR_INTERNAL) << what;
    EXPECT_EQ(error.GetSrcFile(), "DateTime") << what;
  }
}

TEST(KQDateTime, BothNumbersAreOneFromZeroOn) {
  const struct {
    double stored, numeric;
    const char* reason;
  } rows[] = {
      {0.0, 0.0, "day 0"},   {1.75, 1.75, "above"},
      {-1.0, -1.0, "whole"}, {-1.25, -0.75, "six o'clock on 29 December 1899"},
      {-1.5, -0.5, "noon"},  {-657434.0, -657434.0, "the first day"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(KQDoubleFromDate(row.stored), row.numeric) << row.reason;
    EXPECT_EQ(KQDateFromDouble(row.numeric), row.stored) << row.reason;
  }
  EXPECT_EQ(KQTimeSpanInDays(-1.25, 0.25), 1.0);
  EXPECT_EQ(KQTimeSpanInDays(0.25, -1.25), 1.0);
  // A hair before midnight is that midnight, where the fraction would be rounded to a day.
  EXPECT_EQ(KQDateFromDouble(-1e-17), 0.0);
  EXPECT_EQ(KQDateFromDouble(std::nextafter(-1.0, -2.0)), -1.0);
}

TEST(KQDateTime, ClampsWhatIsOutOfRangeAndTellsSo) {
  const struct {
    double date, stored;
    DTSTATUS status;
  } rows[] = {
      {kMin, kMin, DT_VALID},         {kMax, kMax, DT_VALID},
      {kMax + 0.5, kMax, DT_INVALID}, {kMin - 0.25, kMin, DT_INVALID},  // 1 January 100, 06:00
      {1e300, kMax, DT_INVALID},      {kInfinity, kMax, DT_INVALID},
      {-kInfinity, kMin, DT_INVALID}, {std::nan(""), kMax, DT_INVALID},
  };
  for (const auto& row : rows) {
    KQDateTime date;
    EXPECT_EQ(date.SetDateTime(row.date), row.status) << row.date;
    EXPECT_EQ(date.GetDateTime(), row.stored) << row.date;
    EXPECT_EQ(date.GetStatus(), DT_VALID) << row.date;
    EXPECT_EQ(KQDateTime(row.date).GetDateTime(), row.stored) << row.date;
    EXPECT_EQ(date.SetNumericDateTime(KQDoubleFromDate(row.date)), row.status) << row.date;
    EXPECT_EQ(date.GetDateTime(), row.stored) << row.date;
    date.SetDateTime(0);
    EXPECT_EQ(date.AddTime(KQDoubleFromDate(row.date), 0, 0, 0), row.status) << row.date;
    EXPECT_EQ(date.GetDateTime(), row.stored) << row.date;
  }
}

TEST(KQDateTime, ComesApart) {
  const struct {
    double date;
    const char* parts;
  } rows[] = {
      {0.0, "1899-12-30 6 0:0:0 0"},
      {40537.5, "2010-12-25 6 12:0:0 0"},
      {-1.25, "1899-12-29 5 6:0:0 0"},
      {-0.75, "1899-12-30 6 18:0:0 0"},
      {2.0 + 1.5 / 86400 / 1024, "1900-1-1 1 0:0:0 0.00146484"},
      {-2.0 - 1.5 / 86400 / 1024, "1899-12-28 4 0:0:0 0.00146484"},
      {-1e-25, "1899-12-30 6 0:0:0 8.64e-21"},
      {kMin, "100-1-1 5 0:0:0 0"},
      {kMax, "9999-12-31 5 0:0:0 0"},
      {60.0, "1900-2-28 3 0:0:0 0"},
      {61.0, "1900-3-1 4 0:0:0 0"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Text(PartsOf(row.date)), row.parts) << row.date;
  }
}

// A number alone is a count of days, never a year.
static_assert(!std::is_convertible_v<int, Parts> && std::is_constructible_v<Parts, int>);

TEST(KQDateTime, TakesPartsInBraces) {
  Parts parts = {};
  KQDateTime date;
  EXPECT_EQ(date.SetDateTime(parts), DT_INVALID);
  EXPECT_EQ(date.SetDateTime({2010, 12, 25}), DT_VALID);
  EXPECT_EQ(date.GetDateTime(), 40537.0);
  EXPECT_EQ(KQDateTime({2010, 12, 25, 0, 12}).GetDateTime(), 40537.5);
  parts = {2010, 12, 25};
  EXPECT_EQ(KQDateTime(parts).GetDateTime(), 40537.0);
}

TEST(KQDateTime, ImpossiblePartsAreNoOtherDate) {
  const Parts rows[] = {Parts(2011, 2, 29),
                        Parts(2010, 2, 31),
                        Parts(2010, 0, 1),
                        Parts(2010, 13, 1),
                        Parts(2010, 1, 0),
                        Parts(99, 12, 31),
                        Parts(10000, 1, 1),
                        Parts(65636, 1, 1),
                        Parts(-1, 1, 1),
                        Parts(),
                        Parts(2010, 1, 1, 0, 24),
                        Parts(2010, 1, 1, 0, 0, 60),
                        Parts(2010, 1, 1, 0, 0, 0, 60),
                        Parts(2010, 1, 1, 0, 0, 0, 0, 1.0),
                        Parts(2010, 1, 1, 0, 0, 0, 0, std::nan("")),
                        Parts(2010, 1, 1, 0, 0, 0, 0, kInfinity)};
  for (const Parts& parts : rows) {
    KQDateTime date(5.0);
    EXPECT_EQ(date.SetDateTime(parts), DT_INVALID) << Text(parts);
    EXPECT_EQ(date.GetDateTime(), kMax) << Text(parts);
    EXPECT_EQ(KQDateTime(parts).GetStatus(), DT_VALID) << Text(parts);
  }
  // The first day has one moment.
  KQDateTime first;
  EXPECT_EQ(first.SetDateTime(Parts(100, 1, 1, 0, 6)), DT_INVALID);
  EXPECT_EQ(first.GetDateTime(), kMin);
  EXPECT_EQ(first.SetDateTime(Parts(100, 1, 1, 0, 6, 0, 0, 0.5)), DT_INVALID);
  EXPECT_EQ(first.GetDateTime(), kMin);
  EXPECT_EQ(first.SetDateTime(Parts(100, 1, 1)), DT_VALID);
}

TEST(KQDateTime, PartsComeBackFromRandomDates) {
  constexpr unsigned kSeed = 8;
  std::mt19937_64 random(kSeed);
  std::uniform_real_distribution<double> days(kMin, kMax);
  for (int i = 0; i < 200000; ++i) {
    const double numeric = i % 2 == 0 ? days(random) : days(random) / 1e5;
    const KQDateTime date(KQDateFromDouble(numeric));
    Parts parts;
    date.GetDateTime(parts);
    ASSERT_TRUE(parts.Fraction >= 0.0 && parts.Fraction < 1.0) << numeric << " seed " << kSeed;
    // A last place of 2958465 days is 40 microseconds.
    ASSERT_NEAR(KQDateTime(parts).GetNumericDateTime(), numeric, 1e-9) << "seed " << kSeed;
    const double second = std::floor(numeric * 86400.0 + 0.5);
    parts.RoundToNearestSecond();
    ASSERT_EQ(std::round(KQDateTime(parts).GetNumericDateTime() * 86400.0), second)
        << numeric << " seed " << kSeed;
  }
}

TEST(KQDateTime, RoundingCarriesAsFarAsItMust) {
  const struct {
    Parts parts;
    const char* rounded;
  } rows[] = {
      {Parts(2010, 12, 31, 0, 23, 59, 59, 0.6), "2011-1-1 6 0:0:0 0"},
      {Parts(2010, 12, 25, 0, 10, 20, 30, 0.5), "2010-12-25 6 10:20:31 0"},
      {Parts(2010, 12, 25, 0, 10, 20, 30, 0.49), "2010-12-25 6 10:20:30 0"},
      {Parts(1600, 2, 28, 0, 23, 59, 59, 0.99), "1600-2-29 2 0:0:0 0"},
      {Parts(2010, 2, 31), "9999-12-31 5 0:0:0 0"},
      {Parts(9999, 12, 31, 0, 12), "9999-12-31 5 0:0:0 0"},
      {Parts(100, 1, 1, 0, 12), "100-1-1 5 0:0:0 0"},
  };
  for (const auto& row : rows) {
    Parts parts = row.parts;
    parts.RoundToNearestSecond();
    EXPECT_EQ(Text(parts), row.rounded) << Text(row.parts);
  }
}

TEST(KQDateTime, SpansAreAddedAcrossZero) {
  KQDateTime date(-1.25);
  EXPECT_EQ(date.AddTime(1, 6, 0, 0), DT_VALID);
  EXPECT_EQ(date.GetDateTime(), 0.5);
  EXPECT_EQ(date.SubtractTime(0, 24, 6 * 60, 0), DT_VALID);
  EXPECT_EQ(date.GetDateTime(), -1.25);
  EXPECT_EQ(date.GetNumericDateTime(), -0.75);
  EXPECT_EQ(date.SubtractTime(0, 0, 0, 86400), DT_VALID);
  EXPECT_EQ(date.GetDateTime(), -2.25);
}

TEST(KQDateTime, ComparesByTheNumericForm) {
  const KQDateTime morning(-1.25), noon(-1.5);
  EXPECT_TRUE(morning < noon && morning <= noon && noon > morning && noon >= morning);
  EXPECT_FALSE(noon < morning || noon <= morning || morning > noon || morning >= noon);
  EXPECT_TRUE(morning != noon && morning == KQDateTime(-1.25));
  // One moment, two numbers.
  EXPECT_FALSE(KQDateTime(-0.5) == KQDateTime(0.5));
  EXPECT_TRUE(KQDateTime(-0.5) <= KQDateTime(0.5));
}

struct Open : KQDateTime {
  using KQDateTime::ComponentsFromDate;
  using KQDateTime::DateFromComponents;
  using KQDateTime::IsValid;
  using KQDateTime::IsValidDateTime;
  using KQDateTime::m_dt;
  using KQDateTime::m_status;
};

TEST(KQDateTime, MisuseIsTheInternalError) {
  const KQDateTime none, date(1);
  KQDateTime changed;
  Parts parts, negative(2010, 1, 1, 0, 0, 0, 0, -0.1);
  Open broken;
  broken.m_status = DT_INVALID;
  double number = 1.0;
  const struct {
    std::function<void()> call;
    const char* what;
  } rows[] = {
      {[&] { (void)none.GetDateTime(); }, "the number of no date"},
      {[&] { (void)none.GetNumericDateTime(); }, "the numeric form of no date"},
      {[&] { none.GetDateTime(parts); }, "the parts of no date"},
      {[&] { changed.AddTime(1, 0, 0, 0); }, "a day after no date"},
      {[&] { changed.SubtractTime(1, 0, 0, 0); }, "a day before no date"},
      {[&] { (void)(none == date); }, "no date == a date"},
      {[&] { (void)(date == none); }, "a date == no date"},
      {[&] { (void)(date < none); }, "a date < no date"},
      {[&] { (void)(none >= date); }, "no date >= a date"},
      {[&] { KQDateTime copy(broken); }, "a copy of an invalid object"},
      {[&] { changed = broken; }, "an invalid object assigned"},
      {[&] { KQDateTime made(negative); }, "a negative fraction"},
      {[&] { negative.RoundToNearestSecond(); }, "a negative fraction rounded"},
      {[&] { KQDateTime made(static_cast<const char*>(nullptr)); }, "a null text"},
      {[&] { broken.DateFromComponents(parts, nullptr); }, "a null number"},
      {[&] { broken.ComponentsFromDate(kMax + 1, parts); }, "parts beyond the last day"},
      {[&] { broken.ComponentsFromDate(std::nan(""), parts); }, "parts of NaN"},
      {[&] { KQDateFromXLNumber(1, nullptr); }, "a null date"},
      {[&] { KQXLNumberFromDate(1, nullptr); }, "a null serial number"},
  };
  for (const auto& row : rows) ExpectMisuse(row.call, row.what);
  EXPECT_EQ(KQDateTime(none).GetStatus(), DT_NULL);
  EXPECT_EQ(changed.GetStatus(), DT_NULL);
  EXPECT_EQ(broken.DateFromComponents(Parts(2010, 2, 31), &number), DT_INVALID);
  EXPECT_EQ(number, 0.0);
}

TEST(KQDateTime, StatusAndNumberGoTogether) {
  Open date;
  EXPECT_TRUE(date.IsValid());
  date.SetDateTime(1);
  EXPECT_TRUE(date.IsValid());
  date.m_dt = kMax + 1;
  EXPECT_FALSE(date.IsValid());
  date.m_status = static_cast<DTSTATUS>(3);
  EXPECT_FALSE(date.IsValid());
  EXPECT_TRUE(date.IsValidDateTime(kMin) && date.IsValidDateTime(kMax));
  EXPECT_FALSE(date.IsValidDateTime(kMin - 0.1) || date.IsValidDateTime(std::nan("")));
}

TEST(SerialNumbers, HaveADayThatNeverWas) {
  const struct {
    double serial, date;
  } rows[] = {{0, 1}, {1, 2}, {59, 60}, {59.5, 60.5}, {60, 60}, {61, 61}, {-1.5, -1.5}};
  for (const auto& row : rows) {
    double date;
    KQDateFromXLNumber(row.serial, &date);
    EXPECT_EQ(date, row.date) << row.serial;
  }
  const struct {
    double date, serial;
    bool has;
  } back[] = {{0.5, 0.5, false},  {-3, -3, false}, {1, 0, true},        {60, 59, true},
              {60.5, 59.5, true}, {61, 61, true},  {40537, 40537, true}};
  for (const auto& row : back) {
    double serial;
    EXPECT_EQ(KQXLNumberFromDate(row.date, &serial), row.has) << row.date;
    EXPECT_EQ(serial, row.serial) << row.date;
  }
}

TEST(MonthNames, AreEnglishAndCutToTheBuffer) {
  char name[16];
  KQMapMonthToName(9, name, sizeof name);
  EXPECT_STREQ(name, "September");
  KQMapMonthToShortName(12, name, sizeof name);
  EXPECT_STREQ(name, "Dec");
  KQMapMonthToName(1, name, 4);
  EXPECT_STREQ(name, "Jan");
  for (const unsigned month : {0u, 13u}) {
    ExpectMisuse([&] { KQMapMonthToName(month, name, sizeof name); }, "no month");
    ExpectMisuse([&] { KQMapMonthToShortName(month, name, sizeof name); }, "no month");
  }
}

}  // namespace
}  // namespace vlm

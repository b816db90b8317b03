#include <velum/dates/detail/Calendar.h>

#include <velum/dates/DateTime.h>
#include <velum/dates/VariantTime.h>

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <limits>

namespace vlm::detail {
namespace {

namespace chrono = std::chrono;

constexpr chrono::sys_days kDay0 = chrono::year(1899) / 12 / 30;

TEST(Calendar, EveryDayIsThatOfTheStandardLibrary) {
  for (int day = kFirstDay; day <= kLastDay; ++day) {
    const chrono::sys_days expected = kDay0 + chrono::days(day);
    const chrono::year_month_day ymd = expected;
    SYSTEMTIME time{};
    ASSERT_TRUE(VariantTimeToSystemTime(day, &time));
    ASSERT_TRUE(time.wYear == static_cast<int>(ymd.year()) &&
                time.wMonth == static_cast<unsigned>(ymd.month()) &&
                time.wDay == static_cast<unsigned>(ymd.day()))
        << day;
    ASSERT_EQ(time.wDayOfWeek, chrono::weekday(expected).c_encoding()) << day;
    double date;
    ASSERT_TRUE(SystemTimeToVariantTime(&time, &date));
    ASSERT_EQ(date, day);
    KQDateTime::_COMPONENTS parts;
    KQDateTime(day).GetDateTime(parts);
    ASSERT_TRUE(parts.Year == time.wYear && parts.Month == time.wMonth && parts.Day == time.wDay &&
                parts.DayOfWeek == time.wDayOfWeek)
        << day;
    ASSERT_EQ(KQDateTime(parts).GetDateTime(), day);
  }
}

TEST(Calendar, EverySecondOfADayComesBack) {
  for (const int day : {kFirstDay, -1, 0, 1, 40537, kLastDay}) {
    SYSTEMTIME time{};
    ASSERT_TRUE(VariantTimeToSystemTime(day, &time));
    for (int second = 0; second < kSecondsOfDay; ++second) {
      const chrono::hh_mm_ss clock{chrono::seconds(second)};
      time.wHour = static_cast<std::uint16_t>(clock.hours().count());
      time.wMinute = static_cast<std::uint16_t>(clock.minutes().count());
      time.wSecond = static_cast<std::uint16_t>(clock.seconds().count());
      double date;
      SYSTEMTIME again{};
      ASSERT_TRUE(SystemTimeToVariantTime(&time, &date));
      ASSERT_TRUE(VariantTimeToSystemTime(date, &again));
      ASSERT_TRUE(again.wDay == time.wDay && again.wHour == time.wHour &&
                  again.wMinute == time.wMinute && again.wSecond == time.wSecond)
          << day << ' ' << second;
      if (day == kFirstDay || day == kLastDay) continue;
      KQDateTime::_COMPONENTS parts;
      KQDateTime(date).GetDateTime(parts);
      parts.RoundToNearestSecond();
      ASSERT_EQ(KQDateTime(parts).GetDateTime(), date) << day << ' ' << second;
    }
  }
}

TEST(Calendar, TakesThoseDatesThatThereAre) {
  for (int year = 0; year <= 10001; ++year) {
    for (unsigned month = 0; month <= 13; ++month) {
      for (const unsigned day : {0u, 1u, 28u, 29u, 30u, 31u, 32u}) {
        const bool isDate = (chrono::year(year) / chrono::month(month) / chrono::day(day)).ok();
        ASSERT_EQ(IsCivil(static_cast<unsigned>(year), month, day),
                  isDate && year >= 100 && year <= 9999)
            << year << '-' << month << '-' << day;
      }
    }
  }
}

TEST(Calendar, RefusesTimesThatTheClockDoesNotHaveAndNumbersOutOfRange) {
  const SYSTEMTIME wrong[] = {{2010, 12, 0, 25, 24, 0, 0, 0},
                              {2010, 12, 0, 25, 0, 60, 0, 0},
                              {2010, 12, 0, 25, 0, 0, 60, 0}};
  for (const SYSTEMTIME& time : wrong) {
    double date = 7.0;
    EXPECT_FALSE(SystemTimeToVariantTime(&time, &date));
    EXPECT_EQ(date, 7.0);
  }
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  for (const double date : {kLastDay + 1.0, std::nextafter(kLastDay + 1.0, 0.0), kFirstDay - 1.0,
                            kInfinity, -kInfinity, std::nan("")}) {
    SYSTEMTIME time{};
    EXPECT_FALSE(VariantTimeToSystemTime(date, &time)) << date;
  }
}

}  // namespace
}  // namespace vlm::detail

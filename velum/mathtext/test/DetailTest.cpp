// Tests of what stands in detail/.

#include <velum/mathtext/detail/DateTimeText.h>
#include <velum/mathtext/detail/RealText.h>
#include <velum/platform/detail/LocalTime.h>
#include <gtest/gtest.h>
#include <cmath>
#include <ctime>
#include <string>

namespace vlm {
namespace {

std::tm SomeMorning() {
  std::tm time{};  // Tuesday, 7 April 2026, 07:05:09
  time.tm_year = 126;
  time.tm_mon = 3;
  time.tm_mday = 7;
  time.tm_wday = 2;
  time.tm_yday = 96;
  time.tm_hour = 7;
  time.tm_min = 5;
  time.tm_sec = 9;
  return time;
}

TEST(FormatDateTimeText, KnowsTheFlagThatDropsZeros) {
  const char* const rows[][2] = {
      {"%d %#d %m %#m", "07 7 04 4"},
      {"%H %#H %#I:%M:%S %p", "07 7 7:05:09 AM"},
      {"%#a %#A %#b", "Tue Tuesday Apr"},  // elsewhere the flag means nothing
      {"%Y %y %#j", "2026 26 97"},
      {"100%", "100%"},
      {"%Q %#Q %-d %5d", "%Q %#Q %-d %5d"},  // no directives of the language
      {"%%d", "%d"},
      {"", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(detail::FormatDateTimeText(row[0], SomeMorning()), row[1]);
}

TEST(FormatDateTimeText, HoldsAtMost127Bytes) {
  const std::string fits(127, '-');
  EXPECT_EQ(detail::FormatDateTimeText(fits.c_str(), SomeMorning()), fits);
  EXPECT_EQ(detail::FormatDateTimeText((fits + "-").c_str(), SomeMorning()), "");
}

TEST(PresentLocalTime, IsThePresent) {
  const std::time_t before = std::time(nullptr);
  std::tm now = platform::PresentLocalTime();
  const std::time_t then = std::mktime(&now);
  EXPECT_LE(before, then);
  EXPECT_LE(then, std::time(nullptr));
}

TEST(ReadReal, GivesTheNearestDoubleAndKnowsItsLimits) {
  const std::string zeros(400, '0');
  struct Row {
    std::string text;
    bool fits;
    double value;
  };
  const Row rows[] = {
      {"+.5", true, 0.5},
      {"-5.", true, -5.0},
      {"1.7976931348623157e308", true, 1.7976931348623157e308},
      {"1.8e308", false, 0.0},
      {"1" + zeros, false, 0.0},
      {"1" + zeros + "e-400", true, 1.0},
      {"." + zeros + "1e401", true, 1.0},
      {"." + zeros + "1", true, 0.0},
      {"-1e-99999999999999999999", true, -0.0},
      {"1e99999999999999999999", false, 0.0},
      {"0e99999999999999999999", true, 0.0},
  };
  for (const Row& row : rows) {
    double value = -1.0;
    ASSERT_EQ(detail::ReadReal(row.text.data(), row.text.data() + row.text.size(), value), row.fits)
        << row.text;
    if (!row.fits) continue;
    EXPECT_EQ(value, row.value) << row.text;
    EXPECT_EQ(std::signbit(value), std::signbit(row.value)) << row.text;
  }
}

}  // namespace
}  // namespace vlm

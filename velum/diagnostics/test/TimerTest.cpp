#include <velum/diagnostics/Timer.h>

#include <velum/platform/detail/SteadyTicks.h>

#include <gtest/gtest.h>
#include <time.h>

#include <cstdint>
#include <limits>

namespace vlm {
namespace {

/// The monotonic clock, in nanoseconds.
std::int64_t Clock() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

TEST(Timer, TicksLieBetweenTwoReadingsOfTheMonotonicClock) {
  CTimer timer;
  ASSERT_EQ(timer.GetFrequency(), 1'000'000'000);
  const std::int64_t before = Clock();
  timer.Start();
  const std::int64_t started = Clock();
  const std::int64_t stopping = Clock();
  const std::int64_t ticks = timer.Stop();
  const double milliseconds = timer.Elapsed();
  const std::int64_t stopped = Clock();
  EXPECT_GE(ticks, stopping - started);
  EXPECT_LE(ticks, stopped - before);
  // A double holds ticks of this size, so that the only rounding is that of the quotient.
  EXPECT_GE(milliseconds, static_cast<double>(ticks) * 1e-6 * (1 - 1e-15));
  EXPECT_LE(milliseconds, static_cast<double>(stopped - before) * 1e-6 * (1 + 1e-15));
  EXPECT_GE(timer.Stop(), ticks) << "it goes on";
}

TEST(Timer, MeasuresFromTickZeroUntilItIsStarted) {
  const std::int64_t before = Clock();
  const std::int64_t ticks = CTimer().Stop();
  EXPECT_GE(ticks, before);
  EXPECT_LE(ticks, Clock());
}

TEST(Timer, TimeFromATickInTheFutureIsNegative) {
  constexpr std::int64_t kHour = 3'600'000'000'000;
  const CTimer timer;
  EXPECT_LT(timer.Elapsed(Clock() + kHour), 0);
  EXPECT_GT(timer.Elapsed(Clock() - kHour), 3'599'999.9);
}

TEST(Timer, TicksSinceAStartInTheFutureAreNone) {
  constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
  const struct {
    std::int64_t from;
    std::int64_t to;
    std::int64_t between;
    std::int64_t since;
  } rows[] = {{5, 7, 2, 2},          {7, 7, 0, 0},
              {7, 5, -2, 0},         {0, kMost, kMost, kMost},
              {kMost, 0, -kMost, 0}, {kLeast, 1, kLeast + 1, 0}};
  for (const auto& row : rows) {
    EXPECT_EQ(platform::TicksBetween(row.from, row.to), row.between) << row.from;
    EXPECT_EQ(platform::TicksSince(row.from, row.to), row.since) << row.from;
  }
}

}  // namespace
}  // namespace vlm

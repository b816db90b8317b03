#include <velum/diagnostics/Timer.h>

#include <gtest/gtest.h>
#include <time.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

namespace vlm {
namespace {

/// The monotonic clock, in nanoseconds.
std::int64_t Clock() {
  timespec now{};
  clock_gettime(CLOCK_MONOTONIC, &now);
  return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

/// A timer that was started at a tick.
CTimer StartedAt(std::int64_t tick) {
  static_assert(std::is_trivially_copyable_v<CTimer> && std::is_standard_layout_v<CTimer>);
  struct Fields {
    bool highResolution;
    std::int64_t start;
    std::int64_t frequency;
  } fields;
  static_assert(sizeof(fields) == sizeof(CTimer));
  CTimer timer;
  std::memcpy(&fields, &timer, sizeof(fields));
  fields.start = tick;
  std::memcpy(static_cast<void*>(&timer), &fields, sizeof(fields));
  return timer;
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

TEST(Timer, AStartInTheFutureGivesNoTicksAndNegativeTime) {
  constexpr std::int64_t kHour = 3'600'000'000'000;
  const CTimer timer = StartedAt(Clock() + kHour);
  EXPECT_EQ(timer.Stop(), 0);
  EXPECT_LT(timer.Elapsed(), 0);
  EXPECT_LT(timer.Elapsed(Clock() + kHour), 0);
  EXPECT_GT(timer.Elapsed(Clock() - kHour), 3'599'999.9);
  EXPECT_GE(StartedAt(std::numeric_limits<std::int64_t>::min()).Stop(), 0) << "far apart";
}

}  // namespace
}  // namespace vlm

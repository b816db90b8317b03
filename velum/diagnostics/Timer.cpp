#include <velum/diagnostics/Timer.h>

#include <velum/platform/detail/SteadyTicks.h>

namespace vlm {

namespace {

constexpr std::int64_t kFine = 1'000'000'000;
constexpr std::int64_t kCoarse = 1000;

}  // namespace

CTimer::CTimer() noexcept
    : highResolution_(platform::HasFineClock()), frequency_(highResolution_ ? kFine : kCoarse) {}

std::int64_t CTimer::GetTicks() const noexcept {
  const std::int64_t now = platform::SteadyNanoseconds();
  return highResolution_ ? now : now / (kFine / kCoarse);
}

std::int64_t CTimer::Stop() const noexcept { return platform::TicksSince(start_, GetTicks()); }

double CTimer::Elapsed(std::int64_t start) const noexcept {
  const auto ticks = static_cast<double>(platform::TicksBetween(start, GetTicks()));
  return ticks * 1000.0 / static_cast<double>(frequency_);
}

}  // namespace vlm

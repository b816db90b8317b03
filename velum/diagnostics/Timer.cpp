#include <velum/diagnostics/Timer.h>

#include <velum/platform/detail/SteadyTicks.h>

namespace vlm {

namespace {

constexpr std::int64_t kFine = 1'000'000'000;
constexpr std::int64_t kCoarse = 1000;

/// The ticks between two, without overflow where they lie far apart.
std::int64_t Between(std::int64_t from, std::int64_t to) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(to) -
                                   static_cast<std::uint64_t>(from));
}

}  // namespace

CTimer::CTimer() noexcept
    : highResolution_(platform::HasFineClock()), frequency_(highResolution_ ? kFine : kCoarse) {}

std::int64_t CTimer::GetTicks() const noexcept {
  const std::int64_t now = platform::SteadyNanoseconds();
  return highResolution_ ? now : now / (kFine / kCoarse);
}

std::int64_t CTimer::Stop() const noexcept {
  const std::int64_t ticks = Between(start_, GetTicks());
  return ticks < 0 ? 0 : ticks;
}

double CTimer::Elapsed(std::int64_t start) const noexcept {
  return static_cast<double>(Between(start, GetTicks())) * 1000.0 / static_cast<double>(frequency_);
}

}  // namespace vlm

#pragma once

/// \file
/// The system's steady clock, read in the time of one call.
///
///     const std::int64_t start = vlm::platform::SteadyNanoseconds();

#include <time.h>

#include <cstdint>

namespace vlm::platform {

/// The nanoseconds since an instant that stays the same while the machine runs.
[[nodiscard]] inline std::int64_t SteadyNanoseconds() noexcept {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
}

/// The ticks from one reading of a clock to another, negative if that came before it. Readings that
/// lie farther apart than there are numbers wrap around.
[[nodiscard]] constexpr std::int64_t TicksBetween(std::int64_t from, std::int64_t to) noexcept {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(to) -
                                   static_cast<std::uint64_t>(from));
}

/// The same, but 0 in place of what is negative.
[[nodiscard]] constexpr std::int64_t TicksSince(std::int64_t from, std::int64_t to) noexcept {
  const std::int64_t ticks = TicksBetween(from, to);
  return ticks < 0 ? 0 : ticks;
}

/// True if the clock tells microseconds apart.
[[nodiscard]] bool HasFineClock() noexcept;

}  // namespace vlm::platform

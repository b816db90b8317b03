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

/// True if the clock tells microseconds apart.
[[nodiscard]] bool HasFineClock() noexcept;

}  // namespace vlm::platform

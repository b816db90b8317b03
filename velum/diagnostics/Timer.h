#pragma once

/// \file
/// Measures how long something takes.
///
///     vlm::CTimer timer;
///     timer.Start();
///     for (int i = 0; i < 1000; ++i) vlm::CTimer().Start();
///     printf("%.3f ms\n", timer.Elapsed());

#include <velum/core/Api.h>

#include <cstdint>

namespace vlm {

/// A stop watch: the time between two readings of the system's steady clock, which is never set
/// back and does not run while the machine sleeps.
///
/// A plain value. Times are in ticks, of which `GetFrequency` make a second, or in milliseconds.
///
/// Threads: a timer may be read by several threads while none starts it; nothing is locked.
class VELUM_API CTimer {
 public:
  /// A timer that measures from tick 0, the start of the machine, until it is started.
  CTimer() noexcept;

  /// The ticks of a second: 1,000,000,000, or 1000 where the system has no fine clock.
  [[nodiscard]] std::int64_t GetFrequency() const noexcept { return frequency_; }
  /// The present tick.
  ///
  /// *Cost*: that of reading the clock, some 20 ns.
  [[nodiscard]] std::int64_t GetTicks() const noexcept;
  /// The ticks since the start, 0 if that lies in the future. The timer goes on.
  [[nodiscard]] std::int64_t Stop() const noexcept;
  /// The milliseconds since the start.
  [[nodiscard]] double Elapsed() const noexcept { return Elapsed(start_); }
  /// The milliseconds since tick `start`, negative if that lies in the future.
  [[nodiscard]] double Elapsed(std::int64_t start) const noexcept;

  /// Measures from now on.
  void Start() noexcept { start_ = GetTicks(); }

 private:
  bool highResolution_;
  std::int64_t start_ = 0;
  std::int64_t frequency_;
};

}  // namespace vlm

#include <velum/platform/detail/SteadyTicks.h>

namespace vlm::platform {

bool HasFineClock() noexcept {
  timespec step{};
  return ::clock_getres(CLOCK_MONOTONIC, &step) == 0 && step.tv_sec == 0 && step.tv_nsec <= 1000;
}

}  // namespace vlm::platform

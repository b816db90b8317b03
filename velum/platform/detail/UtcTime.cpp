#include <velum/platform/detail/UtcTime.h>

#include <time.h>

namespace vlm::platform {

void PutUtcTime(SafeText& out) noexcept {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  PutUtcTime(out, now.tv_sec);
}

}  // namespace vlm::platform

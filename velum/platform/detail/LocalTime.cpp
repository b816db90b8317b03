#include <velum/platform/detail/LocalTime.h>

namespace vlm::platform {

std::tm PresentLocalTime() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  if (localtime_r(&now, &local) == nullptr) {
    local = std::tm{};
    local.tm_year = 70;
    local.tm_mday = 1;
    local.tm_wday = 4;
  }
  return local;
}

}  // namespace vlm::platform

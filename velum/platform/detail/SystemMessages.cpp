#include <velum/platform/detail/SystemMessages.h>

#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>

namespace vlm::platform {

const char* SystemErrorText(unsigned long number) noexcept {
  if (number > INT_MAX) return nullptr;
  const auto error = static_cast<int>(number);
  return ::strerrordesc_np(error == kFileExists ? EEXIST : error);
}

unsigned long LastSystemError() noexcept { return static_cast<unsigned long>(errno); }

unsigned long CurrentThreadNumber() noexcept { return static_cast<unsigned long>(::gettid()); }

}  // namespace vlm::platform

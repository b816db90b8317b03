#include <velum/platform/detail/SystemMessages.h>

#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstring>

namespace vlm::platform {

namespace {

// What callers report for a file that is there already, whatever the system's own number for it.
constexpr unsigned long kFileExists = 80;

}  // namespace

const char* SystemErrorText(unsigned long number) noexcept {
  if (number > INT_MAX) return nullptr;
  return ::strerrordesc_np(number == kFileExists ? EEXIST : static_cast<int>(number));
}

unsigned long LastSystemError() noexcept { return static_cast<unsigned long>(errno); }

unsigned long CurrentThreadNumber() noexcept { return static_cast<unsigned long>(::gettid()); }

}  // namespace vlm::platform

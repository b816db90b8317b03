#include <velum/core/SystemError.h>

#include <velum/core/StringFormat.h>
#include <velum/platform/detail/SystemMessages.h>

namespace vlm {

GString FormatSystemErrorMsg(unsigned long errorNumber) {
  const char* const text = platform::SystemErrorText(errorNumber);
  if (!text) return ToString("error %d", static_cast<int>(errorNumber));
  return GString(text).Trim();
}

GString FormatSystemErrorMsg() { return FormatSystemErrorMsg(platform::LastSystemError()); }

}  // namespace vlm

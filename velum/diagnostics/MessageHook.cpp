#include <velum/diagnostics/MessageHook.h>

#include <velum/core/Exception.h>
#include <velum/core/StringFormat.h>
#include <velum/diagnostics/detail/Finally.h>

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <string>

namespace vlm {
namespace {

void TellOnStandardError(const GString& title, const GString& text) {
  const std::string line = title.String() + ": " + text.String() + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

constinit std::atomic<MessageHook> theHook{nullptr};

}  // namespace

MessageHook SetMessageHook(MessageHook hook) noexcept { return theHook.exchange(hook); }

void dprintf(const char* format, ...) {
  if (!format) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
  std::string text;
  va_list arguments;
  va_start(arguments, format);
  const detail::Finally end([&] { va_end(arguments); });
  if (!FormatStringVA(text, format, arguments)) text = format;
  const MessageHook hook = theHook;
  (hook ? hook : &TellOnStandardError)("Error", text);
}

}  // namespace vlm

#include <velum/mathtext/detail/DateTimeText.h>

#include <cstddef>
#include <cstring>

namespace vlm::detail {
namespace {

constexpr std::size_t kMaxBytes = 128;  // the terminating zero included

bool IsOneOf(char c, const char* set) { return c != '\0' && std::strchr(set, c) != nullptr; }

// The same format in the language of this system's strftime: its flag for no leading zeros is '-',
// its '#' swaps the case of letters, and what it makes of an unknown directive is nobody's
// business.
std::string ToSystemFormat(const char* format) {
  std::string result;
  while (*format != '\0') {
    if (*format != '%') {
      result += *format++;
      continue;
    }
    const bool dropsZeros = format[1] == '#';
    const char directive = format[dropsZeros ? 2 : 1];
    if (!IsOneOf(directive, "aAbBcCdDeFgGhHIjmMnprRStTuUVwWxXyYzZ%")) {
      result += "%%";
      ++format;
      continue;
    }
    result += '%';
    if (dropsZeros && IsOneOf(directive, "dHIjmMSUwWyY")) result += '-';
    result += directive;
    format += dropsZeros ? 3 : 2;
  }
  return result;
}

}  // namespace

std::string FormatDateTimeText(const char* format, const std::tm& time) {
  char text[kMaxBytes];
  const std::size_t length =
      std::strftime(text, sizeof text, ToSystemFormat(format).c_str(), &time);
  return std::string(text, length);
}

}  // namespace vlm::detail

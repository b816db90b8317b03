#include <velum/files/detail/SettingText.h>

#include <velum/platform/detail/PlainLocale.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <limits>
#include <string>
#include <system_error>
#include <type_traits>

namespace vlm::detail {

namespace {

template <class Integer>
bool ScanInteger(const GString& text, Integer& value) {
  using Limits = std::numeric_limits<Integer>;
  const char* at = text.c_str();
  while (*at == ' ' || (*at >= '\t' && *at <= '\r')) ++at;
  const bool negative = *at == '-';
  if (negative || *at == '+') ++at;
  if (*at < '0' || *at > '9') return false;
  const bool counts = negative && std::is_signed_v<Integer>;
  const std::uint64_t limit = static_cast<std::uint64_t>(Limits::max()) + (counts ? 1 : 0);
  std::uint64_t magnitude = 0;
  bool isTooLarge = false;
  for (; *at >= '0' && *at <= '9'; ++at) {
    const auto digit = static_cast<std::uint64_t>(*at - '0');
    isTooLarge = isTooLarge || magnitude > (limit - digit) / 10;
    if (!isTooLarge) magnitude = magnitude * 10 + digit;
  }
  if (isTooLarge) {
    value = counts ? Limits::min() : Limits::max();
  } else {
    value = static_cast<Integer>(negative ? 0 - magnitude : magnitude);
  }
  return true;
}

/// Reads digits with a point and an exponent; false for all other forms and for what is too large
/// or too small, which may be numbers all the same.
bool ScanQuickly(const char* text, double& value) {
#if defined(__cpp_lib_to_chars)
  const char* const digits = text + (*text == '-' ? 1 : 0);
  const bool isPlain = *digits >= '0' && *digits <= '9' && (digits[1] | 0x20) != 'x';
  return isPlain && std::from_chars(text, text + std::strlen(text), value).ec == std::errc();
#else
  static_cast<void>(text);
  static_cast<void>(value);
  return false;
#endif
}

/// Reads every form that the runtime's reader knows.
bool ScanWithRuntime(const char* text, double& value) {
  const platform::PlainLocale plain;
  return std::sscanf(text, "%lf", &value) == 1;
}

constexpr char CapitalLetter(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
}

}  // namespace

bool ScanSetting(const GString& text, int& value) { return ScanInteger(text, value); }
bool ScanSetting(const GString& text, unsigned int& value) { return ScanInteger(text, value); }
bool ScanSetting(const GString& text, std::int64_t& value) { return ScanInteger(text, value); }

bool ScanSetting(const GString& text, unsigned long& value) {
  std::uint32_t narrow = 0;
  if (!ScanInteger(text, narrow)) return false;
  value = narrow;
  return true;
}

bool ScanSetting(const GString& text, double& value) {
  return ScanQuickly(text.c_str(), value) || ScanWithRuntime(text.c_str(), value);
}

bool ScanSetting(const GString& text, bool& value) {
  int number = 0;
  if (!ScanInteger(text, number)) return false;
  value = number != 0;
  return true;
}

GString SettingText(int value) { return std::to_string(value); }
GString SettingText(unsigned int value) { return std::to_string(value); }
GString SettingText(std::int64_t value) { return std::to_string(value); }
GString SettingText(bool value) { return value ? "1" : "0"; }

GString SettingText(double value, int digits, bool small) {
  char text[64];
  // The sign of what is no number means nothing.
  if (std::isnan(value)) value = std::numeric_limits<double>::quiet_NaN();
#if defined(__cpp_lib_to_chars)
  char* const end =
      std::to_chars(text, std::end(text) - 1, value, std::chars_format::general, digits).ptr;
  *end = '\0';
  if (!small) std::transform(text, end, text, CapitalLetter);
#else
  const platform::PlainLocale plain;
  std::snprintf(text, std::size(text), small ? "%.*g" : "%.*G", digits, value);
#endif
  return text;
}

bool ReadPlainDouble(const GString& text, double& value) {
  const platform::PlainLocale plain;
  return text.ToDouble(value);
}

}  // namespace vlm::detail

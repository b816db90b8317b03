#include <velum/core/StringConvert.h>

#include <velum/core/StringText.h>
#include <velum/platform/detail/Ascii.h>
#include <velum/platform/detail/RuntimeLocale.h>
#include <velum/platform/detail/Utf8.h>

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <iterator>
#include <limits>
#include <locale>
#include <sstream>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace vlm {

namespace {

using platform::IsDigit;

constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

/// Reads digits with or without a point, few enough that the result is rounded once: a whole number
/// that a `double` holds, divided by a power of ten that it holds (Clinger 1990).
///
/// False for any other text, which may be a number all the same.
bool ReadShortNumber(const char* at, const char* end, double& value) {
  constexpr std::ptrdiff_t kMostCharacters = 16;
  constexpr std::uint64_t kLargestExact = std::uint64_t{1} << 53;
  const bool negative = *at == '-';
  if (negative) ++at;
  if (end - at > kMostCharacters || !IsDigit(*at)) return false;
  std::uint64_t digits = 0;
  std::size_t decimals = 0;
  for (; IsDigit(*at); ++at) digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
  if (*at == '.') {
    const char* const first = ++at;
    for (; IsDigit(*at); ++at) digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
    decimals = static_cast<std::size_t>(at - first);
  }
  if (at != end || digits > kLargestExact) return false;
  const double number = static_cast<double>(digits) / kPowersOfTen[decimals];
  value = negative ? -number : number;
  return true;
}

/// Reads a number as programs write it, where the decimal point is "."; `value` stays where it
/// fails, and then the text may be a number all the same.
bool ReadQuickly(const std::string& text, double& value) {
  const char* const begin = text.c_str();
  const char* const end = begin + text.size();
  // Keeps out what the standard library takes for infinity and not-a-number.
  const char first = begin[*begin == '-' ? 1 : 0];
  if (!IsDigit(first) && first != '.') return false;
  const char* const point = platform::DecimalPoint();
  if (point[0] != '.' || point[1] != '\0') return false;
  if (ReadShortNumber(begin, end, value)) return true;
#if defined(__cpp_lib_to_chars)
  double number = 0;
  const auto result = std::from_chars(begin, end, number);
  if (result.ptr != end || result.ec != std::errc() || std::isinf(number)) return false;
  value = number;
  return true;
#else
  return false;
#endif
}

/// Reads all of `text` with the runtime's reader, which follows the locale and tells a value too
/// large from one too small; `value` stays where it fails.
bool ReadWithRuntime(const std::string& text, double& value) {
  const std::string_view point = platform::DecimalPoint();
  const std::size_t sign = text[0] == '-' || text[0] == '+' ? 1 : 0;
  // Keeps out the words for infinity and not-a-number, white space and hexadecimal digits.
  if (!IsDigit(text[sign]) && text.compare(sign, point.size(), point) != 0) return false;
  if (text.find_first_of("xX") != std::string::npos) return false;
  char* end = nullptr;
  const double number = std::strtod(text.c_str(), &end);
  if (end != text.c_str() + text.size() || std::isinf(number)) return false;
  value = number;
  return true;
}

/// Reads what `ReadQuickly` has left.
bool ReadCarefully(const std::string& text, double& value) {
  value = 0;
  if (text.empty()) return false;
  std::string trimmed = text;
  Trim(trimmed);
  return trimmed.empty() || ReadWithRuntime(trimmed, value);
}

/// Reads a minus sign, where the type has one, and digits.
template <class Integer, class Char>
bool ReadInteger(const std::basic_string<Char>& text, Integer& value) {
  value = 0;
  if (text.empty()) return false;
  const bool negative = std::is_signed_v<Integer> && text[0] == Char('-');
  const std::uint64_t limit =
      static_cast<std::uint64_t>(std::numeric_limits<Integer>::max()) + (negative ? 1 : 0);
  const std::size_t first = negative ? 1 : 0;
  std::uint64_t magnitude = 0;
  for (std::size_t i = first; i < text.size(); ++i) {
    if (text[i] < Char('0') || text[i] > Char('9')) return false;
    const auto digit = static_cast<std::uint64_t>(text[i] - Char('0'));
    if (magnitude > (limit - digit) / 10) return false;
    magnitude = magnitude * 10 + digit;
  }
  // The limit itself is only believed in its own digits.
  if (magnitude == limit && text[first] == Char('0')) return false;
  value = static_cast<Integer>(negative ? 0 - magnitude : magnitude);
  return true;
}

template <class Char>
bool ReadTruth(const std::basic_string<Char>& text, bool& value) {
  value = false;
  constexpr std::size_t kLongest = 5;
  if (text.size() > kLongest) return false;
  const std::basic_string<Char> folded = ToLower(text);
  const auto is = [&folded](std::string_view word) {
    return folded == std::basic_string<Char>(word.begin(), word.end());
  };
  value = is("t") || is("1") || is("true");
  return value || is("f") || is("0") || is("false");
}

std::string WriteWithStream(double value, unsigned int decimals) {
  std::ostringstream stream;
  stream.setf(std::ios_base::fixed, std::ios_base::floatfield);
  stream.precision(static_cast<std::streamsize>(decimals));
  stream << value;
  return stream.str();
}

}  // namespace

bool StringToBool(const std::string& text, bool& value) { return ReadTruth(text, value); }
bool StringToBool(const std::wstring& text, bool& value) { return ReadTruth(text, value); }

bool StringToDouble(const std::string& text, double& value) {
  return ReadQuickly(text, value) || ReadCarefully(text, value);
}

bool StringToDouble(const std::wstring& text, double& value) {
  value = 0;
  if (text.empty()) return false;
  std::wstring trimmed = text;
  Trim(trimmed);
  const std::string narrow = platform::WideToUtf8(trimmed);
  return narrow.empty() || ReadQuickly(narrow, value) || ReadWithRuntime(narrow, value);
}

bool StringToInt(const std::string& text, int& value) { return ReadInteger(text, value); }
bool StringToInt(const std::wstring& text, int& value) { return ReadInteger(text, value); }

bool StringToInt64(const std::string& text, std::int64_t& value) {
  return ReadInteger(text, value);
}

bool StringToInt64(const std::wstring& text, std::int64_t& value) {
  return ReadInteger(text, value);
}

bool StringToUnsigned(const std::string& text, unsigned int& value) {
  return ReadInteger(text, value);
}

bool StringToUnsigned(const std::wstring& text, unsigned int& value) {
  return ReadInteger(text, value);
}

std::string BoolToString(bool value) { return value ? "True" : "False"; }
std::wstring BoolToStringW(bool value) { return value ? L"True" : L"False"; }

std::string DoubleToString(double value, unsigned int decimals) {
#if defined(__cpp_lib_to_chars)
  constexpr unsigned int kMostDecimals = 100;
  if (decimals <= kMostDecimals && std::locale() == std::locale::classic()) {
    // A sign, the digits of the largest number, the point and the decimals.
    char text[1 + std::numeric_limits<double>::max_exponent10 + 1 + 1 + kMostDecimals];
    const auto written = std::to_chars(text, std::end(text), value, std::chars_format::fixed,
                                       static_cast<int>(decimals));
    return {text, written.ptr};
  }
#endif
  return WriteWithStream(value, decimals);
}

std::wstring DoubleToStringW(double value, unsigned int decimals) {
  std::wstring wide;
  for (const char c : DoubleToString(value, decimals)) {
    wide += static_cast<wchar_t>(static_cast<unsigned char>(c));
  }
  return wide;
}

}  // namespace vlm

#include <examples/describe/Values.h>

#include <velum/core/GString.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <system_error>

namespace vlm::describe {
namespace {

bool IsMissing(std::string_view text) {
  constexpr std::string_view kMissing[] = {"", "-", "na", "n/a", "nan", "null"};
  const auto isSame = [](char c, char small) {
    return (c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c) == small;
  };
  return std::any_of(std::begin(kMissing), std::end(kMissing), [&](std::string_view word) {
    return std::equal(text.begin(), text.end(), word.begin(), word.end(), isSame);
  });
}

// The bytes that follow the first one of a character.
bool Continues(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

ValueKind ReadValue(std::string_view text, double& number) {
  text = Trimmed(text);
  if (IsMissing(text)) return ValueKind::Missing;
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (end != text.data() + text.size() || error == std::errc::invalid_argument) {
    return ValueKind::Text;
  }
  // What is out of range may be too small as well as too large; this program's locale has the
  // point.
  if (error == std::errc::result_out_of_range) {
    number = std::strtod(std::string(text).c_str(), nullptr);
  }
  return std::isfinite(number) ? ValueKind::Number : ValueKind::Text;
}

std::string Shown(std::string_view text, std::size_t length) {
  bool isCut = text.size() > length;
  if (isCut) {
    while (length > 0 && Continues(text[length])) --length;
    text = text.substr(0, length);
  }
  GString shown;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '\n') {
      shown += "\\n";
    } else if (c == '\r') {
      shown += "\\r";
    } else if (c == '\t') {
      shown += "\\t";
    } else if (byte < 0x20 || byte == 0x7F) {
      shown.AppendFormatString("\\x%02X", static_cast<unsigned int>(byte));
    } else {
      shown += c;
    }
  }
  return isCut ? shown + "..." : shown;
}

}  // namespace vlm::describe

#include <examples/describe/Values.h>

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

}  // namespace vlm::describe

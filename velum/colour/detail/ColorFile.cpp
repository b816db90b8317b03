#include <velum/colour/detail/ColorFile.h>

#include <velum/colour/Color4b.h>
#include <velum/core/Exception.h>
#include <velum/diagnostics/LocateFile.h>
#include <velum/files/ConfigFile.h>
#include <velum/platform/detail/FileSystem.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace vlm::detail {

namespace {

/// Takes the low byte of the decimal integer that a text begins with, behind white space and a
/// sign; false if there is none, and nothing behind it is of use.
bool TakeByte(std::string_view& text, unsigned char& value) {
  constexpr unsigned kTen = 10;
  constexpr std::string_view kDigits = "0123456789";
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) text.remove_prefix(1);
  const std::string_view digits = text.substr(0, text.find_first_not_of(kDigits));
  if (digits.empty()) return false;
  unsigned number = 0;  // Of many digits, too, the low byte is right.
  for (const char digit : digits) number = number * kTen + static_cast<unsigned>(digit - '0');
  value = static_cast<unsigned char>(isNegative ? 0 - number : number);
  text.remove_prefix(digits.size());
  return true;
}

unsigned long ColorOf(std::string_view text) {
  Color4b color(0, 0, 0, 0);
  TakeByte(text, color.R) && TakeByte(text, color.G) && TakeByte(text, color.B);
  return color.GetCOLORREF();
}

}  // namespace

std::vector<CColorTableEntry> ReadColorFile(const GString& name) {
  const GString path = LocateFile(name);
  if (!platform::IsRegularFile(path.c_str()) || !platform::MayRead(path.c_str())) {
    ThrowErrorImpl("ColorTable", __LINE__, ERR_FIND, name.c_str());
  }
  std::vector<GString> lines;
  CConfigFile(path).ReadSection("Colors", lines);
  std::vector<CColorTableEntry> entries;
  entries.reserve(lines.size());
  for (const GString& line : lines) {
    const std::string_view text(line.c_str(), line.size());
    const std::size_t sign = text.find('=');
    if (sign == std::string_view::npos || sign + 1 == text.size()) continue;
    GString entryName(std::string(text.substr(0, sign)));
    entryName.Trim();
    entries.emplace_back(ColorOf(text.substr(sign + 1)), entryName);
  }
  return entries;
}

}  // namespace vlm::detail

#include <examples/common/HtmlEscape.h>

#include <velum/core/WideText.h>

#include <cstdint>

namespace vlm::examples {
namespace {

constexpr std::uint32_t kMissing = 0xFFFD;

void AppendCharacter(std::string& out, std::uint32_t code) {
  const bool isBlank = code == '\t' || code == '\n' || code == '\r';
  if ((code < 0x20 && !isBlank) || (code >= 0x7F && code < 0xA0)) code = kMissing;
  switch (code) {
    case '<':
      out += "&lt;";
      return;
    case '>':
      out += "&gt;";
      return;
    case '&':
      out += "&amp;";
      return;
    case '"':
      out += "&quot;";
      return;
    default:
      break;
  }
  if (code < 0x7F) {
    out += static_cast<char>(code);
  } else {
    out += "&#" + std::to_string(code) + ";";
  }
}

}  // namespace

std::string HtmlEscape(const std::string& text) {
  std::string out;
  // A byte 0 would end the text.
  for (std::size_t begin = 0;; ++begin) {
    const std::size_t end = text.find('\0', begin);
    const AtoW wide(text.substr(begin, end - begin));
    for (const wchar_t* c = wide; *c; ++c) {
      auto code = static_cast<std::uint32_t>(*c);
      if (code >= 0xD800 && code < 0xDC00 && c[1]) {
        code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<std::uint32_t>(*++c) - 0xDC00);
      }
      AppendCharacter(out, code);
    }
    if (end == std::string::npos) return out;
    AppendCharacter(out, 0);
    begin = end;
  }
}

}  // namespace vlm::examples

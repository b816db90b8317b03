#include <examples/common/Shown.h>

#include <velum/core/GString.h>

namespace vlm::examples {
namespace {

// The bytes that follow the first one of a character.
bool Continues(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

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

}  // namespace vlm::examples

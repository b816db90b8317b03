#include <examples/labels/SourceCaption.h>

#include <algorithm>

namespace vlm::examples {
namespace {

bool StartsCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }

// The number of bytes that the first `count` characters take.
std::size_t BytesOf(std::string_view text, std::size_t count) {
  std::size_t bytes = 0;
  while (bytes < text.size() && (count > 0 || !StartsCharacter(text[bytes]))) {
    if (StartsCharacter(text[bytes])) --count;
    ++bytes;
  }
  return bytes;
}

bool StartsDirective(std::string_view text, std::size_t position) {
  return text[position] == '{' || (text[position] == '\\' && text[position - 1] != '{');
}

bool FollowsBlank(std::string_view text, std::size_t position) { return text[position - 1] == ' '; }

std::size_t BreakOf(std::string_view line, std::size_t width) {
  const std::size_t longest = BytesOf(line, width);
  if (longest == line.size()) return longest;
  for (const auto mayBreak : {StartsDirective, FollowsBlank}) {
    for (std::size_t position = longest; position >= longest - longest / 2; --position) {
      if (mayBreak(line, position)) return position;
    }
  }
  return longest;
}

}  // namespace

std::vector<std::string> WrapSource(std::string_view text, std::size_t width) {
  std::string shown;
  for (const char byte : text) {
    if (byte == '\t') {
      shown += "\u2192";
    } else {
      shown += byte;
    }
  }
  std::vector<std::string> lines;
  std::string_view rest = shown;
  while (true) {
    const std::size_t lineEnd = std::min(rest.find('\n'), rest.size());
    const std::size_t length = BreakOf(rest.substr(0, lineEnd), width);
    lines.emplace_back(rest.substr(0, length));
    if (length == rest.size()) return lines;
    rest.remove_prefix(length + (rest[length] == '\n' ? 1 : 0));
  }
}

}  // namespace vlm::examples

#include <examples/logview/ReceivedLine.h>

#include <velum/core/StringFormat.h>

#include <charconv>

namespace vlm::logview {
namespace {

constexpr std::size_t kLongestPrefix = 32;
constexpr const char* kSeverities[] = {"emerg",   "alert",  "crit", "err",
                                       "warning", "notice", "info", "debug"};

const char* TakeSeverity(std::string_view& bytes) {
  if (!bytes.starts_with('<')) return "";
  unsigned int priority = 0;
  const char* const end = bytes.data() + bytes.size();
  const auto number = std::from_chars(bytes.data() + 1, end, priority);
  if (number.ec != std::errc() || number.ptr == end || *number.ptr != '>') return "";
  bytes.remove_prefix(static_cast<std::size_t>(number.ptr + 1 - bytes.data()));
  if (bytes.starts_with(' ')) bytes.remove_prefix(1);
  return kSeverities[priority % 8];
}

std::string_view TakePrefix(std::string_view& bytes) {
  const std::size_t colon = bytes.substr(0, kLongestPrefix + 2).find(": ");
  if (colon == std::string_view::npos || colon == 0) return {};
  const std::string_view prefix = bytes.substr(0, colon);
  if (prefix.find(' ') != std::string_view::npos) return {};
  bytes.remove_prefix(colon + 2);
  return prefix;
}

unsigned int ByteAt(std::string_view bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

// The bytes of the character at the start if that is well-formed UTF-8 and no control character;
// otherwise 0.
std::size_t PrintableSize(std::string_view bytes) {
  const unsigned int lead = ByteAt(bytes, 0);
  if (lead < 0x80) return lead < 0x20 || lead == 0x7F ? 0 : 1;
  const std::size_t size = lead < 0xC2   ? 0
                           : lead < 0xE0 ? 2
                           : lead < 0xF0 ? 3
                           : lead < 0xF5 ? 4
                                         : 0;
  if (size > bytes.size()) return 0;
  for (std::size_t i = 1; i < size; ++i) {
    if ((ByteAt(bytes, i) & 0xC0) != 0x80) return 0;
  }
  if (size == 0) return 0;
  // The second byte tells C1 controls, longer forms than needed, surrogates, and what is beyond the
  // last character.
  const unsigned int second = ByteAt(bytes, 1);
  const bool isWrong = (lead == 0xC2 && second < 0xA0) || (lead == 0xE0 && second < 0xA0) ||
                       (lead == 0xED && second >= 0xA0) || (lead == 0xF0 && second < 0x90) ||
                       (lead == 0xF4 && second >= 0x90);
  return isWrong ? 0 : size;
}

std::string Shown(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const std::size_t size = PrintableSize(bytes);
    if (size == 0) {
      text += ToString("\\x%02x", ByteAt(bytes, 0));
      bytes.remove_prefix(1);
    } else {
      text += bytes.substr(0, size);
      bytes.remove_prefix(size);
    }
  }
  return text;
}

}  // namespace

ReceivedLine ReadDatagram(std::string_view bytes, double time) {
  ReceivedLine line;
  line.time = time;
  if (bytes.ends_with('\n')) bytes.remove_suffix(1);
  line.severity = TakeSeverity(bytes);
  line.prefix = Shown(TakePrefix(bytes));
  line.text = Shown(bytes);
  return line;
}

}  // namespace vlm::logview

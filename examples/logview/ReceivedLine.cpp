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

std::string Shown(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    byte < 0x20 || byte == 0x7F ? text += ToString("\\x%02x", byte) : text += c;
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

#include <examples/crashlab/Trace.h>

#include <algorithm>
#include <map>
#include <utility>

namespace vlm::crashlab {
namespace {

std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

// The lines of a section, up to the empty line behind it, or all if it is the last one.
std::vector<std::string> Section(const std::vector<std::string>& lines, std::string_view title,
                                 bool isLast = false) {
  std::vector<std::string> found;
  auto line = std::find(lines.begin(), lines.end(), title);
  for (line += std::min<std::ptrdiff_t>(2, lines.end() - line);
       line != lines.end() && (isLast || !line->empty()); ++line) {
    found.push_back(*line);
  }
  return found;
}

// Splits "#3   0000...  crashlab + 0x12" into the number, and the module behind the address.
std::pair<std::string, std::string> ModuleOf(const std::string& line) {
  constexpr std::size_t kAddress = 16;
  const std::size_t numberEnd = line.find(' ');
  const std::size_t address = line.find_first_not_of(' ', numberEnd);
  if (address == line.npos || line.size() < address + kAddress + 2) return {line, ""};
  const std::string place = line.substr(address + kAddress + 2);
  const std::size_t moduleEnd = place.rfind(" + 0x");
  return {line.substr(0, numberEnd), moduleEnd == place.npos ? "" : place.substr(0, moduleEnd)};
}

// Reads "#3   Sort(int) at a.cpp:7, inlined into" or "#4   qsort_r  [libc.so.6 + 0x12]".
Frame ReadFrame(const std::string& line) {
  constexpr std::string_view kInlined = ", inlined into";
  Frame frame;
  const std::size_t numberEnd = std::min(line.find(' '), line.size());
  frame.number = line.substr(0, numberEnd);
  std::string rest = line.substr(std::min(line.find_first_not_of(' ', numberEnd), line.size()));
  if (rest.ends_with(kInlined)) rest.resize(rest.size() - kInlined.size());
  const std::size_t at = rest.rfind(" at ");
  const std::size_t bracket = rest.rfind("  [");
  if (bracket != rest.npos && rest.ends_with("]")) {
    frame.function = rest.substr(0, bracket);
    frame.place = rest.substr(bracket + 3, rest.size() - bracket - 4);
  } else if (at != rest.npos) {
    frame.function = rest.substr(0, at);
    frame.place = rest.substr(at + 4);
  } else {
    frame.place = rest;
  }
  return frame;
}

}  // namespace

Trace ReadTrace(std::string_view dump, std::string_view resolved) {
  const std::vector<std::string> lines = LinesOf(dump);
  Trace trace;
  trace.crash = Section(lines, "Exception Info");
  trace.logLines = Section(lines, "Last log lines", true);
  std::map<std::string, std::string> modules;
  for (const std::string& line : Section(lines, "Stack trace")) modules.insert(ModuleOf(line));

  std::string number;
  bool isInTrace = false;
  for (const std::string& line : LinesOf(resolved)) {
    isInTrace = isInTrace || line.starts_with("#0 ");
    if (!isInTrace) continue;
    if (line.starts_with("(")) {
      trace.frames.push_back({"", "", line.substr(1, line.size() - 2), "", true});
      continue;
    }
    Frame frame = ReadFrame(line);
    if (!frame.number.empty()) number = frame.number;
    frame.module = modules[number];
    trace.frames.push_back(std::move(frame));
  }
  return trace;
}

}  // namespace vlm::crashlab

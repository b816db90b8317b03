#include <examples/convert/Report.h>

#include <velum/core/StringFormat.h>
#include <velum/core/WideText.h>

#include <ostream>

namespace vlm::convert {
namespace {

std::string Counted(std::uint64_t count, const char* one, const char* many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string LineEndsOf(const Survey& survey) {
  std::string text;
  const auto add = [&](std::uint64_t count, const char* name) {
    if (count == 0) return;
    text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + name;
  };
  add(survey.feeds, "LF");
  add(survey.returnFeeds, "CR LF");
  add(survey.returns, "CR");
  add(survey.lines - survey.feeds - survey.returnFeeds - survey.returns, "without");
  return text.empty() ? "none" : text;
}

}  // namespace

void PrintFindings(std::ostream& out, const std::string& path, const Evidence& evidence,
                   const Survey& survey) {
  out << path << ": " << Counted(survey.bytes, "byte", "bytes") << "\n"
      << "  mark          " << MarkText(evidence) << "\n"
      << "  UTF-16LE      " << InWords(evidence.utf16le) << "\n"
      << "  UTF-16BE      " << InWords(evidence.utf16be) << "\n"
      << "  narrow text   " << InWords(evidence.narrow) << "\n"
      << "  no text       " << InWords(evidence.binary) << "\n"
      << (evidence.isSure ? "  encoding      " : "  assumed       ") << evidence.encoding.Name()
      << ": " << evidence.reason << "\n"
      << "  lines         " << survey.lines << "\n"
      << "  line ends     " << LineEndsOf(survey) << "\n"
      << "  characters    " << survey.characters << ", " << survey.pairs << " of them pairs, "
      << survey.zeros << " NUL\n"
      << "  malformed     "
      << (survey.malformed == 0
              ? "nothing"
              : Counted(survey.malformed, "sequence", "sequences") + ", read as U+FFFD")
      << "\n";
}

void PrintConversion(std::ostream& out, const std::string& path, const Target& target,
                     const Conversion& conversion) {
  out << "Made " << path << ": " << target.encoding.Name();
  if (target.encoding.HasMark()) out << (target.mark ? " with a mark" : " without a mark");
  out << "\n";
  if (conversion.lost.empty()) return;
  constexpr std::size_t kShown = 8;
  std::uint64_t total = 0;
  for (const auto& [code, count] : conversion.lost) total += count;
  out << Counted(total, "character", "characters") << " that " << target.encoding.Name()
      << " lacks became '?':";
  std::size_t shown = 0;
  for (const auto& [code, count] : conversion.lost) {
    if (shown++ == kShown) break;
    const std::wstring text(1, static_cast<wchar_t>(code));
    out << " " << static_cast<const char*>(WtoA(text.c_str()))
        << ToString(" U+%04X (%I64u)", static_cast<unsigned int>(code), count);
  }
  if (conversion.lost.size() > kShown) out << " and others";
  out << "\n";
}

}  // namespace vlm::convert

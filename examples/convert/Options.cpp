#include <examples/convert/Options.h>

#include <examples/common/OptionReader.h>
#include <examples/common/Program.h>

namespace vlm::convert {
namespace {

using examples::UsageError;

constexpr char kUsage[] =
    "Tells in which encoding a text file is, and why; converts it to another.\n"
    "\n"
    "  convert [options] IN [OUT]\n"
    "\n"
    "  --from NAME              the encoding of IN; found out unless told\n"
    "  --to NAME                the encoding of OUT; utf-8 unless told\n"
    "  --mark yes|no            whether OUT begins with a byte order mark; yes for UTF-16 and no\n"
    "                           for UTF-8 unless told\n"
    "  --line-ends KIND         lf, crlf or keep; keep unless told\n"
    "  -o, --output PICTURE     draws the first bytes of IN; ends in .png, .svg or .pdf\n"
    "  -h, --help               this text\n"
    "\n"
    "NAME is utf-8, utf-16le, utf-16be, the number of a code page, or a name such as\n"
    "windows-1251, iso-8859-2, koi8-r, shift_jis, big5. Without OUT nothing is converted.\n"
    "OUT appears once it is whole, and may be IN.\n"
    "\n"
    "The status is 0 if all was done, 1 if something failed, 2 for a wrong command line.\n";

bool ReadChoice(const std::string& option, const std::string& value, const char* yes,
                const char* no) {
  if (value == yes) return true;
  if (value == no) return false;
  throw UsageError(option + " is " + yes + " or " + no + ", not '" + value + "'");
}

LineEnds ReadLineEnds(const std::string& value) {
  if (value == "keep") return LineEnds::Keep;
  if (value == "lf") return LineEnds::Feed;
  if (value == "crlf") return LineEnds::ReturnFeed;
  throw UsageError("--line-ends is lf, crlf or keep, not '" + value + "'");
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  std::optional<bool> mark;
  bool hasTarget = false;
  examples::OptionReader reader;
  reader.Value({"--from"}, [&](const std::string& name) { options.from = FindEncoding(name); });
  reader.Value({"--to"}, [&](const std::string& name) {
    options.target.encoding = FindEncoding(name);
    hasTarget = true;
  });
  reader.Value({"--mark"}, [&](const std::string& choice) {
    mark = ReadChoice("--mark", choice, "yes", "no");
    hasTarget = true;
  });
  reader.Value({"--line-ends"}, [&](const std::string& kind) {
    options.target.lineEnds = ReadLineEnds(kind);
    hasTarget = true;
  });
  reader.Picture({"-o", "--output"}, options.picture);
  reader.Operands([&](const std::string& file) {
    if (!options.output.empty()) throw UsageError("more than two files");
    (options.input.empty() ? options.input : options.output) = file;
  });
  options.help = !reader.Read(arguments);
  if (options.help) return options;
  if (options.input.empty()) throw UsageError("a file is needed");
  if (hasTarget && options.output.empty()) throw UsageError("there is no OUT to be written");
  const Encoding& to = options.target.encoding;
  if (mark.value_or(false) && !to.HasMark()) throw UsageError(to.Name() + " has no mark");
  options.target.mark = mark.value_or(to.HasMark() && to.kind != EncodingUTF8);
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::convert

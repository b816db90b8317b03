#include <examples/convert/Options.h>

#include <examples/common/Picture.h>
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
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const std::string& option = *argument;
    const auto value = [&]() -> const std::string& {
      if (argument + 1 == arguments.end()) throw UsageError(option + " needs a value");
      return *++argument;
    };
    if (option == "-h" || option == "--help") {
      options.help = true;
      return options;
    }
    if (option == "--from") {
      options.from = FindEncoding(value());
    } else if (option == "--to") {
      options.target.encoding = FindEncoding(value());
      hasTarget = true;
    } else if (option == "--mark") {
      mark = ReadChoice("--mark", value(), "yes", "no");
      hasTarget = true;
    } else if (option == "--line-ends") {
      options.target.lineEnds = ReadLineEnds(value());
      hasTarget = true;
    } else if (option == "-o" || option == "--output") {
      options.picture = value();
      if (!examples::PictureFormatOf(options.picture)) {
        throw UsageError("'" + options.picture + "' ends in none of .png, .svg and .pdf");
      }
    } else if (option.size() > 1 && option.front() == '-') {
      throw UsageError("unknown option '" + option + "'");
    } else if (options.input.empty()) {
      options.input = option;
    } else if (options.output.empty()) {
      options.output = option;
    } else {
      throw UsageError("more than two files");
    }
  }
  if (options.input.empty()) throw UsageError("a file is needed");
  if (hasTarget && options.output.empty()) throw UsageError("there is no OUT to be written");
  const Encoding& to = options.target.encoding;
  if (mark.value_or(false) && !to.HasMark()) throw UsageError(to.Name() + " has no mark");
  options.target.mark = mark.value_or(to.HasMark() && to.kind != EncodingUTF8);
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::convert

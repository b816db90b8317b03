#include <examples/worksheet/Options.h>

#include <examples/common/Program.h>

#include <charconv>
#include <string_view>

namespace vlm::worksheet {
namespace {

using examples::UsageError;

constexpr char kUsage[] =
    "Reads a table of delimited text into a worksheet and reports on it: a page of HTML with the\n"
    "type and the figures of each column, words, charts, and the first rows.\n"
    "\n"
    "  worksheet [options] -o REPORT.html TABLE\n"
    "  worksheet --sample ROWS TABLE\n"
    "\n"
    "  TABLE                 the table; its first row holds the names\n"
    "  -o, --output FILE     the report, which ends in .html; charts come beside it as PNG files\n"
    "  -s, --settings FILE   a file of XML that tells the columns, their titles and units\n"
    "      --progress        tell the progress even if no terminal shows it\n"
    "      --sample ROWS     makes up a table to try it with\n"
    "  -h, --help            this text\n"
    "\n"
    "Settings look so; all attributes but the name may be left out, and & is written &amp;:\n"
    "\n"
    "  <worksheet title=\"Wells\" delimiter=\",\" rows=\"5\">\n"
    "    <column name=\"depth_m\" title=\"Depth\" unit=\"m\" chart=\"yes\"/>\n"
    "    <note>Logged in 2026.</note>\n"
    "  </worksheet>\n"
    "\n"
    "The status is 0 if all was done, 1 if something failed, 2 for a wrong command line.\n";

unsigned RowsOf(const std::string& text) {
  constexpr unsigned kMost = 100'000'000;
  unsigned rows = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), rows);
  if (error != std::errc() || end != text.data() + text.size() || rows == 0 || rows > kMost) {
    throw UsageError("--sample needs a number of rows up to 100000000, not '" + text + "'");
  }
  return rows;
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const std::string& name = *argument;
    const auto value = [&]() -> const std::string& {
      if (argument + 1 == arguments.end()) throw UsageError(name + " needs a value");
      return *++argument;
    };
    if (name == "-h" || name == "--help") {
      options.help = true;
    } else if (name == "-o" || name == "--output") {
      options.output = value();
      if (!std::string_view(options.output).ends_with(".html")) {
        throw UsageError("'" + options.output + "' does not end in .html");
      }
    } else if (name == "-s" || name == "--settings") {
      options.settings = value();
    } else if (name == "--progress") {
      options.progress = true;
    } else if (name == "--sample") {
      options.sample = RowsOf(value());
    } else if (name.size() > 1 && name.front() == '-') {
      throw UsageError("unknown option '" + name + "'");
    } else if (!options.file.empty()) {
      throw UsageError("more than one table");
    } else {
      options.file = name;
    }
  }
  if (options.help) return options;
  if (options.file.empty()) throw UsageError("a table is needed");
  if (options.output.empty() == (options.sample == 0)) {
    throw UsageError("one of --output and --sample is needed");
  }
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::worksheet

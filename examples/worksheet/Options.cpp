#include <examples/worksheet/Options.h>

#include <examples/common/OptionReader.h>
#include <examples/common/Program.h>

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

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  examples::OptionReader reader;
  reader.Value({"-o", "--output"}, [&](const std::string& page) {
    if (!page.ends_with(".html")) throw UsageError("'" + page + "' does not end in .html");
    options.output = page;
  });
  reader.Text({"-s", "--settings"}, options.settings);
  reader.Flag({"--progress"}, options.progress);
  reader.Value({"--sample"}, [&](const std::string& text) {
    const auto rows = examples::NumberIn(text, 1u, 100'000'000u);
    if (!rows) {
      throw UsageError("--sample needs a number of rows up to 100000000, not '" + text + "'");
    }
    options.sample = *rows;
  });
  reader.Operand(options.file, "table");
  options.help = !reader.Read(arguments);
  if (options.help) return options;
  if (options.file.empty()) throw UsageError("a table is needed");
  if (options.output.empty() == (options.sample == 0)) {
    throw UsageError("one of --output and --sample is needed");
  }
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::worksheet

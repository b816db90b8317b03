#include <examples/charts/Options.h>

#include <examples/common/Picture.h>
#include <examples/common/Program.h>

namespace vlm::charts {
namespace {

using examples::UsageError;

constexpr char kUsage[] =
    "Draws a column of a file of delimited text as a histogram, a normal probability plot and a "
    "box\n"
    "plot, on one sheet.\n"
    "\n"
    "  charts [options] FILE\n"
    "\n"
    "  FILE                  the table, with the names of its columns first; - for the standard\n"
    "                        input\n"
    "  -c, --column NAME     the column, by name or by number from 1; the first column of numbers\n"
    "                        unless told\n"
    "  -d, --delimiter CHAR  the character between fields, or the word tab; a comma unless told\n"
    "  -t, --title TEXT      the title of the data; the name of the column unless told\n"
    "  -o, --output FILE     the sheet, which ends in .png, .svg or .pdf; charts.png unless told\n"
    "      --all FOLDER      as well each of the charts in a file of its own, tiny, for the "
    "screen\n"
    "                        and for print, as PNG and as SVG\n"
    "  -h, --help            this text\n"
    "\n"
    "A field that is empty, NA, N/A, NaN, null or - holds no value. Numbers have a decimal point.\n"
    "The status is 0 if all was done, 1 if something failed, 2 for a wrong command line.\n";

char DelimiterOf(const std::string& text) {
  if (text == "tab") return '\t';
  if (text.size() != 1) throw UsageError("a delimiter is one byte or tab, not '" + text + "'");
  return text[0];
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
    } else if (name == "-c" || name == "--column") {
      options.column = value();
      if (options.column.empty()) throw UsageError(name + " needs a column");
    } else if (name == "-d" || name == "--delimiter") {
      options.delimiter = DelimiterOf(value());
    } else if (name == "-t" || name == "--title") {
      options.title = value();
    } else if (name == "-o" || name == "--output") {
      options.output = value();
      if (!examples::PictureFormatOf(options.output)) {
        throw UsageError("'" + options.output + "' ends in none of .png, .svg and .pdf");
      }
    } else if (name == "--all") {
      options.folder = value();
      if (options.folder.empty()) throw UsageError("--all needs a folder");
    } else if (name.size() > 1 && name.front() == '-') {
      throw UsageError("unknown option '" + name + "'");
    } else if (!options.file.empty()) {
      throw UsageError("more than one file");
    } else {
      options.file = name;
    }
  }
  if (!options.help && options.file.empty()) throw UsageError("a file is needed");
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::charts

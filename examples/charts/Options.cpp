#include <examples/charts/Options.h>

#include <examples/common/OptionReader.h>
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

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  examples::OptionReader reader;
  reader.Text({"-c", "--column"}, options.column, "a column");
  reader.Delimiter({"-d", "--delimiter"}, options.delimiter);
  reader.Text({"-t", "--title"}, options.title);
  reader.Picture({"-o", "--output"}, options.output);
  reader.Text({"--all"}, options.folder, "a folder");
  reader.Operand(options.file, "file");
  options.help = !reader.Read(arguments);
  if (!options.help && options.file.empty()) throw UsageError("a file is needed");
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::charts

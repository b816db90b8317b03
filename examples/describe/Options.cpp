#include <examples/describe/Options.h>

#include <examples/common/LabelFault.h>
#include <examples/common/OptionReader.h>
#include <examples/common/Program.h>

namespace vlm::describe {
namespace {

using examples::UsageError;

constexpr char kUsage[] =
    "Describes the columns of a file of delimited text: the figures of each, how they hang\n"
    "together, where its points lie.\n"
    "\n"
    "  describe [options] FILE\n"
    "\n"
    "  FILE                   the table, with quotes as in RFC 4180; - for the standard input\n"
    "  -c, --columns LIST     columns by name or by number from 1, with commas between them; may "
    "be\n"
    "                         repeated; all columns of numbers unless told\n"
    "  -d, --delimiter CHAR   the character between fields, or the word tab; a comma unless told\n"
    "      --no-header        the first row holds data, not names\n"
    "      --spatial X,Y[,Z]  the columns of points in the plane: how far the nearest neighbours\n"
    "                         are, and with z the least-squares plane\n"
    "  -o, --output FILE      a picture as well, which ends in .png, .svg or .pdf\n"
    "      --html FILE        a page of HTML as well, which ends in .html, with its picture "
    "beside\n"
    "                         it as PNG\n"
    "      --label NAME=TEXT  the name of a column in the picture, as a math text; may be "
    "repeated\n"
    "      --progress         tell the progress on long input even if no terminal shows it\n"
    "  -h, --help             this text\n"
    "\n"
    "A field that is empty, NA, N/A, NaN, null or - holds no value. Numbers have a decimal point.\n"
    "The status is 0 if all was done, 1 if something failed, 2 for a wrong command line.\n";

void AddLabel(const std::string& text, std::map<std::string, std::string>& labels) {
  const std::size_t equals = text.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw UsageError("a label is told as NAME=TEXT, not '" + text + "'");
  }
  const std::string label = text.substr(equals + 1);
  if (const auto fault = examples::FindFault(label)) {
    throw UsageError("the label '" + label + "': " + fault->InWords());
  }
  labels[text.substr(0, equals)] = label;
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  examples::OptionReader reader;
  reader.Value({"-c", "--columns"},
               [&](const std::string& columns) { options.request.columns.push_back(columns); });
  reader.Delimiter({"-d", "--delimiter"}, options.request.delimiter);
  reader.Flag({"--no-header"}, options.request.hasHeader, false);
  reader.Text({"--spatial"}, options.request.spatial, "columns");
  reader.Picture({"-o", "--output"}, options.output);
  reader.Value({"--html"}, [&](const std::string& page) {
    if (!page.ends_with(".html")) throw UsageError("'" + page + "' does not end in .html");
    options.page = page;
  });
  reader.Value({"--label"}, [&](const std::string& text) { AddLabel(text, options.labels); });
  reader.Flag({"--progress"}, options.progress);
  reader.Operand(options.file, "file");
  options.help = !reader.Read(arguments);
  if (!options.help && options.file.empty()) throw UsageError("a file is needed");
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::describe

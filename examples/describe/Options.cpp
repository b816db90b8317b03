#include <examples/describe/Options.h>

#include <examples/common/LabelFault.h>
#include <examples/common/Picture.h>
#include <examples/common/Program.h>

#include <string_view>

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

char DelimiterOf(const std::string& text) {
  if (text == "tab" || text == "\\t") return '\t';
  if (text.size() != 1) throw UsageError("a delimiter is one byte or tab, not '" + text + "'");
  if (text == "\"" || text == "\n" || text == "\r") {
    throw UsageError("a quote or a line end can't delimit fields");
  }
  return text[0];
}

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

bool IsOption(const std::string& text) { return text.size() > 1 && text.front() == '-'; }

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
    } else if (name == "-c" || name == "--columns") {
      options.request.columns.push_back(value());
    } else if (name == "-d" || name == "--delimiter") {
      options.request.delimiter = DelimiterOf(value());
    } else if (name == "--no-header") {
      options.request.hasHeader = false;
    } else if (name == "--spatial") {
      options.request.spatial = value();
      if (options.request.spatial.empty()) throw UsageError("--spatial needs columns");
    } else if (name == "-o" || name == "--output") {
      options.output = value();
      if (!examples::PictureFormatOf(options.output)) {
        throw UsageError("'" + options.output + "' ends in none of .png, .svg and .pdf");
      }
    } else if (name == "--html") {
      options.page = value();
      if (!std::string_view(options.page).ends_with(".html")) {
        throw UsageError("'" + options.page + "' does not end in .html");
      }
    } else if (name == "--label") {
      AddLabel(value(), options.labels);
    } else if (name == "--progress") {
      options.progress = true;
    } else if (IsOption(name)) {
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

}  // namespace vlm::describe

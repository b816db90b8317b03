#include <examples/dates/Options.h>

#include <velum/core/StringConvert.h>
#include <examples/common/Picture.h>
#include <examples/common/Program.h>

namespace vlm::dates {
namespace {

using examples::UsageError;

constexpr char kUsage[] =
    "Reads dates as people type them, and shows them in all forms; or tells which forms stand in\n"
    "a column of a file, and what in it is no date.\n"
    "\n"
    "  dates [options] TEXT ...\n"
    "  dates [options] --csv FILE --column COLUMN\n"
    "\n"
    "  --csv FILE             a table, with quotes as in RFC 4180; - for the standard input\n"
    "  -c, --column COLUMN    the column, by name or by number from 1\n"
    "  -d, --delimiter CHAR   the character between fields, or the word tab; a comma unless told\n"
    "      --no-header        the first row holds data, not names\n"
    "  -o, --output FILE      a picture of the column, which ends in .png, .svg or .pdf\n"
    "      --order ORDER      mdy, month first, unless told; or dmy, day first\n"
    "      --strict           refuse what is a date in the other order only\n"
    "      --window YEAR      the first of the hundred years of two digits; 1930 unless told\n"
    "      --year YEAR        the year of dates that show none; the present one unless told\n"
    "  --                     what follows is text, even with a - in front\n"
    "  -h, --help             this text\n"
    "\n"
    "The status is 0 if all was done, 1 if something failed, a text that is no date among it, 2 "
    "for\n"
    "a wrong command line. Texts of a column that are no dates are told and no failure.\n";

char DelimiterOf(const std::string& text) {
  if (text == "tab" || text == "\\t") return '\t';
  if (text.size() != 1) throw UsageError("a delimiter is one byte or tab, not '" + text + "'");
  if (text == "\"" || text == "\n" || text == "\r") {
    throw UsageError("a quote or a line end can't delimit fields");
  }
  return text[0];
}

KQDateTextOptions::Order OrderOf(const std::string& text) {
  if (text == "mdy") return KQDateTextOptions::MonthDayYear;
  if (text == "dmy") return KQDateTextOptions::DayMonthYear;
  throw UsageError("--order is mdy or dmy, not '" + text + "'");
}

int YearOf(const std::string& option, const std::string& text, int last) {
  int year = 0;
  if (!StringToInt(text, year) || year < 100 || year > last) {
    throw UsageError(option + " needs a year from 100 to " + std::to_string(last) + ", not '" +
                     text + "'");
  }
  return year;
}

void Check(const Options& options) {
  const bool hasFile = !options.file.empty();
  if (hasFile && !options.texts.empty()) throw UsageError("--csv and texts exclude each other");
  if (hasFile && options.request.column.empty()) throw UsageError("--csv needs --column");
  if (!hasFile && options.texts.empty()) throw UsageError("a text or --csv is needed");
  if (!hasFile && !options.output.empty()) throw UsageError("--output needs --csv");
}

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  bool isText = false;
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    const std::string& name = *argument;
    const auto value = [&]() -> const std::string& {
      if (argument + 1 == arguments.end()) throw UsageError(name + " needs a value");
      return *++argument;
    };
    if (isText || name.size() < 2 || name.front() != '-') {
      options.texts.push_back(name);
    } else if (name == "--") {
      isText = true;
    } else if (name == "-h" || name == "--help") {
      options.help = true;
      return options;
    } else if (name == "--csv") {
      options.file = value();
    } else if (name == "-c" || name == "--column") {
      options.request.column = value();
    } else if (name == "-d" || name == "--delimiter") {
      options.request.delimiter = DelimiterOf(value());
    } else if (name == "--no-header") {
      options.request.hasHeader = false;
    } else if (name == "--order") {
      options.reading.order = OrderOf(value());
    } else if (name == "--strict") {
      options.reading.eitherOrder = false;
    } else if (name == "--window") {
      options.reading.windowStart = YearOf(name, value(), 9900);
    } else if (name == "--year") {
      options.reading.presentYear = YearOf(name, value(), 9999);
    } else if (name == "-o" || name == "--output") {
      options.output = value();
      if (!examples::PictureFormatOf(options.output)) {
        throw UsageError("'" + options.output + "' ends in none of .png, .svg and .pdf");
      }
    } else {
      throw UsageError("unknown option '" + name + "'");
    }
  }
  Check(options);
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::dates

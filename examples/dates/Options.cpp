#include <examples/dates/Options.h>

#include <examples/common/OptionReader.h>
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

KQDateTextOptions::Order OrderOf(const std::string& text) {
  if (text == "mdy") return KQDateTextOptions::MonthDayYear;
  if (text == "dmy") return KQDateTextOptions::DayMonthYear;
  throw UsageError("--order is mdy or dmy, not '" + text + "'");
}

int YearOf(const std::string& option, const std::string& text, int last) {
  const auto year = examples::NumberIn(text, 100, last);
  if (!year) {
    throw UsageError(option + " needs a year from 100 to " + std::to_string(last) + ", not '" +
                     text + "'");
  }
  return *year;
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
  examples::OptionReader reader;
  reader.Text({"--csv"}, options.file);
  reader.Text({"-c", "--column"}, options.request.column);
  reader.Delimiter({"-d", "--delimiter"}, options.request.delimiter);
  reader.Flag({"--no-header"}, options.request.hasHeader, false);
  reader.Value({"--order"},
               [&](const std::string& order) { options.reading.order = OrderOf(order); });
  reader.Flag({"--strict"}, options.reading.eitherOrder, false);
  reader.Value({"--window"}, [&](const std::string& year) {
    options.reading.windowStart = YearOf("--window", year, 9900);
  });
  reader.Value({"--year"}, [&](const std::string& year) {
    options.reading.presentYear = YearOf("--year", year, 9999);
  });
  reader.Picture({"-o", "--output"}, options.output);
  reader.Operands([&](const std::string& text) { options.texts.push_back(text); });
  options.help = !reader.Read(arguments);
  if (!options.help) Check(options);
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::dates

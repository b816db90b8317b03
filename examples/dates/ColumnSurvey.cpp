#include <examples/dates/ColumnSurvey.h>

#include <examples/common/Shown.h>
#include <examples/describe/CsvReader.h>
#include <examples/describe/Selection.h>

#include <algorithm>
#include <numeric>
#include <stdexcept>

namespace vlm::dates {
namespace {

constexpr std::size_t kLongestText = 40;

bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

bool IsLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

bool IsEmpty(const std::string& text) { return std::all_of(text.begin(), text.end(), IsBlank); }

class Surveyor {
 public:
  explicit Surveyor(const KQDateTextOptions& options) : options_(options) {}

  void Take(std::size_t row, std::size_t line, const std::string& text) {
    if (IsEmpty(text)) {
      ++survey_.empty;
      return;
    }
    double date = 0.0;
    KQDateTime::DATE_FORMAT_TYPE dateFmt;
    KQDateTime::TIME_FORMAT_TYPE timeFmt;
    // A text goes on behind a NUL, and a date does not.
    const bool isWhole = text.find('\0') == std::string::npos;
    if (!isWhole || !KQParseDateTimeStr(text.c_str(), &date, &dateFmt, &timeFmt, options_)) {
      survey_.unread.push_back({row, line, examples::Shown(text, kLongestText)});
      return;
    }
    const std::size_t form = FindForm(dateFmt, timeFmt, text, line);
    survey_.entries.push_back({row, date, form});
    CompareOrders(text, date);
  }

  Survey Finish() {
    std::vector<std::size_t> order(survey_.forms.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
      return survey_.forms[a].count > survey_.forms[b].count;
    });
    std::vector<Form> sorted;
    std::vector<std::size_t> place(order.size());
    for (const std::size_t i : order) {
      place[i] = sorted.size();
      sorted.push_back(std::move(survey_.forms[i]));
    }
    survey_.forms = std::move(sorted);
    for (Entry& entry : survey_.entries) entry.form = place[entry.form];
    return std::move(survey_);
  }

 private:
  std::size_t FindForm(KQDateTime::DATE_FORMAT_TYPE dateFmt, KQDateTime::TIME_FORMAT_TYPE timeFmt,
                       const std::string& text, std::size_t line) {
    auto& forms = survey_.forms;
    const std::string shape = ShapeOf(text);
    auto form = std::find_if(forms.begin(), forms.end(), [&](const Form& known) {
      return known.shape == shape && known.dateFmt == dateFmt && known.timeFmt == timeFmt;
    });
    if (form == forms.end()) {
      forms.push_back({shape, dateFmt, timeFmt, 0, examples::Shown(text, kLongestText), line});
      form = forms.end() - 1;
    }
    ++form->count;
    return static_cast<std::size_t>(form - forms.begin());
  }

  void CompareOrders(const std::string& text, double date) {
    KQDateTextOptions strict = options_;
    strict.eitherOrder = false;
    if (!KQParseDateTimeStr(text.c_str(), nullptr, nullptr, nullptr, strict)) {
      ++survey_.swapped;
      return;
    }
    strict.order = options_.order == KQDateTextOptions::MonthDayYear
                       ? KQDateTextOptions::DayMonthYear
                       : KQDateTextOptions::MonthDayYear;
    double other = 0.0;
    const bool isOther = KQParseDateTimeStr(text.c_str(), &other, nullptr, nullptr, strict);
    if (isOther && other != date) ++survey_.ambiguous;
  }

  const KQDateTextOptions& options_;
  Survey survey_;
};

}  // namespace

std::string ShapeOf(const std::string& text) {
  std::string shape;
  for (auto at = text.begin(); at != text.end();) {
    const auto runOf = [&](auto isOne) { return std::find_if_not(at, text.end(), isOne) - at; };
    if (const auto digits = runOf(IsDigit); digits > 0) {
      shape += digits > 2 ? "nnnn" : "n";
      at += digits;
    } else if (const auto letters = runOf(IsLetter); letters > 0) {
      shape += 'x';
      at += letters;
    } else if (const auto blanks = runOf(IsBlank); blanks > 0) {
      at += blanks;
      if (!shape.empty() && at != text.end()) shape += ' ';
    } else {
      shape += *at++;
    }
  }
  return shape;
}

Survey TakeSurvey(std::istream& stream, const ColumnRequest& request,
                  const KQDateTextOptions& options) {
  describe::CsvReader reader(stream, request.delimiter);
  describe::CsvField field;
  std::vector<std::string> names;
  const std::size_t headers = request.hasHeader ? 1 : 0;
  std::size_t column = 0;
  std::size_t rows = 0;
  Surveyor surveyor(options);
  std::string text;  // of the first row the column is not known before its end
  std::vector<std::string> first;
  while (reader.Next(field)) {
    if (field.row == 1) first.emplace_back(field.text);
    if (field.row == 1 && field.isLast) {
      for (std::size_t i = 0; i < first.size(); ++i) {
        names.push_back(request.hasHeader ? first[i] : "column " + std::to_string(i + 1));
      }
      const auto columns = describe::SelectColumns(request.column, names);
      if (columns.size() != 1) throw std::runtime_error("one column is read, not several");
      column = columns[0];
    }
    if (field.row > 1 && field.column == column) text = field.text;
    if (!field.isLast || field.row <= headers) continue;
    rows = field.row - headers;
    surveyor.Take(rows, field.line, field.row == 1 ? first[column] : text);
    text.clear();
  }
  if (rows == 0) throw std::runtime_error("there are no rows of data");
  Survey survey = surveyor.Finish();
  survey.column = names[column];
  survey.rows = rows;
  return survey;
}

}  // namespace vlm::dates

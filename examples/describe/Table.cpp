#include <examples/describe/Table.h>

#include <examples/common/Shown.h>
#include <examples/describe/CsvReader.h>
#include <examples/describe/Selection.h>
#include <examples/describe/Values.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace vlm::describe {
namespace {

using examples::Shown;

constexpr std::size_t kMostColumns = 100'000;
constexpr std::size_t kRowsOfTrial = 1000;
constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();

bool IsOfNumbers(const Column& column, std::size_t rows) {
  return rows - column.missing - column.texts > column.texts;
}

// Reads the rows of one stream into one table.
class TableReader {
 public:
  TableReader(std::istream& stream, const TableRequest& request, const ReadingProgress& progress)
      : reader_(stream, request.delimiter), request_(request), progress_(progress) {}

  Table Read() {
    ReadFirstRow();
    CsvField field;
    while (reader_.Next(field)) Take(field);
    if (table_.rows == 0) throw std::runtime_error("there are no rows of data");
    if (request_.columns.empty()) KeepNumbers();
    return std::move(table_);
  }

 private:
  void ReadFirstRow() {
    std::vector<std::string> first;
    CsvField field;
    field.isLast = false;
    while (!field.isLast && reader_.Next(field)) {
      if (first.size() == kMostColumns) throw std::runtime_error("more than 100,000 columns");
      first.emplace_back(field.text);
    }
    if (first.empty()) throw std::runtime_error("the file is empty");
    table_.fields = first.size();
    std::vector<std::string> names = first;
    for (std::size_t i = 0; i < names.size(); ++i) {
      names[i] = request_.hasHeader ? std::string(Trimmed(names[i])) : std::string();
      if (names[i].empty()) names[i] = "column " + std::to_string(i + 1);
    }
    Select(names);
    if (request_.hasHeader) return;
    for (std::size_t i = 0; i < first.size(); ++i) {
      Take({first[i], field.row, i, field.line, i + 1 == first.size()});
    }
  }

  void Select(const std::vector<std::string>& names) {
    slots_.assign(names.size(), kNowhere);
    for (const std::string& list : request_.columns) {
      for (const std::size_t place : SelectColumns(list, names)) {
        const std::size_t slot = SlotOf(place, names);
        const bool isNew = std::find(table_.described.begin(), table_.described.end(), slot) ==
                           table_.described.end();
        if (isNew) table_.described.push_back(slot);
      }
    }
    if (request_.columns.empty()) {
      for (std::size_t i = 0; i < names.size(); ++i) table_.described.push_back(SlotOf(i, names));
    }
    if (request_.spatial.empty()) return;
    for (const std::size_t place : SelectColumns(request_.spatial, names)) {
      table_.spatial.push_back(SlotOf(place, names));
    }
    if (table_.spatial.size() != 2 && table_.spatial.size() != 3) {
      throw std::runtime_error("points have two or three columns, x, y and perhaps z, not " +
                               std::to_string(table_.spatial.size()));
    }
  }

  std::size_t SlotOf(std::size_t place, const std::vector<std::string>& names) {
    if (slots_[place] == kNowhere) {
      slots_[place] = table_.columns.size();
      Column column;
      column.name = names[place];
      column.number = place + 1;
      table_.columns.push_back(std::move(column));
    }
    return slots_[place];
  }

  void Take(const CsvField& field) {
    if (field.column == 0) ++table_.rows;
    const Place here{table_.rows, field.line};
    if (field.column < slots_.size() && slots_[field.column] != kNowhere) {
      Put(table_.columns[slots_[field.column]], field.text, here);
    }
    if (field.isLast) EndRow(field.column + 1, here);
  }

  static void Put(Column& column, std::string_view text, const Place& here) {
    double number = kNone;
    const ValueKind kind = ReadValue(text, number);
    column.missing += kind == ValueKind::Missing;
    if (kind == ValueKind::Text && column.texts++ == 0) {
      column.firstText = here;
      column.firstTextIs = Shown(text);
    }
    column.values.push_back(kind == ValueKind::Number ? number : kNone);
  }

  void EndRow(std::size_t fields, const Place& here) {
    if (fields != table_.fields && table_.ragged++ == 0) {
      table_.firstRagged = here;
      table_.firstRaggedFields = fields;
    }
    if (fields < table_.fields) FillUp();
    if (table_.rows == std::numeric_limits<unsigned int>::max()) {
      throw std::runtime_error("more than 4,294,967,294 rows");
    }
    if (table_.rows == kRowsOfTrial && request_.columns.empty()) GiveUpTexts();
    if (progress_) progress_(reader_.BytesRead(), table_.rows);
  }

  void FillUp() {
    for (const std::size_t slot : slots_) {
      if (slot == kNowhere) continue;
      Column& column = table_.columns[slot];
      if (column.values.size() == table_.rows) continue;
      column.values.push_back(kNone);
      ++column.missing;
    }
  }

  [[nodiscard]] bool IsSpatial(std::size_t slot) const {
    return std::find(table_.spatial.begin(), table_.spatial.end(), slot) != table_.spatial.end();
  }

  // A column without any value so far may still turn out to be of numbers.
  void GiveUpTexts() {
    for (std::size_t& slot : slots_) {
      if (slot == kNowhere || IsSpatial(slot)) continue;
      Column& column = table_.columns[slot];
      if (column.texts == 0 || IsOfNumbers(column, table_.rows)) continue;
      column.values = {};
      slot = kNowhere;
    }
  }

  void KeepNumbers() {
    std::vector<std::size_t> kept;
    for (const std::size_t slot : table_.described) {
      const Column& column = table_.columns[slot];
      const bool isWhole = column.values.size() == table_.rows;
      if (isWhole && IsOfNumbers(column, table_.rows)) {
        kept.push_back(slot);
      } else {
        table_.leftOut.push_back(column.name);
      }
    }
    if (kept.empty()) {
      throw std::runtime_error(
          "no column holds more numbers than texts; is the delimiter right? columns named by "
          "--columns are taken as they are");
    }
    table_.described = std::move(kept);
  }

  CsvReader reader_;
  const TableRequest& request_;
  const ReadingProgress& progress_;
  Table table_;
  std::vector<std::size_t> slots_;  // where a column of the file stands in the table
};

}  // namespace

std::vector<double> Column::Numbers() const {
  std::vector<double> numbers;
  std::copy_if(values.begin(), values.end(), std::back_inserter(numbers),
               [](double value) { return !std::isnan(value); });
  return numbers;
}

Table ReadTable(std::istream& stream, const TableRequest& request,
                const ReadingProgress& progress) {
  return TableReader(stream, request, progress).Read();
}

RMatrix WholeRows(const Table& table, const std::vector<std::size_t>& columns) {
  std::vector<std::size_t> whole;
  for (std::size_t row = 0; row < table.rows; ++row) {
    const bool isWhole = std::none_of(columns.begin(), columns.end(), [&](std::size_t column) {
      return std::isnan(table.columns[column].values[row]);
    });
    if (isWhole) whole.push_back(row);
  }
  RMatrix matrix(static_cast<unsigned>(whole.size()), static_cast<unsigned>(columns.size()));
  for (unsigned i = 0; i < matrix.nRows(); ++i) {
    for (unsigned j = 0; j < matrix.nCols(); ++j) {
      matrix(i, j) = table.columns[columns[j]].values[whole[i]];
    }
  }
  return matrix;
}

}  // namespace vlm::describe

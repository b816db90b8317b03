// Reads any bytes as delimited text, in blocks of any size, and holds the fields against a reader
// that has the whole text at once. What is read as a table keeps its columns of one length.
#include <examples/describe/CsvReader.h>
#include <examples/describe/Table.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Rows = std::vector<std::vector<std::string>>;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "violated: %s\n", what);
  std::abort();
}

// Takes one field off the head of a text; nothing if it is wrong.
std::optional<std::string> TakeField(std::string_view& text, char delimiter) {
  const char stops[] = {delimiter, '\r', '\n'};
  const std::string_view anyStop(stops, 3);
  if (!text.starts_with('"')) {
    const std::string_view field = text.substr(0, text.find_first_of(anyStop));
    text.remove_prefix(field.size());
    return std::string(field);
  }
  std::string field;
  text.remove_prefix(1);
  while (true) {
    const std::size_t quote = text.find('"');
    if (quote == std::string_view::npos) return std::nullopt;
    field += text.substr(0, quote);
    text.remove_prefix(quote + 1);
    if (!text.starts_with('"')) break;
    field += '"';
    text.remove_prefix(1);
  }
  if (!text.empty() && anyStop.find(text[0]) == std::string_view::npos) return std::nullopt;
  return field;
}

std::optional<Rows> PlainRows(std::string_view text, char delimiter) {
  if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF")) return std::nullopt;
  if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
  Rows rows;
  while (true) {
    text.remove_prefix(std::min(text.find_first_not_of("\r\n"), text.size()));
    if (text.empty()) return rows;
    rows.emplace_back();
    bool goesOn = true;
    while (goesOn) {
      const std::optional<std::string> field = TakeField(text, delimiter);
      if (!field) return std::nullopt;
      rows.back().push_back(*field);
      goesOn = text.starts_with(delimiter);
      if (goesOn) text.remove_prefix(1);
    }
  }
}

std::optional<Rows> ReadRows(const std::string& text, char delimiter, std::size_t blockSize) {
  std::istringstream stream(text);
  vlm::describe::CsvReader reader(stream, delimiter, blockSize);
  vlm::describe::CsvField field;
  Rows rows;
  try {
    while (reader.Next(field)) {
      if (field.column == 0) rows.emplace_back();
      Require(field.row == rows.size(), "rows are counted");
      Require(field.column == rows.back().size(), "columns are counted");
      rows.back().emplace_back(field.text);
    }
  } catch (const std::runtime_error&) {
    return std::nullopt;
  }
  return rows;
}

void CheckTable(const std::string& text, const vlm::describe::TableRequest& request) {
  std::istringstream stream(text);
  try {
    const vlm::describe::Table table = vlm::describe::ReadTable(stream, request);
    Require(!table.described.empty() && table.rows > 0, "there is something to describe");
    for (const std::size_t described : table.described) {
      const vlm::describe::Column& column = table.columns[described];
      Require(column.values.size() == table.rows, "columns are as long as the table");
      Require(column.Numbers().size() + column.missing + column.texts == table.rows,
              "each value is a number, missing or a text");
    }
  } catch (const std::runtime_error&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 1) return 0;
  const unsigned mode = data[0];
  const std::string text(reinterpret_cast<const char*>(data) + 1,
                         std::min<std::size_t>(size - 1, 65536));
  constexpr char kDelimiters[] = {',', ';', '\t', ' '};
  vlm::describe::TableRequest request;
  request.delimiter = kDelimiters[mode % 4];
  request.hasHeader = mode / 4 % 2 == 0;
  Require(ReadRows(text, request.delimiter, 4 + mode / 8) == PlainRows(text, request.delimiter),
          "the fields are those of the whole text");
  CheckTable(text, request);
  request.columns = {"1"};
  CheckTable(text, request);
  return 0;
}

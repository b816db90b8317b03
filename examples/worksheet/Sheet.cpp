#include <examples/worksheet/Sheet.h>

#include <velum/core/Exception.h>
#include <examples/common/Shown.h>
#include <examples/describe/CsvReader.h>
#include <examples/describe/Values.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <stdexcept>

namespace vlm::worksheet {
namespace {

constexpr std::size_t kMostColumns = 100'000;
constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

// Those before the exponent, without zeros in front.
unsigned SignificantDigits(std::string_view text) {
  unsigned digits = 0;
  for (const char c : text.substr(0, text.find_first_of("eE"))) {
    if (c < '0' || c > '9' || (c == '0' && digits == 0)) continue;
    ++digits;
  }
  return digits;
}

class Reader {
 public:
  Reader(std::istream& stream, const Settings& settings, IProgress& progress)
      : reader_(stream, settings.delimiter), settings_(settings), progress_(progress) {}

  Sheet Read() {
    ReadNames();
    describe::CsvField field;
    while (reader_.Next(field)) {
      const unsigned row = sheet_.rows;
      if (field.column < slots_.size() && slots_[field.column] != kNowhere) {
        Put(row, slots_[field.column], field.text);
      }
      if (field.isLast) EndRow();
    }
    for (SheetColumn& column : sheet_.columns) {
      column.empty = sheet_.rows - column.numbers - column.texts;
      // A promotion counts bytes, and a float has fewer digits than an integer of its size.
      if (column.type == PrimFloat && column.digits > FLT_DIG) column.type = PrimDouble;
    }
    return std::move(sheet_);
  }

 private:
  void ReadNames() {
    std::vector<std::string> names;
    describe::CsvField field;
    while (!field.isLast && reader_.Next(field)) {
      if (names.size() == kMostColumns) throw std::runtime_error("more than 100,000 columns");
      names.emplace_back(describe::Trimmed(field.text));
    }
    if (names.empty()) throw std::runtime_error("the file is empty");
    slots_.assign(names.size(), kNowhere);
    std::vector<ColumnSetting> wanted = settings_.columns;
    if (wanted.empty()) {
      for (const std::string& name : names) wanted.push_back({name, name, "", true});
    }
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      const auto found = std::find(names.begin(), names.end(), wanted[i].name);
      auto place = static_cast<std::size_t>(found - names.begin());
      // Without settings two columns may have one name.
      if (settings_.columns.empty()) place = i;
      if (place == names.size()) {
        throw std::runtime_error("there is no column '" + examples::Shown(wanted[i].name) +
                                 "' among the " + std::to_string(names.size()));
      }
      if (slots_[place] != kNowhere) {
        throw std::runtime_error("the column '" + examples::Shown(wanted[i].name) +
                                 "' is asked for twice");
      }
      slots_[place] = i;
      sheet_.columns.push_back({wanted[i], 0, 0, 0, {}, 0});
    }
  }

  void Put(unsigned row, std::size_t slot, std::string_view text) {
    SheetColumn& column = sheet_.columns[slot];
    const auto place = static_cast<unsigned>(slot);
    double number = 0.0;
    switch (describe::ReadValue(text, number)) {
      case describe::ValueKind::Missing:
        return;
      case describe::ValueKind::Number: {
        sheet_.cells.SetCell(row, place, number);
        ++column.numbers;
        column.digits = std::max(column.digits, SignificantDigits(text));
        const CPrimType type = NarrowestType(text, number);
        column.type = CPrimType::Promote(column.type.value_or(type), type);
        return;
      }
      case describe::ValueKind::Text:
        sheet_.cells.SetCell(row, place, std::string(text).c_str());
        ++column.texts;
    }
  }

  void EndRow() {
    constexpr unsigned kRowsATime = 1024;
    ++sheet_.rows;
    if (sheet_.rows % kRowsATime != 0) return;
    progress_.Text(GString(std::to_string(sheet_.rows) + " rows"));
    progress_.Advance(static_cast<double>(reader_.BytesRead() - told_));
    told_ = reader_.BytesRead();
    if (progress_.IsCanceled()) throw UserAbortException("worksheet", __FILE_NAME__, __LINE__);
  }

  describe::CsvReader reader_;
  const Settings& settings_;
  IProgress& progress_;
  Sheet sheet_;
  std::vector<std::size_t> slots_;  // where a column of the file stands in the sheet
  std::uint64_t told_ = 0;
};

}  // namespace

CPrimType NarrowestType(std::string_view text, double number) {
  constexpr double kWhole = 9007199254740992.0;  // beyond it a double skips whole numbers
  if (number == std::floor(number) && std::abs(number) <= kWhole) {
    for (const PrimType type :
         {PrimUInt8, PrimInt8, PrimUInt16, PrimInt16, PrimUInt32, PrimInt32}) {
      if (CPrimType::Clip(type, number) == number) return type;
    }
    return PrimInt64;
  }
  const bool isShort = SignificantDigits(text) <= FLT_DIG;
  const double size = std::abs(number);
  return isShort && size >= FLT_MIN && size <= FLT_MAX ? PrimFloat : PrimDouble;
}

Sheet ReadSheet(std::istream& stream, const Settings& settings, IProgress& progress, double size) {
  progress.Begin("Reading", size);
  Sheet sheet = Reader(stream, settings, progress).Read();
  progress.End();
  return sheet;
}

std::vector<double> NumbersOf(const Sheet& sheet, unsigned column) {
  std::vector<double> numbers;
  double number = 0.0;
  for (unsigned row = 0; row < sheet.cells.GetRowCount(column); ++row) {
    if (sheet.cells.GetCell(row, column, number)) numbers.push_back(number);
  }
  return numbers;
}

}  // namespace vlm::worksheet

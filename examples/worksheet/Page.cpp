#include <examples/worksheet/Page.h>

#include <velum/core/StringFormat.h>
#include <velum/files/HtmlTags.h>
#include <velum/files/PrimData.h>
#include <velum/numerics/UnivariateStatistics.h>
#include <examples/common/HtmlEscape.h>
#include <examples/describe/Values.h>

#include <algorithm>
#include <map>
#include <ostream>

namespace vlm::worksheet {
namespace {

using examples::HtmlEscape;

constexpr char kStyle[] =
    "BODY    {margin:2em auto; max-width:62em; color:#202830;}\n"
    "H1, H2  {font-weight:normal; color:#184868;}\n"
    "H2      {margin-top:1.6em; border-bottom:1px solid #c0ccd4;}\n"
    "TABLE   {border-collapse:collapse; margin:1em 0; font-size:90%;}\n"
    "TD      {padding-top:3px; padding-bottom:3px; border-bottom:1px solid #dde4e8;}\n"
    "CAPTION {text-align:left; padding-bottom:0.4em; font-size:100%;}\n"
    ".head   {background-color:#e6eef4; font-weight:bold; border-bottom:1px solid #8098a8;}\n"
    ".number {text-align:right; white-space:nowrap;}\n"
    ".charts {margin:0;}\n"
    ".charts TD {border-bottom:none; padding:0 1em 1em 0; text-align:center;}\n"
    ".small  {color:#607080; font-size:80%;}";

std::string Counted(std::size_t count, const char* thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

// Cells of a class, whose texts are written as they are.
class Row {
 public:
  Row(std::ostream& out, const char* rowClass = "") : out_(out) {
    RowAttrib attributes;
    attributes.class_ = rowClass;
    out_ << TRBeg(attributes);
  }
  Row(const Row&) = delete;
  Row& operator=(const Row&) = delete;
  ~Row() { out_ << TREnd(); }

  Row& Text(const std::string& text) { return Cell(text, ""); }
  Row& Number(const std::string& text) { return Cell(text, "number"); }

 private:
  Row& Cell(const std::string& text, const char* cellClass) {
    CellAttrib attributes;
    attributes.class_ = cellClass;
    out_ << TDBeg("", "", attributes) << text << TDEnd();
    return *this;
  }

  std::ostream& out_;
};

void BeginTable(std::ostream& out, const char* caption, const char* summary) {
  TableAttrib table;
  table.summary = summary;
  out << TableBeg(table) << Caption(HtmlEscape(caption));
}

std::string Figure(double number) { return ToString("%.6g", number); }

// A number as its column's type has it.
std::string InType(CPrimType type, double number) {
  CPrimData data(type, nullptr);
  data = number;
  return data.GetDataAsString();
}

std::string TitleOf(const ColumnSetting& setting) {
  return HtmlEscape(setting.title + (setting.unit.empty() ? "" : " (" + setting.unit + ")"));
}

void WriteNumbers(std::ostream& out, const Sheet& sheet) {
  const bool hasAny = std::any_of(sheet.columns.begin(), sheet.columns.end(),
                                  [](const SheetColumn& column) { return column.numbers > 0; });
  if (!hasAny) return;
  out << Heading(2, "Numbers");
  BeginTable(out, "The type is the narrowest that holds every number of a column as it is written.",
             "Figures of the columns of numbers");
  {
    Row head(out, "head");
    head.Text("Column").Text("Type");
    for (const char* title : {"Numbers", "Empty", "Texts", "Minimum", "Median", "Mean", "Maximum",
                              "Deviation", "kB as type"}) {
      head.Number(title);
    }
  }
  for (unsigned i = 0; i < sheet.columns.size(); ++i) {
    const SheetColumn& column = sheet.columns[i];
    if (column.numbers == 0) continue;
    std::vector<double> numbers = NumbersOf(sheet, i);
    // Packed as it would be stored, which also tells how many bytes that takes.
    std::vector<unsigned char> packed(numbers.size() *
                                      static_cast<std::size_t>(column.type->Size()));
    CPrimType::CastArray(PrimDouble, numbers.data(), *column.type, packed.data(),
                         static_cast<int>(numbers.size()), 1);
    CUnivariateStatistics stats;
    Load(stats, numbers.begin(), numbers.end());
    Row(out)
        .Text(TitleOf(column.setting))
        .Text(column.type->Name())
        .Number(std::to_string(column.numbers))
        .Number(std::to_string(column.empty))
        .Number(std::to_string(column.texts))
        .Number(InType(*column.type, stats.Minimum))
        .Number(Figure(stats.Median))
        .Number(Figure(stats.Mean))
        .Number(InType(*column.type, stats.Maximum))
        .Number(Figure(stats.StdDev))
        .Number(ToString("%.1f", static_cast<double>(packed.size()) / 1000.0));
  }
  out << TableEnd();
}

void WriteTexts(std::ostream& out, const Sheet& sheet) {
  constexpr std::size_t kMostDistinct = 100'000;
  constexpr std::size_t kTold = 4;
  bool isFirst = true;
  for (unsigned i = 0; i < sheet.columns.size(); ++i) {
    const SheetColumn& column = sheet.columns[i];
    if (column.texts == 0) continue;
    std::map<std::string, std::size_t> counts;
    const char* text = nullptr;
    for (unsigned row = 0; row < sheet.rows && counts.size() < kMostDistinct; ++row) {
      if (sheet.cells.GetCell(row, i, text)) ++counts[text];
    }
    std::vector<std::pair<std::size_t, std::string>> order;
    for (const auto& [word, count] : counts) order.emplace_back(count, word);
    std::stable_sort(order.begin(), order.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    if (isFirst) {
      out << Heading(2, "Texts");
      BeginTable(out, "The words that come most often.", "Words of the columns of texts");
      Row(out, "head")
          .Text("Column")
          .Number("Texts")
          .Number("Empty")
          .Number("Different")
          .Text("Most often");
    }
    isFirst = false;
    std::string often;
    for (std::size_t j = 0; j < std::min(kTold, order.size()) && order[j].first > 1; ++j) {
      often += (j == 0 ? "" : ", ") + HtmlEscape(describe::Shown(order[j].second)) + " (" +
               std::to_string(order[j].first) + ")";
    }
    const bool isMore = counts.size() == kMostDistinct;
    Row(out)
        .Text(TitleOf(column.setting))
        .Number(std::to_string(column.texts))
        .Number(std::to_string(column.empty))
        .Number((isMore ? "at least " : "") + std::to_string(counts.size()))
        .Text(often.empty() ? "none comes twice" : often);
  }
  if (!isFirst) out << TableEnd();
}

void WriteCharts(std::ostream& out, const std::vector<Chart>& charts) {
  if (charts.empty()) return;
  out << Heading(2, "Charts");
  TableAttrib table;
  table.class_ = "charts";
  table.summary = "Histograms";
  out << TableBeg(table);
  for (std::size_t i = 0; i < charts.size(); i += 2) {
    out << TRBeg();
    for (std::size_t j = i; j < std::min(i + 2, charts.size()); ++j) {
      const Chart& chart = charts[j];
      out << TDBeg()
          << Img(HtmlEscape(chart.file), std::to_string(chart.width), std::to_string(chart.height),
                 "Histogram of " + HtmlEscape(chart.title))
          << TDEnd();
    }
    out << TREnd();
  }
  out << TableEnd();
}

void WriteRows(std::ostream& out, const Sheet& sheet, unsigned count) {
  count = std::min(count, sheet.rows);
  if (count == 0) return;
  out << Heading(2, "The first rows");
  BeginTable(out, "As they stand in the file; empty cells are empty.", "The first rows");
  {
    Row head(out, "head");
    for (const SheetColumn& column : sheet.columns) {
      column.texts > column.numbers ? head.Text(TitleOf(column.setting))
                                    : head.Number(TitleOf(column.setting));
    }
  }
  for (unsigned row = 0; row < count; ++row) {
    const std::vector<std::string> texts = sheet.cells.GetRow(row);
    Row cells(out);
    for (unsigned i = 0; i < sheet.columns.size(); ++i) {
      const std::string text = i < texts.size() ? HtmlEscape(describe::Shown(texts[i])) : "";
      sheet.columns[i].texts > sheet.columns[i].numbers ? cells.Text(text) : cells.Number(text);
    }
  }
  out << TableEnd();
}

}  // namespace

void WritePage(std::ostream& report, const Sheet& sheet, const Settings& settings,
               const std::string& file, const std::vector<Chart>& charts) {
  const std::string title = HtmlEscape(settings.title.empty() ? file : settings.title);
  report << Preamble(title, kStyle) << Heading(1, title);
  for (const std::string& note : settings.notes) report << Paragraph(HtmlEscape(note));
  report << Paragraph(HtmlEscape(file) + ": " + Counted(sheet.rows, "row") + ", " +
                      Counted(sheet.columns.size(), "column") + ".");
  WriteNumbers(report, sheet);
  WriteTexts(report, sheet);
  WriteCharts(report, charts);
  WriteRows(report, sheet, settings.rows);
  CoreAttrib small;
  small.class_ = "small";
  report << VSpace(1) << TimeStamp(small);
}

}  // namespace vlm::worksheet

#include <examples/worksheet/Page.h>

#include <velum/core/StringFormat.h>
#include <velum/files/HtmlTags.h>
#include <velum/numerics/UnivariateStatistics.h>
#include <examples/common/HtmlParts.h>
#include <examples/common/Shown.h>

#include <algorithm>
#include <map>
#include <ostream>

namespace vlm::worksheet {
namespace {

using examples::BeginHtmlTable;
using examples::HtmlEscape;
using examples::HtmlRow;

std::string Counted(std::size_t count, const char* thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

std::string Figure(double number) { return ToString("%.6g", number); }

// An end of a column's range, with all digits that a reader wants.
std::string End(double number) { return ToString("%.10g", number); }

std::string TitleOf(const ColumnSetting& setting) {
  return HtmlEscape(setting.title + (setting.unit.empty() ? "" : " (" + setting.unit + ")"));
}

void WriteNumbers(std::ostream& out, const Sheet& sheet) {
  const bool hasAny = std::any_of(sheet.columns.begin(), sheet.columns.end(),
                                  [](const SheetColumn& column) { return column.numbers > 0; });
  if (!hasAny) return;
  out << Heading(2, "Numbers");
  BeginHtmlTable(out, "The type holds every number of a column as it is written.",
                 "Figures of the columns of numbers");
  {
    HtmlRow head(out, "head");
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
    HtmlRow(out)
        .Name(TitleOf(column.setting))
        .Name(column.type->Name())
        .Number(std::to_string(column.numbers))
        .Number(std::to_string(column.empty))
        .Number(std::to_string(column.texts))
        .Number(End(stats.Minimum))
        .Number(Figure(stats.Median))
        .Number(Figure(stats.Mean))
        .Number(End(stats.Maximum))
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
      BeginHtmlTable(out, "The words that come most often.", "Words of the columns of texts");
      HtmlRow(out, "head")
          .Text("Column")
          .Number("Texts")
          .Number("Empty")
          .Number("Different")
          .Text("Most often");
    }
    isFirst = false;
    std::string often;
    for (std::size_t j = 0; j < std::min(kTold, order.size()) && order[j].first > 1; ++j) {
      often += (j == 0 ? "" : ", ") + HtmlEscape(examples::Shown(order[j].second)) + " (" +
               std::to_string(order[j].first) + ")";
    }
    const bool isMore = counts.size() == kMostDistinct;
    HtmlRow(out)
        .Name(TitleOf(column.setting))
        .Number(std::to_string(column.texts))
        .Number(std::to_string(column.empty))
        .Number((isMore ? "at least " : "") + std::to_string(counts.size()))
        .Text(often.empty() ? "none of these comes twice" : often);
  }
  if (!isFirst) out << TableEnd();
}

void WriteCharts(std::ostream& out, const std::vector<Chart>& charts) {
  if (charts.empty()) return;
  CoreAttrib small;
  small.class_ = "small";
  out << Heading(2, "Charts")
      << Paragraph(
             "Box: quartiles and median; whiskers: extremes; dot: mean. Curve: normal distribution "
             "of the same mean and deviation.",
             small);
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
  constexpr std::size_t kShort = 24;
  count = std::min(count, sheet.rows);
  if (count == 0) return;
  out << Heading(2, "The first rows");
  BeginHtmlTable(out, "As the worksheet holds them.", "The first rows");
  {
    HtmlRow head(out, "head");
    for (const SheetColumn& column : sheet.columns) {
      column.texts > column.numbers ? head.Name(TitleOf(column.setting))
                                    : head.Number(TitleOf(column.setting));
    }
  }
  for (unsigned row = 0; row < count; ++row) {
    const std::vector<std::string> texts = sheet.cells.GetRow(row);
    HtmlRow cells(out);
    for (unsigned i = 0; i < sheet.columns.size(); ++i) {
      const std::string text = i < texts.size() ? examples::Shown(texts[i]) : "";
      if (sheet.columns[i].texts <= sheet.columns[i].numbers) {
        cells.Number(HtmlEscape(text));
      } else if (text.size() <= kShort) {
        cells.Name(HtmlEscape(text));
      } else {
        cells.Text(HtmlEscape(text));
      }
    }
  }
  out << TableEnd();
}

}  // namespace

void WritePage(std::ostream& report, const Sheet& sheet, const Settings& settings,
               const std::string& file, const std::vector<Chart>& charts) {
  const std::string title = HtmlEscape(settings.title.empty() ? file : settings.title);
  report << Preamble(title, examples::PageStyle()) << Heading(1, title);
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

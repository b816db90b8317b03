#include <examples/describe/HtmlPage.h>

#include <velum/core/StringFormat.h>
#include <velum/files/HtmlReport.h>
#include <velum/numerics/MultivariateStatistics.h>
#include <velum/numerics/UnivariateStatistics.h>
#include <examples/common/HtmlParts.h>
#include <examples/common/Shown.h>
#include <examples/describe/DescribePicture.h>
#include <examples/describe/Report.h>

#include <sstream>
#include <vector>

namespace vlm::describe {
namespace {

using examples::HtmlEscape;
using examples::HtmlRow;
using examples::Shown;
using Figures = std::vector<std::pair<std::string, std::string>>;

// Wider tables are cut into several.
constexpr std::size_t kColumnsATable = 8;

// The figures by name, as the record prints itself.
Figures FiguresOf(const Column& column) {
  std::vector<double> numbers = column.Numbers();
  CUnivariateStatistics stats;
  Load(stats, numbers.begin(), numbers.end());
  std::stringstream text;
  text.precision(6);
  text << stats;
  Figures figures;
  for (std::string name, value; text >> name >> value;) figures.emplace_back(name, value);
  return figures;
}

void WriteFigures(std::ostream& out, const Table& table) {
  const std::vector<std::size_t>& described = table.described;
  for (std::size_t begin = 0; begin < described.size(); begin += kColumnsATable) {
    const std::size_t end = std::min(begin + kColumnsATable, described.size());
    std::vector<Figures> columns;
    std::size_t longest = 0;
    examples::BeginHtmlTable(out, "A figure that can't be told is nan or left out.",
                             "Figures of the columns");
    {
      HtmlRow head(out, "head");
      head.Text("");
      for (std::size_t i = begin; i < end; ++i) {
        const Column& column = table.columns[described[i]];
        head.Number(HtmlEscape(Shown(column.name)));
        columns.push_back(FiguresOf(column));
        if (columns.back().size() > columns[longest].size()) longest = columns.size() - 1;
      }
    }
    for (const auto& figure : columns[longest]) {
      HtmlRow row(out);
      row.Name(figure.first);
      for (const Figures& figures : columns) {
        std::string value;
        for (const auto& [name, text] : figures) {
          if (name == figure.first) value = text;
        }
        row.Number(value);
      }
    }
    out << TableEnd();
  }
}

void WriteMatrix(std::ostream& out, const RMatrix& matrix, const std::vector<std::string>& names,
                 const char* caption) {
  examples::BeginHtmlTable(out, caption, caption);
  {
    HtmlRow head(out, "head");
    head.Text("");
    for (const std::string& name : names) head.Number(name);
  }
  for (unsigned i = 0; i < matrix.nRows(); ++i) {
    HtmlRow row(out);
    row.Name(names[i]);
    for (unsigned j = 0; j < matrix.nCols(); ++j) row.Number(ToString("%.4f", matrix(i, j)));
  }
  out << TableEnd();
}

void WriteTogether(std::ostream& out, const Table& table) {
  const RMatrix rows = WholeRows(table, table.described);
  if (table.described.size() < 2 || table.described.size() > kColumnsATable || rows.nRows() < 2) {
    return;
  }
  CMultivariateStatistics stats;
  Load(stats, rows);
  std::vector<std::string> names;
  for (const std::size_t column : table.described) {
    names.push_back(HtmlEscape(Shown(table.columns[column].name)));
  }
  out << Heading(2, "Together")
      << Paragraph("Of " + std::to_string(rows.nRows()) + " rows that are whole.");
  WriteMatrix(out, stats.Correlation, names, "Correlation");
  WriteMatrix(out, stats.RankCorrelation, names, "Rank correlation");
}

}  // namespace

void WriteHtmlPage(const std::string& path, const Table& table, const std::string& title,
                   const std::map<std::string, std::string>& labels) {
  const std::string picture = path.substr(0, path.rfind(".html")) + ".png";
  DrawTable(table, title, labels, picture);
  std::stringstream notes;
  PrintNotes(notes, table);
  CHtmlReport report;
  report << Preamble(HtmlEscape(title), examples::PageStyle()) << Heading(1, HtmlEscape(title))
         << Paragraph(std::to_string(table.rows) + " rows, " + std::to_string(table.fields) +
                      " columns");
  for (std::string note; std::getline(notes, note);) report << Paragraph(HtmlEscape(note));
  ImageAttrib image;
  image.style = "max-width:100%";
  report << Heading(2, "Picture") << "<P>\n"
         << Img(HtmlEscape(picture.substr(picture.rfind('/') + 1)), "", "", "Charts of the columns",
                image)
         << "</P>\n"
         << Heading(2, "Figures");
  WriteFigures(report, table);
  WriteTogether(report, table);
  CoreAttrib small;
  small.class_ = "small";
  report << TimeStamp(small);
  examples::WriteReport(report, path);
}

}  // namespace vlm::describe

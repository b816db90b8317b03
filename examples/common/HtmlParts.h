#pragma once

/// \file
/// What the reports of the examples share: their style, rows of tables, any text as HTML.
///
///     report << vlm::Preamble("Wells", vlm::examples::PageStyle());
///     vlm::examples::BeginHtmlTable(report, "Depths", "The depths of all wells");
///     vlm::examples::HtmlRow(report).Text("well 7").Number("12.5");
///     report << vlm::TableEnd();

#include <iosfwd>
#include <string>

namespace vlm {
class CHtmlReport;
}

namespace vlm::examples {

/// A text in UTF-8 as it stands in a page in ASCII: `<`, `>`, `&` and quotes as entities, what is
/// not ASCII by its number; control characters and malformed bytes as U+FFFD. Line ends and tabs
/// stay.
[[nodiscard]] std::string HtmlEscape(const std::string& text);

/// Lines for the style sheet of a page. Its classes: `head` of a table's first row, `number` and
/// `name` of cells that don't break, `charts` of a table of pictures, `small`.
[[nodiscard]] const char* PageStyle();

/// Writes a report to a file.
///
/// *Errors*: `std::runtime_error` if the file is not there or is another afterwards: the report
/// itself says nothing.
void WriteReport(const CHtmlReport& report, const std::string& path);

/// Begins a table. The caption is any text; the summary, which is read aloud, is HTML.
void BeginHtmlTable(std::ostream& out, const std::string& caption, const char* summary);

/// A row of a table from its construction to its end. The texts of its cells are HTML.
class HtmlRow {
 public:
  /// Begins a row of a class.
  explicit HtmlRow(std::ostream& out, const char* rowClass = "");
  HtmlRow(const HtmlRow&) = delete;
  HtmlRow& operator=(const HtmlRow&) = delete;
  /// Ends the row.
  ~HtmlRow();

  /// Adds a cell of text.
  HtmlRow& Text(const std::string& text) { return Cell(text, ""); }
  /// Adds a cell whose text does not break.
  HtmlRow& Name(const std::string& text) { return Cell(text, "name"); }
  /// Adds a cell that stands on the right.
  HtmlRow& Number(const std::string& text) { return Cell(text, "number"); }

 private:
  HtmlRow& Cell(const std::string& text, const char* cellClass);

  std::ostream& out_;
};

}  // namespace vlm::examples

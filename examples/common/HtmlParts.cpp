#include <examples/common/HtmlParts.h>

#include <velum/core/WideText.h>
#include <velum/files/HtmlReport.h>
#include <examples/common/Program.h>

#include <cstdint>
#include <iterator>
#include <ostream>
#include <stdexcept>

namespace vlm::examples {
namespace {

constexpr std::uint32_t kMissing = 0xFFFD;

void AppendCharacter(std::string& out, std::uint32_t code) {
  const bool isBlank = code == '\t' || code == '\n' || code == '\r';
  if ((code < 0x20 && !isBlank) || (code >= 0x7F && code < 0xA0)) code = kMissing;
  switch (code) {
    case '<':
      out += "&lt;";
      return;
    case '>':
      out += "&gt;";
      return;
    case '&':
      out += "&amp;";
      return;
    case '"':
      out += "&quot;";
      return;
    default:
      break;
  }
  if (code < 0x7F) {
    out += static_cast<char>(code);
  } else {
    out += "&#" + std::to_string(code) + ";";
  }
}

}  // namespace

std::string HtmlEscape(const std::string& text) {
  std::string out;
  // A byte 0 would end the text.
  for (std::size_t begin = 0;; ++begin) {
    const std::size_t end = text.find('\0', begin);
    const AtoW wide(text.substr(begin, end - begin));
    for (const wchar_t* c = wide; *c; ++c) {
      auto code = static_cast<std::uint32_t>(*c);
      if (code >= 0xD800 && code < 0xDC00 && c[1]) {
        code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<std::uint32_t>(*++c) - 0xDC00);
      }
      AppendCharacter(out, code);
    }
    if (end == std::string::npos) return out;
    AppendCharacter(out, 0);
    begin = end;
  }
}

const char* PageStyle() {
  return "BODY    {margin:2em auto; max-width:64em; color:#202830;}\n"
         "H1, H2  {font-weight:normal; color:#184868;}\n"
         "H2      {margin-top:1.6em; border-bottom:1px solid #c0ccd4;}\n"
         "TABLE   {border-collapse:collapse; margin:1em 0; font-size:90%;}\n"
         "TD      {padding-top:3px; padding-bottom:3px; border-bottom:1px solid #dde4e8;}\n"
         "CAPTION {text-align:left; padding-bottom:0.5em; font-size:100%; font-weight:normal;\n"
         "         color:#506070;}\n"
         ".head   {background-color:#e6eef4; font-weight:bold;}\n"
         ".name   {white-space:nowrap;}\n"
         ".number {text-align:right; white-space:nowrap;}\n"
         ".charts {margin:0;}\n"
         ".charts TD {border-bottom:none; padding:0 1em 1em 0;}\n"
         ".small  {color:#506070; font-size:80%;}";
}

void WriteReport(const CHtmlReport& report, const std::string& path) {
  report.WriteToFile(path);
  std::ifstream file = OpenInput(path);
  const std::string written{std::istreambuf_iterator<char>(file), {}};
  if (written != report.GetReport() + "\n") throw std::runtime_error("cannot write '" + path + "'");
}

void BeginHtmlTable(std::ostream& out, const std::string& caption, const char* summary) {
  TableAttrib table;
  table.summary = summary;
  out << TableBeg(table) << Caption(HtmlEscape(caption));
}

HtmlRow::HtmlRow(std::ostream& out, const char* rowClass) : out_(out) {
  RowAttrib attributes;
  attributes.class_ = rowClass;
  out_ << TRBeg(attributes);
}

HtmlRow::~HtmlRow() { out_ << TREnd(); }

HtmlRow& HtmlRow::Cell(const std::string& text, const char* cellClass) {
  CellAttrib attributes;
  attributes.class_ = cellClass;
  out_ << TDBeg("", "", attributes) << text << TDEnd();
  return *this;
}

}  // namespace vlm::examples

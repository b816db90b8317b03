#include <examples/worksheet/Settings.h>

#include <velum/files/XMLScanner.h>
#include <examples/common/XmlParts.h>

#include <charconv>
#include <memory>
#include <stdexcept>

namespace vlm::worksheet {
namespace {

using examples::PlainText;
using examples::TakeAttributes;
using Node = std::shared_ptr<XMLNode>;

[[noreturn]] void Refuse(const std::string& reason) { throw std::runtime_error(reason); }

char DelimiterOf(const std::string& text) {
  if (text == "tab") return '\t';
  if (text.size() != 1 || text == "\"" || text == "\n" || text == "\r") {
    Refuse("a delimiter is one byte or tab, not '" + text + "'");
  }
  return text[0];
}

unsigned CountOf(const std::string& text) {
  constexpr unsigned kMost = 1000;
  unsigned count = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), count);
  if (error != std::errc() || end != text.data() + text.size() || count > kMost) {
    Refuse("rows are a number up to 1000, not '" + text + "'");
  }
  return count;
}

bool ChoiceOf(const std::string& text) {
  if (text != "yes" && text != "no") Refuse("a chart is yes or no, not '" + text + "'");
  return text == "yes";
}

ColumnSetting ColumnOf(const XMLNode& node) {
  ColumnSetting column;
  TakeAttributes(node,
                 {{"name", [&](const std::string& text) { column.name = text; }},
                  {"title", [&](const std::string& text) { column.title = text; }},
                  {"unit", [&](const std::string& text) { column.unit = text; }},
                  {"chart", [&](const std::string& text) { column.chart = ChoiceOf(text); }}});
  if (column.name.empty()) Refuse("a column needs its name");
  if (column.title.empty()) column.title = column.name;
  return column;
}

Settings SettingsOf(const XMLNode& root) {
  const Node worksheet = root.FindChild("worksheet", 0);
  if (!worksheet || root.FindChild("worksheet", 1)) Refuse("one element <worksheet> is needed");
  Settings settings;
  TakeAttributes(
      *worksheet,
      {{"title", [&](const std::string& text) { settings.title = text; }},
       {"delimiter", [&](const std::string& text) { settings.delimiter = DelimiterOf(text); }},
       {"rows", [&](const std::string& text) { settings.rows = CountOf(text); }}});
  for (const Node& child : worksheet->children) {
    if (child->name == "column") {
      settings.columns.push_back(ColumnOf(*child));
    } else if (child->name == "note") {
      settings.notes.push_back(PlainText(child->value));
    } else {
      Refuse("what is <" + child->name + ">? a worksheet has columns and notes");
    }
  }
  return settings;
}

}  // namespace

Settings ReadSettings(const std::string& path) {
  XMLScanner scanner;
  const Node root = scanner.ScanFile(path);
  try {
    return SettingsOf(*root);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(path + ": " + error.what());
  }
}

}  // namespace vlm::worksheet

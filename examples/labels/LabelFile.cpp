#include <examples/labels/LabelFile.h>

#include <examples/common/Program.h>

#include <fstream>
#include <istream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace vlm::examples {
namespace {

constexpr std::string_view kGroupMark = "## ";
constexpr std::string_view kNameMark = "# ";

// The lines between two blank ones, and the number of the first.
struct Record {
  std::size_t firstLine = 0;
  std::vector<std::string> lines;
};

bool ReadRecord(std::istream& stream, std::size_t& lineNumber, Record& record) {
  record.lines.clear();
  std::string line;
  while (std::getline(stream, line)) {
    ++lineNumber;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() && !record.lines.empty()) return true;
    if (line.empty()) continue;
    if (record.lines.empty()) record.firstLine = lineNumber;
    record.lines.push_back(std::move(line));
  }
  return !record.lines.empty();
}

bool IsComment(const Record& record) {
  for (const std::string& line : record.lines) {
    if (!line.starts_with('#')) return false;
  }
  return true;
}

void TakeJustification(Label& label) {
  constexpr std::pair<std::string_view, unsigned int> kSuffixes[] = {
      {" [left]", 1}, {" [center]", 2}, {" [right]", 3}};
  for (const auto& [suffix, justify] : kSuffixes) {
    if (label.name.ends_with(suffix)) {
      label.name.resize(label.name.size() - suffix.size());
      label.justify = justify;
      return;
    }
  }
}

Label MakeLabel(const Record& record, const std::string& group) {
  if (!record.lines.front().starts_with(kNameMark)) {
    throw std::runtime_error("line " + std::to_string(record.firstLine) +
                             ": a label begins with a line '# name'");
  }
  Label label;
  label.group = group;
  label.name = record.lines.front().substr(kNameMark.size());
  TakeJustification(label);
  for (std::size_t i = 1; i < record.lines.size(); ++i) {
    if (i > 1) label.text += '\n';
    label.text += record.lines[i];
  }
  return label;
}

}  // namespace

std::vector<Label> ReadLabels(std::istream& stream) {
  std::vector<Label> labels;
  std::string group;
  std::size_t lineNumber = 0;
  for (Record record; ReadRecord(stream, lineNumber, record);) {
    if (!IsComment(record)) {
      labels.push_back(MakeLabel(record, group));
    } else if (record.lines.front().starts_with(kGroupMark)) {
      group = record.lines.front().substr(kGroupMark.size());
    }
  }
  return labels;
}

std::vector<Label> ReadLabelFile(const std::string& path) {
  std::ifstream file = OpenInput(path);
  try {
    return ReadLabels(file);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(path + ": " + error.what());
  }
}

}  // namespace vlm::examples

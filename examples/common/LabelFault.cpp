#include <examples/common/LabelFault.h>

#include <velum/mathtext/MTParser.h>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace vlm::examples {
namespace {

// Long enough to recognise the place, short enough for one line.
constexpr std::size_t kQuotedBytes = 24;

// The beginning of a text, up to its line end, cut between two characters of UTF-8.
std::string Quote(std::string_view text) {
  std::size_t length = std::min(text.find_first_of("\r\n"), text.size());
  if (length <= kQuotedBytes) return "'" + std::string(text.substr(0, length)) + "'";
  length = kQuotedBytes;
  while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) --length;
  return "'" + std::string(text.substr(0, length)) + "...'";
}

// Keeps what must balance: the lines, the open substrings, and the open braces of each of these.
class FaultFinder final : public IMathTextScanner {
 public:
  std::optional<LabelFault> Find(const std::string& text) {
    text_ = text;
    ScanMathText(text.c_str(), *this);
    if (openBraces_.size() > 1) Report("'\\ssbeg' without '\\ssend'");
    return std::move(fault_);
  }

 private:
  void Newline() override {
    if (openBraces_.back() > 0) Report("the line ends before the closing brace");
    ++line_;
  }
  void PushState() override { ++openBraces_.back(); }
  void PopState() override {
    if (openBraces_.back() == 0) {
      Report("'}' without '{'");
    } else {
      --openBraces_.back();
    }
  }
  void BeginSubstring(double, double, HAlignment, VAlignment) override { openBraces_.push_back(0); }
  void EndSubstring() override {
    if (openBraces_.size() == 1) {
      Report("'\\ssend' without '\\ssbeg'");
    } else {
      openBraces_.pop_back();
    }
  }
  void Error(const char* rest) override {
    const std::string_view unread(rest);
    const std::string_view read = text_.substr(0, text_.size() - unread.size());
    const std::size_t lineStart = read.find_last_of("\r\n") + 1;  // npos + 1 is 0
    Report("cannot read " + Quote(unread), read.size() - lineStart + 1);
  }

  void Text(const char*) override {}
  void CharCode(unsigned int) override {}
  void Facename(const char*) override {}
  void FontSize(double) override {}
  void PredefinedColor(const Color4b&) override {}
  void Color(const Color4b&) override {}
  void ColorComponent(unsigned int, unsigned int) override {}
  void Bold() override {}
  void Italic() override {}
  void StrikeThrough() override {}
  void Underline() override {}
  void Plain() override {}
  void DateTime(const char*) override {}
  void VerticalOffset(double) override {}
  void SavePosition(unsigned int) override {}
  void RestorePosition(unsigned int) override {}
  void Line(double, double, Side) override {}

  // The first fault counts: what follows it may be its consequence.
  void Report(std::string reason, std::size_t column = 0) {
    if (!fault_) fault_ = LabelFault{std::move(reason), line_, column};
  }

  std::string_view text_;
  std::size_t line_ = 1;
  std::vector<std::size_t> openBraces_ = {0};
  std::optional<LabelFault> fault_;
};

}  // namespace

std::string LabelFault::Place() const {
  std::string place = "line " + std::to_string(line);
  if (column > 0) place += ", column " + std::to_string(column);
  return place;
}

std::string LabelFault::InWords() const { return Place() + ": " + reason; }

std::optional<LabelFault> FindFault(const std::string& text) {
  if (!ContainsMathText(text.c_str())) return std::nullopt;
  return FaultFinder().Find(text);
}

}  // namespace vlm::examples

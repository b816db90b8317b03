#include <examples/sketchbook/OptionValues.h>

#include <velum/core/StringConvert.h>
#include <velum/core/Tokenizer.h>
#include <examples/sketchbook/ColorNames.h>
#include <examples/sketchbook/Limits.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace vlm::sketchbook {
namespace {

constexpr const char* kArrows[] = {"none", "end", "both"};
constexpr const char* kAlignments[] = {"left", "center", "right"};

std::optional<double> ReadNumber(const GString& text) {
  double number = 0.0;
  if (!StringToDouble(text, number) || std::abs(number) > kLargest) return std::nullopt;
  return number;
}

// At least one point, if anything.
std::optional<std::vector<Vec2d>> ReadPoints(const GString& text) {
  std::vector<double> numbers;
  CTokenizer tokens(text.c_str());
  for (GString token; tokens.Parse(token, false) != CTokenizer::TokenEnd;) {
    const std::optional<double> number = ReadNumber(token);
    if (!number) return std::nullopt;
    numbers.push_back(*number);
  }
  if (numbers.empty() || numbers.size() % 2 != 0) return std::nullopt;
  std::vector<Vec2d> points;
  for (std::size_t i = 0; i < numbers.size(); i += 2) {
    points.emplace_back(numbers[i], numbers[i + 1]);
  }
  return points;
}

// The place of a word among three.
std::optional<int> ReadWord(const GString& text, const char* const (&words)[3]) {
  const auto* const found = std::find(std::begin(words), std::end(words), text.String());
  if (found == std::end(words)) return std::nullopt;
  return static_cast<int>(found - std::begin(words));
}

bool IsOfKind(OptionKind kind, const GString& text) {
  bool flag = false;
  switch (kind) {
    case OptionKind::Text:
      return !text.empty();
    case OptionKind::Name:
      return IsName(text);
    case OptionKind::Number:
      return ReadNumber(text).has_value();
    case OptionKind::Color:
      return ReadColor(text).has_value();
    case OptionKind::Flag:
      return StringToBool(text, flag);
    case OptionKind::Points:
      return ReadPoints(text).has_value();
    case OptionKind::Arrow:
      return ReadWord(text, kArrows).has_value();
    case OptionKind::Alignment:
      return ReadWord(text, kAlignments).has_value();
  }
  return false;
}

}  // namespace

const GString* OptionValues::Find(const GString& key) const {
  for (const auto& [name, value] : values_) {
    if (name == key) return &value;
  }
  return nullptr;
}

bool OptionValues::Set(const GString& key, const GString& value) {
  const auto row = std::find_if(table_.begin(), table_.end(),
                                [&](const OptionRow& candidate) { return key == candidate.key; });
  if (row == table_.end() || !IsOfKind(row->kind, value)) return false;
  for (auto& [name, old] : values_) {
    if (name == key) {
      old = value;
      return true;
    }
  }
  values_.emplace_back(key, value);
  return true;
}

GString OptionValues::Text(const GString& key, const GString& otherwise) const {
  const GString* const text = Find(key);
  return text == nullptr ? otherwise : *text;
}

double OptionValues::Number(const GString& key, double otherwise) const {
  return ReadNumber(Text(key)).value_or(otherwise);
}

Color4b OptionValues::Color(const GString& key, const Color4b& otherwise) const {
  return ReadColor(Text(key)).value_or(otherwise);
}

bool OptionValues::Flag(const GString& key) const {
  bool flag = false;
  StringToBool(Text(key), flag);
  return flag;
}

std::vector<Vec2d> OptionValues::Points(const GString& key) const {
  return ReadPoints(Text(key)).value_or(std::vector<Vec2d>());
}

sketchbook::Arrow OptionValues::Arrow(const GString& key) const {
  return static_cast<sketchbook::Arrow>(ReadWord(Text(key), kArrows).value_or(0));
}

unsigned int OptionValues::Alignment(const GString& key, unsigned int otherwise) const {
  const std::optional<int> word = ReadWord(Text(key), kAlignments);
  return word ? static_cast<unsigned int>(*word) + 1 : otherwise;
}

}  // namespace vlm::sketchbook

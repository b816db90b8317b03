#include <velum/dates/detail/TextShape.h>

#include <velum/dates/detail/ShapePatterns.h>

#include <gtest/gtest.h>

#include <cctype>
#include <random>
#include <string>

namespace vlm::detail {
namespace {

// The shape as a text of its own, and each pattern looked for in turn.
std::string ShapeOf(const std::string& text) {
  std::string shape;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    const bool goesOn =
        i + 1 < text.size() && std::isspace(static_cast<unsigned char>(text[i + 1]));
    if (std::isspace(c) && goesOn) continue;
    shape += std::isalpha(c) ? 'x' : std::isdigit(c) ? 'n' : text[i];
  }
  return shape;
}

template <class Patterns>
int TypeOf(const std::string& shape, const Patterns& patterns) {
  for (const ShapePattern& row : patterns) {
    if (shape.find(row.pattern) != std::string::npos) return row.type;
  }
  return 0;
}

void Check(const std::string& text) {
  const TextForm form = FormOfText(text.c_str());
  ASSERT_EQ(form.date, TypeOf(ShapeOf(text), kDatePatterns)) << text;
  ASSERT_EQ(form.time, TypeOf(ShapeOf(text), kTimePatterns)) << text;
}

TEST(FormOfText, IsTheFirstPatternThatAPlainSearchFinds) {
  EXPECT_EQ(kDatePatterns.size() + kTimePatterns.size(), 66u + 68u);
  for (const ShapePattern& row : kDatePatterns) Check(std::string(row.pattern));
  for (const ShapePattern& row : kTimePatterns) Check(std::string(row.pattern));
  std::mt19937 random(20101225);
  constexpr std::string_view kLetters = "00000aaaaNXnx//--::.. \t,_\xC3";
  for (int i = 0; i < 300000; ++i) {
    std::string text;
    for (auto length = random() % 24; length > 0; --length) {
      text += kLetters[random() % kLetters.size()];
    }
    // Pieces of patterns make longer matches likely.
    if (i % 2 == 0) text += kDatePatterns[random() % kDatePatterns.size()].pattern;
    if (i % 3 == 0) text += kTimePatterns[random() % kTimePatterns.size()].pattern;
    for (char& c : text) {
      if (c == 'n' && random() % 4 != 0) c = '7';
    }
    Check(text);
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace vlm::detail

#include <examples/labels/SourceCaption.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vlm::examples {
namespace {

TEST(SourceCaption, BreaksWhereADirectiveBeginsOrAWordEnds) {
  const struct {
    const char* why;
    const char* text;
    std::size_t width;
    std::vector<std::string> lines;
  } rows[] = {
      {"nothing", "", 5, {""}},
      {"just fits", "abcde", 5, {"abcde"}},
      {"no place to break", "abcdefg", 5, {"abcde", "fg"}},
      {"before a directive", "abc\\up5 d", 6, {"abc", "\\up5 d"}},
      {"behind a blank", "abc defg", 6, {"abc ", "defg"}},
      {"not too early", "a bcdefgh", 6, {"a bcde", "fgh"}},
      {"a brace stays with its directive", "abc{\\b d}", 5, {"abc", "{\\b ", "d}"}},
      {"line ends stay", "a\n\nb", 5, {"a", "", "b"}},
      {"a line end right at the width", "abcde\nf", 5, {"abcde", "f"}},
      {"a tab is one character", "a\tb", 5, {"a→b"}},
      {"characters of UTF-8 stay whole", "αβγδε", 3, {"αβγ", "δε"}},
  };
  for (const auto& row : rows) EXPECT_EQ(WrapSource(row.text, row.width), row.lines) << row.why;
}

}  // namespace
}  // namespace vlm::examples

#include <velum/core/HtmlText.h>
#include <velum/core/TerminatedText.h>

#include <gtest/gtest.h>

#include <random>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace vlm {
namespace {

TEST(MyStrncpy, CutsAndTerminates) {
  char text[] = "#######";
  MyStrncpy(text, "abcdef", 4);
  EXPECT_EQ(std::string(text, 7), std::string("abc\0###", 7));
  MyStrncpy(text, "x", 4);
  EXPECT_STREQ(text, "x");
  MyStrncpy(text, nullptr, 4);
  EXPECT_STREQ(text, "");
  text[0] = '#';
  MyStrncpy(text, "abc", 0);
  EXPECT_EQ(text[0], '#');
  wchar_t wide[] = L"####";
  MyStrncpy(wide, L"abcdef", 3);
  EXPECT_STREQ(wide, L"ab");
}

TEST(Trim, WorksInPlaceOnTerminatedText) {
  char text[] = " \ta b\n ";
  EXPECT_EQ(Trim(text), text + 2);
  EXPECT_STREQ(text + 2, "a b");
  char blank[] = "  ";
  EXPECT_STREQ(Trim(blank), "");
  EXPECT_EQ(Trim(static_cast<char*>(nullptr)), nullptr);
}

TEST(Contains, IsExactAndNeverTrueForTheEmptyText) {
  EXPECT_TRUE(Contains("abc", "bc"));
  EXPECT_FALSE(Contains("abc", "BC"));
  EXPECT_FALSE(Contains("abc", ""));
  EXPECT_FALSE(Contains("", ""));
  EXPECT_TRUE(Contains(L"abc", L"abc"));
}

TEST(BreakIntoSubstrings, SplitsAtAllLineEnds) {
  using Lines = std::vector<std::string>;
  const std::pair<const char*, Lines> rows[] = {
      {"a\r\nb\n\n", {"a", "b", ""}}, {"a", {"a"}}, {"a\r", {"a"}}, {"\n\ra", {"", "", "a"}},
      {"\r\r\n", {"", ""}},           {"", {}},     {nullptr, {}},
  };
  for (const auto& [text, lines] : rows) {
    Lines found{"old"};
    EXPECT_EQ(BreakIntoSubstrings(text, found), static_cast<int>(lines.size()));
    EXPECT_EQ(found, lines);
  }
}

TEST(ReplaceHTMLHexCodes, GivesOneElementForEachCode) {
  const std::pair<const char*, const char*> rows[] = {
      {"_x0041_", "A"},   {"a_X42_c", "aBc"}, {"_x41_x42_", "Ax42_"},
      {"__x41__", "_A_"}, {"_x0141_", "A"},   {"_x00041_", "_x00041_"},
      {"_x_", "_x_"},     {"_xg_", "_xg_"},   {"_x41", "_x41"},
      {"_", "_"},         {"", ""},
  };
  for (const auto& [text, plain] : rows) EXPECT_EQ(ReplaceHTMLHexCodes(text), plain) << text;
  EXPECT_EQ(ReplaceHTMLHexCodes(L"_x0141__x20AC_"), L"\u0141\u20AC");
  EXPECT_EQ(ReplaceHTMLHexCodes(std::string("a_x0_")), std::string("a\0", 2));
}

/// The same by the standard library's regular expressions.
std::string ByExpression(const std::string& text) {
  const std::regex code("_(?:x|X)([0-9a-fA-F]{1,4})_");
  std::string plain;
  auto rest = text.cbegin();
  for (std::sregex_iterator match(text.begin(), text.end(), code), end; match != end; ++match) {
    plain.append(rest, (*match)[0].first);
    plain += static_cast<char>(std::stoul((*match)[1].str(), nullptr, 16));
    rest = (*match)[0].second;
  }
  return plain.append(rest, text.cend());
}

TEST(ReplaceHTMLHexCodes, AgreesWithTheRegularExpression) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  for (int round = 0; round < 5000; ++round) {
    std::string text;
    for (int i = 0; i < 16; ++i) text += "__xX14aFg"[random() % 9];
    ASSERT_EQ(ReplaceHTMLHexCodes(text), ByExpression(text)) << text;
  }
}

TEST(ReplaceHTMLSpecialEntities, ReplacesTheAmpersandLast) {
  const std::pair<const char*, const char*> rows[] = {
      {"&quot;&apos;&lt;&gt;&amp;", "\"'<>&"},
      {"&amp;lt;", "&lt;"},
      {"&&lt;t;&Lt;&lt", "&<t;&Lt;&lt"},
      {"&amp;_x0041_", "&A"},
      {"_x0026_lt;", "&lt;"},
      {"plain", "plain"},
  };
  for (const auto& [text, plain] : rows) EXPECT_EQ(ReplaceHTMLSpecialEntities(text), plain) << text;
  EXPECT_EQ(ReplaceHTMLSpecialEntities(L"&lt;\u20AC_x20AC_"), L"<\u20AC\u20AC");
}

}  // namespace
}  // namespace vlm

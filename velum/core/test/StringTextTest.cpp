#include <velum/core/StringText.h>

#include <gmock/gmock.h>

#include <locale>
#include <vector>

namespace vlm {
namespace {

using ::testing::ElementsAre;

std::wstring Widened(const std::string& text) { return {text.begin(), text.end()}; }

TEST(Case, ChangesAsciiLettersAloneInThePlainLocale) {
  EXPECT_EQ(ToLower("AZ[az\xC4\xFF"), "az[az\xC4\xFF");
  EXPECT_EQ(ToUpper("AZ[az\xE4\xFF"), "AZ[AZ\xE4\xFF");
  EXPECT_EQ(ToLower(L"AZ\u00C4\u0391\U0001F600"), L"az\u00C4\u0391\U0001F600");
  EXPECT_EQ(ToUpper(L"az\u00E4\u03B1"), L"AZ\u00E4\u03B1");
  std::string text("Ab");
  std::wstring wide(L"Ab");
  MakeUpper(text);
  MakeUpper(wide);
  EXPECT_EQ(text, "AB");
  EXPECT_EQ(wide, L"AB");
  MakeLower(text);
  MakeLower(wide);
  EXPECT_EQ(text, "ab");
  EXPECT_EQ(wide, L"ab");
}

TEST(Trim, RemovesWhiteSpaceAtTheEndsNamed) {
  std::string text(" \t\n\v\f\r a b \xC2\xA0 ");
  EXPECT_EQ(&Trim(text), &text);
  EXPECT_EQ(text, "a b \xC2\xA0") << "bytes above 127 are no white space";
  for (const char* const blank : {"", " ", "\r\n"}) {
    std::string left(blank), right(blank), both(blank);
    EXPECT_EQ(TrimLeft(left) + TrimRight(right) + Trim(both), "");
  }
  std::string left(" a "), right(" a ");
  EXPECT_EQ(TrimLeft(left), "a ");
  EXPECT_EQ(TrimRight(right), " a");
  std::wstring wideLeft(L" a "), wideRight(L" a "), wideBoth(L" a ");
  EXPECT_EQ(TrimLeft(wideLeft), L"a ");
  EXPECT_EQ(TrimRight(wideRight), L" a");
  EXPECT_EQ(Trim(wideBoth), L"a");
}

/// Takes the underscore for white space, and nothing else.
class Underscores : public std::ctype<char> {
 public:
  Underscores() : std::ctype<char>(Table()) {}

 private:
  static const mask* Table() {
    static const std::vector<mask> table = [] {
      std::vector<mask> made(table_size, mask());
      made['_'] = space;
      return made;
    }();
    return table.data();
  }
};

TEST(Trim, AsksTheGlobalLocale) {
  const std::locale before =
      std::locale::global(std::locale(std::locale::classic(), new Underscores));
  std::string text("_ a _");
  Trim(text);
  std::locale::global(before);
  EXPECT_EQ(text, " a ");
}

template <class Char>
std::vector<std::basic_string<Char>> Tokens(const std::basic_string<Char>& line, Char delimiter,
                                            unsigned int& position) {
  std::vector<std::basic_string<Char>> tokens;
  while (position < line.size()) tokens.push_back(ParseToken(line, position, delimiter));
  return tokens;
}

TEST(ParseToken, ReadsTheFieldsOfALine) {
  using Fields = std::vector<std::string>;
  struct Row {
    const char* line;
    Fields fields;
    const char* why;
  };
  const Row rows[] = {
      {"\"a b\" , c,,d", {"a b", "c", "", "d"}, "quotes, blanks, an empty field"},
      {",a", {"", "a"}, "a delimiter at the start"},
      {"a,", {"a"}, "a delimiter at the end opens no field"},
      {" a b ,c ", {"a b", "c"}, "blanks around are no part"},
      {"a, ", {"a", ""}, "blanks alone"},
      {"\" a,b \",c", {" a,b ", "c"}, "blanks and delimiters stay inside quotes"},
      {"\"ab\"rest,c", {"ab", "c"}, "what follows the quote is passed over"},
      {"\"ab", {"ab"}, "an open quote ends with the line"},
      {"\"", {""}, "a quote alone"},
      {"a\"b\",c", {"a\"b\"", "c"}, "a quote inside is a character"},
      {"\"\",c", {"", "c"}, "an empty quote"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    const std::string line(row.line);
    unsigned int position = 0;
    EXPECT_EQ(Tokens(line, ',', position), row.fields);
    EXPECT_EQ(position, line.size());
    unsigned int widePosition = 0;
    const auto wide = Tokens(Widened(line), L',', widePosition);
    ASSERT_EQ(wide.size(), row.fields.size());
    for (std::size_t i = 0; i < wide.size(); ++i) EXPECT_EQ(wide[i], Widened(row.fields[i]));
  }
}

TEST(ParseToken, StaysAtAndBehindTheEnd) {
  for (const unsigned int start : {1u, 5u, 0xFFFFFFFFu}) {
    unsigned int position = start;
    EXPECT_EQ(ParseToken("a", position, ','), "");
    EXPECT_EQ(position, start);
  }
}

TEST(ParseToken, PassesOverADelimiterThatIsWhiteSpace) {
  unsigned int position = 0;
  EXPECT_THAT(Tokens(std::string("a\t\tb"), '\t', position), ElementsAre("a", "b"));
}

/// The meaning of a pattern, as plainly as it can be said.
bool Naive(const char* pattern, const char* text) {
  if (!*pattern) return !*text;
  if (*pattern == '*') return Naive(pattern + 1, text) || (*text && Naive(pattern, text + 1));
  return *text && (*pattern == '?' || *pattern == *text) && Naive(pattern + 1, text + 1);
}

TEST(WildCmp, AgreesWithTheNaiveMatcherOnAllShortTexts) {
  const auto texts = [](const std::string& letters, std::size_t longest) {
    std::vector<std::string> all{""};
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (all[i].size() == longest) continue;
      for (const char c : letters) all.push_back(all[i] + c);
    }
    return all;
  };
  for (const std::string& pattern : texts("ab*?", 5)) {
    for (const std::string& text : texts("ab*", 4)) {
      const bool expected = Naive(pattern.c_str(), text.c_str());
      ASSERT_EQ(WildCmp(pattern.c_str(), text.c_str(), true), expected) << pattern << " " << text;
      ASSERT_EQ(WildCmp(Widened(pattern).c_str(), Widened(text).c_str(), true), expected);
    }
  }
}

TEST(WildCmp, FoldsCaseOnlyWhenAsked) {
  EXPECT_TRUE(WildCmp("*.DAT", "wells.dat", false));
  EXPECT_FALSE(WildCmp("*.DAT", "wells.dat", true));
  EXPECT_TRUE(WildCmp(L"*.DAT", L"wells.dat", false));
  EXPECT_FALSE(WildCmp(L"*.DAT", L"wells.dat", true));
  EXPECT_FALSE(WildCmp("\xE4", "\xC4", false)) << "bytes above 127, in the plain locale";
}

TEST(WildCmp, RefusesNullAndEndsInTimeOnManyStars) {
  EXPECT_FALSE(WildCmp(nullptr, "a", true));
  EXPECT_FALSE(WildCmp("*", nullptr, true));
  EXPECT_FALSE(WildCmp(L"*", nullptr, true));
  std::string pattern;
  for (int i = 0; i < 100; ++i) pattern += "*a";
  EXPECT_FALSE(WildCmp((pattern + "b").c_str(), std::string(10000, 'a').c_str(), true));
}

}  // namespace
}  // namespace vlm

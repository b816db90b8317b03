#include <velum/core/GString.h>
#include <velum/core/NonComparable.h>
#include <velum/core/StandardErrors.h>
#include <velum/core/StringCompare.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <concepts>
#include <map>
#include <sstream>
#include <unordered_set>
#include <vector>

namespace vlm {
namespace {

using ::testing::ElementsAre;

std::string ByValue(std::string text) { return text; }
std::string ByReference(const std::string& text) { return text; }
void Change(std::string& text) { text += "!"; }
std::string TakeGString(const GString& text) { return text; }

TEST(GString, PassesForAStandardStringAndBack) {
  GString text("abc");
  const GString& constant = text;
  const std::string copy = text;
  const std::string direct(constant);
  EXPECT_EQ(copy + direct, "abcabc");
  EXPECT_EQ(ByValue(text) + ByReference(constant), "abcabc");
  Change(text);
  EXPECT_EQ(text, "abc!");
  std::vector<std::string> list;
  list.push_back(text);
  EXPECT_EQ(TakeGString(list[0]) + TakeGString("x"), "abc!x");
  const std::string& view = constant;
  EXPECT_EQ(&view, &text.String()) << "the conversion copies nothing";
}

TEST(GString, JoinsAndComparesWithEveryTextBesideIt) {
  const GString g("b");
  const std::string s("b");
  EXPECT_TRUE(g == s && s == g && g == "b" && "b" == g && g == GString(s));
  EXPECT_TRUE(g != "c" && "c" != g && !(g != s) && !(s != g));
  EXPECT_TRUE(g < "c" && "a" < g && g < std::string("c") && std::string("a") < g && g <= s);
  EXPECT_TRUE(GString("\x7F") < GString("\x80")) << "bytes are unsigned";
  const std::string joined = g + s + "-" + '+' + g + ("x" + g) + ('y' + g) + (s + g);
  EXPECT_EQ(joined, "bb-+bxbybbb");
  GString text;
  text += g;
  text += s;
  text += "c";
  text += 'd';
  EXPECT_EQ(text, "bbcd");
  text += text;
  EXPECT_EQ(text, "bbcdbbcd");
}

TEST(GString, StandsInTernariesContainersAndLoops) {
  const GString a("a");
  const bool yes = !a.empty();
  const GString chosen = yes ? a : "literal";
  const GString& reference = yes ? chosen : a;
  EXPECT_EQ(reference, "a");

  std::vector<GString> names{"b", "C", "a"};
  std::sort(names.begin(), names.end());
  EXPECT_THAT(names, ElementsAre("C", "a", "b"));
  std::sort(names.begin(), names.end(), StringLess());
  EXPECT_THAT(names, ElementsAre("a", "b", "C"));

  std::map<GString, int> counts;
  for (const char c : GString("abca")) ++counts[GString(1, c)];
  EXPECT_EQ(counts["a"], 2);
  EXPECT_EQ(std::unordered_set<GString>({"x", "y", "x"}).size(), 2u);

  GString text("abc");
  for (char& c : text) ++c;
  const GString& constant = text;
  for (const std::string& backward :
       {std::string(text.rbegin(), text.rend()), std::string(constant.rbegin(), constant.rend())}) {
    EXPECT_EQ(backward, "dcb");
  }
  EXPECT_EQ(std::string(text.cbegin(), text.cend()), "bcd");
  EXPECT_EQ(text.length(), 3u);
  std::ostringstream stream;
  stream << text << 1;
  EXPECT_EQ(stream.str(), "bcd1");
}

TEST(GString, IsBuiltFromWhatTextComesAs) {
  EXPECT_EQ(GString(3, 'x'), "xxx");
  GString text;
  text.resize(5);
  EXPECT_EQ(text, std::string(5, '\0'));
  text = 'c';
  EXPECT_EQ(text, "c");
  text = "abcdef";
  text.assign(text.c_str() + 2, 3);
  EXPECT_EQ(text, "cde") << "a part of itself";
  text.append(text.c_str(), 2).append(2, '!').append("?");
  EXPECT_EQ(text, "cdecd!!?");
  static_assert(!std::is_constructible_v<GString, std::nullptr_t>);
  static_assert(sizeof(GString) == sizeof(std::string));
}

// What std::string itself does is the model, on positions in and beyond the text.
TEST(GString, FindsCutsAndErasesAsAStandardStringDoes) {
  const std::string model("abcabc");
  const auto position = [](std::size_t found) {
    return found == std::string::npos ? GString::npos : static_cast<unsigned int>(found);
  };
  for (const unsigned int at : {0u, 1u, 3u, 5u, 6u, 7u, GString::npos}) {
    SCOPED_TRACE(at);
    const GString text(model);
    EXPECT_EQ(text.find('b', at), position(model.find('b', at)));
    EXPECT_EQ(text.find("bc", at), position(model.find("bc", at)));
    EXPECT_EQ(text.find(GString(), at), position(model.find("", at)));
    EXPECT_EQ(text.find_last_of('b', at), position(model.find_last_of('b', at)));
    if (at > model.size()) continue;
    for (const unsigned int count : {0u, 2u, GString::npos}) {
      EXPECT_EQ(text.substr(at, count), model.substr(at, count));
      std::string rest = model;
      EXPECT_EQ(GString(model).erase(at, count), rest.erase(at, count));
    }
  }
  GString text("abcd");
  EXPECT_EQ(*text.erase(text.begin()), 'b');
  EXPECT_EQ(*text.erase(text.begin(), text.begin() + 2), 'd');
}

template <class Error, class Action>
std::string TextOf(Action action) {
  try {
    action();
  } catch (const Error& error) {
    return error.what();
  }
  return "nothing thrown";
}

TEST(GString, PositionsBeyondTheEndThrowTheLibrarysText) {
  GString text("abc");
  const char* const expected = "invalid string position";
  EXPECT_EQ(TextOf<std::out_of_range>([&] { text.erase(4, 1); }), expected);
  EXPECT_EQ(TextOf<OutOfRangeError>([&] { (void)text.substr(4); }), expected);
  EXPECT_EQ(text, "abc");
}

TEST(GString, OutgrowingTheLargestSizeThrowsTheLibrarysText) {
  GString text("abc");
  const char* const expected = "string too long";
  constexpr unsigned int kTooMany = 0xFFFFFFFF;
  EXPECT_EQ(TextOf<std::length_error>([&] { GString(kTooMany, 'x'); }), expected);
  EXPECT_EQ(TextOf<LengthError>([&] { text.resize(kTooMany); }), expected);
  EXPECT_EQ(TextOf<LengthError>([&] { text.append(kTooMany - 3, 'x'); }), expected);
  EXPECT_EQ(TextOf<LengthError>([&] { text.append("x", kTooMany - 3); }), expected);
  EXPECT_EQ(text, "abc");
}

TEST(GString, NarrowTextIsNeverConverted) {
  GString text;
  EXPECT_EQ(text.FromNarrow("\xE9", 437), "\xE9");
  EXPECT_EQ(text.ToNarrow(1252), "\xE9");
  EXPECT_EQ(text.WtoAForDiagnostics(), "\xE9");
}

TEST(GString, GoesThroughWideTextInAnyCodePage) {
  EXPECT_EQ(GString("a\xC3\xA9").ToWide(), L"a\u00E9");
  EXPECT_EQ(GString("a\xE9").ToWide(1252), L"a\u00E9");
  EXPECT_EQ(GString("old").FromWide(L"\u00E9", 437), "\x82");
  EXPECT_EQ(GString("old").FromWide(L""), "");
  EXPECT_EQ(GString("old").FromWide(nullptr), "");
}

TEST(GString, ForwardsToTheFreeFunctions) {
  GString text(" AbC ");
  EXPECT_EQ(&text.Trim(), &text);
  EXPECT_EQ(text.ToLower() + text.ToUpper(), "abcABC");
  GString padded("  b \t");
  EXPECT_EQ(&padded.TrimLeft(), &padded);
  EXPECT_EQ(padded, "b \t");
  EXPECT_EQ(&padded.TrimRight(), &padded);
  EXPECT_EQ(padded, "b");
  padded.MakeUpper();
  EXPECT_EQ(padded, "B");
  text.MakeLower();
  EXPECT_TRUE(text.WildCmp("A?c", false));
  EXPECT_FALSE(text.WildCmp("A?c", true));
  EXPECT_TRUE(text.FormatString("%s%d", text.c_str(), 7));
  EXPECT_TRUE(text.AppendFormatString("%%"));
  EXPECT_EQ(text, "abc7%");
  EXPECT_FALSE(text.FormatString("%n"));
  EXPECT_EQ(text, "abc7%");
  unsigned int position = 0;
  EXPECT_EQ(GString("a;b").ParseToken(position, ';'), "a");
  EXPECT_EQ(position, 2u);

  bool truth = false;
  double real = 0;
  int whole = 0;
  std::int64_t large = 0;
  unsigned int natural = 0;
  EXPECT_TRUE(GString("T").ToBool(truth) && truth);
  EXPECT_TRUE(GString("2.5").ToDouble(real) && real == 2.5);
  EXPECT_TRUE(GString("-3").ToInt(whole) && whole == -3);
  EXPECT_TRUE(GString("-3000000000").ToInt64(large) && large == -3000000000);
  EXPECT_TRUE(GString("4000000000").ToUnsignedInt(natural) && natural == 4000000000u);
}

// What derives from NonComparable has no comparison, which the compiler tells.
struct Identity : private NonComparable {};

TEST(NonComparable, TakesComparisonAwayAndAddsNothing) {
  static_assert(!std::equality_comparable<Identity>);
  static_assert(!std::totally_ordered<Identity>);
  static_assert(std::is_empty_v<Identity> && std::copyable<Identity>);
}

}  // namespace
}  // namespace vlm

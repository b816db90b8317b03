#include <velum/core/WideText.h>

#include <gtest/gtest.h>

namespace vlm {
namespace {

std::wstring Wide(const char* text, unsigned int codePage = 0) {
  return static_cast<const wchar_t*>(AtoW(text, codePage));
}

std::string Narrow(const wchar_t* text, unsigned int codePage = 0) {
  return static_cast<const char*>(WtoA(text, codePage));
}

TEST(WideText, NullStaysNull) {
  EXPECT_EQ(static_cast<const wchar_t*>(AtoW(nullptr)), nullptr);
  EXPECT_EQ(static_cast<const char*>(WtoA(nullptr)), nullptr);
}

TEST(WideText, EmptyTextIsTerminated) {
  EXPECT_EQ(Wide(""), L"");
  EXPECT_EQ(Narrow(L""), "");
  EXPECT_EQ(Wide("", 1252), L"");
  EXPECT_EQ(Narrow(L"", 1252), "");
}

TEST(WideText, HoldsOneUnitInEachElement) {
  const AtoW face("\xF0\x9F\x98\x80");
  const wchar_t* const units = face;
  ASSERT_EQ(std::wcslen(units), 2u);
  EXPECT_EQ(units[0], 0xD83D);
  EXPECT_EQ(units[1], 0xDE00);
  EXPECT_EQ(Narrow(units), "\xF0\x9F\x98\x80");
  EXPECT_EQ(Narrow(L"\U0001F600"), "\xF0\x9F\x98\x80") << "a literal holds one element";
}

TEST(WideText, StopsAtTheFirstTerminator) { EXPECT_STREQ(AtoW(std::string("a\0b", 3)), L"a"); }

TEST(WideText, GoesThroughTheCodePageThatIsNamed) {
  EXPECT_EQ(Wide("\x80\xE9", 1252), L"\u20AC\u00E9");
  EXPECT_EQ(Narrow(L"\u20AC\u00E9", 1252), "\x80\xE9");
  EXPECT_EQ(Narrow(L"\u0416", 1252), "?");
  EXPECT_EQ(Wide("\xC3\xA9", 65001), L"\u00E9");
  EXPECT_EQ(Wide("abc", 4711), L"") << "no such page";
  EXPECT_EQ(Narrow(L"abc", 4711), "");
}

TEST(AtoWV, FormatsAndConverts) {
  EXPECT_STREQ(AtoWV("%s%d", "\xC3\xA9", 5),
               L"\u00E9"
               L"5");
  EXPECT_STREQ(AtoWV("%n"), L"");
  EXPECT_STREQ(AtoWV(nullptr), L"");
}

TEST(WtoAArray, KeepsTheLastText) {
  WtoAArray text;
  EXPECT_STREQ(text.c_str(), "");
  text.SetArray(L"\u00E9x");
  EXPECT_STREQ(text.c_str(), "\xC3\xA9x");
  const WtoAArray copy(text);
  text.SetArray(nullptr);
  EXPECT_STREQ(text.c_str(), "");
  EXPECT_STREQ(copy.c_str(), "\xC3\xA9x");
}

}  // namespace
}  // namespace vlm

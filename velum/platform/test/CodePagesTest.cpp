#include <velum/platform/detail/CodePages.h>
#include <velum/platform/detail/SystemMessages.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace vlm::platform {
namespace {

std::wstring Wide(std::string_view text, unsigned int codePage) {
  std::wstring wide(NarrowToWide(text, codePage, nullptr), L'\0');
  EXPECT_EQ(NarrowToWide(text, codePage, wide.data()), wide.size());
  std::wstring appended = L"before";
  AppendWide(text, codePage, appended);
  EXPECT_EQ(appended, L"before" + wide);
  return wide;
}

std::string Narrow(const std::wstring& text, unsigned int codePage) {
  std::string narrow(WideToNarrow(text, codePage, nullptr), '\0');
  EXPECT_EQ(WideToNarrow(text, codePage, narrow.data()), narrow.size());
  return narrow;
}

TEST(CodePages, KnowTheirCharacters) {
  struct Row {
    unsigned int codePage;
    std::string narrow;
    std::wstring wide;
  };
  // The bytes are those of the published tables of each page.
  const Row rows[] = {
      {0, "\xC3\xA9", L"\u00E9"},
      {1, "\xC3\xA9", L"\u00E9"},
      {65001, "\xC3\xA9", L"\u00E9"},
      {37, "\xC1\x51", L"A\u00E9"},
      {437, "\x82\xE4", L"\u00E9\u03A3"},
      {850, "\x82\xD0", L"\u00E9\u00F0"},
      {866, "\x80\xE0", L"\u0410\u0440"},
      {874, "\xA1", L"\u0E01"},
      {932, "\x82\xA0\x5C\xB1", L"\u3042\\\uFF71"},
      {936, "\xC4\xE3\xBA\xC3", L"\u4F60\u597D"},
      {949, "\xB0\xA1\x81\x41", L"\uAC00\uAC02"},
      {950, "\xA7\x41", L"\u4F60"},
      {1140, "\x9F", L"\u20AC"},
      {1250, "\x8A\xF8", L"\u0160\u0159"},
      {1251, "\xC6\x80", L"\u0416\u0402"},
      {1252, "\x80\xE9", L"\u20AC\u00E9"},
      {1253, "\xE1", L"\u03B1"},
      {1254, "\xFD", L"\u0131"},
      {1255, "\xE0", L"\u05D0"},
      {1256, "\xC7", L"\u0627"},
      {1257, "\xE0", L"\u0105"},
      {1258, "\xFE", L"\u20AB"},
      {10000, "\x8E", L"\u00E9"},
      {20127, "a~", L"a~"},
      {20866, "\xC1", L"\u0430"},
      {21866, "\xA4", L"\u0454"},
      {28591, "\xE9\x80", L"\u00E9\u0080"},
      {28592, "\xA9", L"\u0160"},
      {28595, "\xB6", L"\u0416"},
      {28597, "\xE1", L"\u03B1"},
      {28605, "\xA4", L"\u20AC"},
      {50220, "\x1B$B$\"\x1B(B", L"\u3042"},
      {51932, "\xA4\xA2", L"\u3042"},
      {51949, "\xB0\xA1", L"\uAC00"},
      {54936, "\x81\x30\x81\x30\xC4\xE3", L"\u0080\u4F60"},
      {65000, "+AOk-", L"\u00E9"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.codePage);
    EXPECT_TRUE(IsCodePage(row.codePage));
    EXPECT_EQ(Wide(row.narrow, row.codePage), row.wide);
    EXPECT_EQ(Narrow(row.wide, row.codePage), row.narrow);
  }
}

TEST(CodePages, WithSwitchesAreRead) {
  EXPECT_EQ(Wide("~{Dc~}a", 52936), L"\u4F60a");
  EXPECT_EQ(Wide("\xA4", 57002), L"\u0905");
}

TEST(CodePages, OfPersonalComputersPassAsciiUnchanged) {
  std::string ascii;
  for (char c = 0; c >= 0 && c < 127; ++c) ascii += c;
  ascii += '\x7F';
  for (const unsigned int codePage :
       {0u,     437u,   720u,   737u,   775u,   850u,   852u,   855u,   857u,   858u,
        860u,   861u,   862u,   863u,   865u,   866u,   869u,   874u,   932u,   936u,
        949u,   950u,   1250u,  1251u,  1252u,  1253u,  1254u,  1255u,  1256u,  1257u,
        1258u,  10000u, 10006u, 10007u, 10029u, 10081u, 20127u, 20866u, 20932u, 20936u,
        20949u, 21866u, 28591u, 28592u, 28593u, 28594u, 28595u, 28596u, 28597u, 28598u,
        28599u, 28603u, 28605u, 51932u, 51936u, 51949u, 54936u, 65001u}) {
    EXPECT_EQ(Wide(ascii, codePage), std::wstring(ascii.begin(), ascii.end())) << codePage;
    EXPECT_EQ(Narrow(std::wstring(ascii.begin(), ascii.end()), codePage), ascii) << codePage;
  }
}

TEST(CodePages, ANumberWithoutAPageGivesNothing) {
  for (const unsigned int codePage : {2u, 4711u, 1200u, 20000u, 0xFFFFFFFFu}) {
    EXPECT_FALSE(IsCodePage(codePage));
    EXPECT_EQ(Wide("abc", codePage), L"");
    EXPECT_EQ(Narrow(L"abc", codePage), "");
  }
}

TEST(CodePages, ReplaceWhatTheyCantRead) {
  EXPECT_EQ(Wide("a\xFFz", 20127), L"a\uFFFDz");
  EXPECT_EQ(Wide("a\x81", 932), L"a\uFFFD") << "cut by the end";
  EXPECT_EQ(Wide("\xA1z", 874), L"\u0E01z");
  EXPECT_EQ(Narrow(L"a\u0416\u200Bz", 1252), "a??z") << "an invisible character is missed, too";
  EXPECT_EQ(Narrow(L"\U0001F600", 437), "?") << "one mark for one character";
  EXPECT_EQ(Narrow({wchar_t(0xD83D), L'x'}, 1252), "?x");
  EXPECT_EQ(Narrow({wchar_t(0xD83D)}, 54936), Narrow(L"\uFFFD", 54936));
}

TEST(CodePages, LongTextsGoThroughInOnePiece) {
  std::wstring text;
  for (int i = 0; i < 3000; ++i) text += static_cast<wchar_t>(0x4E00 + i);
  for (int i = 0; i < 1001; ++i) text += {wchar_t(0xD83D), wchar_t(0xDE00 + i % 64)};
  for (const unsigned int codePage : {0u, 54936u, 65000u}) {
    EXPECT_EQ(Wide(Narrow(text, codePage), codePage), text) << codePage;
  }
}

TEST(CodePages, OfSingleBytesReadEachByteTheSameInATextOfAnyLength) {
  for (const unsigned int codePage : {37u, 437u, 1252u, 20127u, 20866u}) {
    std::string bytes;
    std::wstring characters;
    for (int i = 0; i < 300; ++i) {
      bytes += static_cast<char>(i * 37 % 256);  // ASCII and others by turns
      characters += Wide(bytes.substr(bytes.size() - 1), codePage);
      EXPECT_EQ(Wide(bytes, codePage), characters) << codePage << ", " << i;
    }
  }
}

TEST(CodePages, KeepNoStateBetweenCallsAndThreads) {
  EXPECT_EQ(Wide("\x1B$B", 50220), L"") << "left in another character set";
  EXPECT_EQ(Wide("a", 50220), L"a");
  std::thread([] { EXPECT_EQ(Wide("\xE9", 1252), L"\u00E9"); }).join();
}

TEST(SystemErrorText, IsNullForAnUnknownNumber) {
  EXPECT_STREQ(SystemErrorText(2), "No such file or directory");
  EXPECT_EQ(SystemErrorText(80), SystemErrorText(17)) << "a file that exists";
  EXPECT_EQ(SystemErrorText(99999), nullptr);
  EXPECT_EQ(SystemErrorText(0x100000002UL), nullptr);
}

}  // namespace
}  // namespace vlm::platform

#include <velum/platform/detail/Utf8.h>

#include <gtest/gtest.h>
#include <unicode/ustring.h>

#include <random>
#include <string>
#include <vector>

namespace vlm::platform {
namespace {

std::wstring Wide(std::string_view text) {
  std::wstring wide(Utf8ToWide(text, nullptr), L'\0');
  EXPECT_EQ(Utf8ToWide(text, wide.data()), wide.size());
  return wide;
}

std::string Narrow(const std::wstring& text) {
  std::string narrow(WideToUtf8(text, nullptr), '\0');
  EXPECT_EQ(WideToUtf8(text, narrow.data()), narrow.size());
  return narrow;
}

std::wstring WideByIcu(std::string_view text) {
  std::vector<UChar> units(text.size() + 1);
  int32_t length = 0;
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8WithSub(units.data(), static_cast<int32_t>(units.size()), &length, text.data(),
                       static_cast<int32_t>(text.size()), 0xFFFD, nullptr, &status);
  EXPECT_TRUE(U_SUCCESS(status));
  return {units.begin(), units.begin() + length};
}

TEST(Utf8, EachLongestPartOfABrokenCharacterIsReplacedOnce) {
  struct Row {
    std::string text;
    std::wstring wide;
    const char* why;
  };
  // The first four are the examples of The Unicode Standard 15.0, tables 3-8 to 3-11.
  const Row rows[] = {
      {"\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41", L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA",
       "longer forms than needed"},
      {"\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41", L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA",
       "surrogates"},
      {"\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42", L"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFD\uFFFDB",
       "beyond the last code point"},
      {"\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41", L"\uFFFD\uFFFD\uFFFD\uFFFDA", "cut characters"},
      {"\xE2\x82", L"\uFFFD", "cut by the end"},
      {std::string("a\0b", 3), std::wstring(L"a\0b", 3), "a terminator is a character"},
      {"\xEF\xBB\xBFx", L"\uFEFFx", "a byte order mark stays"},
      {"\xF4\x8F\xBF\xBF", {wchar_t(0xDBFF), wchar_t(0xDFFF)}, "the last code point"},
  };
  for (const Row& row : rows) EXPECT_EQ(Wide(row.text), row.wide) << row.why;
}

TEST(Utf8, AgreesWithIcuOnRandomBytes) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const std::string bytes("a\x80\xBF\xC2\xE0\xA0\xED\x9F\xF0\x90\xF4\x8F\xFF\xC1\xEE\xF1", 16);
  for (int i = 0; i < 50000; ++i) {
    std::string text;
    for (std::size_t left = random() % 60; left > 0; --left) {
      text += random() % 8 ? bytes[random() % bytes.size()] : static_cast<char>(random());
      if (random() % 6 == 0) text.append(random() % 20, 'x');
      if (random() % 8 == 0) {
        // Characters of two bytes are taken four at a time; one byte of these may be wrong.
        std::string four("\xD0\x96\xC3\xA9\xDF\xBF\xC2\x80");
        if (random() % 2) four[random() % 8] = bytes[random() % bytes.size()];
        text += four;
      }
    }
    ASSERT_EQ(Wide(text), WideByIcu(text));
  }
}

TEST(Utf8, EveryCodePointGoesThereAndBack) {
  std::wstring all;
  std::wstring units;
  for (char32_t code = 1; code <= 0x10FFFF; ++code) {
    if (code >= 0xD800 && code <= 0xDFFF) continue;
    all += static_cast<wchar_t>(code);
    wchar_t pair[2];
    units.append(pair, PutWide(code, pair));
  }
  EXPECT_EQ(Narrow(all), Narrow(units)) << "one element or two";
  EXPECT_EQ(Wide(Narrow(all)), units);
}

TEST(Utf8, ElementsThatAreNoCharacterAreReplaced) {
  EXPECT_EQ(Narrow({wchar_t(0xD83D), L'x'}), "\xEF\xBF\xBDx");
  EXPECT_EQ(Narrow({wchar_t(0xD83D)}), "\xEF\xBF\xBD");
  EXPECT_EQ(Narrow({wchar_t(0xDE00), wchar_t(0xD83D), wchar_t(0xDE00)}),
            "\xEF\xBF\xBD\xF0\x9F\x98\x80");
  EXPECT_EQ(Narrow({wchar_t(0x110000), wchar_t(-1)}), "\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
}  // namespace vlm::platform

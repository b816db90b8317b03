#include <velum/core/StringFormat.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>

namespace vlm {
namespace {

template <class Char>
bool FormatThroughList(std::basic_string<Char>* target, bool append, const Char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const bool done = append ? AppendFormatStringVA(*target, format, arguments)
                           : FormatStringVA(*target, format, arguments);
  va_end(arguments);
  return done;
}

TEST(FormatString, ReplacesAppendsOrGives) {
  std::string text("old");
  EXPECT_TRUE(FormatString(text, "%d %s", 5, "wells"));
  EXPECT_EQ(text, "5 wells");
  EXPECT_TRUE(AppendFormatString(text, " %c%5.2f%%", '=', 2.345));
  EXPECT_EQ(text, "5 wells = 2.35%");
  EXPECT_TRUE(FormatThroughList(&text, false, "%s", text.c_str() + 2)) << "its own text";
  EXPECT_TRUE(FormatThroughList(&text, true, "!"));
  EXPECT_EQ(text, "wells = 2.35%!");
  std::wstring wide(L"old");
  EXPECT_TRUE(FormatThroughList(&wide, false, L"%d %s", 5, L"wells"));
  EXPECT_TRUE(FormatThroughList(&wide, true, L" %c", '='));
  EXPECT_TRUE(AppendFormatString(wide, L"%5.2f%%", 2.345));
  EXPECT_EQ(wide, L"5 wells = 2.35%");
  EXPECT_EQ(ToString("%03d", 7), "007");
  EXPECT_EQ(ToString(L"%03d", 7), L"007");
  EXPECT_EQ(ToString(""), "");
}

TEST(FormatString, HasRoomFor8191Characters) {
  for (const int size : {255, 256, 8191}) {
    std::string narrow;
    std::wstring wide;
    EXPECT_TRUE(FormatString(narrow, "%*d", size, 1));
    EXPECT_TRUE(FormatString(wide, L"%*d", size, 1));
    EXPECT_EQ(narrow, std::string(static_cast<std::size_t>(size) - 1, ' ') + "1");
    EXPECT_EQ(wide, std::wstring(narrow.begin(), narrow.end()));
    EXPECT_TRUE(FormatString(narrow, "%*I64d", size, std::int64_t{1}));
    EXPECT_EQ(narrow.size(), static_cast<std::size_t>(size));
    const std::string text(static_cast<std::size_t>(size), 'x');
    EXPECT_EQ(ToString("%s", text.c_str()), text);
    EXPECT_EQ(ToString("%s%c", text.c_str() + 1, 'x'), text);
    EXPECT_EQ(ToString(text.c_str()), text);
  }
  const std::string most(8190, 'x');
  EXPECT_EQ(ToString("%s%d", most.c_str(), 1), most + '1');
  EXPECT_EQ(ToString("%s%d", most.c_str(), 12), "") << "no room for the last digit";
  EXPECT_EQ(ToString("%s%%%s", most.c_str(), ""), most + '%');
  EXPECT_EQ(ToString("%s%%%c", most.c_str(), 'x'), "");
}

TEST(FormatString, RefusalLeavesTheTargetAsItWas) {
  std::string text("old");
  std::wstring wide(L"old");
  const std::string tooLong(8192, 'x');
  const std::wstring tooLongWide(8192, L'x');
  int written = 0;
  EXPECT_FALSE(FormatString(text, "%s", tooLong.c_str()));
  EXPECT_FALSE(FormatString(text, "%hs", tooLong.c_str()));
  EXPECT_FALSE(FormatString(text, "%8192d", 1));
  EXPECT_FALSE(FormatString(text, "%8192I64d", std::int64_t{1}));
  EXPECT_FALSE(FormatString(text, tooLong.c_str()));
  EXPECT_FALSE(AppendFormatString(text, "%s", tooLong.c_str()));
  EXPECT_FALSE(FormatString(wide, L"%s", tooLongWide.c_str()));
  EXPECT_FALSE(FormatString(wide, tooLongWide.c_str()));
  EXPECT_FALSE(AppendFormatString(wide, L"%s", tooLongWide.c_str()));
  EXPECT_FALSE(FormatString(text, static_cast<const char*>(nullptr)));
  EXPECT_FALSE(FormatString(wide, static_cast<const wchar_t*>(nullptr)));
  EXPECT_FALSE(FormatString(text, "a%n", &written));
  EXPECT_FALSE(FormatString(wide, L"a%n", &written));
  for (const char* const format : {"%", "%5", "%y", "%1$d", "%m", "%Ls", "%I16d", "%lp", "%\xE9"}) {
    EXPECT_FALSE(FormatString(text, format, 1)) << format;
    const std::string narrow(format);
    EXPECT_FALSE(FormatString(wide, std::wstring(narrow.begin(), narrow.end()).c_str(), 1))
        << format;
  }
  EXPECT_EQ(text, "old");
  EXPECT_EQ(wide, L"old");
  EXPECT_EQ(written, 0);
  EXPECT_EQ(ToString("%s", tooLong.c_str()), "");
}

TEST(FormatString, KnowsTheIntegersOfEverySize) {
  EXPECT_EQ(ToString("%d|%d|%u|%u", 0, INT_MIN, UINT_MAX, 0u), "0|-2147483648|4294967295|0");
  const std::int64_t large = -(std::int64_t{1} << 40);
  const auto natural = static_cast<std::uint64_t>(large);
  EXPECT_EQ(ToString("%I64d|%I64i", large, large), "-1099511627776|-1099511627776");
  EXPECT_EQ(ToString("%I64u|%I64x", natural, natural), "18446742974197923840|ffffff0000000000");
  EXPECT_EQ(ToString("%#I64X|%020I64d", natural, large), "0XFFFFFF0000000000|-0000001099511627776");
  EXPECT_EQ(ToString("%Id|%Iu|%Ix", std::ptrdiff_t{-5}, std::size_t{5}, std::size_t{255}),
            "-5|5|ff");
  EXPECT_EQ(ToString("%I32d|%I32u", -1, 0xFFFFFFFFu), "-1|4294967295");
  EXPECT_EQ(ToString("%hhd|%hhu|%hd|%hu|%S", 0x1FF, 0x1FF, 0x1FFFF, 0x1FFFF, L""),
            "-1|255|-1|65535|");
  EXPECT_EQ(ToString("%ld|%lu|%lld|%jd|%zu|%td|%S", -1L, 1UL, -1LL, std::intmax_t{-1},
                     std::size_t{1}, std::ptrdiff_t{-1}, L""),
            "-1|1|-1|-1|1|-1|");
}

TEST(FormatString, TextChangesItsWidthWithoutALocale) {
  // e acute, a euro sign, a grinning face
  const char* const narrow = "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
  const wchar_t wide[] = {0xE9, 0x20AC, 0xD83D, 0xDE00, 0};
  EXPECT_EQ(ToString("%ls", wide), narrow);
  EXPECT_EQ(ToString("%S", wide), narrow);
  EXPECT_EQ(ToString("%ws", wide), narrow);
  EXPECT_EQ(ToString("%hs%hS", "\xC3", "\xA9"), "\xC3\xA9") << "bytes stay as they are";
  EXPECT_EQ(ToString(L"%s", wide), wide);
  EXPECT_EQ(ToString(L"%ls", wide), wide);
  EXPECT_EQ(ToString(L"%hs", narrow), wide);
  EXPECT_EQ(ToString(L"%S", narrow), wide);
  EXPECT_EQ(ToString("%lc%C%c", 0x20AC, L'\u00E9', 'x'), "\xE2\x82\xAC\xC3\xA9x");
  EXPECT_EQ(ToString(L"%c%hc%C%lc", 0x20AC, 'a', 'b', L'c'), L"\u20ACabc");
  EXPECT_EQ(ToString(L"%c \U0001F600", 0x1F600), std::wstring(wide + 2) + L" " + (wide + 2))
      << "an element above 0xFFFF becomes a pair";
  EXPECT_EQ(ToString("%ls|%lc", L"\xD83D", 0xDC00), "\xEF\xBF\xBD|\xEF\xBF\xBD");
  EXPECT_EQ(ToString(L"%hs|%hc", "\xE2\x82", '\xE9'), L"\uFFFD|\uFFFD");
}

TEST(FormatString, WidthAndPrecisionCountElementsAndCutNoCharacter) {
  EXPECT_EQ(
      ToString("[%6ls|%-6ls|%.3ls|%.4ls]", L"\u20AC", L"\u20AC", L"\u20AC\u20AC", L"\u20AC\u20AC"),
      "[   \xE2\x82\xAC|\xE2\x82\xAC   |\xE2\x82\xAC|\xE2\x82\xAC]");
  EXPECT_EQ(
      ToString(L"[%3hs|%-3hs|%.1hs]", "\xE2\x82\xAC", "\xE2\x82\xAC", "\xE2\x82\xAC\xE2\x82\xAC"),
      L"[  \u20AC|\u20AC  |\u20AC]");
  EXPECT_EQ(ToString(L"[%.1hs]", "\xF0\x9F\x98\x80"), L"[]") << "a pair is not cut";
  EXPECT_EQ(ToString(L"[%*s|%-*s|%.*s]", -3, L"a", 3, L"b", -1, L"cd"), L"[a  |b  |cd]");
  const char unterminated[] = {'a', 'b'};
  EXPECT_EQ(ToString(L"%.2hs", unterminated), L"ab");
}

TEST(FormatString, EndsAtTheFirstTerminatorAndShowsNull) {
  const char* const null = nullptr;
  const wchar_t* const wideNull = nullptr;
  EXPECT_EQ(ToString("a%cb", 0), "a");
  EXPECT_EQ(ToString("a%cb%S", 0, L""), "a");
  EXPECT_EQ(ToString(L"a%cb", 0), L"a");
  EXPECT_EQ(ToString("%S|%hs", wideNull, null), "(null)|(null)");
  EXPECT_EQ(ToString(L"%s|%.2hs", wideNull, null), L"(null)|(n");
}

// The engine of this library against C's own, on directives that both know.
TEST(FormatString, AgreesWithTheRuntimeOnRandomDirectives) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const auto any = [&random](const char* letters, std::size_t count) {
    return letters[random() % count];
  };
  for (int i = 0; i < 20000; ++i) {
    std::string format = "<%";
    while (random() % 3 == 0) format += any("-+ #0", 5);
    if (random() % 2) format += std::to_string(random() % 30);
    if (random() % 2) format.append(".").append(std::to_string(random() % 20));
    char expected[1024];
    std::string text;
    std::wstring wide;
    const auto compare = [&](auto value) {
      const std::string ours = format + ">%S";  // the added directive is not C's
      const std::string plain = format + ">";
      std::snprintf(expected, sizeof(expected), plain.c_str(), value);
      ASSERT_TRUE(FormatString(text, ours.c_str(), value, L"")) << format;
      ASSERT_EQ(text, expected) << format;
      ASSERT_TRUE(FormatString(wide, std::wstring(plain.begin(), plain.end()).c_str(), value));
      ASSERT_EQ(wide, std::wstring(text.begin(), text.end())) << format;
    };
    const std::uint64_t bits = random() * (std::uint64_t{1} << 32) + random();
    switch (random() % 4) {
      case 0:
        format += any("dioxXu", 6);
        compare(static_cast<int>(bits));
        break;
      case 1:
        format += "ll";
        format += any("dioxXu", 6);
        compare(static_cast<long long>(bits));
        break;
      case 2:
        format += any("fFeEgGaA", 8);
        compare(static_cast<double>(static_cast<std::int64_t>(bits)) / 1e12);
        break;
      default:
        format += 'L';
        format += any("feg", 3);
        compare(static_cast<long double>(bits) / 7);
    }
    if (HasFatalFailure()) return;
  }
}

TEST(FormatString, WritesRealNumbersAsTheRuntimeDoes) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937_64 random(seed);
  const auto compare = [](const std::string& format, double value) {
    char expected[1024];
    std::snprintf(expected, sizeof(expected), format.c_str(), value);
    ASSERT_EQ(ToString(format.c_str(), value), expected) << format;
  };
  for (const double value : {0.0, -0.0, 0.5, 1.5, 2.5, 0.125, 1e23, 5e-324, HUGE_VAL, -HUGE_VAL}) {
    for (const char* const format : {"%f", "%g", "%.0f", "%.f", "%.1f", "%.2f", "%.17g", "%.0g"}) {
      compare(format, value);
    }
  }
  for (int i = 0; i < 20000 && !::testing::Test::HasFatalFailure(); ++i) {
    const std::uint64_t bits = random();
    double value = 0;
    std::memcpy(&value, &bits, sizeof(value));
    const bool isPlain = random() % 2;
    if (isPlain) value = static_cast<double>(static_cast<std::int64_t>(bits)) / 1e15;
    std::string format = "%";
    if (random() % 4) format.append(".").append(std::to_string(random() % 25));
    compare(format + (random() % 2 ? 'f' : 'g'), value);
  }
}

}  // namespace
}  // namespace vlm

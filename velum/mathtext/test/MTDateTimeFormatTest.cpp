#include <velum/mathtext/MTDateTimeFormat.h>

#include <gtest/gtest.h>

namespace vlm {
namespace {

TEST(MathTextDTToPrintfFormat, ConvertsTheLongestEntryAndCopiesTheNextByte) {
  const char* const rows[][2] = {
      {"", ""},
      {"mm/dd/yy", "%m/%d/%y"},
      {"h:nn tt", "%#I:%M %p"},
      {"ddmm", "%dm%#m"},
      {"hhnn", "%#Hnn"},
      {"Q", "Q"},
      {"d dd ddd dddd", "%#d %d %a %A"},
      {"m mm mmm mmmm", "%#m %m %b %B"},
      {"yyyy HH ss", "%Y %H %S"},
      {"y MM H", "y MM H"},
      {"\xC3\xA9 d", "\xC3\xA9 %#d"},
  };
  for (const auto& row : rows) EXPECT_EQ(MathTextDTToPrintfFormat(row[0]), row[1]) << row[0];
}

TEST(PrintfToMathTextDTFormat, IsTheSameWithTheTableTurnedRound) {
  const char* const rows[][2] = {
      {"%#I:%M %p", "h:nn tt"}, {"%m/%d/%y", "mm/dd/yy"}, {"%I %j", "%I %j"},
      {"%H%M", "HH%M"},         {"%#H %#d", "hh d"},      {"%", "%"},
  };
  for (const auto& row : rows) EXPECT_EQ(PrintfToMathTextDTFormat(row[0]), row[1]) << row[0];
}

TEST(MathTextDTToPrintfFormat, KeepsZeroBytes) {
  GString pattern(3, '\0');
  pattern[1] = 'd';
  EXPECT_EQ(MathTextDTToPrintfFormat(pattern), GString(1, '\0') + "%#d" + '\0');
}

}  // namespace
}  // namespace vlm

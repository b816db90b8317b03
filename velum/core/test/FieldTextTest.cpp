#include <velum/core/FieldText.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>
#include <string>

namespace vlm {
namespace {

std::wstring Widened(const std::string& text) { return {text.begin(), text.end()}; }

TEST(IsNumber, FollowsItsGrammar) {
  struct Row {
    const char* text;
    bool isNumber;
  };
  const Row rows[] = {
      {"1.5e3", true},  {".5", true},   {"1.", true},    {"1d5", true},   {"1D-5", true},
      {"\t-7 a", true}, {"+0", true},   {"1.e+2", true}, {"1\n", true},   {".", false},
      {"1e", false},    {"", false},    {" ", false},    {"-", false},    {"+-1", false},
      {"7a", false},    {"1e+", false}, {"e5", false},   {"-.", false},   {"1,", false},
      {"0x1", false},   {"inf", false}, {"1.5.", false}, {"1e5.", false}, {"- 1", false},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(IsNumber(row.text), row.isNumber) << row.text;
    EXPECT_EQ(IsNumber(Widened(row.text).c_str()), row.isNumber) << row.text;
  }
  EXPECT_FALSE(IsNumber(static_cast<const char*>(nullptr)));
  EXPECT_FALSE(IsNumber(static_cast<const wchar_t*>(nullptr)));
}

TEST(ParseDouble, ReadsTheNumberAndOneComma) {
  struct Row {
    std::string text;
    double value;
    std::string rest;
    const char* why;
  };
  const double kInfinity = std::numeric_limits<double>::infinity();
  const Row rows[] = {
      {" 1.5 , 2", 1.5, " 2", "white space on both sides"},
      {"-.5e-1x", -0.05, "x", "what stands behind stays"},
      {"+2,,3", 2, ",3", "one comma alone"},
      {"1e", 1, "", "an exponent without digits"},
      {"1.2.3", 1.2, ".3", "one point"},
      {".", 0, "", "a point is something"},
      {"e5", 0, "", "and so is an exponent"},
      {"-1e999", -kInfinity, "", "too large"},
      {"1" + std::string(253, '0'), 1e253, "", "254 characters"},
      {"0x10", 0, "x10", "not hexadecimal"},
  };
  for (const Row& row : rows) {
    double value = 7;
    const char* next = nullptr;
    EXPECT_TRUE(ParseDouble(row.text.c_str(), &value, &next)) << row.why;
    EXPECT_EQ(value, row.value) << row.why;
    EXPECT_EQ(std::string(next), row.rest) << row.why;
  }
  double zero = 1;
  EXPECT_TRUE(ParseDouble("-0", &zero, nullptr));
  EXPECT_TRUE(std::signbit(zero));
}

TEST(ParseDouble, ChangesNothingWhereThereIsNoNumber) {
  for (const std::string& text : {std::string("-"), std::string(" abc"), std::string(),
                                  std::string("- 1"), "1" + std::string(254, '0')}) {
    double value = 7;
    const char* next = text.c_str();
    EXPECT_FALSE(ParseDouble(text.c_str(), &value, &next)) << text;
    EXPECT_EQ(value, 7);
    EXPECT_EQ(next, text.c_str());
  }
  double value = 7;
  EXPECT_FALSE(ParseDouble(nullptr, &value, nullptr));
  EXPECT_FALSE(ParseDouble("1", nullptr, nullptr));
}

TEST(ParseDouble, HasThePointInEveryLocale) {
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  ASSERT_NE(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"), nullptr);
  double value = 0;
  const char* next = nullptr;
  const bool read = ParseDouble("1.5,2", &value, &next);
  std::setlocale(LC_NUMERIC, before.c_str());
  EXPECT_TRUE(read);
  EXPECT_EQ(value, 1.5);
  EXPECT_STREQ(next, "2");
}

TEST(ParseString, ReadsOneFieldInAllForms) {
  struct Row {
    const char* text;
    const char* field;
    int consumed;
    const char* why;
  };
  const Row rows[] = {
      {" ab , c", "ab", 5, "white space on both sides and the comma"},
      {"ab c", "ab", 3, "white space ends a field"},
      {",c", "", 1, "an empty field"},
      {"\"a, \"\"b\"\"\",c", "a, \"b\"", 11, "quotes"},
      {"\"ab", "ab", 3, "an open quote ends with the text"},
      {"\"a\"b", "a", 3, "what follows the quote is left"},
      {"  ", "", 2, "white space alone"},
      {"", "", 0, "nothing"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    const std::string field(row.field);
    const std::wstring wideText = Widened(row.text);
    std::string value("old");
    std::wstring wideValue(L"old");
    EXPECT_EQ(ParseString(row.text, value), row.consumed);
    EXPECT_EQ(value, field);
    EXPECT_EQ(ParseString(wideText.c_str(), wideValue), row.consumed);
    EXPECT_EQ(wideValue, Widened(field));
    for (const int size : {1, 3, 20}) {
      char buffer[20] = "old";
      wchar_t wideBuffer[20] = L"old";
      const auto stored = static_cast<std::size_t>(size - 1);
      EXPECT_EQ(ParseString(row.text, buffer, size), row.consumed);
      EXPECT_EQ(buffer, field.substr(0, stored));
      EXPECT_EQ(ParseString(wideText.c_str(), wideBuffer, size), row.consumed);
      EXPECT_EQ(wideBuffer, Widened(field).substr(0, stored));
    }
  }
}

TEST(ParseString, TakesNoTextAndNoRoom) {
  char buffer[] = "old";
  EXPECT_EQ(ParseString("ab,c", buffer, 0), 3);
  EXPECT_STREQ(buffer, "old");
  EXPECT_EQ(ParseString(nullptr, buffer, 4), 0);
  EXPECT_STREQ(buffer, "");
  std::string value("old");
  EXPECT_EQ(ParseString(nullptr, value), 0);
  EXPECT_EQ(value, "");
}

TEST(CommaToBlank, KeepsCommasInsideQuotes) {
  char text[] = "a,\"b,c\",\"d,";
  CommaToBlank(text);
  EXPECT_STREQ(text, "a \"b,c\" \"d,");
  wchar_t wide[] = L"a,\"b,c\",";
  CommaToBlank(wide);
  EXPECT_STREQ(wide, L"a \"b,c\" ");
  CommaToBlank(static_cast<char*>(nullptr));
}

}  // namespace
}  // namespace vlm

#include <velum/core/StringConvert.h>

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>
#include <locale>
#include <optional>
#include <random>
#include <sstream>

namespace vlm {
namespace {

constexpr double kLargest = std::numeric_limits<double>::max();

std::wstring Widened(const std::string& text) {
  std::wstring wide;
  for (const char c : text) wide += static_cast<wchar_t>(static_cast<unsigned char>(c));
  return wide;
}

/// Both widths must say the same, and set the value of a refused text to 0.
template <class T>
std::optional<T> Read(bool (*narrow)(const std::string&, T&), bool (*wide)(const std::wstring&, T&),
                      const std::string& text) {
  T value(7), wideValue(7);
  const bool read = narrow(text, value);
  EXPECT_EQ(wide(Widened(text), wideValue), read) << text;
  EXPECT_EQ(std::memcmp(&value, &wideValue, sizeof(value)), 0) << text;
  if (read) return value;
  EXPECT_EQ(value, T()) << text;
  return std::nullopt;
}

std::optional<bool> ReadBool(const std::string& t) {
  return Read<bool>(StringToBool, StringToBool, t);
}
std::optional<int> ReadInt(const std::string& t) { return Read<int>(StringToInt, StringToInt, t); }
std::optional<std::int64_t> ReadInt64(const std::string& t) {
  return Read<std::int64_t>(StringToInt64, StringToInt64, t);
}
std::optional<unsigned int> ReadUnsigned(const std::string& t) {
  return Read<unsigned int>(StringToUnsigned, StringToUnsigned, t);
}
std::optional<double> ReadDouble(const std::string& t) {
  return Read<double>(StringToDouble, StringToDouble, t);
}

TEST(StringToBool, KnowsSixWordsInAnyCase) {
  for (const char* const text : {"t", "T", "1", "true", "TRUE", "True"})
    EXPECT_EQ(ReadBool(text), true);
  for (const char* const text : {"f", "F", "0", "false", "FALSE", "False"}) {
    EXPECT_EQ(ReadBool(text), false);
  }
  for (const char* const text : {"", " true", "true ", "yes", "10", "falsee", "tr\xFC"}) {
    EXPECT_EQ(ReadBool(text), std::nullopt) << text;
  }
  EXPECT_EQ(ReadBool(std::string("t\0", 2)), std::nullopt);
  EXPECT_EQ(ReadBool(BoolToString(true)), true);
  EXPECT_EQ(BoolToString(false), "False");
  EXPECT_EQ(BoolToStringW(true), L"True");
}

TEST(StringToInt, TakesDigitsOfItsRangeAlone) {
  struct Row {
    const char* text;
    std::optional<int> value;
    const char* why;
  };
  const Row rows[] = {
      {"0", 0, "zero"},
      {"-0", 0, "negative zero"},
      {"007", 7, "leading zeros"},
      {"-", 0, "a lone sign"},
      {"", std::nullopt, "empty"},
      {"+1", std::nullopt, "plus"},
      {" 1", std::nullopt, "white space before"},
      {"1 ", std::nullopt, "white space behind"},
      {"--1", std::nullopt, "two signs"},
      {"1-", std::nullopt, "a sign behind"},
      {"1e3", std::nullopt, "an exponent"},
      {"\xB2", std::nullopt, "a byte above 127"},
      {"2147483647", 2147483647, "the limit"},
      {"-2147483648", std::numeric_limits<int>::min(), "the lower limit"},
      {"-2147483647", -2147483647, "beside the lower limit"},
      {"-02147483647", -2147483647, "no limit, so zeros may lead"},
      {"2147483648", std::nullopt, "above the limit"},
      {"-2147483649", std::nullopt, "below the limit"},
      {"002147483647", std::nullopt, "the limit with zeros before it"},
      {"-02147483648", std::nullopt, "the lower limit with a zero before it"},
      {"4294967296", std::nullopt, "a multiple of 2^32"},
      {"99999999999999999999", std::nullopt, "beyond 64 bits"},
  };
  for (const Row& row : rows) EXPECT_EQ(ReadInt(row.text), row.value) << row.why;
  EXPECT_EQ(ReadInt(std::string("1\0", 2)), std::nullopt) << "a terminator inside";
}

TEST(StringToInt64, ReachesItsLimitsAndNoFurther) {
  EXPECT_EQ(ReadInt64("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(ReadInt64("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(ReadInt64("-9223372036854775807"), -std::numeric_limits<std::int64_t>::max());
  for (const char* const text :
       {"9223372036854775808", "-9223372036854775809", "09223372036854775807",
        "18446744073709551616", "-18446744073709551615", ""}) {
    EXPECT_EQ(ReadInt64(text), std::nullopt) << text;
  }
}

TEST(StringToUnsigned, HasNoSign) {
  EXPECT_EQ(ReadUnsigned("4294967295"), 4294967295u);
  EXPECT_EQ(ReadUnsigned("04294967294"), 4294967294u);
  for (const char* const text :
       {"-", "-1", "+1", "4294967296", "04294967295", "18446744073709551615"}) {
    EXPECT_EQ(ReadUnsigned(text), std::nullopt) << text;
  }
}

TEST(StringToDouble, ReadsDecimalNumbersAlone) {
  struct Row {
    const char* text;
    std::optional<double> value;
    const char* why;
  };
  const Row rows[] = {
      {" \t2.5e3\r\n", 2500, "white space at both ends"},
      {"  ", 0, "white space alone"},
      {"", std::nullopt, "empty"},
      {"5.", 5, "nothing behind the point"},
      {".5", 0.5, "nothing before the point"},
      {"+1E+02", 100, "signs and a capital"},
      {"-0.125", -0.125, "negative"},
      {"1.7976931348623157e308", kLargest, "the largest"},
      {"4.9e-324", 4.9e-324, "the smallest"},
      {"1e-400", 0, "too small is the nearest"},
      {"1e999", std::nullopt, "too large"},
      {"-1e999", std::nullopt, "too large, negative"},
      {"1d5", std::nullopt, "another runtime's exponent"},
      {".", std::nullopt, "no digit"},
      {"+", std::nullopt, "a sign alone"},
      {"+-1", std::nullopt, "two signs"},
      {"-+1", std::nullopt, "two signs"},
      {"- 1", std::nullopt, "white space inside"},
      {"1e", std::nullopt, "half an exponent"},
      {"1e+", std::nullopt, "half an exponent"},
      {"1.5.2", std::nullopt, "left over"},
      {"1,5", std::nullopt, "another locale's point"},
      {"0x10", std::nullopt, "hexadecimal"},
      {"-0x1p3", std::nullopt, "hexadecimal"},
      {"inf", std::nullopt, "infinity"},
      {"-Infinity", std::nullopt, "infinity"},
      {"nan", std::nullopt, "no number"},
      {"\xA0"
       "1",
       std::nullopt, "a byte above 127"},
  };
  for (const Row& row : rows) EXPECT_EQ(ReadDouble(row.text), row.value) << row.why;
  EXPECT_TRUE(std::signbit(*ReadDouble("-0")));
  EXPECT_EQ(ReadDouble(std::string("1\0", 2)), std::nullopt) << "a terminator inside";
}

TEST(StringToDouble, GivesTheBitsThatWereWritten) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937_64 random(seed);
  for (int i = 0; i < 20000; ++i) {
    double value;
    const std::uint64_t bits = random();
    std::memcpy(&value, &bits, sizeof(value));
    if (!std::isfinite(value)) continue;
    char text[40];
    std::snprintf(text, sizeof(text), "%.17g", value);
    const std::optional<double> read = ReadDouble(text);
    ASSERT_TRUE(read) << text;
    ASSERT_EQ(std::memcmp(&*read, &value, sizeof(value)), 0) << text;
  }
}

class RuntimeLocale {
 public:
  explicit RuntimeLocale(const char* name) : set_(std::setlocale(LC_ALL, name) != nullptr) {}
  RuntimeLocale(const RuntimeLocale&) = delete;
  RuntimeLocale& operator=(const RuntimeLocale&) = delete;
  ~RuntimeLocale() { std::setlocale(LC_ALL, "C"); }
  [[nodiscard]] bool IsSet() const { return set_; }

 private:
  bool set_;
};

TEST(StringToDouble, FollowsTheRuntimesDecimalPoint) {
  const RuntimeLocale german("de_DE.UTF-8");
  ASSERT_TRUE(german.IsSet()) << "run it through ctest, which names the folder of the locales";
  EXPECT_EQ(ReadDouble(" 1,5e1 "), 15);
  EXPECT_EQ(ReadDouble(",5"), 0.5);
  for (const char* const text : {"1.5", "1e999", "0x1", "inf", ",", "1,5,"}) {
    EXPECT_EQ(ReadDouble(text), std::nullopt) << text;
  }
}

std::string Streamed(double value, unsigned int decimals) {
  std::ostringstream stream;
  stream << std::fixed;
  stream.precision(decimals);
  stream << value;
  return stream.str();
}

class GlobalLocale {
 public:
  explicit GlobalLocale(const std::locale& locale) : before_(std::locale::global(locale)) {}
  GlobalLocale(const GlobalLocale&) = delete;
  GlobalLocale& operator=(const GlobalLocale&) = delete;
  ~GlobalLocale() { std::locale::global(before_); }

 private:
  std::locale before_;
};

struct Punctuation : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '\''; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(DoubleToString, GivesTheTextOfAStream) {
  EXPECT_EQ(DoubleToString(2.5, 0), "2");
  EXPECT_EQ(DoubleToString(-1234.5678, 2), "-1234.57");
  EXPECT_EQ(DoubleToStringW(-1234.5678, 2), L"-1234.57");
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const double value : {0.0, -0.0, 0.05, 1e22, 123456.789, kLargest, -kLargest, 4.9e-324,
                             infinity, -infinity, nan, std::copysign(nan, -1.0)}) {
    for (const unsigned int decimals : {0u, 1u, 6u, 17u, 100u, 101u, 1100u}) {
      EXPECT_EQ(DoubleToString(value, decimals), Streamed(value, decimals));
    }
  }
}

TEST(DoubleToString, FollowsTheGlobalLocale) {
  const GlobalLocale locale(std::locale(std::locale::classic(), new Punctuation));
  EXPECT_EQ(DoubleToString(1234567.25, 1), "1'234'567,2");
  EXPECT_EQ(DoubleToStringW(1234567.25, 1), L"1'234'567,2");
}

}  // namespace
}  // namespace vlm

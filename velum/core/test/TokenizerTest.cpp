#include <velum/core/Tokenizer.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace vlm {
namespace {

using Status = CTokenizer::Status;
using Fields = std::vector<std::pair<Status, std::string>>;

constexpr Status kOk = CTokenizer::TokenOK;
constexpr Status kEmpty = CTokenizer::TokenEmpty;
constexpr Status kEnd = CTokenizer::TokenEnd;
constexpr Status kError = CTokenizer::TokenError;

/// All fields, the last of them the end or an error.
Fields Read(const char* text, bool allowQuotes) {
  CTokenizer tokenizer(text);
  Fields fields;
  do {
    GString token("old");
    const Status status = tokenizer.Parse(token, allowQuotes);
    fields.emplace_back(status, token);
  } while (fields.back().first < kEnd);
  return fields;
}

TEST(CTokenizer, ReadsFieldsUpToCommasAndWhiteSpace) {
  struct Row {
    const char* text;
    bool allowQuotes;
    Fields fields;
    const char* why;
  };
  const Row rows[] = {
      {"a,,b", false, {{kOk, "a"}, {kEmpty, ""}, {kOk, "b"}, {kEnd, ""}}, "an empty field"},
      {" a b\t,\nc ", false, {{kOk, "a"}, {kOk, "b"}, {kOk, "c"}, {kEnd, ""}}, "white space"},
      {"a,", false, {{kOk, "a"}, {kEnd, ""}}, "a comma at the end opens no field"},
      {",", false, {{kEmpty, ""}, {kEnd, ""}}, "a comma alone"},
      {" ", false, {{kEnd, ""}}, "white space alone"},
      {nullptr, false, {{kEnd, ""}}, "no text"},
      {"\"a \"\"b\"\", c\" ,d", true, {{kOk, "a \"b\", c"}, {kOk, "d"}, {kEnd, ""}}, "quotes"},
      {"\"a b\"", false, {{kOk, "\"a"}, {kOk, "b\""}, {kEnd, ""}}, "marks are characters"},
      {"\"\"x", true, {{kOk, ""}, {kOk, "x"}, {kEnd, ""}}, "an empty quoted field is no end"},
      {"\"a\"\"", true, {{kError, "a\""}}, "two marks do not close"},
      {"\"", true, {{kError, ""}}, "a mark alone"},
      {"a\"b c\"", true, {{kOk, "a\"b"}, {kOk, "c\""}, {kEnd, ""}}, "a mark inside opens nothing"},
  };
  for (const Row& row : rows) EXPECT_EQ(Read(row.text, row.allowQuotes), row.fields) << row.why;
}

TEST(CTokenizer, LeavesThePlaceAndTheValueWhereThereIsNoNumber) {
  const char* const text = "abc";
  CTokenizer tokenizer;
  EXPECT_EQ(tokenizer.GetScannerPos(), nullptr);
  tokenizer.SetSource(text);
  int whole = 7;
  double real = 7;
  bool truth = true;
  EXPECT_EQ(tokenizer.Parse(whole), kError);
  EXPECT_EQ(tokenizer.Parse(real), kError);
  EXPECT_EQ(tokenizer.Parse(truth), kError);
  EXPECT_EQ(tokenizer.GetScannerPos(), text);
  EXPECT_EQ(whole, 7);
  EXPECT_EQ(real, 7);
  EXPECT_TRUE(truth);
}

TEST(CTokenizer, ReadsNumbersAndPassesOverWhatStandsBehindThem) {
  CTokenizer tokenizer("12x, -3000000000,,1.5e3z, 0 -2 ");
  int whole = 7;
  double real = 0;
  bool truth = true;
  EXPECT_EQ(tokenizer.Parse(whole), kOk);
  EXPECT_EQ(whole, 12);
  EXPECT_EQ(tokenizer.Parse(whole), kOk);
  EXPECT_EQ(whole, std::numeric_limits<int>::min());
  EXPECT_EQ(tokenizer.Parse(whole), kEmpty);
  EXPECT_EQ(tokenizer.Parse(real), kOk);
  EXPECT_EQ(real, 1500);
  EXPECT_EQ(tokenizer.Parse(truth), kOk);
  EXPECT_FALSE(truth);
  CTokenizer copy(tokenizer);
  EXPECT_EQ(copy.Parse(truth), kOk);
  EXPECT_TRUE(truth);
  EXPECT_EQ(copy.Parse(truth), kEnd);
  EXPECT_NE(copy.GetScannerPos(), tokenizer.GetScannerPos());
}

}  // namespace
}  // namespace vlm

#include <examples/describe/CsvReader.h>

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>

namespace vlm::describe {
namespace {

// The fields with a bar between them, a semicolon behind each row.
std::string Fields(const std::string& text, char delimiter, std::size_t blockSize) {
  std::istringstream stream(text);
  CsvReader reader(stream, delimiter, blockSize);
  CsvField field;
  std::string fields;
  while (reader.Next(field)) {
    fields += field.text;
    fields += field.isLast ? ';' : '|';
  }
  EXPECT_EQ(reader.BytesRead(), text.size());
  return fields;
}

TEST(CsvReader, RowsFallIntoFields) {
  using namespace std::string_literals;
  const struct {
    const char* why;
    std::string text;
    std::string fields;
    char delimiter = ',';
  } rows[] = {
      {"nothing", "", ""},
      {"plain", "a,b\nc,d\n", "a|b;c|d;"},
      {"no line end at the end", "a,b\nc,d", "a|b;c|d;"},
      {"CR LF", "a,b\r\nc,d\r\n", "a|b;c|d;"},
      {"CR", "a,b\rc,d\r", "a|b;c|d;"},
      {"empty fields", ",\n,x,", "|;|x|;"},
      {"blank lines", "\n\r\na\n\n\rb\n\n", "a;b;"},
      {"blanks are text", " a , b \n", " a | b ;"},
      {"quotes", "\"a\",\"b c\"\n", "a|b c;"},
      {"a quoted delimiter", "\"a,b\",c\n", "a,b|c;"},
      {"quoted line ends", "\"a\nb\r\nc\",d\n", "a\nb\r\nc|d;"},
      {"doubled quotes", "\"a\"\"b\"\"\",\"\"\"\"\n", "a\"b\"|\";"},
      {"a quoted field of nothing", "\"\",\"\"", "|;"},
      {"a quoted field of nothing is no blank line", "\"\"\na", ";a;"},
      {"a quote inside is text", "5\" pipe,a\"b\"\n", "5\" pipe|a\"b\";"},
      {"a quote behind a blank is text", " \"a\n", " \"a;"},
      {"a byte order mark", "\xEF\xBB\xBF\"a\",b\n", "a|b;"},
      {"a byte order mark alone", "\xEF\xBB\xBF", ""},
      {"a byte order mark only at the start", "a\n\xEF\xBB\xBF"s + "b", "a;\xEF\xBB\xBF"s + "b;"},
      {"half a byte order mark", "\xEF\xBB", "\xEF\xBB;"},
      {"NUL", "a\0b,\"\0\"\n"s, "a\0b|\0;"s},
      {"ragged", "a\nb,c,d\ne,f\n", "a;b|c|d;e|f;"},
      {"semicolons", "1,5;2\n", "1,5|2;", ';'},
      {"tabs", "a\tb c\n", "a|b c;", '\t'},
  };
  for (const auto& row : rows) {
    for (const std::size_t blockSize : {1u, 5u, 65536u}) {
      EXPECT_EQ(Fields(row.text, row.delimiter, blockSize), row.fields)
          << row.why << ", in blocks of " << blockSize;
    }
  }
}

TEST(CsvReader, APlaceIsARowAColumnAndTheLineWhereTheRowBegins) {
  std::istringstream stream("a,\"b\r\n\n\"\n\nc,d");
  CsvReader reader(stream, ',', 4);
  CsvField field;
  const struct {
    std::size_t row, column, line;
  } places[] = {{1, 0, 1}, {1, 1, 1}, {2, 0, 5}, {2, 1, 5}};
  for (const auto& place : places) {
    ASSERT_TRUE(reader.Next(field));
    EXPECT_EQ(field.row, place.row) << field.text;
    EXPECT_EQ(field.column, place.column) << field.text;
    EXPECT_EQ(field.line, place.line) << field.text;
  }
  EXPECT_FALSE(reader.Next(field));
  EXPECT_FALSE(reader.Next(field)) << "the end stays the end";
}

TEST(CsvReader, ALineOfTenMegabytesIsReadAndAsMuchOfAFieldKept) {
  const std::string line(10'000'000, 'x');
  std::istringstream stream(line + ",1\n\"" + line + "\",2\n");
  CsvReader reader(stream, ',');
  CsvField field;
  for (const char* next : {"1", "2"}) {
    ASSERT_TRUE(reader.Next(field));
    EXPECT_EQ(field.text, std::string(CsvReader::kLongestField, 'x'));
    ASSERT_TRUE(reader.Next(field));
    EXPECT_EQ(field.text, next);
  }

  std::istringstream commas(std::string(10'000'000, ','));
  CsvReader fields(commas, ',');
  std::size_t count = 0;
  while (fields.Next(field)) ++count;
  EXPECT_EQ(count, 10'000'001u);
}

TEST(CsvReader, WhatIsWrongIsToldWithItsLine) {
  const struct {
    const char* text;
    const char* message;
  } rows[] = {
      {"a\n\"b\n\nc", "line 2: a quoted field begins here and does not end"},
      {"a\n\"", "line 2: a quoted field begins here and does not end"},
      {"a,\"b\n\"c\n", "line 2: text stands behind a closing quote"},
      {"\"a\" ,b\n", "line 1: text stands behind a closing quote"},
      {"\xFF\xFE\x61", "line 1: the text is UTF-16; only UTF-8 is read"},
  };
  for (const auto& row : rows) {
    try {
      static_cast<void>(Fields(row.text, ',', 4));
      ADD_FAILURE() << row.text << " was read";
    } catch (const std::runtime_error& error) {
      EXPECT_STREQ(error.what(), row.message);
    }
  }
}

}  // namespace
}  // namespace vlm::describe

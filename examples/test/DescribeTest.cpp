#include <examples/common/Axis.h>
#include <examples/common/Shown.h>
#include <examples/describe/Progress.h>
#include <examples/describe/Report.h>
#include <examples/describe/Selection.h>
#include <examples/describe/Table.h>
#include <examples/describe/Values.h>

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

namespace vlm::describe {
namespace {

using examples::Axis;
using examples::MakeAxis;
using examples::MakePaddedAxis;
using examples::NumberLabel;
using examples::Shown;

Table Read(const std::string& text, const TableRequest& request = {}) {
  std::istringstream stream(text);
  return ReadTable(stream, request);
}

template <class Call>
std::string MessageOf(Call call) {
  try {
    call();
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return "nothing is thrown";
}

TEST(DescribeValues, AFieldIsANumberOrMissingOrText) {
  using enum ValueKind;
  const struct {
    std::string_view text;
    ValueKind kind;
    double number = 0.0;
  } rows[] = {
      {"1.5", Number, 1.5},
      {" \t-2e3 ", Number, -2000.0},
      {"+.5", Number, 0.5},
      {"1e-400", Number, 0.0},
      {"5e-324", Number, 5e-324},
      {"", Missing},
      {"  ", Missing},
      {"-", Missing},
      {"n/a", Missing},
      {"NA", Missing},
      {"NaN", Missing},
      {"NULL", Missing},
      {"nanx", Text},
      {"1,5", Text},
      {"1 2", Text},
      {"+-1", Text},
      {"++1", Text},
      {"0x10", Text},
      {"inf", Text},
      {"1e999", Text},
      {std::string_view("1\0", 2), Text},
  };
  for (const auto& row : rows) {
    double number = 0.0;
    EXPECT_EQ(ReadValue(row.text, number), row.kind) << row.text;
    if (row.kind != Number) continue;
    EXPECT_EQ(number, row.number) << row.text;
  }
}

TEST(DescribeValues, WhatAMessageShowsIsShortAndHasNoControlCharacters) {
  EXPECT_EQ(Shown(std::string_view("a\0\r\n\x1B[1m", 8)), "a\\x00\\r\\n\\x1B[1m");
  EXPECT_EQ(Shown("abcdef", 3), "abc...");
  EXPECT_EQ(Shown("ab\xC3\xA4x", 3), "ab...") << "no half character";
}

TEST(DescribeSelection, NamesGoBeforeNumbers) {
  const std::vector<std::string> names = {"x", "3", "depth, m", "y", "y"};
  using Places = std::vector<std::size_t>;
  EXPECT_EQ(SelectColumns("x", names), Places({0}));
  EXPECT_EQ(SelectColumns("2, x,x", names), Places({1, 0, 0}));
  EXPECT_EQ(SelectColumns("3", names), Places({1})) << "a name";
  EXPECT_EQ(SelectColumns("5", names), Places({4}));
  EXPECT_EQ(SelectColumns("depth, m", names), Places({2}));
  const struct {
    const char* list;
    const char* message;
  } rows[] = {
      {"z", "there is no column 'z' among the 5: x, 3, depth, m, y, y"},
      {"0", "there is no column '0' among the 5: x, 3, depth, m, y, y"},
      {"6", "there is no column '6' among the 5: x, 3, depth, m, y, y"},
      {"x,", "there is no column '' among the 5: x, 3, depth, m, y, y"},
      {"y", "columns 4 and 5 are both named 'y': tell the number"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(MessageOf([&] { static_cast<void>(SelectColumns(row.list, names)); }), row.message);
  }
}

TEST(DescribeTable, ColumnsOfNumbersAreTakenUnlessTold) {
  const Table table = Read("when, a ,b,none\nmon,1,x,\ntue,,2,\nwed,3,4,\n");
  ASSERT_EQ(table.described.size(), 2u);
  EXPECT_EQ(table.columns[table.described[0]].name, "a");
  EXPECT_EQ(table.columns[table.described[0]].Numbers(), std::vector<double>({1, 3}));
  EXPECT_EQ(table.columns[table.described[1]].name, "b");
  EXPECT_EQ(table.leftOut, std::vector<std::string>({"when", "none"}));
  EXPECT_EQ(WholeRows(table, table.described).nRows(), 1u) << "3, 4";
}

TEST(DescribeTable, ATextAfterTheTrialIsOnlyCounted) {
  std::string text = "a,b\n";
  for (int i = 0; i < 1500; ++i) text += i < 1200 ? "1,x\n" : "z,2\n";
  const Table table = Read(text);
  ASSERT_EQ(table.described.size(), 1u);
  EXPECT_EQ(table.columns[0].texts, 300u);
  EXPECT_EQ(table.columns[0].firstText.row, 1201u);
  EXPECT_EQ(table.columns[0].values.size(), 1500u);
  EXPECT_TRUE(table.columns[1].values.empty()) << "given up, and its memory with it";
}

TEST(DescribeTable, WhatIsLeftOutIsToldWithItsFirstPlace) {
  TableRequest request;
  request.columns = {"2,b"};
  request.spatial = "c,1";
  const Table table =
      Read("a,b,c\n1,\"2\n\",3\n1,NA,3\n1\n1,2,3,4\n1,x,3\n\n1,y\t,-\n1,2,3\n", request);
  EXPECT_EQ(table.rows, 7u);
  ASSERT_EQ(table.described.size(), 1u) << "one column, told twice";
  EXPECT_EQ(WholeRows(table, table.spatial).nRows(), 5u);
  std::ostringstream notes;
  PrintNotes(notes, table);
  EXPECT_EQ(notes.str(),
            "b: 2 missing values left out\n"
            "b: 3 values that are no numbers left out, the first in row 1 (line 2), column 2: "
            "\"2\\n\"\n"
            "c: 2 missing values left out\n"
            "2 rows have more or fewer fields than the first row's 3, the first row 3 (line 5) "
            "with 1\n");
}

TEST(DescribeTable, WithoutAHeaderTheFirstRowIsData) {
  TableRequest request;
  request.hasHeader = false;
  request.delimiter = ';';
  const Table table = Read("1;x\n2;y\n", request);
  EXPECT_EQ(table.rows, 2u);
  EXPECT_EQ(table.columns[table.described[0]].name, "column 1");
  EXPECT_EQ(table.columns[table.described[0]].values, std::vector<double>({1, 2}));
}

TEST(DescribeTable, WhatCanNotBeReadIsTold) {
  const struct {
    std::string text;
    const char* spatial;
    const char* message;
  } rows[] = {
      {"", "", "the file is empty"},
      {"a,b\n", "", "there are no rows of data"},
      {std::string(200'000, ','), "", "more than 100,000 columns"},
      {"a\n1\n", "1", "points have two or three columns, x, y and perhaps z, not 1"},
      {"a\n1\n", "1,1,1,1", "points have two or three columns, x, y and perhaps z, not 4"},
  };
  for (const auto& row : rows) {
    TableRequest request;
    request.spatial = row.spatial;
    EXPECT_EQ(MessageOf([&] { static_cast<void>(Read(row.text, request)); }), row.message);
  }
  EXPECT_EQ(MessageOf([] { static_cast<void>(Read("a;b\n1;2\n")); }).substr(0, 43),
            "no column holds more numbers than texts; is");
}

TEST(DescribeReport, MatricesStandInAlignedBlocks) {
  RMatrix matrix(2, 8);
  matrix(1, 7) = -0.5;
  std::ostringstream out;
  PrintMatrix(out, matrix, {"a", "\xC3\xA4 b"},
              {"1", "2", "3", "4", "5", "6", std::string(40, 'x'), "eighth column"});
  const std::string blanks(11, ' ');
  std::string zeros;
  for (int i = 0; i < 6; ++i) zeros += blanks + "0";
  EXPECT_EQ(out.str(),
            "              1           2           3           4           5           6\n"
            "a  " +
                zeros + "\n\xC3\xA4 b" + zeros + "\n\n   " + "  " + std::string(40, 'x') +
                "  eighth column\na  " + std::string(41, ' ') + "0              0\n\xC3\xA4 b" +
                std::string(41, ' ') + "0           -0.5\n");
}

TEST(DescribeReport, PointsWithoutAWholeRowHaveNoPlane) {
  TableRequest request;
  request.spatial = "1,2,3";
  std::ostringstream out;
  PrintReport(out, Read("x,y,z\n1,1,\n,2,3\n", request));
  EXPECT_NE(out.str().find("\n0 points of 2 rows"), std::string::npos);
  EXPECT_EQ(out.str().find("plane"), std::string::npos);
}

TEST(DescribeAxis, LabelsAreAsExactAsTheStep) {
  const struct {
    double value, step;
    const char* label;
  } rows[] = {
      {0.0, 0.2, "0.0"},
      {-0.6, 0.2,
       "\xE2\x88\x92"
       "0.6"},
      {1e-17, 0.1, "0.0"},
      {-0.004, 0.01, "0.00"},
      {1500000.0, 500000.0, "1500000"},
      {15e9, 5e9,
       "1.5\xC2\xB7"
       "10\\up38 {\\fs70 10}\\dn38 "},
      {2e-9, 1e-9,
       "2\xC2\xB7"
       "10\\up38 {\\fs70 \xE2\x88\x92"
       "9}\\dn38 "},
  };
  for (const auto& row : rows) EXPECT_EQ(NumberLabel(row.value, row.step), row.label) << row.value;
}

TEST(DescribeAxis, ALargeCommonPartStandsBehindTheTitle) {
  const Axis axis = MakeAxis(1e12, 1e12 + 20, 4);
  EXPECT_EQ(axis.labels, std::vector<std::string>({"0", "5", "10", "15", "20"}));
  EXPECT_EQ(axis.ticks.back(), 1e12 + 20);
  EXPECT_EQ(axis.offset, " \xE2\x88\x92 1000000000000");
  EXPECT_EQ(MakeAxis(-1e7 - 20, -1e7, 4).offset, " + 10000020");
  EXPECT_EQ(MakeAxis(0.0, 1e12, 4).offset, "");
}

TEST(DescribeAxis, TicksLieInTheRange) {
  const double kMost = 1.7e308;
  const double ranges[][2] = {{0.3, 97.0},  {5.0, 5.0},    {0.0, 0.0},        {-kMost, kMost},
                              {0.0, kMost}, {0.0, 5e-324}, {1e16, 1e16 + 2.0}};
  for (const auto& range : ranges) {
    const Axis axis = MakePaddedAxis(range[0], range[1], 5);
    EXPECT_EQ(axis.ticks.size(), axis.labels.size());
    EXPECT_LE(axis.ticks.size(), 51u);
    for (const double tick : axis.ticks) {
      EXPECT_GE(axis.Share(tick), -1e-4) << range[0] << " to " << range[1];
      EXPECT_LE(axis.Share(tick), 1.0001) << range[0] << " to " << range[1];
    }
    EXPECT_GE(axis.Share(range[0]), 0.0);
    EXPECT_LE(axis.Share(range[1]), 1.0);
  }
}

TEST(DescribeProgress, LongInputShowsItsShareAndClearsTheLine) {
  std::ostringstream shown;
  {
    ProgressLine line(shown, 100u << 20);
    line.Update(1u << 20, 10);
    EXPECT_EQ(shown.str(), "") << "too early to tell";
    line.Update(37u << 20, 1234);
    line.Update((37u << 20) + 1, 1235);
    EXPECT_EQ(shown.str(), "\rReading: 37 %, 1234 rows");
  }
  EXPECT_EQ(shown.str(), "\rReading: 37 %, 1234 rows\r" + std::string(24, ' ') + "\r");
  shown.str("");
  {
    ProgressLine line(shown, 0);
    line.Update(48'000'000, 5);
  }
  EXPECT_EQ(shown.str().substr(0, 23), "\rReading: 48 MB, 5 rows");
}

}  // namespace
}  // namespace vlm::describe

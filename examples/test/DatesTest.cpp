#include <examples/dates/CalendarAxis.h>
#include <examples/dates/ColumnSurvey.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace vlm::dates {
namespace {

using namespace std::string_literals;

double Numeric(const char* text) { return KQDateTime(text).GetNumericDateTime(); }

TEST(DatesSurvey, CountsShapesAndTellsWhatIsNoDate) {
  std::istringstream file(
      "n,when\r\n1,12/25/2010\r\n2,\"December 25, 2010\"\r\n3\r\n4,  \r\n"
      "5,5/12/2010\r\n6,25/12/2010\r\n7,nil\r\n8,1/1/2010\0x\r\n"s);
  const KQDateTextOptions options;
  const Survey survey = TakeSurvey(file, {"when"}, options);
  EXPECT_EQ(survey.rows, 8u);
  EXPECT_EQ(survey.empty, 2u) << "a short row and blanks";
  ASSERT_EQ(survey.forms.size(), 2u);
  EXPECT_EQ(survey.forms[0].shape, "n/n/nnnn");
  EXPECT_EQ(survey.forms[0].count, 3u);
  EXPECT_EQ(survey.forms[1].example, "December 25, 2010");
  EXPECT_EQ(survey.forms[1].line, 3u);
  EXPECT_EQ(survey.swapped, 1u);
  EXPECT_EQ(survey.ambiguous, 1u);
  ASSERT_EQ(survey.unread.size(), 2u);
  EXPECT_EQ(survey.unread[0].text, "nil");
  EXPECT_EQ(survey.unread[1].row, 8u);
}

TEST(DatesSurvey, ShapesHaveRunsInShort) {
  EXPECT_EQ(ShapeOf("  25 December\t\t2010 3:45 PM "), "n x nnnn n:n x");
  EXPECT_EQ(ShapeOf("2010-12-25T10:20"), "nnnn-n-nxn:n");
  EXPECT_EQ(ShapeOf(""), "");
}

TEST(CalendarAxis, TicksStandAtRoundSteps) {
  const struct {
    const char* first;
    const char* last;
    const char* label;
    const char* second;
  } rows[] = {
      {"1/6/2009", "8/20/2011", "Jan-09", "Jul-09"},
      {"3/4/1776", "8/20/2011", "1800", "1850"},
      {"1/31/2018 1:50", "2/7/2018 1:26", "31-Jan-18", "1-Feb-18"},
      {"1/31/2018 1:50", "1/31/2018 4:26", "31-Jan 2:00", "31-Jan 2:30"},
      {"1/1/100", "12/31/9999", "2000", "4000"},
  };
  for (const auto& row : rows) {
    const auto axis = MakeCalendarAxis(Numeric(row.first), Numeric(row.last), 8);
    ASSERT_GE(axis.labels.size(), 2u) << row.first;
    EXPECT_LE(axis.labels.size(), 8u) << row.first;
    EXPECT_EQ(axis.labels[0], row.label);
    EXPECT_EQ(axis.labels[1], row.second);
  }
  const auto point = MakeCalendarAxis(40537.0, 40537.0, 8);
  EXPECT_LT(point.low, 40537.0);
  EXPECT_GT(point.high, 40537.0);
}

}  // namespace
}  // namespace vlm::dates

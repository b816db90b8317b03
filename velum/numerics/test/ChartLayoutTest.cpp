#include <velum/numerics/detail/ChartLayout.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>
#include <string>

namespace vlm::detail {
namespace {

// A byte of a label is 6 wide, labels are 13 high; a byte of a title is 8 wide, titles are 17 high.
struct FixedText : ChartText {
  int LabelHeight() override { return 13; }
  double LabelWidth(const GString& text) override { return 6.0 * text.length(); }
  double TitleWidth(const GString& text) override { return 8.0 * text.length(); }
  double TitleHeight(const GString&) override { return 16.2; }
};

// The numbers of a layout, and which titles it has kept.
std::string NumbersOf(const ChartLayout& layout) {
  std::ostringstream numbers;
  numbers << layout.x0 << ' ' << layout.x1 << ' ' << layout.top << ' ' << layout.height << ' '
          << layout.xAxisRow << ' ' << layout.yAxisColumn << ' ' << layout.x.intervals << ' '
          << layout.y.intervals << ' ' << (layout.x.title.empty() ? '-' : 'x')
          << (layout.y.title.empty() ? '-' : 'y');
  return numbers.str();
}

// The numbers come from a program of its own, written in Python from the description of the layout.
TEST(ChartLayout, EveryPartLiesWhereItShould) {
  const struct {
    const char* reason;
    const char* chart;  // rectangle, ranges of x and y, flags of CDrawStats, which chart
    const char* numbers;
  } rows[] = {
      {"everything has room", "0 0 800 600  0 700  0 120  63 h", "44 790 26 535 561 43 14 12 xy"},
      {"a probability plot", "0 0 800 600  0 700  -3.2 3.4  63 p", "50 790 26 535 561 49 14 12 xy"},
      {"moved, ticks inside the range", "-30 1000 400 300  0.13 7.9  0 37.5  31 h",
       "8 369 1000 261 1261 7 6 7 xy"},
      {"free rows and columns without a strip", "5 7 400 300  0.13 7.9  -2.9 2.9  31 p",
       "55 402 9 259 268 54 6 10 xy"},
      {"no bands: axes one pixel outside", "10 20 100 50  0 1  0 1  0 h",
       "10 109 20 50 70 9 0 0 --"},
      {"the same with two free rows", "10 20 100 50  0 1  0 1  0 p", "10 109 22 48 70 9 0 0 --"},
      {"the lowest label lifts the x axis", "0 0 200 100  0 1  0 10  1 h",
       "18 199 7 93 93 17 0 5 --"},
      {"the highest label is inside already", "0 0 200 200  0 1  0 19.9  1 h",
       "18 199 0 200 193 17 0 9 --"},
      {"labels below alone", "0 0 200 100  0 10  0 10  4 h", "3 193 0 81 81 2 10 0 --"},
      {"titles alone", "0 0 200 100  0 10  0 10  10 h", "20 199 0 80 80 19 0 0 xy"},
      {"no room for labels below", "0 0 200 90  0 10  0 10  15 h", "38 199 7 63 70 37 0 2 xy"},
      {"nor for the title", "0 0 200 59  0 10  0 10  15 h", "38 199 7 52 52 37 0 2 -y"},
      {"no room for labels on the left", "0 0 100 200  0 10  0 100000  15 h",
       "20 93 7 154 161 19 2 0 xy"},
      {"nor for the title", "0 0 59 200  0 10  0 100000  15 h", "3 52 7 154 161 2 2 0 x-"},
      {"both ends within", "0 0 146 200  14.9 1235.64  0 10  5 h", "18 145 7 174 181 17 1 5 --"},
      {"the last label reaches beyond", "0 0 311 200  41.48 111.51  0 10  7 p",
       "38 306 7 174 181 37 6 5 -y"},
      {"the first label reaches beyond", "0 0 314 200  -2094.08 -2087.62  0 10  4 p",
       "12 313 2 179 181 11 6 0 --"},
      {"both do", "0 0 320 200  -236.19 30598.36  0 10  4 p", "1 310 2 179 181 0 6 0 --"},
      {"the last try stands, too close", "0 0 90 300  1234567.25 1234567.75  0 10  4 h",
       "23 66 0 281 281 22 4 0 --"},
      {"one tick, no interval", "0 0 132 200  -3399.77 -3336.99  0 10  7 h",
       "38 131 7 174 181 37 0 5 -y"},
      {"one tick that reaches beyond", "0 0 38 200  -11668.58 -10608.03  0 10  7 p",
       "0 30 7 174 181 -1 0 0 --"},
      {"one tick, no scale for it", "0 0 21 200  2.85 89292.73  0 10  4 p",
       "15 5 2 179 181 14 0 0 --"},
      {"one tick on the y axis", "0 0 200 50  0 1  0.3 1.7  1 h", "6 199 0 50 50 5 0 0 --"},
      {"a plot of less than nothing", "0 0 30 300  123456 123459  0 10  4 h",
       "18 8 0 281 281 17 1 0 --"},
      {"one pixel", "3 4 1 1  0 10  0 10  63 h", "3 3 30 -25 5 2 0 0 --"},
  };
  FixedText text;
  for (const auto& row : rows) {
    ChartRect rect;
    ChartAxis x, y;
    unsigned int flags = 0;
    char kind = 0;
    std::istringstream chart(row.chart);
    chart >> rect.left >> rect.top >> rect.width >> rect.height >> x.lo >> x.hi >> y.lo >> y.hi >>
        flags >> kind;
    if (flags & 8) x.title = "Depth (km)";
    if (flags & 2) y.title = "Frequency";
    const int free = kind == 'p' ? 2 : 0;
    const ChartWish wish = {(flags & 4) != 0, (flags & 1) != 0, (flags & 32) != 0, free, free};
    EXPECT_EQ(NumbersOf(LayOut(x, y, wish, rect, text)), row.numbers) << row.reason;
  }
}

TEST(ChartLayout, ValuesComeToPixels) {
  constexpr double kHuge = std::numeric_limits<double>::max();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const struct {
    double value, lo, hi;
    int atLo, atHi, pixel;
    const char* reason;
  } rows[] = {
      {0, 0, 10, 5, 105, 5, "the lower end"},
      {10, 0, 10, 5, 105, 105, "the upper end"},
      {9.99, 0, 10, 5, 105, 104, "a part of a pixel is cut"},
      {2.55, 0, 10, 100, 0, 74, "rows grow downwards"},
      {5.1, 0, 10, -100, -1, -49, "cut towards 0"},
      {7, 3, 3, 5, 105, 5, "no range"},
      {std::nan(""), 0, 1, 5, 105, 5, "NaN"},
      {kInfinity, 0, 1, 5, 105, 5, "an infinity is nowhere"},
      {kHuge, 0, 1e-300, 5, 105, 5, "nor is what overflows"},
      {1e12, 0, 1, 5, 105, 1 << 28, "far beyond"},
      {-1e12, 0, 1, 5, 105, -(1 << 28), "far beyond the other end"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(PixelOf(row.value, row.lo, row.hi, row.atLo, row.atHi), row.pixel) << row.reason;
  }
}

TEST(ChartLayout, TickLabelsReadAsAPersonWritesThem) {
  ChartAxis axis;
  axis.first = -0.2;
  axis.last = 0.4;
  axis.intervals = 6;
  EXPECT_NE(-0.2 + (0.4 + 0.2) * 2 / 6, 0) << "what rounding leaves, with 10 digits";
  EXPECT_EQ(axis.TickLabel(2), "0");
  EXPECT_EQ(axis.TickLabel(1), "-0.1");
  axis.first = -0.0;
  EXPECT_EQ(axis.TickLabel(0), "0");
  axis.intervals = 0;
  EXPECT_EQ(axis.TickLabel(0), "0");
  axis.first = 123456789.125;
  axis.last = 123456790.125;
  axis.intervals = 1;
  EXPECT_EQ(axis.TickLabel(0), "123456789.1");
}

}  // namespace
}  // namespace vlm::detail

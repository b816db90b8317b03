#include <velum/numerics/detail/ChartLayout.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <ostream>

namespace vlm::detail {
namespace {

// A byte of a label is 6 wide, labels are 13 high; a byte of a title is 8 wide, titles are 17 high.
struct FixedText : ChartText {
  int LabelHeight() override { return 13; }
  double LabelWidth(const GString& text) override { return 6.0 * text.length(); }
  double TitleWidth(const GString& text) override { return 8.0 * text.length(); }
  double TitleHeight(const GString&) override { return 16.2; }
};

struct Expected {
  int x0, x1, top, height, xAxisRow, yAxisColumn, xIntervals, yIntervals;
  bool hasXTitle, hasYTitle;

  bool operator==(const Expected&) const = default;
  friend std::ostream& operator<<(std::ostream& stream, const Expected& e) {
    return stream << e.x0 << ' ' << e.x1 << ' ' << e.top << ' ' << e.height << ' ' << e.xAxisRow
                  << ' ' << e.yAxisColumn << ' ' << e.xIntervals << ' ' << e.yIntervals << ' '
                  << e.hasXTitle << e.hasYTitle;
  }
};

// The numbers come from a program of its own, written in Python from the description of the layout.
TEST(ChartLayout, EveryPartLiesWhereItShould) {
  const struct {
    const char* reason;
    ChartRect rect;
    struct {
      double lo, hi;
    } x, y;
    unsigned int flags;  // those of CDrawStats
    bool isProbabilityPlot;
    Expected expected;
  } rows[] = {
      {"everything has room",
       {0, 0, 800, 600},
       {0, 700},
       {0, 120},
       63,
       false,
       {44, 790, 26, 535, 561, 43, 14, 12, true, true}},
      {"a probability plot",
       {0, 0, 800, 600},
       {0, 700},
       {-3.2, 3.4},
       63,
       true,
       {50, 790, 26, 535, 561, 49, 14, 12, true, true}},
      {"moved, ticks inside the range",
       {-30, 1000, 400, 300},
       {0.13, 7.9},
       {0, 37.5},
       31,
       false,
       {8, 369, 1000, 261, 1261, 7, 6, 7, true, true}},
      {"two rows and columns are free without a strip",
       {5, 7, 400, 300},
       {0.13, 7.9},
       {-2.9, 2.9},
       31,
       true,
       {55, 402, 9, 259, 268, 54, 6, 10, true, true}},
      {"without bands the axes are one pixel outside",
       {10, 20, 100, 50},
       {0, 1},
       {0, 1},
       0,
       false,
       {10, 109, 20, 50, 70, 9, 0, 0, false, false}},
      {"the same with two free rows",
       {10, 20, 100, 50},
       {0, 1},
       {0, 1},
       0,
       true,
       {10, 109, 22, 48, 70, 9, 0, 0, false, false}},
      {"the lowest label lifts the x axis, not the bars",
       {0, 0, 200, 100},
       {0, 1},
       {0, 10},
       1,
       false,
       {18, 199, 7, 93, 93, 17, 0, 5, false, false}},
      {"the highest label is inside already",
       {0, 0, 200, 200},
       {0, 1},
       {0, 19.9},
       1,
       false,
       {18, 199, 0, 200, 193, 17, 0, 9, false, false}},
      {"labels below alone",
       {0, 0, 200, 100},
       {0, 10},
       {0, 10},
       4,
       false,
       {3, 193, 0, 81, 81, 2, 10, 0, false, false}},
      {"titles alone",
       {0, 0, 200, 100},
       {0, 10},
       {0, 10},
       10,
       false,
       {20, 199, 0, 80, 80, 19, 0, 0, true, true}},
      {"no room for labels below",
       {0, 0, 200, 90},
       {0, 10},
       {0, 10},
       15,
       false,
       {38, 199, 7, 63, 70, 37, 0, 2, true, true}},
      {"nor for the title",
       {0, 0, 200, 59},
       {0, 10},
       {0, 10},
       15,
       false,
       {38, 199, 7, 52, 52, 37, 0, 2, false, true}},
      {"no room for labels on the left",
       {0, 0, 100, 200},
       {0, 10},
       {0, 100000},
       15,
       false,
       {20, 93, 7, 154, 161, 19, 2, 0, true, true}},
      {"nor for the title",
       {0, 0, 59, 200},
       {0, 10},
       {0, 100000},
       15,
       false,
       {3, 52, 7, 154, 161, 2, 2, 0, true, false}},
      {"both ends within",
       {0, 0, 146, 200},
       {14.9, 1235.64},
       {0, 10},
       5,
       false,
       {18, 145, 7, 174, 181, 17, 1, 5, false, false}},
      {"the last label reaches beyond",
       {0, 0, 311, 200},
       {41.48, 111.51},
       {0, 10},
       7,
       true,
       {38, 306, 7, 174, 181, 37, 6, 5, false, true}},
      {"the first label reaches beyond",
       {0, 0, 314, 200},
       {-2094.08, -2087.62},
       {0, 10},
       4,
       true,
       {12, 313, 2, 179, 181, 11, 6, 0, false, false}},
      {"both do",
       {0, 0, 320, 200},
       {-236.19, 30598.36},
       {0, 10},
       4,
       true,
       {1, 310, 2, 179, 181, 0, 6, 0, false, false}},
      {"the last try stands, too close",
       {0, 0, 90, 300},
       {1234567.25, 1234567.75},
       {0, 10},
       4,
       false,
       {23, 66, 0, 281, 281, 22, 4, 0, false, false}},
      {"one tick, no interval",
       {0, 0, 132, 200},
       {-3399.77, -3336.99},
       {0, 10},
       7,
       false,
       {38, 131, 7, 174, 181, 37, 0, 5, false, true}},
      {"one tick that reaches beyond",
       {0, 0, 38, 200},
       {-11668.58, -10608.03},
       {0, 10},
       7,
       true,
       {0, 30, 7, 174, 181, -1, 0, 0, false, false}},
      {"one tick, no scale for it",
       {0, 0, 21, 200},
       {2.85, 89292.73},
       {0, 10},
       4,
       true,
       {15, 5, 2, 179, 181, 14, 0, 0, false, false}},
      {"one tick on the y axis",
       {0, 0, 200, 50},
       {0, 1},
       {0.3, 1.7},
       1,
       false,
       {6, 199, 0, 50, 50, 5, 0, 0, false, false}},
      {"a plot of less than nothing",
       {0, 0, 30, 300},
       {123456, 123459},
       {0, 10},
       4,
       false,
       {18, 8, 0, 281, 281, 17, 1, 0, false, false}},
      {"one pixel",
       {3, 4, 1, 1},
       {0, 10},
       {0, 10},
       63,
       false,
       {3, 3, 30, -25, 5, 2, 0, 0, false, false}},
  };
  FixedText text;
  for (const auto& row : rows) {
    ChartAxis x, y;
    x.lo = row.x.lo;
    x.hi = row.x.hi;
    y.lo = row.y.lo;
    y.hi = row.y.hi;
    if (row.flags & 8) x.title = "Depth (km)";
    if (row.flags & 2) y.title = "Frequency";
    const int free = row.isProbabilityPlot ? 2 : 0;
    const ChartWish wish = {(row.flags & 4) != 0, (row.flags & 1) != 0, (row.flags & 32) != 0, free,
                            free};
    const ChartLayout found = LayOut(x, y, wish, row.rect, text);
    EXPECT_EQ((Expected{found.x0, found.x1, found.top, found.height, found.xAxisRow,
                        found.yAxisColumn, found.x.intervals, found.y.intervals,
                        !found.x.title.empty(), !found.y.title.empty()}),
              row.expected)
        << row.reason;
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

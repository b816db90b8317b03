#include <velum/numerics/DrawStats.h>

#include <velum/dates/AxisIntervals.h>
#include <velum/diagnostics/GdiPlus.h>
#include <velum/numerics/NormalDistribution.h>
#include <velum/numerics/UnivariateStatistics.h>

#include <testing/PictureComparison.h>
#include <testing/RecordingPainter.h>
#include <testing/TemporaryFolder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <set>
#include <tuple>

namespace vlm {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using testing::PaintedShape;
using Shapes = std::vector<PaintedShape>;
using Box = std::tuple<double, double, double, double>;

constexpr std::uint32_t kBlack = 0xFF000000;
constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGray = 0xFFCCCCCC;

template <class Draw>
Shapes ShapesOf(Draw draw) {
  auto painter = std::make_unique<testing::RecordingPainter>();
  const auto shapes = painter->Shapes();
  Gdiplus::Graphics graphics(std::move(painter));
  draw(graphics);
  EXPECT_EQ(graphics.GetLastStatus(), Gdiplus::Ok);
  return *shapes;
}

std::vector<Box> BoxesOf(const Shapes& shapes, PaintedShape::Kind kind, std::uint32_t argb) {
  std::vector<Box> boxes;
  for (const PaintedShape& shape : shapes) {
    if (shape.kind != kind || shape.argb != argb) continue;
    boxes.emplace_back(shape.box.x, shape.box.y, shape.box.width, shape.box.height);
  }
  return boxes;
}

// Both ends of each line, and how many points it has.
std::vector<std::tuple<double, double, double, double, std::size_t>> LinesOf(const Shapes& shapes,
                                                                             std::uint32_t argb) {
  std::vector<std::tuple<double, double, double, double, std::size_t>> lines;
  for (const PaintedShape& shape : shapes) {
    if (shape.kind != PaintedShape::Lines || shape.argb != argb) continue;
    const auto& points = shape.points;
    lines.emplace_back(points.front().x, points.front().y, points.back().x, points.back().y,
                       points.size());
  }
  return lines;
}

CUnivariateStatistics Stats(double min, double max, double mean, double stdDev,
                            std::vector<unsigned int> bins = {}) {
  CUnivariateStatistics stats;
  stats.Minimum = min;
  stats.Maximum = max;
  stats.Mean = mean;
  stats.StdDev = stdDev;
  stats.Percentile_25 = min + (max - min) * 0.25;
  stats.Percentile_50 = min + (max - min) * 0.375;
  stats.Percentile_75 = min + (max - min) * 0.5;
  stats.Histogram = std::move(bins);
  return stats;
}

TEST(RecordingPainter, TellsWhatATurnedTextCovers) {
  const Shapes shapes = ShapesOf([](auto& graphics) {
    const Gdiplus::Font font(L"any", 10);
    const Gdiplus::SolidBrush brush(Gdiplus::Color(0xFF112233));
    Gdiplus::StringFormat format;
    format.SetAlignment(Gdiplus::StringAlignmentCenter);
    format.SetLineAlignment(Gdiplus::StringAlignmentFar);
    graphics.TranslateTransform(100, 50);
    graphics.RotateTransform(-90);
    graphics.DrawString(L"abcd", -1, &font, {0, 0}, &format, &brush);
    graphics.RotateTransform(90);
    graphics.TranslateTransform(-90, -50);
    graphics.DrawString(L"ef", -1, &font, {0, 0}, nullptr, &brush);
  });
  EXPECT_THAT(BoxesOf(shapes, PaintedShape::Turned, 0xFF112233), ElementsAre(Box(87, 38, 13, 24)));
  EXPECT_THAT(BoxesOf(shapes, PaintedShape::Text, 0xFF112233), ElementsAre(Box(10, 0, 12, 13)));
}

TEST(DrawStats, BoxPlotFillsItsRectangle) {
  const auto stats = Stats(2, 10, 5, 2);
  const Shapes shapes = ShapesOf([&](auto& graphics) {
    CDrawStats("", 0).DrawBoxPlot(graphics, {100, 50, 81, 21}, stats);
  });
  EXPECT_THAT(BoxesOf(shapes, PaintedShape::Fill, kGray), ElementsAre(Box(120, 50, 20, 20)));
  EXPECT_THAT(BoxesOf(shapes, PaintedShape::Outline, kBlack), ElementsAre(Box(120, 50, 20, 20)));
  EXPECT_THAT(LinesOf(shapes, kBlack),
              ElementsAre(std::tuple(100, 60, 120, 60, 2), std::tuple(100, 50, 100, 70, 2),
                          std::tuple(140, 60, 180, 60, 2), std::tuple(180, 50, 180, 70, 2),
                          std::tuple(130, 50, 130, 70, 2)));
  EXPECT_THAT(BoxesOf(shapes, PaintedShape::Disc, kBlack), ElementsAre(Box(125, 55, 10, 10)));
  EXPECT_EQ(shapes.front().innerClip.x, 100);
  EXPECT_EQ(shapes.front().innerClip.height, 21);
}

TEST(DrawStats, BoxPlotOfAConstantIsAtTheLeft) {
  const Shapes shapes = ShapesOf([&](auto& graphics) {
    CDrawStats("", 0).DrawBoxPlot(graphics, {7, 0, 30, 11}, Stats(4, 4, 4, std::nan("")));
  });
  EXPECT_THAT(BoxesOf(shapes, PaintedShape::Outline, kBlack), ElementsAre(Box(7, 0, 0, 10)));
  EXPECT_THAT(BoxesOf(shapes, PaintedShape::Disc, kBlack), ElementsAre(Box(4, 2, 6, 6)));
}

TEST(DrawStats, BarsStandOnTheRowBelowTheYAxis) {
  const auto stats = Stats(0, 3, 1.4, 0.8, {2, 4, 1});
  const Shapes shapes = ShapesOf([&](auto& graphics) {
    CDrawStats("", 0).DrawHistogram(graphics, {10, 20, 100, 50}, 0, stats);
  });
  const Box bars[] = {{10, 45, 33, 25}, {43, 20, 33, 50}, {76, 57, 33, 13}};
  EXPECT_THAT(BoxesOf(shapes, PaintedShape::Fill, kGray), ElementsAreArray(bars));
  EXPECT_THAT(BoxesOf(shapes, PaintedShape::Outline, kBlack), ElementsAreArray(bars));
  EXPECT_THAT(LinesOf(shapes, kBlack),
              ElementsAre(std::tuple(10, 70, 109, 70, 2), std::tuple(9, 20, 9, 69, 2)));
}

// The peak is 3 * 7 / 3 / (0.5 * sqrt(2 pi)) = 5.585, so the highest bar of 4 ends at row
// 70 - 50 * 4 / 5.585 = 34.19, and the curve at 1.5, half way, is at the top.
TEST(DrawStats, CurveRisesAboveTheBars) {
  const auto stats = Stats(0, 3, 1.5, 0.5, {2, 4, 1});
  const Shapes shapes = ShapesOf([&](auto& graphics) {
    CDrawStats("", 0).DrawHistogram(graphics, {10, 20, 101, 50}, CDrawStats::kNormal, stats);
  });
  EXPECT_EQ(std::get<1>(BoxesOf(shapes, PaintedShape::Fill, kGray)[1]), 34);
  EXPECT_THAT(LinesOf(shapes, kRed), ElementsAre(std::tuple(10, 69, 110, 69, 101)));
  EXPECT_EQ(shapes.back().points[50].x, 60);
  EXPECT_EQ(shapes.back().points[50].y, 20);
}

// Quantiles of 1/4, 1/2, 3/4: -0.6745, 0, 0.6745, on the rows 22 to 69.
TEST(DrawStats, PointsRiseFromRankToRank) {
  std::vector<double> sample = {8, 0, 2};
  auto stats = Stats(0, 8, 4, 2);
  stats.Count = 3;
  const Shapes shapes = ShapesOf([&](auto& graphics) {
    CDrawStats("", 0).DrawProbabilityPlot(graphics, {10, 20, 101, 50}, 0, stats, sample.begin(),
                                          sample.end());
  });
  EXPECT_THAT(sample, ElementsAre(0, 2, 8));
  EXPECT_THAT(BoxesOf(shapes, PaintedShape::Ellipse, kBlack),
              ElementsAre(Box(9, 68, 2, 2), Box(34, 44, 2, 2), Box(109, 21, 2, 2)));
}

// From -2 to 2 deviations, which is more than the quantiles reach.
TEST(DrawStats, LineGoesFromExtremeToExtreme) {
  std::vector<double> sample = {0, 2, 8};
  auto stats = Stats(0, 8, 4, 2);
  stats.Count = 3;
  const Shapes shapes = ShapesOf([&](auto& graphics) {
    CDrawStats("", 0).DrawProbabilityPlot(graphics, {10, 20, 101, 52}, CDrawStats::kNormal, stats,
                                          sample.begin(), sample.end());
  });
  EXPECT_THAT(LinesOf(shapes, kRed), ElementsAre(std::tuple(10, 71, 110, 22, 2)));
  EXPECT_THAT(BoxesOf(shapes, PaintedShape::Ellipse, kBlack)[1], Box(34, 45, 2, 2));
}

TEST(DrawStats, PointsOnOnePixelAreDrawnOnce) {
  std::mt19937 random(3);
  std::normal_distribution<double> normal;
  std::vector<double> sample(20000);
  for (double& x : sample) x = std::round(normal(random) * 40) / 8;  // with many ties
  CUnivariateStatistics stats;
  Load(stats, sample.begin(), sample.end());
  const Shapes shapes = ShapesOf([&](auto& graphics) {
    CDrawStats("", 0).DrawProbabilityPlot(graphics, {0, 0, 200, 150}, 0, stats, sample.begin(),
                                          sample.end());
  });
  const auto points = BoxesOf(shapes, PaintedShape::Ellipse, kBlack);
  EXPECT_LT(points.size(), 350u);
  EXPECT_EQ(std::set<Box>(points.begin(), points.end()).size(), points.size());
  // Each value has its point in the column of its own.
  std::set<double> columns, expected;
  for (const Box& point : points) columns.insert(std::get<0>(point));
  for (const double x : sample) {
    expected.insert(std::trunc((x - stats.Minimum) * 199 / (stats.Maximum - stats.Minimum)) - 1);
  }
  EXPECT_EQ(columns, expected);
}

TEST(DrawStats, WhatCannotBeToldIsNotDrawn) {
  const double nan = std::nan("");
  const struct {
    CUnivariateStatistics stats;
    std::vector<double> sample;
    Gdiplus::Rect rect;
    const char* reason;
  } rows[] = {
      {Stats(1, 1, 1, 1, {3}), {1, 1}, {0, 0, 50, 50}, "a constant"},
      {Stats(1, 2, 1, nan, {3}), {1, 2}, {0, 0, 50, 50}, "no deviation"},
      {Stats(nan, nan, nan, nan), {}, {0, 0, 50, 50}, "no values"},
      {Stats(1, 2, 1.5, 1, {0, 0}), {2}, {0, 0, 50, 50}, "empty bins, a sample of another size"},
      {Stats(1, 2, 1.5, 1), {2, nan}, {0, 0, 50, 50}, "no bins, NaN"},
      {Stats(1, 2, 1.5, 1, {2}), {2, 1}, {0, 0, 0, 50}, "no width"},
      {Stats(1, 2, 1.5, 1, {2}), {2, 1}, {2147483647, 0, 2147483647, 50}, "beyond all surfaces"},
  };
  for (auto row : rows) {
    row.stats.Count = 2;
    const Shapes shapes = ShapesOf([&](auto& graphics) {
      const CDrawStats chart("x", 1);
      chart.DrawHistogram(graphics, row.rect, CDrawStats::kEverything, row.stats);
      chart.DrawProbabilityPlot(graphics, row.rect, CDrawStats::kEverything, row.stats,
                                row.sample.begin(), row.sample.end());
      if (!(row.stats.Minimum <= row.stats.Maximum) || row.rect.Width != 50) {
        chart.DrawBoxPlot(graphics, row.rect, row.stats);
      }
    });
    EXPECT_TRUE(shapes.empty()) << row.reason;
  }
}

// The chart of a sample that is made up.
struct RandomChart {
  std::vector<double> sample;
  CUnivariateStatistics stats;
  Gdiplus::Rect rect;
  unsigned int flags;
  bool isProbabilityPlot;

  explicit RandomChart(std::mt19937& random) {
    const auto below = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    std::normal_distribution<double> normal;
    const double scale = std::pow(10, below(13) - 6);
    const double origin = normal(random) * std::pow(10, below(4)) * scale;
    const bool isSkew = below(2) == 0;
    sample.resize(static_cast<std::size_t>(11 + below(300)));
    for (double& x : sample) {
      const double z = normal(random);
      x = origin + scale * (isSkew ? std::exp(z) : z);
    }
    Load(stats, sample.begin(), sample.end());
    rect = {below(300) - 150, below(300) - 150, 1 + below(below(2) == 0 ? 120 : 900),
            1 + below(below(2) == 0 ? 120 : 700)};
    flags = random() % 64;
    isProbabilityPlot = below(2) == 0;
  }

  void Draw(Gdiplus::Graphics& graphics) {
    const CDrawStats chart("Depth of focus (km)", 0);
    if (isProbabilityPlot) {
      chart.DrawProbabilityPlot(graphics, rect, flags, stats, sample.begin(), sample.end());
    } else {
      chart.DrawHistogram(graphics, rect, flags, stats);
    }
  }
};

bool Overlap(const platform::PaintBox& a, const platform::PaintBox& b) {
  return a.x < b.x + b.width && b.x < a.x + a.width && a.y < b.y + b.height && b.y < a.y + a.height;
}

// The columns of the marks on the x axis, which go a third of a label down.
std::multiset<double> MarksBelow(const Shapes& shapes, double row) {
  std::multiset<double> columns;
  for (const auto& [x0, y0, x1, y1, count] : LinesOf(shapes, kBlack)) {
    if (x0 == x1 && y0 == row && y1 == row + 4 && count == 2) columns.insert(x0);
  }
  return columns;
}

// The rows of those on the y axis, which go left.
std::multiset<double> MarksBeside(const Shapes& shapes, double column) {
  std::multiset<double> rows;
  for (const auto& [x0, y0, x1, y1, count] : LinesOf(shapes, kBlack)) {
    if (y0 == y1 && x0 == column - 4 && x1 == column && count == 2) rows.insert(y0);
  }
  return rows;
}

TEST(DrawStats, TextsKeepApartAndStandAtTheirValues) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  int labels = 0;
  for (int i = 0; i < 1000; ++i) {
    RandomChart chart(random);
    const Shapes shapes = ShapesOf([&](auto& graphics) { chart.Draw(graphics); });
    ASSERT_GE(shapes.size(), 2u);
    const auto& xAxis = shapes[0].points;
    const auto& yAxis = shapes[1].points;
    const auto marksBelow = MarksBelow(shapes, xAxis[0].y);
    const auto marksBeside = MarksBeside(shapes, yAxis[0].x);
    // Where the ticks are those of the last try, their labels may lie on each other.
    double first, last;
    const int fewest =
        CalcAxisIntervals(chart.stats.Minimum, chart.stats.Maximum, 2, &first, &last);
    const bool isLastTry = marksBelow.size() == static_cast<std::size_t>(fewest) + 1;
    std::multiset<double> labelsBelow;
    Shapes texts;
    for (const PaintedShape& shape : shapes) {
      EXPECT_EQ(shape.innerClip.x, chart.rect.X);
      EXPECT_EQ(shape.innerClip.y, chart.rect.Y);
      EXPECT_EQ(shape.innerClip.width, chart.rect.Width);
      EXPECT_EQ(shape.innerClip.height, chart.rect.Height);
      if (shape.text.empty()) continue;
      const bool isBelow = shape.box.y > xAxis[0].y;
      for (const PaintedShape& other : texts) {
        if (isLastTry && isBelow && !shape.isBold && other.box.y == shape.box.y) continue;
        EXPECT_FALSE(Overlap(shape.box, other.box)) << shape.text << " over " << other.text;
      }
      texts.push_back(shape);
      const double column = shape.box.x + shape.box.width / 2;
      const double row = shape.box.y + shape.box.height / 2;
      if (shape.isBold) {
        EXPECT_NEAR(isBelow ? column : row,
                    isBelow ? (xAxis[0].x + xAxis[1].x) / 2 : (yAxis[0].y + yAxis[1].y) / 2, 1)
            << "a title stands at the middle of its axis";
        continue;
      }
      if (!isBelow || !isLastTry) {
        EXPECT_GE(shape.box.x, chart.rect.X - 1);
        EXPECT_GE(shape.box.y, chart.rect.Y - 1);
        EXPECT_LE(shape.box.x + shape.box.width, chart.rect.X + chart.rect.Width + 1);
      }
      ++labels;
      if (isBelow) {
        labelsBelow.insert(column);
      } else {
        EXPECT_TRUE(marksBeside.count(row)) << shape.text;
      }
      const double value = std::strtod(shape.text.c_str(), nullptr);
      const auto share = [&](double lo, double hi) { return (value - lo) / (hi - lo); };
      if (isBelow) {
        EXPECT_NEAR(column,
                    xAxis[0].x +
                        share(chart.stats.Minimum, chart.stats.Maximum) * (xAxis[1].x - xAxis[0].x),
                    1.001);
      } else if ((chart.flags & CDrawStats::kNormal) == 0) {
        const auto& bins = chart.stats.Histogram;
        const double end = GaussianInv(1 / (chart.stats.Count + 1.0));
        const double way = chart.isProbabilityPlot
                               ? share(end, -end)
                               : share(0, *std::max_element(bins.begin(), bins.end()));
        EXPECT_NEAR(row, yAxis[1].y + way * (yAxis[0].y - yAxis[1].y), 1.001);
      }
    }
    EXPECT_EQ(labelsBelow, marksBelow);
    if (::testing::Test::HasFailure()) {
      FAIL() << chart.rect.X << ' ' << chart.rect.Y << ' ' << chart.rect.Width << ' '
             << chart.rect.Height << " flags " << chart.flags
             << (chart.isProbabilityPlot ? 'p' : 'h');
    }
  }
  EXPECT_GT(labels, 1500) << "charts without labels would prove nothing";
}

TEST(DrawStats, PaintsNoPixelBesideItsRectangle) {
  const unsigned int seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  Gdiplus::Bitmap bitmap(200, 160);
  const Gdiplus::Rect all(0, 0, 200, 160);
  for (int i = 0; i < 100; ++i) {
    RandomChart chart(random);
    chart.rect = {static_cast<int>(random() % 150), static_cast<int>(random() % 120),
                  1 + static_cast<int>(random() % 150), 1 + static_cast<int>(random() % 120)};
    Gdiplus::Graphics graphics(&bitmap);
    const Gdiplus::SolidBrush white(Gdiplus::Color(0xFFFFFFFF));
    graphics.FillRectangle(&white, all);
    // On every other one the caller has a clip, too.
    const int end = i % 2 == 0 ? 200 : 90;
    graphics.SetClip({0, 0, end, 160});
    chart.Draw(graphics);
    CDrawStats("", 0).DrawBoxPlot(graphics, chart.rect, chart.stats);
    Gdiplus::BitmapData pixels;
    ASSERT_EQ(
        bitmap.LockBits(&all, Gdiplus::ImageLockModeRead, Gdiplus::PixelFormat32bppPARGB, &pixels),
        Gdiplus::Ok);
    int beside = 0;
    for (int row = 0; row < 160; ++row) {
      const auto* words = reinterpret_cast<const std::uint32_t*>(
          static_cast<const char*>(pixels.Scan0) + std::ptrdiff_t{row} * pixels.Stride);
      for (int column = 0; column < 200; ++column) {
        const bool isInside = column >= chart.rect.X && column < end &&
                              column < chart.rect.X + chart.rect.Width && row >= chart.rect.Y &&
                              row < chart.rect.Y + chart.rect.Height;
        if (!isInside && words[column] != 0xFFFFFFFF) ++beside;
      }
    }
    bitmap.UnlockBits(&pixels);
    ASSERT_EQ(beside, 0) << i << ": flags " << chart.flags;
  }
}

TEST(DrawStats, TheClipOfTheCallerHoldsDuringAChartAndAfter) {
  std::vector<double> sample = {0, 2, 8};
  auto stats = Stats(0, 8, 4, 2, {2, 4, 1});
  stats.Count = 3;
  const Shapes shapes = ShapesOf([&](auto& graphics) {
    const CDrawStats chart("x", 0);
    const Gdiplus::Rect rect(0, 0, 100, 80);
    graphics.SetClip({10, 0, 30, 40});
    chart.DrawBoxPlot(graphics, rect, stats);
    chart.DrawHistogram(graphics, rect, CDrawStats::kEverything, stats);
    chart.DrawProbabilityPlot(graphics, rect, CDrawStats::kEverything, stats, sample.begin(),
                              sample.end());
    const Gdiplus::SolidBrush black(Gdiplus::Color{kBlack});
    graphics.FillRectangle(&black, rect);
  });
  for (const PaintedShape& shape : shapes) EXPECT_EQ(shape.clip.width, 30);
  EXPECT_EQ(shapes.back().innerClip.width, -1);
}

TEST(DrawStats, FilesHoldWhatIsDrawn) {
  const testing::TemporaryFolder folder;
  std::vector<double> sample;
  for (int i = 1; i <= 40; ++i) sample.push_back(i * i);
  CUnivariateStatistics stats;
  Load(stats, sample.begin(), sample.end());
  const CDrawStats chart("x", 0);
  chart.DrawHistogram(120, 90, folder.Path("a.png"), 0, stats);
  chart.DrawProbabilityPlot(120, 90, folder.Path("b.png"), 0, stats, sample.begin(), sample.end());
  chart.DrawHistogram(120, 90, folder.Path("empty.png"), 0, CUnivariateStatistics());
  const auto difference = testing::ComparePictures(folder.Path("a.png"), folder.Path("b.png"));
  EXPECT_EQ(difference.width, 120);
  EXPECT_EQ(difference.height, 90);
  EXPECT_GT(difference.count, 100u);
  EXPECT_GT(testing::ComparePictures(folder.Path("a.png"), folder.Path("empty.png")).count, 100u);
  chart.DrawHistogram(0, 90, folder.Path("none.png"), 0, stats);
  chart.DrawHistogram(120, 90, folder.Path("none/a.png"), 0, stats);
  EXPECT_FALSE(std::filesystem::exists(folder.Path("none.png")));
}

}  // namespace
}  // namespace vlm

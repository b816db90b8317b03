#include <velum/numerics/DrawStats.h>

#include <velum/core/WideText.h>
#include <velum/diagnostics/GdiPlus.h>
#include <velum/diagnostics/GdiPlusStart.h>
#include <velum/diagnostics/GdiPlusUtil.h>
#include <velum/geometry/Constants.h>
#include <velum/numerics/NormalDistribution.h>
#include <velum/numerics/UnivariateStatistics.h>
#include <velum/numerics/detail/ChartLayout.h>
#include <velum/numerics/detail/ChartPaper.h>
#include <velum/platform/Types.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace vlm {
namespace {

using detail::ChartAxis;
using detail::ChartLayout;
using detail::ChartPaper;
using detail::ChartRect;
using detail::ChartWish;
using detail::PixelOf;
using Flags = std::bitset<6>;
using Iterator = std::vector<double>::iterator;

bool Has(const Flags& flags, CDrawStats::Flag flag) { return (flags.to_ulong() & flag) != 0; }

ChartRect RectOf(const Gdiplus::Rect& rect) { return {rect.X, rect.Y, rect.Width, rect.Height}; }

// The statistics that the scales of both charts stand on.
bool HasSpread(const CUnivariateStatistics& stats) {
  return stats.Minimum < stats.Maximum && stats.StdDev > 0;
}

// Lays a chart out and draws its axes.
ChartLayout BeginChart(ChartPaper& paper, const Flags& flags, const GString& xTitle,
                       const GString& yTitle, const CUnivariateStatistics& stats, double yLo,
                       double yHi, ChartWish wish) {
  ChartAxis x, y;
  x.lo = stats.Minimum;
  x.hi = stats.Maximum;
  if (Has(flags, CDrawStats::kXTitle)) x.title = xTitle;
  y.lo = yLo;
  y.hi = yHi;
  if (Has(flags, CDrawStats::kYTitle)) y.title = yTitle;
  wish.xLabels = Has(flags, CDrawStats::kXTicks);
  wish.yLabels = Has(flags, CDrawStats::kYTicks);
  wish.strip = Has(flags, CDrawStats::kBoxPlot);
  const ChartLayout layout = LayOut(x, y, wish, paper.Area(), paper);
  paper.DrawAxes(layout);
  return layout;
}

int ColumnOf(const ChartLayout& layout, double x) {
  return PixelOf(x, layout.x.lo, layout.x.hi, layout.x0, layout.x1);
}

void DrawBars(ChartPaper& paper, const ChartLayout& layout, const std::vector<unsigned int>& bins) {
  const auto count = static_cast<std::int64_t>(bins.size());
  const int bottom = layout.top + layout.height;
  const auto edge = [&](std::int64_t i) {
    return static_cast<int>(((count - i) * layout.x0 + i * layout.x1) / count);
  };
  for (std::int64_t i = 0; i < count; ++i) {
    const int top =
        PixelOf(bins[static_cast<std::size_t>(i)], layout.y.lo, layout.y.hi, bottom, layout.top);
    paper.DrawBar(edge(i), top, edge(i + 1), bottom);
  }
}

// A point at every column.
void DrawNormalCurve(ChartPaper& paper, const ChartLayout& layout, double scale,
                     const CUnivariateStatistics& stats) {
  const int bottom = layout.top + layout.height;
  const int last = layout.x1 - layout.x0;
  std::vector<Gdiplus::Point> points;
  for (int k = 0; k <= last; ++k) {
    const double x =
        last == 0 ? stats.Minimum : (stats.Minimum * (last - k) + stats.Maximum * k) / last;
    const double height = GaussianPDF(x, stats.Mean, stats.StdDev) * scale;
    points.emplace_back(layout.x0 + k,
                        PixelOf(height, layout.y.lo, layout.y.hi, bottom, layout.top));
  }
  if (points.size() > 1) paper.DrawCurve(points.data(), static_cast<int>(points.size()));
}

// Calls `found` with the first of each run of equal pixels; `pixelOf` gives those of 0 to count -
// 1, and no pixel comes up again behind another. Takes time by the number of runs, not of points.
template <class PixelOfIndex, class Found>
void ForEachRun(std::size_t count, PixelOfIndex pixelOf, Found found) {
  for (std::size_t i = 0; i < count;) {
    const Gdiplus::Point pixel = pixelOf(i);
    found(pixel);
    const auto isSame = [&](std::size_t j) {
      const Gdiplus::Point other = pixelOf(j);
      return other.X == pixel.X && other.Y == pixel.Y;
    };
    // The run reaches `same` at least and ends before `other`; steps double, then halve.
    std::size_t same = i;
    std::size_t step = 1;
    while (same + step < count && isSame(same + step)) {
      same += step;
      step *= 2;
    }
    std::size_t other = std::min(same + step, count);
    while (other - same > 1) {
      const std::size_t middle = same + (other - same) / 2;
      (isSame(middle) ? same : other) = middle;
    }
    i = other;
  }
}

template <class Draw>
void WritePng(int width, int height, const std::string& path, Draw draw) {
  const CStartGdiPlus started;
  Gdiplus::Bitmap bitmap(width, height);
  if (bitmap.GetLastStatus() != Gdiplus::Ok) return;
  {
    Gdiplus::Graphics graphics(&bitmap);
    const Gdiplus::SolidBrush white(Gdiplus::Color(0xFFFFFFFF));
    const Gdiplus::Rect all(0, 0, width, height);
    graphics.FillRectangle(&white, all);
    draw(graphics, all);
    if (graphics.GetLastStatus() != Gdiplus::Ok) return;
  }
  GUID encoder;
  if (GetEncoderClsid(L"image/png", &encoder) >= 0) bitmap.Save(AtoW(path.c_str()), &encoder);
}

}  // namespace

CDrawStats::CDrawStats(const std::string& title, int number) : title_(title), number_(number) {}
CDrawStats::CDrawStats(const CDrawStats& other) = default;
CDrawStats& CDrawStats::operator=(const CDrawStats& other) = default;
CDrawStats::~CDrawStats() = default;

void CDrawStats::DrawBoxPlot(Gdiplus::Graphics& graphics, const Gdiplus::Rect& rect,
                             const CUnivariateStatistics& stats) const {
  const ChartRect area = RectOf(rect);
  if (!(stats.Minimum <= stats.Maximum) || !ChartPaper::CanHold(area)) return;
  ChartPaper(graphics, area).DrawBoxPlot(area, stats);
}

void CDrawStats::DrawHistogram(Gdiplus::Graphics& graphics, const Gdiplus::Rect& rect,
                               const std::bitset<6>& flags,
                               const CUnivariateStatistics& stats) const {
  const std::vector<unsigned int>& bins = stats.Histogram;
  const ChartRect area = RectOf(rect);
  if (!HasSpread(stats) || bins.empty() || !ChartPaper::CanHold(area)) return;
  double highest = *std::max_element(bins.begin(), bins.end());
  if (!(highest > 0)) return;
  double sum = 0;
  for (const unsigned int bin : bins) sum += bin;
  const double scale = (stats.Maximum - stats.Minimum) * sum / static_cast<double>(bins.size());
  const bool hasCurve = Has(flags, kNormal);
  if (hasCurve) highest = std::max(highest, scale / (stats.StdDev * SQRT_TWO_PI));

  ChartPaper paper(graphics, area);
  const ChartLayout layout =
      BeginChart(paper, flags, title_, "Frequency", stats, 0, highest, ChartWish());
  DrawBars(paper, layout, bins);
  if (hasCurve) DrawNormalCurve(paper, layout, scale, stats);
  if (Has(flags, kBoxPlot)) paper.DrawBoxPlot(layout.strip, stats);
}

void CDrawStats::DrawHistogram(int width, int height, const std::string& path,
                               const std::bitset<6>& flags,
                               const CUnivariateStatistics& stats) const {
  WritePng(width, height, path, [&](Gdiplus::Graphics& graphics, const Gdiplus::Rect& all) {
    DrawHistogram(graphics, all, flags, stats);
  });
}

void CDrawStats::DrawProbabilityPlot(Gdiplus::Graphics& graphics, const Gdiplus::Rect& rect,
                                     const std::bitset<6>& flags,
                                     const CUnivariateStatistics& stats, Iterator first,
                                     Iterator last) const {
  const ChartRect area = RectOf(rect);
  const std::ptrdiff_t length = std::distance(first, last);
  if (!HasSpread(stats) || length <= 0 || stats.Count != static_cast<std::size_t>(length)) return;
  // NaN has no place in an order: sorting would not come to an end that is one.
  if (std::any_of(first, last, [](double x) { return std::isnan(x); })) return;
  std::sort(first, last);
  if (!ChartPaper::CanHold(area)) return;

  const auto count = static_cast<std::size_t>(length);
  const auto quantile = [&](std::size_t i) {
    return GaussianInv(static_cast<double>(i + 1) / static_cast<double>(count + 1));
  };
  const auto deviation = [&](double x) { return (x - stats.Mean) / stats.StdDev; };
  const bool hasLine = Has(flags, kNormal);
  double lo = quantile(0);
  double hi = quantile(count - 1);
  if (hasLine) {
    lo = std::min(lo, deviation(stats.Minimum));
    hi = std::max(hi, deviation(stats.Maximum));
  }

  ChartPaper paper(graphics, area);
  ChartWish wish;
  wish.rightMargin = 2;
  wish.topWithoutStrip = 2;
  const ChartLayout layout =
      BeginChart(paper, flags, title_, "Normal Response", stats, lo, hi, wish);
  const auto rowOf = [&](double z) {
    return PixelOf(z, lo, hi, layout.top + layout.height - 1, layout.top);
  };
  const auto pixelOf = [&](std::size_t i) {
    return Gdiplus::Point(ColumnOf(layout, first[static_cast<std::ptrdiff_t>(i)]),
                          rowOf(quantile(i)));
  };
  ForEachRun(count, pixelOf, [&](Gdiplus::Point at) { paper.DrawPoint(at.X, at.Y); });
  if (hasLine) {
    const Gdiplus::Point ends[] = {{layout.x0, rowOf(deviation(stats.Minimum))},
                                   {layout.x1, rowOf(deviation(stats.Maximum))}};
    paper.DrawCurve(ends, 2);
  }
  if (Has(flags, kBoxPlot)) paper.DrawBoxPlot(layout.strip, stats);
}

void CDrawStats::DrawProbabilityPlot(int width, int height, const std::string& path,
                                     const std::bitset<6>& flags,
                                     const CUnivariateStatistics& stats, Iterator first,
                                     Iterator last) const {
  WritePng(width, height, path, [&](Gdiplus::Graphics& graphics, const Gdiplus::Rect& all) {
    DrawProbabilityPlot(graphics, all, flags, stats, first, last);
  });
}

}  // namespace vlm

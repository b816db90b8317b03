#include <examples/describe/Histogram.h>

#include <velum/numerics/NormalDistribution.h>
#include <examples/common/PageText.h>
#include <examples/common/Panel.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>

namespace vlm::describe {
namespace {

using examples::Axis;
using examples::kInk;
using examples::Panel;

const Color4b kBar(158, 192, 222, 255);
const Color4b kBarEdge(96, 142, 184, 255);
const Color4b kCurve(196, 78, 32, 255);
const Color4b kBox(255, 255, 255, 255);

std::vector<Vec2d> NormalCurve(const Sample& sample, double area) {
  constexpr int kSteps = 200;
  std::vector<Vec2d> curve;
  const CUnivariateStatistics& stats = sample.stats;
  if (!(stats.StdDev > 0.0) || !std::isfinite(area)) return curve;
  const double step = (sample.axis.high - sample.axis.low) / kSteps;
  for (int i = 0; i <= kSteps; ++i) {
    const double x = sample.axis.low + i * step;
    curve.emplace_back(x, area * GaussianPDF(x, stats.Mean, stats.StdDev));
  }
  return curve;
}

// In the units of x; the y axis of the panel runs from 0 at its bottom to `top`.
void DrawBoxPlot(Panel& panel, const CUnivariateStatistics& stats, double y, double half) {
  const auto stroke = [&](double fromX, double fromY, double toX, double toY, double width) {
    panel.Path({Vec2d(fromX, fromY), Vec2d(toX, toY)}, width, kInk);
  };
  stroke(stats.Percentile_05, y, stats.Percentile_95, y, 0.8);
  for (const double end : {stats.Percentile_05, stats.Percentile_95}) {
    stroke(end, y - half / 2.0, end, y + half / 2.0, 0.8);
  }
  panel.Bar(Vec2d(stats.Percentile_25, y - half), Vec2d(stats.Percentile_75, y + half), kBox, kInk);
  stroke(stats.Median, y - half, stats.Median, y + half, 1.6);
  panel.Dots({{Vec2d(stats.Minimum, y), 1.3, kInk}, {Vec2d(stats.Maximum, y), 1.3, kInk}});
}

void DrawDiamond(cairo_t* context, const Vec2d& at, double radius) {
  cairo_move_to(context, at.x - radius, at.y);
  cairo_line_to(context, at.x, at.y - radius);
  cairo_line_to(context, at.x + radius, at.y);
  cairo_line_to(context, at.x, at.y + radius);
  cairo_close_path(context);
  cairo_set_source_rgb(context, kCurve.R / 255.0, kCurve.G / 255.0, kCurve.B / 255.0);
  cairo_fill(context);
}

}  // namespace

void DrawHistogram(cairo_t* context, const Box2d& window, const Sample& sample,
                   const HistogramFrame& frame) {
  const double headroom = frame.headroom;
  const CUnivariateStatistics& stats = sample.stats;
  const std::vector<unsigned int>& bins = stats.Histogram;
  const double binWidth = stats.Range / static_cast<double>(bins.size());
  std::vector<Vec2d> curve;
  double top = 1.0;
  if (!bins.empty()) {
    curve = NormalCurve(sample, stats.Count * binWidth);
    top = *std::max_element(bins.begin(), bins.end());
    for (const Vec2d& point : curve) top = std::max(top, point.y);
  }
  Axis counts = examples::MakeAxis(0.0, top / (1.0 - headroom), 5);
  while (!counts.ticks.empty() && counts.ticks.back() > top * 1.02) {
    counts.ticks.pop_back();  // none beside the box plot
  }
  Panel panel(context, window, sample.axis, counts);
  for (std::size_t i = 0; i < bins.size(); ++i) {
    const double left = stats.Minimum + static_cast<double>(i) * binWidth;
    if (bins[i] > 0) panel.Bar(Vec2d(left, 0.0), Vec2d(left + binWidth, bins[i]), kBar, kBarEdge);
  }
  if (bins.empty()) {
    for (const double number : sample.numbers) {
      panel.Path({Vec2d(number, 0.0), Vec2d(number, top / 2.0)}, 0.8, kBarEdge);
    }
  }
  panel.Path(curve, 1.3, kCurve);
  if (stats.Count > 0) {
    const double y = counts.high * (1.0 - headroom / 2.0);
    DrawBoxPlot(panel, stats, y, counts.high * headroom / 4.0);
    DrawDiamond(context, panel.OnPage(Vec2d(stats.Mean, y)), 2.6);
  }
  panel.Frame();
  if (!frame.countTitle.empty() && !bins.empty()) panel.TicksLeft(frame.countTitle);
  if (!frame.title.empty()) panel.TicksBelow(frame.title);
}

}  // namespace vlm::describe

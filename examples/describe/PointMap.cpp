#include <examples/describe/PointMap.h>

#include <examples/common/Axis.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/PageText.h>
#include <examples/common/Panel.h>

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vlm::describe {
namespace {

using examples::Align;
using examples::Axis;
using examples::DrawText;
using examples::kInk;
using examples::kPale;
using examples::MakeAxis;
using examples::MakePaddedAxis;
using examples::Panel;
using examples::PanelDot;

constexpr double kScaleRoom = 62.0;  // for the scale of z, right of the map
constexpr double kScaleWidth = 11.0;
constexpr double kPadding = 0.03;
constexpr unsigned kMostDots = 20000;

struct Range {
  double low;
  double high;
};

Range RangeOf(const RMatrix& points, unsigned column) {
  Range range{points(0, column), points(0, column)};
  for (unsigned i = 1; i < points.nRows(); ++i) {
    range.low = std::min(range.low, points(i, column));
    range.high = std::max(range.high, points(i, column));
  }
  return range;
}

// From pale yellow over green to dark blue, in equal steps of lightness.
Color4b ColorOf(double share) {
  constexpr double kStops[][3] = {
      {244, 208, 63}, {122, 190, 82}, {36, 144, 138}, {45, 92, 142}, {62, 24, 86}};
  constexpr int kLast = static_cast<int>(std::size(kStops)) - 1;
  const double place = std::clamp(share, 0.0, 1.0) * kLast;
  const int below = std::min(static_cast<int>(place), kLast - 1);
  const double part = place - below;
  const auto mixed = [&](int channel) {
    return static_cast<unsigned char>(
        std::lround(kStops[below][channel] * (1.0 - part) + kStops[below + 1][channel] * part));
  };
  return Color4b(mixed(0), mixed(1), mixed(2), 255);
}

void DrawScale(cairo_t* context, const Box2d& window, const Axis& axis, const std::string& label) {
  constexpr int kSteps = 64;
  const double left = window.xMax() + 12.0;
  const double height = window.yRange();
  for (int i = 0; i < kSteps; ++i) {
    examples::SetSourceColor(context, ColorOf((i + 0.5) / kSteps));
    const double top = window.yMax() - height * (i + 1) / kSteps;
    // A little higher, to close the seams.
    const double seam = i + 1 < kSteps ? 0.3 : 0.0;
    cairo_rectangle(context, left, top - seam, kScaleWidth, height / kSteps + seam);
    cairo_fill(context);
  }
  cairo_rectangle(context, left, window.yMin(), kScaleWidth, height);
  examples::SetSourceColor(context, kPale);
  cairo_set_line_width(context, 0.75);
  cairo_stroke(context);
  for (std::size_t i = 0; i < axis.ticks.size(); ++i) {
    const double y = window.yMax() - axis.Share(axis.ticks[i]) * height;
    cairo_move_to(context, left + kScaleWidth, y);
    cairo_line_to(context, left + kScaleWidth + 3.0, y);
    examples::SetSourceColor(context, kPale);
    cairo_stroke(context);
    DrawText(context, Vec2d(left + kScaleWidth + 5.0, y + 2.9),
             {axis.labels[i], 8.0, Align::Left, kInk, 24.0});
  }
  DrawText(context, Vec2d(left + kScaleWidth + 36.0, window.Center().y),
           {label + axis.offset, 9.5, Align::Center, kInk, height, true});
}

}  // namespace

double PointMapHeight(double width, const RMatrix& points) {
  constexpr double kLowest = 0.35;
  constexpr double kHighest = 0.9;
  if (points.nRows() == 0) return width * kLowest;
  const Range x = RangeOf(points, 0);
  const Range y = RangeOf(points, 1);
  const double map = points.nCols() == 3 ? width - kScaleRoom : width;
  const double ratio = (y.high / 2 - y.low / 2) / (x.high / 2 - x.low / 2);
  return std::isfinite(ratio) ? std::clamp(map * ratio, width * kLowest, width * kHighest)
                              : width * kLowest;
}

void DrawPointMap(cairo_t* context, const Box2d& page, const RMatrix& points,
                  const std::vector<std::string>& labels) {
  if (points.nRows() == 0) return;
  const bool hasZ = points.nCols() == 3;
  const Box2d window(page.xMin(), page.yMin(), page.xMax() - (hasZ ? kScaleRoom : 0.0),
                     page.yMax());
  const Range xs = RangeOf(points, 0);
  const Range ys = RangeOf(points, 1);
  Panel panel(context, window, MakePaddedAxis(xs.low, xs.high, 10, kPadding),
              MakePaddedAxis(ys.low, ys.high, 6, kPadding));
  std::vector<unsigned> order(points.nRows());
  std::iota(order.begin(), order.end(), 0u);
  Axis scale;
  if (hasZ) {
    const Range zs = RangeOf(points, 2);
    scale = MakeAxis(zs.low, zs.high, 6);
    std::stable_sort(order.begin(), order.end(),
                     [&](unsigned a, unsigned b) { return points(a, 2) < points(b, 2); });
  }
  std::vector<PanelDot> dots;
  const unsigned stride = points.nRows() / kMostDots + 1;
  for (std::size_t place = 0; place < order.size(); place += stride) {
    const unsigned i = order[place];
    const Vec2d point(points(i, 0), points(i, 1));
    dots.push_back({point, 1.9, Color4b(255, 255, 255, 255)});
    dots.push_back({point, 1.6, ColorOf(hasZ ? scale.Share(points(i, 2)) : 0.75)});
  }
  panel.Dots(dots);
  panel.Frame();
  std::string note = "{\\i n} = " + std::to_string(points.nRows()) + " points";
  if (stride > 1) note += ", one in " + std::to_string(stride) + " of which is drawn";
  DrawText(context, Vec2d(window.xMin(), window.yMin() - 6.0), {note, 8.5, Align::Left, kPale});
  panel.TicksBelow(labels[0]);
  panel.TicksLeft(labels[1]);
  if (hasZ) DrawScale(context, window, scale, labels[2]);
}

}  // namespace vlm::describe

#include <velum/numerics/detail/ChartLayout.h>

#include <velum/core/StringFormat.h>
#include <velum/dates/AxisIntervals.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace vlm::detail {
namespace {

constexpr int kMostIntervals = 15;

void DropTicks(ChartAxis& axis) {
  axis.tick = axis.gap = axis.spacing = axis.labelExtent = axis.intervals = 0;
}

void DropTitle(ChartAxis& axis) {
  axis.title = GString();
  axis.titleHeight = axis.titleGap = 0;
}

void MeasureTitle(ChartAxis& axis, ChartText& text) {
  if (axis.title.empty()) return;
  axis.titleHeight = ToPixels(std::ceil(text.TitleHeight(axis.title)));
  axis.titleGap = axis.titleHeight / 5;
}

void MeasureTicks(ChartAxis& axis, int labelHeight) {
  axis.tick = labelHeight / 3;
  axis.gap = labelHeight / 6;
  axis.spacing = labelHeight / 2;
}

// The ticks and labels go first, and only then the title.
int BandWithin(ChartAxis& axis, int limit) {
  if (axis.Band() > limit) DropTicks(axis);
  if (axis.Band() > limit) DropTitle(axis);
  return axis.Band();
}

// The scale of an x axis, in pixels a unit, and what it leaves free. Margins stay doubles until
// they are chosen: those that come to nothing are no numbers that an int could hold.
struct Scale {
  double perUnit;
  double left;
  double right;
};

// The four ways to place the first and the last label, half of which are `left` and `right` wide:
// both lie within the plot and the y axis's texts, or the last one reaches beyond, or the first, or
// both.
Scale ScaleFor(const ChartAxis& axis, int width, int yBand, int leastRight, int left, int right) {
  const double above = axis.hi - axis.last;
  const double below = axis.first - axis.lo;
  double scale = (width - yBand - leastRight) / (axis.hi - axis.lo);
  if (above * scale + leastRight >= right && left - yBand <= below * scale) {
    return {scale, 0, static_cast<double>(leastRight)};
  }
  scale = (width - right - yBand) / (axis.last - axis.lo);
  double rightMargin = std::ceil(right - above * scale);
  if (rightMargin >= leastRight && left - yBand <= below * scale) return {scale, 0, rightMargin};

  scale = (width - left - leastRight) / (axis.hi - axis.first);
  double leftMargin = std::ceil((left - yBand) - below * scale);
  if (leftMargin >= 0 && above * scale + leastRight >= right) return {scale, leftMargin, 0};

  scale = (width - right - left) / (axis.last - axis.first);
  rightMargin = std::ceil(right - above * scale);
  leftMargin = std::ceil((left - yBand) - below * scale);
  // Also where the ticks are one, and the margins no finite numbers.
  if (!(leftMargin >= 0 && rightMargin >= leastRight && std::isfinite(leftMargin + rightMargin))) {
    return {scale, static_cast<double>(std::max(left - yBand, 0)),
            static_cast<double>(std::max(right, leastRight))};
  }
  return {scale, leftMargin, rightMargin};
}

bool LabelsFit(const ChartAxis& axis, double perUnit, ChartText& text) {
  if (axis.intervals <= 0) return false;
  const int apart = ToPixels(std::floor(perUnit * (axis.last - axis.first) / axis.intervals));
  int before = 0;
  for (int k = 0; k <= axis.intervals; ++k) {
    const int half = HalfWidth(text, axis.TickLabel(k));
    if (axis.spacing + half + before >= apart) return false;
    before = half;
  }
  return true;
}

}  // namespace

double ChartAxis::TickValue(int k) const {
  if (intervals <= 0) return first + 0.0;  // which is no -0
  const double value = first + (last - first) * k / intervals;
  // Ticks are multiples of their distance: what is far less is 0, and should read so.
  return std::abs(value) < 1e-9 * ((last - first) / intervals) ? 0.0 : value;
}

GString ChartAxis::TickLabel(int k) const {
  std::string label;
  FormatString(label, "%.10g", TickValue(k));
  return label;
}

int ToPixels(double value) {
  constexpr double kMost = 0x1p28;
  if (std::isnan(value)) return 0;
  return static_cast<int>(std::clamp(value, -kMost, kMost));
}

int PixelOf(double value, double lo, double hi, int atLo, int atHi) {
  if (hi == lo) return atLo;
  const double pixel = ((hi - value) * atLo + (value - lo) * atHi) / (hi - lo);
  return std::isnan(pixel) ? atLo : ToPixels(pixel);
}

int HalfWidth(ChartText& text, const GString& label) {
  return ToPixels(std::ceil(text.LabelWidth(label) / 2));
}

int MeasureXBand(ChartAxis& axis, bool labels, int limit, ChartText& text) {
  MeasureTitle(axis, text);
  if (labels) {
    axis.labelExtent = text.LabelHeight();
    MeasureTicks(axis, axis.labelExtent);
  }
  return BandWithin(axis, limit);
}

YRoom MeasureYAxis(ChartAxis& axis, bool labels, int top, int bottom, int limit, ChartText& text) {
  MeasureTitle(axis, text);
  YRoom room{0, top, bottom - top, 0};
  const int labelHeight = labels ? text.LabelHeight() : 0;
  const int pitch = labelHeight + labelHeight / 2;
  const int wanted = pitch > 0 ? std::min(kMostIntervals, room.height / pitch) : 0;
  if (wanted > 0) {
    MeasureTicks(axis, labelHeight);
    axis.intervals = CalcAxisIntervals(axis.lo, axis.hi, wanted, &axis.first, &axis.last);
    const int half = (labelHeight + 1) / 2;
    const auto below = [&](double tick) { return PixelOf(tick, axis.lo, axis.hi, room.height, 0); };
    const int margin = half - below(axis.last);
    if (margin > room.top) {
      room.height -= margin - room.top;
      room.top = margin;
    }
    room.overhang = std::max(below(axis.first) + half - room.height, 0);
    double widest = 0;
    for (int k = 0; axis.intervals > 0 && k <= axis.intervals; ++k) {
      widest = std::max(widest, text.LabelWidth(axis.TickLabel(k)));
    }
    axis.labelExtent = ToPixels(std::ceil(widest));
  }
  room.band = BandWithin(axis, limit);
  return room;
}

XMargins FitXAxis(ChartAxis& axis, int width, int yBand, int leastRight, int wanted,
                  ChartText& text) {
  XMargins margins;
  axis.intervals = 0;
  for (; wanted >= 2; --wanted) {
    axis.intervals = CalcAxisIntervals(axis.lo, axis.hi, wanted, &axis.first, &axis.last);
    const int left = HalfWidth(text, axis.TickLabel(0));
    const int right = HalfWidth(text, axis.TickLabel(axis.intervals));
    const Scale scale = ScaleFor(axis, width, yBand, leastRight, left, right);
    margins = {ToPixels(scale.left), ToPixels(scale.right)};
    if (LabelsFit(axis, scale.perUnit, text)) break;
  }
  return margins;
}

ChartLayout LayOut(const ChartAxis& x, const ChartAxis& y, const ChartWish& wish,
                   const ChartRect& rect, ChartText& text) {
  ChartLayout layout;
  layout.x = x;
  layout.y = y;
  const int strip = wish.strip ? text.LabelHeight() : 0;
  const int highest = wish.strip ? strip : wish.topWithoutStrip;
  int xBand = MeasureXBand(layout.x, wish.xLabels, rect.height / 3, text);
  const YRoom room = MeasureYAxis(layout.y, wish.yLabels, highest, rect.height - strip - xBand,
                                  rect.width / 3, text);
  xBand = std::max(xBand, room.overhang);
  // Labels that lost their room have no ticks either.
  const int wanted = layout.x.labelExtent > 0 ? kMostIntervals : 0;
  const XMargins margins =
      FitXAxis(layout.x, rect.width, room.band, wish.rightMargin, wanted, text);

  const int width = rect.width - margins.left - margins.right - room.band;
  layout.x0 = rect.left + margins.left + room.band;
  layout.x1 = layout.x0 + width - 1;
  layout.top = rect.top + room.top + strip;
  layout.height = room.height;
  layout.xAxisRow = rect.top + rect.height - xBand;
  layout.yAxisColumn = layout.x0 - 1;
  layout.strip = {layout.x0, rect.top, width, strip};
  return layout;
}

}  // namespace vlm::detail

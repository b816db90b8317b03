#include <velum/numerics/detail/ChartPaper.h>

#include <velum/core/WideText.h>
#include <velum/diagnostics/SystemInfo.h>
#include <velum/numerics/UnivariateStatistics.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

namespace vlm::detail {
namespace {

using namespace Gdiplus;

constexpr ARGB kBlack = 0xFF000000;
constexpr ARGB kRed = 0xFFFF0000;
constexpr ARGB kGray = 0xFFCCCCCC;

Font FaceOf(REAL points, FontStyle style) {
  return Font(AtoW(CSystemInfo::GetInstance().DefVariablePitchFace().c_str()), points, style);
}

}  // namespace

bool ChartPaper::CanHold(const ChartRect& area) {
  constexpr std::int64_t kMost = 1000000;
  const std::int64_t right = std::int64_t{area.left} + area.width;
  const std::int64_t bottom = std::int64_t{area.top} + area.height;
  return area.width > 0 && area.height > 0 && area.left >= -kMost && area.top >= -kMost &&
         right <= kMost && bottom <= kMost;
}

ChartPaper::ChartPaper(Graphics& graphics, const ChartRect& area)
    : graphics_(graphics),
      area_(area),
      black_(Color(kBlack)),
      red_(Color(kRed)),
      ink_(Color(kBlack)),
      gray_(Color(kGray)),
      labelFont_(FaceOf(10, FontStyleRegular)),
      titleFont_(FaceOf(12, FontStyleBold)) {
  graphics_.SetInnerClip({area.left, area.top, area.width, area.height});
}

ChartPaper::~ChartPaper() { graphics_.ResetInnerClip(); }

int ChartPaper::LabelHeight() {
  if (labelHeight_ < 0) {
    const double height = std::ceil(labelFont_.GetHeight(&graphics_));
    labelHeight_ = std::clamp(ToPixels(height), 0, 1 << 20);
  }
  return labelHeight_;
}

double ChartPaper::LabelWidth(const GString& text) { return Measure(text, labelFont_).Width; }

double ChartPaper::TitleWidth(const GString& text) { return Measure(text, titleFont_).Width; }

double ChartPaper::TitleHeight(const GString& text) { return Measure(text, titleFont_).Height; }

void ChartPaper::DrawAxes(const ChartLayout& layout) {
  DrawLine(layout.x0, layout.xAxisRow, layout.x1, layout.xAxisRow);
  DrawLine(layout.yAxisColumn, layout.top, layout.yAxisColumn, layout.top + layout.height - 1);
  DrawXTicks(layout.x, layout);
  DrawYTicks(layout.y, layout);
  DrawXTitle(layout.x, layout);
  DrawYTitle(layout.y, layout);
}

void ChartPaper::DrawBoxPlot(const ChartRect& rect, const CUnivariateStatistics& stats) {
  const int left = rect.left;
  const int right = left + rect.width - 1;
  const int top = rect.top;
  const int bottom = top + rect.height - 1;
  const int middle = (top + bottom) / 2;
  const auto column = [&](double x) {
    return PixelOf(x, stats.Minimum, stats.Maximum, left, right);
  };
  const int lower = column(stats.Percentile_25);
  const int upper = column(stats.Percentile_75);
  const int median = column(stats.Percentile_50);
  DrawBar(lower, top, upper, bottom);
  DrawLine(left, middle, lower, middle);
  DrawLine(left, top, left, bottom);
  DrawLine(upper, middle, right, middle);
  DrawLine(right, top, right, bottom);
  DrawLine(median, top, median, bottom);
  const int radius = (bottom - top) / 5 + 1;
  graphics_.FillEllipse(&ink_, column(stats.Mean) - radius, middle - radius, 2 * radius,
                        2 * radius);
}

void ChartPaper::DrawBar(int left, int top, int right, int bottom) {
  graphics_.FillRectangle(&gray_, left, top, right - left, bottom - top);
  graphics_.DrawRectangle(&black_, left, top, right - left, bottom - top);
}

void ChartPaper::DrawPoint(int column, int row) {
  // The outline of a rectangle of 2 by 2 takes 3 by 3 pixels.
  graphics_.DrawEllipse(&black_, column - 1, row - 1, 2, 2);
}

void ChartPaper::DrawLine(int x0, int y0, int x1, int y1) {
  graphics_.DrawLine(&black_, x0, y0, x1, y1);
}

void ChartPaper::DrawCurve(const Point* points, int count) {
  graphics_.DrawLines(&red_, points, count);
}

bool ChartPaper::IsFree(const TextBox& box) const {
  return std::none_of(drawn_.begin(), drawn_.end(), [&](const TextBox& other) {
    return box.left < other.right && other.left < box.right && box.top < other.bottom &&
           other.top < box.bottom;
  });
}

RectF ChartPaper::Measure(const GString& text, const Font& font) const {
  RectF box;
  graphics_.MeasureString(AtoW(text.c_str()), -1, &font, {}, &box);
  return box;
}

void ChartPaper::DrawText(const GString& text, const Font& font, int x, int y,
                          StringAlignment across, StringAlignment down) {
  StringFormat format;
  format.SetAlignment(across);
  format.SetLineAlignment(down);
  const PointF at(static_cast<REAL>(x), static_cast<REAL>(y));
  graphics_.DrawString(AtoW(text.c_str()), -1, &font, at, &format, &ink_);
}

void ChartPaper::DrawXTicks(const ChartAxis& axis, const ChartLayout& layout) {
  const int row = layout.xAxisRow;
  const int top = row + axis.tick + axis.gap;
  for (int k = 0; axis.intervals > 0 && k <= axis.intervals; ++k) {
    const int column = PixelOf(axis.TickValue(k), axis.lo, axis.hi, layout.x0, layout.x1);
    DrawLine(column, row, column, row + axis.tick);
    const GString label = axis.TickLabel(k);
    const double half = LabelWidth(label) / 2;
    DrawText(label, labelFont_, column, top, StringAlignmentCenter, StringAlignmentNear);
    drawn_.push_back({column - half, double(top), column + half, double(top + axis.labelExtent)});
  }
}

void ChartPaper::DrawYTicks(const ChartAxis& axis, const ChartLayout& layout) {
  const int column = layout.yAxisColumn;
  const int right = column - axis.tick - axis.gap;
  const double half = LabelHeight() / 2.0;
  std::optional<int> before;
  const int bottom = layout.top + layout.height - 1;
  for (int k = 0; axis.intervals > 0 && k <= axis.intervals; ++k) {
    const int row = PixelOf(axis.TickValue(k), axis.lo, axis.hi, bottom, layout.top);
    DrawLine(column - axis.tick, row, column, row);
    // Where there is room for an interval or two, there can be more of them.
    if (before && *before - row < LabelHeight()) continue;
    before = row;
    const GString label = axis.TickLabel(k);
    DrawText(label, labelFont_, right, row, StringAlignmentFar, StringAlignmentCenter);
    drawn_.push_back({right - LabelWidth(label), row - half, double(right), row + half});
  }
}

void ChartPaper::DrawXTitle(const ChartAxis& axis, const ChartLayout& layout) {
  if (axis.title.empty()) return;
  const int middle = (layout.x0 + layout.x1) / 2;
  const int top = layout.xAxisRow + axis.tick + axis.gap + axis.labelExtent + axis.titleGap;
  const double half = TitleWidth(axis.title) / 2;
  const TextBox box = {middle - half, double(top), middle + half, double(top + axis.titleHeight)};
  if (!IsFree(box)) return;
  DrawText(axis.title, titleFont_, middle, top, StringAlignmentCenter, StringAlignmentNear);
  drawn_.push_back(box);
}

void ChartPaper::DrawYTitle(const ChartAxis& axis, const ChartLayout& layout) {
  if (axis.title.empty()) return;
  const int right = layout.yAxisColumn - axis.labelExtent - axis.titleGap - axis.gap - axis.tick;
  const int middle = layout.top + (layout.height - 1) / 2;
  const double half = TitleWidth(axis.title) / 2;
  if (!IsFree({double(right - axis.titleHeight), middle - half, double(right), middle + half})) {
    return;
  }
  const REAL x = static_cast<REAL>(right);
  const REAL y = static_cast<REAL>(middle);
  graphics_.TranslateTransform(x, y);
  graphics_.RotateTransform(-90);
  DrawText(axis.title, titleFont_, 0, 0, StringAlignmentCenter, StringAlignmentFar);
  // Turned back rather than reset: what the caller has set stays.
  graphics_.RotateTransform(90);
  graphics_.TranslateTransform(-x, -y);
}

}  // namespace vlm::detail

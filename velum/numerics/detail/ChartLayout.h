#pragma once

/// \file
/// Where the parts of a chart lie, as arithmetic on measured text.
///
///     ChartAxis depth, frequency;
///     depth.hi = 700;
///     frequency.hi = 120;
///     const ChartLayout layout = LayOut(depth, frequency, wish, {0, 0, 800, 600}, text);
///     const int column = PixelOf(35, depth.lo, depth.hi, layout.x0, layout.x1);
///
/// Rows grow downwards. All lengths are pixels.

#include <velum/core/GString.h>

namespace vlm::detail {

/// How large the texts of a chart are. A chart knows of fonts no more than this.
class ChartText {
 public:
  /// The height of the font of labels.
  virtual int LabelHeight() = 0;
  /// The width of a label.
  virtual double LabelWidth(const GString& text) = 0;
  /// The width of a title.
  virtual double TitleWidth(const GString& text) = 0;
  /// The height of a title.
  virtual double TitleHeight(const GString& text) = 0;

 protected:
  ~ChartText() = default;
};

/// A rectangle of pixels. A value.
struct ChartRect {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

/// What one axis shows and the room that its texts take. A value.
struct ChartAxis {
  double lo = 0;
  double hi = 1;
  GString title;        ///< emptied where there is no room for it
  int tick = 0;         ///< the length of a tick mark
  int gap = 0;          ///< between a tick mark and its label
  int spacing = 0;      ///< the least room between labels
  int labelExtent = 0;  ///< the height of a label on the x axis, the widest label on the y axis
  int titleHeight = 0;
  int titleGap = 0;
  double first = 0;   ///< the first tick
  double last = 0;    ///< the last tick
  int intervals = 0;  ///< between ticks; with 0 there are no ticks

  /// The value of tick `k`, counted from 0; where rounding left next to nothing, 0.
  [[nodiscard]] double TickValue(int k) const;
  /// The label of tick `k`.
  [[nodiscard]] GString TickLabel(int k) const;
  /// What the axis takes away from the plot.
  [[nodiscard]] int Band() const { return tick + gap + labelExtent + titleHeight + titleGap; }
};

/// What a chart is to have beside its plot. A value.
struct ChartWish {
  bool xLabels = false;
  bool yLabels = false;
  bool strip = false;       ///< a strip as high as a label above the plot, and as much room again
  int rightMargin = 0;      ///< at least, where there are labels below
  int topWithoutStrip = 0;  ///< free rows above the plot
};

/// Where the parts of a chart lie. A value.
struct ChartLayout {
  ChartAxis x;
  ChartAxis y;
  int x0 = 0;           ///< the first column of the plot
  int x1 = 0;           ///< its last one
  int top = 0;          ///< its first row
  int height = 0;       ///< of the y axis
  int xAxisRow = 0;     ///< one row below the rectangle if nothing stands below the axis
  int yAxisColumn = 0;  ///< one column left of the rectangle if nothing stands left of the axis
  ChartRect strip;      ///< of height 0 if there is none
};

/// The integer that is left of `value` without its fraction; NaN gives 0, and beyond 2^28 it stays
/// there, so that a few of them can be added.
[[nodiscard]] int ToPixels(double value);

/// The pixel of a value on a range, whose ends lie on the pixels `atLo` and `atHi`; `atLo` if the
/// range has no width.
[[nodiscard]] int PixelOf(double value, double lo, double hi, int atLo, int atHi);

/// Half the width of a label, as it is centred on its tick.
[[nodiscard]] int HalfWidth(ChartText& text, const GString& label);

/// Makes room for the texts below a chart, at most `limit`, and gives it: what is too much loses
/// the labels, then the title.
int MeasureXBand(ChartAxis& axis, bool labels, int limit, ChartText& text);

/// The room of the y axis. A value.
struct YRoom {
  int band = 0;      ///< of its texts, left of the plot
  int top = 0;       ///< where it begins, so that the uppermost label has room
  int height = 0;    ///< of the axis
  int overhang = 0;  ///< how far the lowest label reaches below it
};

/// Chooses the ticks of the y axis between the rows `top` and `bottom`, and makes room for its
/// texts, at most `limit`.
YRoom MeasureYAxis(ChartAxis& axis, bool labels, int top, int bottom, int limit, ChartText& text);

/// What is left free beside the plot and the texts of the y axis. A value.
struct XMargins {
  int left = 0;
  int right = 0;
};

/// Chooses the ticks of the x axis, at most `wanted` intervals, such that the labels keep apart in
/// a chart of that width; two intervals stand even where they do not.
XMargins FitXAxis(ChartAxis& axis, int width, int yBand, int leastRight, int wanted,
                  ChartText& text);

/// Lays out a chart in a rectangle; the axes give the ranges and titles.
[[nodiscard]] ChartLayout LayOut(const ChartAxis& x, const ChartAxis& y, const ChartWish& wish,
                                 const ChartRect& rect, ChartText& text);

}  // namespace vlm::detail

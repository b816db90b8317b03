#pragma once

/// \file
/// What charts are drawn with: pens, brushes and fonts on a part of a surface.
///
///     ChartPaper paper(graphics, {0, 0, 800, 600});
///     const ChartLayout layout = LayOut(x, y, wish, paper.Area(), paper);
///     paper.DrawAxes(layout);

#include <velum/core/GString.h>
#include <velum/diagnostics/GdiPlus.h>
#include <velum/numerics/Forward.h>
#include <velum/numerics/detail/ChartLayout.h>

#include <vector>

namespace vlm::detail {

/// A rectangle of a surface, to which all painting is clipped while the object lives. Has identity
/// and does not own the surface.
class ChartPaper : public ChartText {
 public:
  /// Whether a rectangle has pixels, and pixels that can be reached.
  [[nodiscard]] static bool CanHold(const ChartRect& area);

  ChartPaper(Gdiplus::Graphics& graphics, const ChartRect& area);
  ChartPaper(const ChartPaper&) = delete;
  ChartPaper& operator=(const ChartPaper&) = delete;
  ~ChartPaper();

  int LabelHeight() override;
  double LabelWidth(const GString& text) override;
  double TitleWidth(const GString& text) override;
  double TitleHeight(const GString& text) override;

  /// The rectangle.
  [[nodiscard]] const ChartRect& Area() const { return area_; }

  /// Draws both axes with their ticks and texts, but no title over another text, and no label of
  /// the y axis over the one before.
  void DrawAxes(const ChartLayout& layout);
  /// Draws a box plot over a rectangle.
  void DrawBoxPlot(const ChartRect& rect, const CUnivariateStatistics& stats);
  /// Draws a bar from the columns `left` to `right` and the rows `top` to `bottom`, filled.
  void DrawBar(int left, int top, int right, int bottom);
  /// Draws a point of a sample.
  void DrawPoint(int column, int row);
  /// Draws a line in black.
  void DrawLine(int x0, int y0, int x1, int y1);
  /// Draws lines in red through two or more points.
  void DrawCurve(const Gdiplus::Point* points, int count);

 private:
  // The edges of what a text covers.
  struct TextBox {
    double left;
    double top;
    double right;
    double bottom;
  };

  // Whether a text would touch none of those drawn so far.
  [[nodiscard]] bool IsFree(const TextBox& box) const;
  [[nodiscard]] Gdiplus::RectF Measure(const GString& text, const Gdiplus::Font& font) const;
  void DrawText(const GString& text, const Gdiplus::Font& font, int x, int y,
                Gdiplus::StringAlignment across, Gdiplus::StringAlignment down);
  void DrawXTicks(const ChartAxis& axis, const ChartLayout& layout);
  void DrawYTicks(const ChartAxis& axis, const ChartLayout& layout);
  void DrawXTitle(const ChartAxis& axis, const ChartLayout& layout);
  void DrawYTitle(const ChartAxis& axis, const ChartLayout& layout);

  Gdiplus::Graphics& graphics_;
  const ChartRect area_;
  const Gdiplus::Pen black_;
  const Gdiplus::Pen red_;
  const Gdiplus::SolidBrush ink_;
  const Gdiplus::SolidBrush gray_;
  const Gdiplus::Font labelFont_;
  const Gdiplus::Font titleFont_;
  int labelHeight_ = -1;        // not measured yet
  std::vector<TextBox> drawn_;  // the texts so far
};

}  // namespace vlm::detail

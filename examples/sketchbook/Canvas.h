#pragma once

/// \file
/// What shapes are drawn on.
///
///     vlm::sketchbook::Canvas canvas(context);
///     canvas.DrawEllipse(placement, vlm::Vec2d(20, 20), style);

#include <velum/core/GString.h>
#include <velum/geometry/Box2.h>
#include <velum/geometry/Mat3d.h>
#include <velum/geometry/Vec2.h>
#include <examples/sketchbook/Arrow.h>
#include <examples/sketchbook/Style.h>

#include <vector>

struct _cairo;

namespace vlm::sketchbook {

/// Draws in styles on a Cairo context, whose units and axes are the page's. Has identity, does not
/// own the context, and leaves its state as it was.
class Canvas {
 public:
  /// Makes a canvas over `context`, which must outlive it.
  explicit Canvas(struct _cairo* context) : context_(context) {}
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;

  /// The box of a math text, as DrawLabel places it; empty for a text that can't be read.
  [[nodiscard]] Box2d LabelBox(const GString& text, double height, unsigned int alignment) const;

  /// Draws an ellipse about the placement's origin.
  void DrawEllipse(const Mat3d& placement, const Vec2d& radii, const Style& style);
  /// Draws a rectangle about the placement's origin.
  void DrawRectangle(const Mat3d& placement, const Vec2d& size, double corner, const Style& style);
  /// Draws a closed line and its inside.
  void DrawPolygon(const std::vector<Vec2d>& points, const Style& style);
  /// Draws an open line. An arrowhead has its tip at the line's end.
  void DrawLine(std::vector<Vec2d> points, Arrow arrow, const Style& style);
  /// Draws a math text in the line's colour. `alignment` is 1, 2 or 3: the placement's origin is
  /// half way down the left side of the text's box, its middle, or half way down its right side.
  void DrawLabel(const Mat3d& placement, const GString& text, double height, unsigned int alignment,
                 const Style& style);

 private:
  void Paint(const Style& style);
  void DrawArrowhead(Vec2d& tip, const Vec2d& from, const Style& style);

  struct _cairo* context_;
};

}  // namespace vlm::sketchbook

#include <examples/sketchbook/Canvas.h>

#include <velum/geometry/Constants.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/LabelLayout.h>

#include <cairo.h>

namespace vlm::sketchbook {
namespace {

using examples::CairoTextDevice;
using examples::LabelLayout;
using examples::SetSourceColor;

// Draws in the coordinates of a placement, for as long as it lives.
class InPlacement {
 public:
  InPlacement(cairo_t* context, const Mat3d& placement) : context_(context) {
    cairo_save(context_);
    cairo_matrix_t matrix;
    cairo_matrix_init(&matrix, placement[0][0], placement[0][1], placement[1][0], placement[1][1],
                      placement[2][0], placement[2][1]);
    cairo_transform(context_, &matrix);
  }
  InPlacement(const InPlacement&) = delete;
  InPlacement& operator=(const InPlacement&) = delete;
  ~InPlacement() { cairo_restore(context_); }

 private:
  cairo_t* context_;
};

// Where the first baseline of a label begins.
Vec2d OriginOf(const LabelLayout& label, unsigned int alignment) {
  const Box2d& box = label.Box();
  const double shares[] = {0.0, 0.5, 1.0};
  return Vec2d(-(box.xMin() + shares[alignment - 1] * box.xRange()), -box.Center().y);
}

void Trace(cairo_t* context, const std::vector<Vec2d>& points) {
  cairo_new_path(context);
  for (const Vec2d& point : points) cairo_line_to(context, point.x, point.y);
}

}  // namespace

Box2d Canvas::LabelBox(const GString& text, double height, unsigned int alignment) const {
  CairoTextDevice device(context_, height);
  const LabelLayout label(device, text, alignment);
  if (label.Fault()) return {};
  return label.Box() + OriginOf(label, alignment);
}

void Canvas::DrawEllipse(const Mat3d& placement, const Vec2d& radii, const Style& style) {
  cairo_new_path(context_);
  {
    const InPlacement inPlacement(context_, placement);
    cairo_scale(context_, radii.x, radii.y);
    cairo_arc(context_, 0.0, 0.0, 1.0, 0.0, TWO_PI);
    cairo_close_path(context_);
  }
  Paint(style);
}

void Canvas::DrawRectangle(const Mat3d& placement, const Vec2d& size, double corner,
                           const Style& style) {
  cairo_new_path(context_);
  {
    const InPlacement inPlacement(context_, placement);
    const Vec2d middles = size * 0.5 - corner;  // of the corners, in the lower right quarter
    cairo_arc(context_, middles.x, middles.y, corner, 0.0, HALF_PI);
    cairo_arc(context_, -middles.x, middles.y, corner, HALF_PI, PI);
    cairo_arc(context_, -middles.x, -middles.y, corner, PI, PI + HALF_PI);
    cairo_arc(context_, middles.x, -middles.y, corner, PI + HALF_PI, TWO_PI);
    cairo_close_path(context_);
  }
  Paint(style);
}

void Canvas::DrawPolygon(const std::vector<Vec2d>& points, const Style& style) {
  Trace(context_, points);
  cairo_close_path(context_);
  Paint(style);
}

void Canvas::DrawLine(std::vector<Vec2d> points, Arrow arrow, const Style& style) {
  if (points.size() < 2) return;
  if (arrow != Arrow::None) DrawArrowhead(points.back(), points[points.size() - 2], style);
  if (arrow == Arrow::Both) DrawArrowhead(points.front(), points[1], style);
  Trace(context_, points);
  Paint(style);
}

// Draws the head and takes the line's end back to its base, so that no stroke shows beyond the tip.
void Canvas::DrawArrowhead(Vec2d& tip, const Vec2d& from, const Style& style) {
  const double length = 4.5 + 2.5 * style.width;
  Vec2d direction = tip - from;
  if (direction.Length() <= length) return;
  direction.Normalize();
  const Vec2d base = tip - direction * length;
  const Vec2d side = Vec2d(-direction.y, direction.x) * (0.38 * length);
  Trace(context_, {tip, base + side, base - side});
  cairo_close_path(context_);
  SetSourceColor(context_, style.line);
  cairo_fill(context_);
  tip = base;
}

void Canvas::DrawLabel(const Mat3d& placement, const GString& text, double height,
                       unsigned int alignment, const Style& style) {
  const InPlacement inPlacement(context_, placement);
  CairoTextDevice device(context_, height);
  device.SetColor(style.line);
  const LabelLayout label(device, text, alignment);
  if (!label.Fault()) label.Draw(device, OriginOf(label, alignment));
}

// Fills and strokes the present path.
void Canvas::Paint(const Style& style) {
  if (style.fill.A > 0) {
    SetSourceColor(context_, style.fill);
    cairo_fill_preserve(context_);
  }
  if (style.width > 0.0) {
    SetSourceColor(context_, style.line);
    cairo_set_line_width(context_, style.width);
    cairo_set_line_join(context_, CAIRO_LINE_JOIN_ROUND);
    cairo_set_dash(context_, &style.dash, style.dash > 0.0 ? 1 : 0, 0.0);
    cairo_stroke_preserve(context_);
  }
  cairo_new_path(context_);
}

}  // namespace vlm::sketchbook

#include <examples/overlay/MapPanel.h>

#include <velum/geometry/Constants.h>
#include <velum/geometry/PolygonMeasures.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/Inside.h>
#include <examples/common/LabelLayout.h>

#include <cairo.h>

#include <algorithm>

namespace vlm::overlay {
namespace {

using examples::Inside;
using examples::SetSourceColor;

constexpr double kTextHeight = 11.0;
constexpr double kPaper = 0.98;
const Color4b kInk(40, 44, 52, 255);
const Color4b kFrame(150, 155, 165, 255);

}  // namespace

MapPanel::MapPanel(cairo_t* context, const Box2d& window, const Box2d& world)
    : context_(context),
      window_(window),
      scale_(std::min(window.xRange() / world.xRange(), window.yRange() / world.yRange())),
      origin_(window.Center() - Vec2d(world.Center().x, -world.Center().y) * scale_) {
  cairo_rectangle(context_, window.xMin(), window.yMin(), window.xRange(), window.yRange());
  cairo_set_source_rgb(context_, kPaper, kPaper, kPaper);
  cairo_fill(context_);
}

void MapPanel::Fill(const GPolygon& shape, Color4b color) {
  const Inside inside(context_, window_);
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  shape.GetPolyPolygon(points, counts, false);
  const Vec2d* contour = points.data();
  for (const unsigned int count : counts) {
    Trace(contour, count);
    cairo_close_path(context_);
    contour += count;
  }
  cairo_set_fill_rule(context_, CAIRO_FILL_RULE_EVEN_ODD);
  SetSourceColor(context_, color);
  cairo_fill(context_);
}

void MapPanel::Stroke(const GPolygon& shape, double width, Color4b color) {
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  shape.GetPolyPolygon(points, counts, true);
  Paths(points, counts, width, color);
}

void MapPanel::StrokeHoles(const GPolygon& shape, double width, Color4b color) {
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  shape.GetPolyPolygon(points, counts, true);
  const Vec2d* contour = points.data();
  for (const unsigned int count : counts) {
    if (PolygonArea(contour, count) > 0) Paths({contour, contour + count}, {count}, width, color);
    contour += count;
  }
}

void MapPanel::Paths(const std::vector<Vec2d>& points, const std::vector<unsigned int>& counts,
                     double width, Color4b color) {
  const Inside inside(context_, window_);
  const Vec2d* path = points.data();
  for (const unsigned int count : counts) {
    Trace(path, count);
    path += count;
  }
  SetSourceColor(context_, color);
  cairo_set_line_width(context_, width);
  cairo_set_line_join(context_, CAIRO_LINE_JOIN_ROUND);
  cairo_stroke(context_);
}

void MapPanel::Strip(const Vec2d* points, unsigned int count, Color4b color) {
  const Inside inside(context_, window_);
  for (unsigned int i = 2; i < count; ++i) {
    Trace(points + i - 2, 3);
    cairo_close_path(context_);
    SetSourceColor(context_, color);
    cairo_fill_preserve(context_);
    cairo_set_line_width(context_, 0.2);  // in the same colour, to close the seams
    cairo_stroke(context_);
  }
}

void MapPanel::Dots(const std::vector<Vec2d>& points, double radius, Color4b color) {
  const Inside inside(context_, window_);
  SetSourceColor(context_, color);
  for (const Vec2d& point : points) {
    const Vec2d at = OnPage(point);
    cairo_arc(context_, at.x, at.y, radius, 0.0, TWO_PI);
    cairo_fill(context_);
  }
}

void MapPanel::ScaleBar(double length, const std::string& name) {
  const Vec2d right(window_.xMax() - 10.0, window_.yMax() - 10.0);
  const Vec2d left = right - Vec2d(length * scale_, 0.0);
  Paper({left.x - 4.0, left.y - 16.0, right.x + 4.0, right.y + 4.0});
  SetSourceColor(context_, kInk);
  cairo_set_line_width(context_, 1.25);
  cairo_move_to(context_, left.x, left.y - 4.0);
  cairo_line_to(context_, left.x, left.y);
  cairo_line_to(context_, right.x, right.y);
  cairo_line_to(context_, right.x, right.y - 4.0);
  cairo_stroke(context_);
  Text(name, left + Vec2d(3.0, -5.0), 9.0, kInk);
}

void MapPanel::Frame(const std::string& letter, const std::string& text) {
  cairo_rectangle(context_, window_.xMin(), window_.yMin(), window_.xRange(), window_.yRange());
  SetSourceColor(context_, kFrame);
  cairo_set_line_width(context_, 0.75);
  cairo_stroke(context_);
  Text("{\\b " + letter + "}  " + text, Vec2d(window_.xMin(), window_.yMin() - 7.0), kTextHeight,
       kInk);
}

void MapPanel::Note(unsigned int line, const std::string& text, Color4b color) {
  constexpr double kHeight = 9.5;
  const Vec2d start(window_.xMin() + 8.0, window_.yMin() + 16.0 + 13.0 * line);
  examples::CairoTextDevice device(context_, kHeight);
  const Box2d box = examples::LabelLayout(device, text).Box() + start;
  Paper({box.xMin() - 3.0, start.y - 10.0, box.xMax() + 3.0, start.y + 3.5});
  Text(text, start, kHeight, color);
}

Vec2d MapPanel::OnPage(const Vec2d& point) const {
  return origin_ + Vec2d(point.x, -point.y) * scale_;
}

void MapPanel::Trace(const Vec2d* points, unsigned int count) {
  for (unsigned int i = 0; i < count; ++i) {
    const Vec2d at = OnPage(points[i]);
    if (i == 0) {
      cairo_move_to(context_, at.x, at.y);
    } else {
      cairo_line_to(context_, at.x, at.y);
    }
  }
}

// Pales what is there, for a text.
void MapPanel::Paper(const Box2d& box) {
  cairo_rectangle(context_, box.xMin(), box.yMin(), box.xRange(), box.yRange());
  cairo_set_source_rgba(context_, kPaper, kPaper, kPaper, 0.85);
  cairo_fill(context_);
}

void MapPanel::Text(const std::string& text, const Vec2d& position, double height, Color4b color) {
  examples::CairoTextDevice device(context_, height);
  device.SetColor(color);
  examples::LabelLayout(device, text).Draw(device, position);
}

}  // namespace vlm::overlay

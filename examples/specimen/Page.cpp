#include <examples/specimen/Page.h>

#include <cairo.h>

namespace vlm::specimen {

using examples::SetSourceColor;

Page::Page(cairo_t* context) : context_(context), device_(context, kBody.height) {}

void Page::Set(const Type& type) {
  device_.SetWeight(type.weight);
  device_.SetHeight(type.height);
  device_.SetColor(type.color);
}

double Page::Width(const Type& type, const std::string& text) {
  Set(type);
  Vec2d extent;
  device_.GetExtent(text, extent);
  return extent.x;
}

double Page::Write(const Type& type, double x, double y, const std::string& text, Anchor anchor) {
  const double width = Width(type, text);
  if (anchor == Anchor::Center) x -= 0.5 * width;
  if (anchor == Anchor::Right) x -= width;
  device_.Draw(Vec2d(x, y), text);
  return width;
}

void Page::Rule(const Vec2d& from, const Vec2d& to, Color4b color, double width) {
  SetSourceColor(context_, color);
  cairo_set_line_width(context_, width);
  cairo_set_line_cap(context_, CAIRO_LINE_CAP_BUTT);
  cairo_move_to(context_, from.x, from.y);
  cairo_line_to(context_, to.x, to.y);
  cairo_stroke(context_);
}

void Page::Fill(const Box2d& box, Color4b color) {
  SetSourceColor(context_, color);
  cairo_rectangle(context_, box.xMin(), box.yMin(), box.xRange(), box.yRange());
  cairo_fill(context_);
}

}  // namespace vlm::specimen

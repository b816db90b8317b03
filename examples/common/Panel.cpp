#include <examples/common/Panel.h>

#include <velum/geometry/Constants.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/Inside.h>
#include <examples/common/PageText.h>

#include <cairo.h>

#include <algorithm>
#include <utility>

namespace vlm::examples {
namespace {

constexpr double kPaper = 0.98;
constexpr double kTickLength = 3.0;
constexpr double kTickText = 8.0;
constexpr double kOverhang = 3.5;
constexpr double kTitleText = 9.5;
const Color4b kFrameColor(110, 116, 128, 255);

}  // namespace

Panel::Panel(cairo_t* context, const Box2d& window, Axis x, Axis y)
    : context_(context), window_(window), x_(std::move(x)), y_(std::move(y)) {
  cairo_rectangle(context_, window.xMin(), window.yMin(), window.xRange(), window.yRange());
  cairo_set_source_rgb(context_, kPaper, kPaper, kPaper);
  cairo_fill(context_);
}

void Panel::Bar(const Vec2d& from, const Vec2d& to, Color4b fill, Color4b edge) {
  const Inside inside(context_, window_);
  const Vec2d corner = OnPage(from);
  const Vec2d size = OnPage(to) - corner;
  cairo_rectangle(context_, corner.x, corner.y, size.x, size.y);
  SetSourceColor(context_, fill);
  cairo_fill_preserve(context_);
  SetSourceColor(context_, edge);
  cairo_set_line_width(context_, 0.5);
  cairo_stroke(context_);
}

void Panel::Path(const std::vector<Vec2d>& points, double width, Color4b color) {
  const Inside inside(context_, window_);
  for (const Vec2d& point : points) {
    const Vec2d at = OnPage(point);
    cairo_line_to(context_, at.x, at.y);
  }
  SetSourceColor(context_, color);
  cairo_set_line_width(context_, width);
  cairo_set_line_join(context_, CAIRO_LINE_JOIN_ROUND);
  cairo_stroke(context_);
}

void Panel::Dots(const std::vector<PanelDot>& dots) {
  const Inside inside(context_, window_);
  for (const PanelDot& dot : dots) {
    const Vec2d at = OnPage(dot.point);
    SetSourceColor(context_, dot.color);
    cairo_arc(context_, at.x, at.y, dot.radius, 0.0, TWO_PI);
    cairo_fill(context_);
  }
}

void Panel::Frame() {
  cairo_rectangle(context_, window_.xMin(), window_.yMin(), window_.xRange(), window_.yRange());
  SetSourceColor(context_, kFrameColor);
  cairo_set_line_width(context_, 0.75);
  cairo_stroke(context_);
}

void Panel::Tick(const Vec2d& from, const Vec2d& to) {
  cairo_move_to(context_, from.x, from.y);
  cairo_line_to(context_, to.x, to.y);
  SetSourceColor(context_, kFrameColor);
  cairo_set_line_width(context_, 0.75);
  cairo_stroke(context_);
}

void Panel::TicksBelow(const std::string& title) {
  const double bottom = window_.yMax();
  double free = window_.xMin() - kOverhang;  // of labels, from here on
  for (std::size_t i = 0; i < x_.ticks.size(); ++i) {
    const double x = OnPage(Vec2d(x_.ticks[i], 0.0)).x;
    Tick(Vec2d(x, bottom), Vec2d(x, bottom + kTickLength));
    // Labels stay off each other and off those of the next panel.
    const double half = TextWidth(context_, x_.labels[i], kTickText) / 2.0;
    const double center = std::min(x, window_.xMax() + kOverhang - half);
    if (center - half < free) continue;
    DrawText(context_, Vec2d(center, bottom + 12.5), {x_.labels[i], kTickText, Align::Center});
    free = center + half + kOverhang;
  }
  DrawText(context_, Vec2d(window_.Center().x, bottom + 27.0),
           {title + x_.offset, kTitleText, Align::Center, kInk, window_.xRange()});
}

void Panel::TicksLeft(const std::string& title) {
  const double left = window_.xMin();
  for (std::size_t i = 0; i < y_.ticks.size(); ++i) {
    const double y = OnPage(Vec2d(0.0, y_.ticks[i])).y;
    Tick(Vec2d(left - kTickLength, y), Vec2d(left, y));
    DrawText(context_, Vec2d(left - 5.0, y + 0.36 * kTickText),
             {y_.labels[i], kTickText, Align::Right, kInk, 28.0});
  }
  DrawText(context_, Vec2d(left - 37.0, window_.Center().y),
           {title + y_.offset, kTitleText, Align::Center, kInk, window_.yRange(), true});
}

Vec2d Panel::OnPage(const Vec2d& point) const {
  return Vec2d(window_.xMin() + x_.Share(point.x) * window_.xRange(),
               window_.yMax() - y_.Share(point.y) * window_.yRange());
}

}  // namespace vlm::examples

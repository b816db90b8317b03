#include <examples/common/PageText.h>

#include <velum/geometry/Constants.h>
#include <examples/common/CairoTextDevice.h>
#include <examples/common/LabelLayout.h>
#include <examples/common/Shown.h>

#include <cairo.h>

#include <stdexcept>

namespace vlm::examples {

const Color4b kInk(40, 44, 52, 255);
const Color4b kPale(110, 116, 128, 255);

double TextWidth(cairo_t* context, const std::string& text, double height) {
  CairoTextDevice device(context, height);
  const LabelLayout layout(device, text);
  if (layout.Fault()) {
    throw std::runtime_error("cannot draw '" + text + "': " + layout.Fault()->InWords());
  }
  return layout.Box().xRange();
}

void DrawText(cairo_t* context, const Vec2d& position, const PageText& text) {
  const double width = TextWidth(context, text.text, text.height);
  const double shrunk = width > text.room ? text.room / width : 1.0;
  CairoTextDevice device(context, text.height * shrunk);
  device.SetColor(text.color);
  double shift = 0.0;
  if (text.align == Align::Center) shift = -width * shrunk / 2.0;
  if (text.align == Align::Right) shift = -width * shrunk;
  cairo_save(context);
  cairo_translate(context, position.x, position.y);
  if (text.isUpward) cairo_rotate(context, -HALF_PI);
  LabelLayout(device, text.text).Draw(device, Vec2d(shift, 0.0));
  cairo_restore(context);
}

std::string Verbatim(std::string_view text, std::size_t longest) {
  std::string label;
  for (const char c : Shown(text, longest)) {
    if (c == '\\' || c == '{' || c == '}') label += '\\';
    label += c;
  }
  return label;
}

}  // namespace vlm::examples

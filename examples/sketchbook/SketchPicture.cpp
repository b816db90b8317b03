#include <examples/sketchbook/SketchPicture.h>

#include <velum/geometry/Box2.h>
#include <examples/common/Handles.h>
#include <examples/common/Picture.h>
#include <examples/sketchbook/Canvas.h>
#include <examples/sketchbook/Refuse.h>

namespace vlm::sketchbook {
namespace {

constexpr double kMargin = 24.0;
constexpr double kLargestPage = 4000.0;

void DrawShapes(const Document& document, cairo_t* context) {
  Canvas canvas(context);
  for (const auto& shape : document.Shapes()) shape->Draw(canvas);
}

// What the shapes cover, from a drawing that is thrown away.
Box2d InkOf(const Document& document) {
  const examples::SurfacePtr surface(
      cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, nullptr));
  const examples::ContextPtr context(cairo_create(surface.get()));
  DrawShapes(document, context.get());
  double x = 0.0;
  double y = 0.0;
  double width = 0.0;
  double height = 0.0;
  cairo_recording_surface_ink_extents(surface.get(), &x, &y, &width, &height);
  return Box2d(x, y, x + width, y + height);
}

}  // namespace

void DrawSketch(const Document& document, const std::string& path) {
  Box2d page = InkOf(document);
  page.Inflate(kMargin, kMargin);
  if (page.xRange() > kLargestPage || page.yRange() > kLargestPage) {
    Refuse("the sketch is more than 4000 points wide or high, too large for a picture");
  }
  examples::WritePicture(path, page.xRange(), page.yRange(), [&](cairo_t* context) {
    cairo_translate(context, -page.xMin(), -page.yMin());
    DrawShapes(document, context);
  });
}

}  // namespace vlm::sketchbook

#include <examples/sketchbook/Naming.h>

#include <examples/sketchbook/Refuse.h>

namespace vlm::sketchbook {

std::shared_ptr<Shape> RequireShape(const Document& document, const GString& name) {
  if (name.empty()) Refuse("needs the name of a shape");
  std::shared_ptr<Shape> shape = document.FindShape(name);
  if (shape == nullptr) Refuse("no shape is called '" + name + "'");
  return shape;
}

std::shared_ptr<Style> RequireStyle(const Document& document, const GString& name) {
  if (name.empty()) Refuse("needs the name of a style");
  std::shared_ptr<Style> style = document.FindStyle(name);
  if (style == nullptr) Refuse("no style is called '" + name + "'");
  return style;
}

}  // namespace vlm::sketchbook

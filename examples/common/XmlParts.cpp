#include <examples/common/XmlParts.h>

#include <velum/core/HtmlText.h>

#include <stdexcept>

namespace vlm::examples {

std::string PlainText(const std::string& text) { return ReplaceHTMLSpecialEntities(text); }

void TakeAttributes(const XMLNode& node, const AttributeTakers& takers) {
  for (const auto& [name, value] : node.attributes) {
    const auto taker = takers.find(name);
    if (taker == takers.end()) {
      throw std::runtime_error("<" + node.name + "> has no attribute '" + std::string(name) + "'");
    }
    taker->second(PlainText(value));
  }
}

}  // namespace vlm::examples

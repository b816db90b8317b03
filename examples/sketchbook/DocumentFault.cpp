#include <examples/sketchbook/Document.h>

#include <examples/sketchbook/Connector.h>

#include <set>
#include <unordered_map>

// What can be wrong with a document that an archive read without complaint: the sum in the stream
// finds chance damage, not a file that was written wrongly, or on purpose.

namespace vlm::sketchbook {
namespace {

GString NameFault(const GString& name, std::set<GString>& names) {
  return names.insert(name).second ? "" : "'" + name + "' is there twice";
}

GString StyleListFault(const Document& document, std::set<GString>& names) {
  for (const auto& style : document.Styles()) {
    if (style == nullptr) return "a style is missing";
    if (style->name.empty()) return "a shared style has no name";
    if (GString fault = style->Fault(); !fault.empty()) return fault;
    if (GString fault = NameFault(style->name, names); !fault.empty()) return fault;
  }
  return "";
}

GString ShapeListFault(const Document& document, std::set<GString>& names) {
  const std::set<std::shared_ptr<Style>> styles(document.Styles().begin(), document.Styles().end());
  for (const auto& shape : document.Shapes()) {
    if (shape == nullptr) return "a shape is missing";
    if (GString fault = shape->Fault(); !fault.empty()) return fault;
    if (GString fault = NameFault(shape->Name(), names); !fault.empty()) return fault;
    if (!shape->Style()->name.empty() && !styles.contains(shape->Style())) {
      return "the style of '" + shape->Name() + "' is missing in the list of styles";
    }
  }
  return "";
}

// A connector is counted at each end where it is known, so that each must come to two in the end.
GString LinkFault(const Document& document) {
  std::set<const Shape*> inDocument;
  std::unordered_map<const Connector*, int> known;
  for (const auto& shape : document.Shapes()) inDocument.insert(shape.get());
  for (const auto& shape : document.Shapes()) {
    std::set<const Connector*> ofShape;
    for (const auto& link : shape->Connectors()) {
      const auto connector = link.lock();
      if (connector == nullptr || !inDocument.contains(connector.get()) ||
          (connector->From() != shape && connector->To() != shape) ||
          !ofShape.insert(connector.get()).second) {
        return "'" + shape->Name() + "' knows a connector that does not end there";
      }
      ++known[connector.get()];
    }
  }
  for (const auto& shape : document.Shapes()) {
    const auto* connector = dynamic_cast<const Connector*>(shape.get());
    if (connector != nullptr && known[connector] != 2) {
      return "'" + shape->Name() + "' ends at a shape that does not know it";
    }
  }
  return "";
}

}  // namespace

GString Document::Fault() const {
  std::set<GString> names;
  if (GString fault = StyleListFault(*this, names); !fault.empty()) return fault;
  if (GString fault = ShapeListFault(*this, names); !fault.empty()) return fault;
  return LinkFault(*this);
}

}  // namespace vlm::sketchbook

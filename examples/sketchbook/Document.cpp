#include <examples/sketchbook/Document.h>

#include <velum/core/UniqueNameGenerator.h>
#include <examples/sketchbook/Connector.h>
#include <examples/sketchbook/Refuse.h>
#include <examples/sketchbook/Stored.h>

#include <algorithm>

namespace vlm::sketchbook {
namespace {

using ConnectorList = std::vector<std::weak_ptr<Connector>>;

// Where an item stands in a list that has it.
template <class List, class Item>
std::size_t PlaceOf(const List& list, const Item& item) {
  return static_cast<std::size_t>(std::find(list.begin(), list.end(), item) - list.begin());
}

std::size_t PlaceOf(const ConnectorList& list, const std::shared_ptr<Connector>& connector) {
  const auto isIt = [&](const auto& candidate) { return candidate.lock() == connector; };
  return static_cast<std::size_t>(std::find_if(list.begin(), list.end(), isIt) - list.begin());
}

template <class List>
void EraseAt(List& list, std::size_t place) {
  list.erase(list.begin() + static_cast<std::ptrdiff_t>(place));
}

template <class List, class Item>
void InsertAt(List& list, std::size_t place, const Item& item) {
  list.insert(list.begin() + static_cast<std::ptrdiff_t>(place), item);
}

// Makes sure that one more item does not ask for memory, in a row of changes that must not stop
// half way.
template <class List>
void MakeRoom(List& list) {
  if (list.size() == list.capacity()) list.reserve(2 * list.size() + 4);
}

}  // namespace

const CTypeInfo Document::kType("SketchDocument", CreateStored<Document>, GetClassTypeId());

std::shared_ptr<Shape> Document::FindShape(const GString& name) const {
  for (const auto& shape : shapes_) {
    if (shape->Name() == name) return shape;
  }
  return nullptr;
}

std::shared_ptr<Style> Document::FindStyle(const GString& name) const {
  for (const auto& style : styles_) {
    if (style->name == name) return style;
  }
  return nullptr;
}

std::size_t Document::UsersOf(const Style& style) const {
  const auto uses = [&](const auto& shape) { return shape->Style().get() == &style; };
  return static_cast<std::size_t>(std::count_if(shapes_.begin(), shapes_.end(), uses));
}

GString Document::FreeName(const GString& stem) const {
  UniqueNameGenerator names;
  for (const auto& shape : shapes_) {
    const std::string& taken = shape->Name();
    if (taken.starts_with(stem.String()) && taken.size() < stem.size() + 8) names.Add(taken);
  }
  GString name;
  do {
    name = names.Get(stem, true);
  } while (FindShape(name) != nullptr || FindStyle(name) != nullptr);
  return name;
}

void Document::RequireFree(const GString& name) const {
  if (FindShape(name) != nullptr || FindStyle(name) != nullptr) {
    Refuse("'" + name + "' is there already");
  }
}

Document::Place Document::End(const Shape& shape) const {
  Place place = {shapes_.size(), 0, 0};
  if (const auto* connector = dynamic_cast<const Connector*>(&shape)) {
    place.inConnectorsOfFrom = connector->From()->connectors_.size();
    place.inConnectorsOfTo = connector->To()->connectors_.size();
  }
  return place;
}

void Document::Insert(std::shared_ptr<Shape> shape, const Place& place) {
  if (const GString fault = shape->Fault(); !fault.empty()) Refuse(fault);
  RequireFree(shape->Name());
  MakeRoom(shapes_);
  if (const auto connector = std::dynamic_pointer_cast<Connector>(shape)) {
    ConnectorList& ofFrom = connector->From()->connectors_;
    ConnectorList& ofTo = connector->To()->connectors_;
    MakeRoom(ofFrom);
    MakeRoom(ofTo);
    InsertAt(ofFrom, place.inConnectorsOfFrom, connector);
    InsertAt(ofTo, place.inConnectorsOfTo, connector);
  }
  InsertAt(shapes_, place.inDocument, shape);
}

Document::Place Document::Remove(const std::shared_ptr<Shape>& shape) {
  Place place = {PlaceOf(shapes_, shape), 0, 0};
  if (const auto connector = std::dynamic_pointer_cast<Connector>(shape)) {
    ConnectorList& ofFrom = connector->From()->connectors_;
    ConnectorList& ofTo = connector->To()->connectors_;
    place.inConnectorsOfFrom = PlaceOf(ofFrom, connector);
    place.inConnectorsOfTo = PlaceOf(ofTo, connector);
    EraseAt(ofFrom, place.inConnectorsOfFrom);
    EraseAt(ofTo, place.inConnectorsOfTo);
  }
  EraseAt(shapes_, place.inDocument);
  return place;
}

void Document::Insert(std::shared_ptr<Style> style, std::size_t place) {
  if (const GString fault = style->Fault(); !fault.empty()) Refuse(fault);
  RequireFree(style->name);
  InsertAt(styles_, place, style);
}

std::size_t Document::Remove(const std::shared_ptr<Style>& style) {
  const std::size_t place = PlaceOf(styles_, style);
  EraseAt(styles_, place);
  return place;
}

void Document::Serialize(Archive& archive) {
  TransferList(archive, styles_,
               [&](std::shared_ptr<Style>& style) { archive.TransferObject(style); });
  TransferList(archive, shapes_,
               [&](std::shared_ptr<Shape>& shape) { archive.TransferObject(shape); });
}

}  // namespace vlm::sketchbook

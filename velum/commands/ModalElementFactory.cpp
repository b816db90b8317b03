#include <velum/commands/ModalElementFactory.h>

namespace vlm {

template <>
Flyweight<GString, ModalElementFactory*, std::less<GString>>&
Factory<ModalElementFactory, ModalElement, GString, std::less<GString>>::TheRegistry() {
  static Flyweight<GString, ModalElementFactory*, std::less<GString>> registry;
  return registry;
}

template class Factory<ModalElementFactory, ModalElement, GString, std::less<GString>>;

ModalElementFactory::ModalElementFactory(const GString& key, ModalElementFactory& self)
    : Factory(key, &self) {}

ModalElementFactory::~ModalElementFactory() = default;

}  // namespace vlm

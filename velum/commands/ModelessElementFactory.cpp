#include <velum/commands/ModelessElementFactory.h>

namespace vlm {

template <>
Flyweight<GString, ModelessElementFactory*, std::less<GString>>&
Factory<ModelessElementFactory, ModelessElement, GString, std::less<GString>>::TheRegistry() {
  static Flyweight<GString, ModelessElementFactory*, std::less<GString>> registry;
  return registry;
}

template class Factory<ModelessElementFactory, ModelessElement, GString, std::less<GString>>;

ModelessElementFactory::ModelessElementFactory(const GString& key, ModelessElementFactory& self)
    : Factory(key, &self) {}

ModelessElementFactory::~ModelessElementFactory() = default;

}  // namespace vlm

#include <velum/commands/ProgressFactory.h>

namespace vlm {

template <>
Flyweight<GString, ProgressFactory*, std::less<GString>>&
Factory<ProgressFactory, IProgress, GString, std::less<GString>>::TheRegistry() {
  static Flyweight<GString, ProgressFactory*, std::less<GString>> registry;
  return registry;
}

template <>
constinit ProgressFactory*
    DefaultProductFactory<ProgressFactory, IProgress, GString>::m_defaultConstructor = nullptr;

template class Factory<ProgressFactory, IProgress, GString, std::less<GString>>;
template class DefaultProductFactory<ProgressFactory, IProgress, GString>;

ProgressFactory::ProgressFactory(const GString& key, ProgressFactory* const self)
    : DefaultProductFactory(key, self) {}

ProgressFactory::~ProgressFactory() = default;

}  // namespace vlm

#pragma once

/// \file
/// Progress displays made by name, or by the factory that came first; see Factory.h for how one is
/// registered.
///
///     const auto progress = vlm::ProgressFactory::Construct();

#include <velum/commands/IProgress.h>
#include <velum/core/Api.h>
#include <velum/core/Factory.h>
#include <velum/core/Flyweight.h>
#include <velum/core/GString.h>

#include <functional>

namespace vlm {

class VELUM_API ProgressFactory;

/// \cond
template <>
VELUM_API Flyweight<GString, ProgressFactory*, std::less<GString>>&
Factory<ProgressFactory, IProgress, GString, std::less<GString>>::TheRegistry();
template <>
VELUM_API ProgressFactory*
    DefaultProductFactory<ProgressFactory, IProgress, GString>::m_defaultConstructor;
extern template class Factory<ProgressFactory, IProgress, GString, std::less<GString>>;
extern template class DefaultProductFactory<ProgressFactory, IProgress, GString>;
/// \endcond

/// The factories of progress displays. Keys are exact bytes.
///
/// A concrete factory derives from it and makes its product; being built registers it. One registry
/// and one default serve all modules of the process.
class VELUM_API ProgressFactory
    : public DefaultProductFactory<ProgressFactory, IProgress, GString> {
 public:
  /// Leaves the registry and the default as they are.
  ~ProgressFactory() override;

 protected:
  /// Registers `self` under `key`; see `DefaultProductFactory`.
  ProgressFactory(const GString& key, ProgressFactory* const self);
};

}  // namespace vlm

#pragma once

/// \file
/// Modeless elements made by name; see Factory.h for how one is registered.
///
///     const auto panel = vlm::ModelessElementFactory::Construct("Layers");

#include <velum/commands/ModelessElement.h>
#include <velum/core/Api.h>
#include <velum/core/Factory.h>
#include <velum/core/Flyweight.h>
#include <velum/core/GString.h>

#include <functional>

namespace vlm {

class VELUM_API ModelessElementFactory;

/// \cond
template <>
VELUM_API Flyweight<GString, ModelessElementFactory*, std::less<GString>>&
Factory<ModelessElementFactory, ModelessElement, GString, std::less<GString>>::TheRegistry();
extern template class Factory<ModelessElementFactory, ModelessElement, GString, std::less<GString>>;
/// \endcond

/// The factories of modeless elements. Keys are exact bytes.
///
/// A concrete factory derives from it and makes its product; being built registers it. One registry
/// serves all modules of the process.
class VELUM_API ModelessElementFactory
    : public Factory<ModelessElementFactory, ModelessElement, GString, std::less<GString>> {
 public:
  /// Leaves the registry as it is.
  ~ModelessElementFactory() override;

 protected:
  /// Registers `self` under `key`; see `Factory`.
  ModelessElementFactory(const GString& key, ModelessElementFactory& self);
};

}  // namespace vlm

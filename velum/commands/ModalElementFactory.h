#pragma once

/// \file
/// Modal elements made by name; see Factory.h for how one is registered.
///
///     const auto dialog = vlm::ModalElementFactory::Construct("GridOptions");

#include <velum/commands/ModalElement.h>
#include <velum/core/Api.h>
#include <velum/core/Factory.h>
#include <velum/core/Flyweight.h>
#include <velum/core/GString.h>

#include <functional>

namespace vlm {

class VELUM_API ModalElementFactory;

/// \cond
template <>
VELUM_API Flyweight<GString, ModalElementFactory*, std::less<GString>>&
Factory<ModalElementFactory, ModalElement, GString, std::less<GString>>::TheRegistry();
extern template class Factory<ModalElementFactory, ModalElement, GString, std::less<GString>>;
/// \endcond

/// The factories of modal elements. Keys are exact bytes.
///
/// A concrete factory derives from it and makes its product; being built registers it. One registry
/// serves all modules of the process.
class VELUM_API ModalElementFactory
    : public Factory<ModalElementFactory, ModalElement, GString, std::less<GString>> {
 public:
  /// Leaves the registry as it is.
  ~ModalElementFactory() override;

 protected:
  /// Registers `self` under `key`; see `Factory`.
  ModalElementFactory(const GString& key, ModalElementFactory& self);
};

}  // namespace vlm

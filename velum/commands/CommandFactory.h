#pragma once

/// \file
/// Commands made by name.
///
///     class LineFactory : public vlm::CommandFactory {
///      public:
///       LineFactory() : CommandFactory("Line", *this) {}
///       std::unique_ptr<vlm::Command> ConstructProduct() const override {
///         return std::make_unique<LineCommand>();
///       }
///     };
///     const LineFactory lineFactory;
///     const auto command = vlm::CommandFactory::Construct("LINE");

#include <velum/commands/Command.h>
#include <velum/core/Api.h>
#include <velum/core/Factory.h>
#include <velum/core/Flyweight.h>
#include <velum/core/GString.h>
#include <velum/core/StringCompare.h>

namespace vlm {

class VELUM_API CommandFactory;

/// \cond
template <>
VELUM_API Flyweight<GString, CommandFactory*, StringLess>&
Factory<CommandFactory, Command, GString, StringLess>::TheRegistry();
extern template class Factory<CommandFactory, Command, GString, StringLess>;
/// \endcond

/// The factories of commands. The case of a key's letters does not matter.
///
/// A concrete factory derives from it and makes its product; being built registers it. One registry
/// serves all modules of the process.
class VELUM_API CommandFactory : public Factory<CommandFactory, Command, GString, StringLess> {
 public:
  /// Leaves the registry as it is.
  ~CommandFactory() override;

 protected:
  /// Registers `self` under `key`; see `Factory`.
  CommandFactory(const GString& key, CommandFactory& self);
};

}  // namespace vlm

#include <velum/commands/CommandFactory.h>

namespace vlm {

template <>
Flyweight<GString, CommandFactory*, StringLess>&
Factory<CommandFactory, Command, GString, StringLess>::TheRegistry() {
  static Flyweight<GString, CommandFactory*, StringLess> registry;
  return registry;
}

template class Factory<CommandFactory, Command, GString, StringLess>;

CommandFactory::CommandFactory(const GString& key, CommandFactory& self) : Factory(key, &self) {}

CommandFactory::~CommandFactory() = default;

}  // namespace vlm

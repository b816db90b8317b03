#include <velum/commands/CommandOptions.h>

#include <velum/core/Exception.h>

namespace vlm {

CommandOptions::CommandOptions(const GString& commandKey) : key(commandKey) {
  if (key.empty()) {
    throw Exception("Velum", "CommandOptions", __LINE__, ERR_CUSTOM,
                    "Command key must be non-empty.");
  }
}

}  // namespace vlm

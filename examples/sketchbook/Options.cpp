#include <examples/sketchbook/Options.h>

#include <velum/core/StringConvert.h>
#include <examples/common/OptionReader.h>
#include <examples/common/Program.h>

namespace vlm::sketchbook {
namespace {

using examples::UsageError;

constexpr char kUsage[] =
    "Draws sketches by commands that can be undone.\n"
    "\n"
    "  sketchbook [--undo-limit N] [SCRIPT]\n"
    "\n"
    "  SCRIPT             a file of commands; the standard input unless told\n"
    "  --undo-limit N     how many steps can be undone; 100 unless told\n"
    "  -h, --help         this text\n"
    "\n"
    "A script stops at its first error, a session at the terminal goes on. The status is 0 if all\n"
    "was done, 1 if something failed, 2 for a wrong command line.\n";

}  // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  examples::OptionReader reader;
  reader.Value({"--undo-limit"}, [&](const std::string& limit) {
    if (!StringToUnsigned(limit, options.undoLimit)) {
      throw UsageError("--undo-limit needs a number, not '" + limit + "'");
    }
  });
  reader.Operand(options.script, "script");
  options.help = !reader.Read(arguments);
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::sketchbook

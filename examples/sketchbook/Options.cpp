#include <examples/sketchbook/Options.h>

#include <velum/core/StringConvert.h>
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
  for (auto argument = arguments.begin(); argument != arguments.end(); ++argument) {
    if (*argument == "-h" || *argument == "--help") {
      options.help = true;
    } else if (*argument == "--undo-limit") {
      if (++argument == arguments.end()) throw UsageError("--undo-limit needs a value");
      if (!StringToUnsigned(*argument, options.undoLimit)) {
        throw UsageError("--undo-limit needs a number, not '" + *argument + "'");
      }
    } else if (argument->size() > 1 && argument->front() == '-') {
      throw UsageError("unknown option '" + *argument + "'");
    } else if (!options.script.empty()) {
      throw UsageError("more than one script");
    } else {
      options.script = *argument;
    }
  }
  return options;
}

const char* UsageText() { return kUsage; }

}  // namespace vlm::sketchbook

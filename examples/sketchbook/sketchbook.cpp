// Draws sketches by commands that can be undone; sketchbook --help tells how.

#include <velum/core/Exception.h>
#include <examples/sketchbook/Options.h>
#include <examples/sketchbook/Script.h>

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <system_error>

namespace vlm::sketchbook {
namespace {

void RunFile(Session& session, const std::string& path) {
  std::ifstream script(path, std::ios::binary);
  // A folder opens as a file does, and fails at the first byte.
  if (script) script.peek();
  if (script.bad() || !script.is_open()) {
    throw std::runtime_error("cannot read '" + path +
                             "': " + std::generic_category().message(errno));
  }
  script.clear();
  RunScript(session, script, path);
}

void Run(const Options& options) {
  if (options.help) {
    std::cout << UsageText() << "\nCommands:\n\n" << Session::HelpText();
    return;
  }
  Session session(std::cout, options.undoLimit);
  if (!options.script.empty()) {
    RunFile(session, options.script);
  } else if (isatty(STDIN_FILENO) == 1) {
    RunDialog(session, std::cin, std::cout);
  } else {
    RunScript(session, std::cin, "standard input");
  }
}

}  // namespace
}  // namespace vlm::sketchbook

int main(int argc, char** argv) {
  constexpr int kWrongCommandLine = 2;
  try {
    vlm::sketchbook::Run(vlm::sketchbook::ParseOptions({argv + 1, argv + argc}));
    return EXIT_SUCCESS;
  } catch (const vlm::sketchbook::UsageError& error) {
    std::cerr << "sketchbook: " << error.what() << "; see sketchbook --help\n";
    return kWrongCommandLine;
  } catch (const vlm::Exception& error) {
    std::cerr << "sketchbook: " << error.GetDescription() << "\n";
    return EXIT_FAILURE;
  } catch (const std::exception& error) {
    std::cerr << error.what() << "\n";
    return EXIT_FAILURE;
  }
}

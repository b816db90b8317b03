// Draws sketches by commands that can be undone; sketchbook --help tells how.

#include <examples/common/Program.h>
#include <examples/sketchbook/Options.h>
#include <examples/sketchbook/Script.h>

#include <unistd.h>

#include <fstream>
#include <iostream>

namespace vlm::sketchbook {
namespace {

void RunFile(Session& session, const std::string& path) {
  std::ifstream script = examples::OpenInput(path);
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
  return vlm::examples::RunProgram("sketchbook", [&] {
    vlm::sketchbook::Run(vlm::sketchbook::ParseOptions({argv + 1, argv + argc}));
  });
}

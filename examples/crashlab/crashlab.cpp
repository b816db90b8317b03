// Crashes in a child process and shows what is left of it; crashlab --help tells how.

#include <examples/common/Program.h>
#include <examples/crashlab/CrashPicture.h>
#include <examples/crashlab/Options.h>
#include <examples/crashlab/Survey.h>
#include <examples/crashlab/Trace.h>
#include <examples/crashlab/Trial.h>

#include <iostream>
#include <stdexcept>
#include <string_view>

namespace vlm::crashlab {
namespace {

void Show(const Options& options) {
  const Trial trial = RunTrial(*options.way);
  if (!options.output.empty()) {
    if (trial.dump.empty()) throw std::runtime_error("there is no dump to draw");
    DrawCrash(*options.way, ReadTrace(trial.dump, trial.resolved), options.output);
  }
  std::cout << "A child that " << options.way->about << " has " << trial.end << ".\n\n"
            << "The log, " << trial.logPath << "\n"
            << trial.log << "\n";
  if (trial.dump.empty()) {
    std::cout << "There is no dump.\n";
  } else {
    std::cout << "The dump, " << trial.dumpPath << ", resolved\n\n" << trial.resolved;
  }
  if (!options.output.empty()) std::cout << "\nMade " << options.output << "\n";
}

}  // namespace
}  // namespace vlm::crashlab

int main(int argc, char** argv) {
  using namespace vlm::crashlab;
  // Here, where nothing catches what the child throws.
  if (argc == 4 && std::string_view(argv[1]) == "--child") {
    if (const Way* const way = FindWay(argv[2])) RunChild(*way, argv[3]);
    return 1;
  }
  return vlm::examples::RunProgram("crashlab", [&] {
    const Options options = ParseOptions({argv + 1, argv + argc});
    if (options.task == Task::Help) {
      std::cout << UsageText();
    } else {
      Show(options);
    }
  });
}

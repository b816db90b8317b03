// Combines two outlines and draws what comes out; overlay --help tells how.

#include <examples/common/Program.h>
#include <examples/overlay/Options.h>
#include <examples/overlay/Outlines.h>
#include <examples/overlay/OverlayPicture.h>
#include <examples/overlay/Results.h>

#include <iostream>
#include <stdexcept>

namespace vlm::overlay {
namespace {

void Run(const Options& options) {
  if (options.help) {
    std::cout << UsageText();
    return;
  }
  const std::string& file = options.outlines.empty() ? VELUM_OUTLINE_FILE : options.outlines;
  const std::vector<Outline> outlines = ReadOutlineFile(file);
  if (outlines.size() < 2) throw std::runtime_error(file + ": there are fewer than two outlines");
  std::cout << outlines[0].name << " (first) and " << outlines[1].name << " (second)\n\n";
  const Results results(outlines[0].shape, outlines[1].shape);
  std::cout << results.Table() << "\n";
  DrawOverlay(outlines[0], outlines[1], results, options.output);
  std::cout << "Made " << options.output << "\n";
}

}  // namespace
}  // namespace vlm::overlay

int main(int argc, char** argv) {
  return vlm::examples::RunProgram("overlay", [&] {
    vlm::overlay::Run(vlm::overlay::ParseOptions({argv + 1, argv + argc}));
  });
}

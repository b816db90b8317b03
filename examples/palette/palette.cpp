// Reduces a picture to few colours, and tells them; palette --help tells how.

#include <examples/common/Program.h>
#include <examples/palette/ImageFile.h>
#include <examples/palette/Options.h>
#include <examples/palette/PaletteSheet.h>
#include <examples/palette/Report.h>

#include <iostream>
#include <stdexcept>

namespace vlm::palette {
namespace {

void Run(const Options& options) {
  if (options.help) {
    std::cout << UsageText();
    return;
  }
  const Image image = ReadImage(options.input);
  const Quantized quantized = Quantize(image, options.colors, options.diffuses);
  for (const std::string& output : options.outputs) WriteImage(quantized.image, output);
  if (!options.sheet.empty()) {
    DrawSheet(image, options.input.substr(options.input.rfind('/') + 1), options.sheet);
  }
  std::cout << options.input << ": ";
  PrintReport(std::cout, image, quantized);
  for (const std::string& output : options.outputs) std::cout << "Made " << output << "\n";
  if (!options.sheet.empty()) std::cout << "Made " << options.sheet << "\n";
  if (!std::cout.flush()) throw std::runtime_error("cannot write to the standard output");
}

}  // namespace
}  // namespace vlm::palette

int main(int argc, char** argv) {
  return vlm::examples::RunProgram("palette", [&] {
    vlm::palette::Run(vlm::palette::ParseOptions({argv + 1, argv + argc}));
  });
}

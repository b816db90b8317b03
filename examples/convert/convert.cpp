// Tells in which encoding a text file is, and converts it; convert --help tells how.

#include <examples/common/Program.h>
#include <examples/convert/ConvertPicture.h>
#include <examples/convert/Options.h>
#include <examples/convert/Report.h>

#include <filesystem>
#include <iostream>
#include <stdexcept>

namespace vlm::convert {
namespace {

void Run(const Options& options) {
  if (options.help) {
    std::cout << UsageText();
    return;
  }
  std::error_code none;
  const auto status = std::filesystem::status(options.input, none);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    throw std::runtime_error("cannot read '" + options.input + "': it is no ordinary file");
  }
  const Evidence evidence = Examine(options.input, options.from);
  Conversion conversion;
  if (options.output.empty()) {
    conversion.survey = TakeSurvey(options.input, evidence.encoding);
  }
  // Drawn before the file may be replaced.
  if (!options.picture.empty()) {
    const Survey survey = TakeSurvey(options.input, evidence.encoding);
    DrawFile(options.input, evidence, survey, options.picture);
  }
  if (!options.output.empty()) {
    conversion = ConvertFile(options.input, evidence.encoding, options.output, options.target);
  }
  PrintFindings(std::cout, options.input, evidence, conversion.survey);
  if (!options.output.empty()) {
    PrintConversion(std::cout, options.output, options.target, conversion);
  }
  if (!options.picture.empty()) std::cout << "Made " << options.picture << "\n";
  if (!std::cout.flush()) throw std::runtime_error("cannot write to the standard output");
}

}  // namespace
}  // namespace vlm::convert

int main(int argc, char** argv) {
  return vlm::examples::RunProgram("convert", [&] {
    vlm::convert::Run(vlm::convert::ParseOptions({argv + 1, argv + argc}));
  });
}

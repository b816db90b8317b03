// Shows dates in all forms, and surveys a column of them; dates --help tells how.

#include <examples/common/Program.h>
#include <examples/dates/DatesPicture.h>
#include <examples/dates/Options.h>
#include <examples/dates/Report.h>

#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace vlm::dates {
namespace {

void ShowTexts(const Options& options) {
  // Told only if all are dates: what fails prints nothing.
  std::ostringstream out;
  for (const std::string& text : options.texts) {
    if (&text != &options.texts.front()) out << "\n";
    PrintForms(out, text, options.reading);
  }
  std::cout << out.str();
}

void ShowColumn(const Options& options) {
  const std::string name = options.file == "-" ? "standard input" : options.file;
  std::ifstream file;
  if (options.file != "-") file = examples::OpenInput(options.file);
  std::istream& stream = options.file == "-" ? std::cin : file;
  Survey survey;
  try {
    survey = TakeSurvey(stream, options.request, options.reading);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(name + ": " + error.what());
  }
  if (!options.output.empty()) {
    DrawSurvey(survey, name.substr(name.rfind('/') + 1), options.output);
  }
  std::cout << name << ", " << survey.column << ": ";
  PrintSurvey(std::cout, survey, options.reading);
  if (!options.output.empty()) std::cout << "\nMade " << options.output << "\n";
}

void Run(const Options& options) {
  if (options.help) {
    std::cout << UsageText();
  } else if (options.file.empty()) {
    ShowTexts(options);
  } else {
    ShowColumn(options);
  }
  if (!std::cout.flush()) throw std::runtime_error("cannot write to the standard output");
}

}  // namespace
}  // namespace vlm::dates

int main(int argc, char** argv) {
  return vlm::examples::RunProgram("dates", [&] {
    vlm::dates::Run(vlm::dates::ParseOptions({argv + 1, argv + argc}));
  });
}

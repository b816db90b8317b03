// Describes the columns of a file of delimited text; describe --help tells how.

#include <examples/common/Program.h>
#include <examples/describe/DescribePicture.h>
#include <examples/describe/HtmlPage.h>
#include <examples/describe/Options.h>
#include <examples/describe/Progress.h>
#include <examples/describe/Report.h>

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <optional>
#include <stdexcept>

namespace vlm::describe {
namespace {

// How many bytes a file has; 0 for what can't tell.
std::uint64_t SizeOf(std::ifstream& file) {
  file.seekg(0, std::ios::end);
  const std::streamoff size = file.tellg();
  file.clear();
  file.seekg(0);
  file.clear();
  return size > 0 ? static_cast<std::uint64_t>(size) : 0;
}

Table ReadWithProgress(std::istream& stream, const Options& options, std::uint64_t size) {
  std::optional<ProgressLine> line;
  ReadingProgress progress;
  if (options.progress || isatty(STDERR_FILENO) == 1) {
    line.emplace(std::cerr, size);
    progress = [&](std::uint64_t bytes, std::size_t rows) { line->Update(bytes, rows); };
  }
  return ReadTable(stream, options.request, progress);
}

Table Read(const Options& options, const std::string& name) {
  std::ifstream file;
  if (options.file != "-") file = examples::OpenInput(options.file);
  try {
    return options.file == "-" ? ReadWithProgress(std::cin, options, 0)
                               : ReadWithProgress(file, options, SizeOf(file));
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(name + ": " + error.what());
  }
}

// Labels that would not be seen are most likely misspelt.
void CheckLabels(const Options& options, const Table& table) {
  for (const auto& label : options.labels) {
    const std::string& name = label.first;
    const bool isRead = std::any_of(table.columns.begin(), table.columns.end(),
                                    [&](const Column& column) { return column.name == name; });
    if (!isRead) throw std::runtime_error("no column '" + name + "' is described for its label");
  }
}

void Run(const Options& options) {
  if (options.help) {
    std::cout << UsageText();
    return;
  }
  const std::string name = options.file == "-" ? "standard input" : options.file;
  const Table table = Read(options, name);
  CheckLabels(options, table);
  // Drawn first: what fails prints nothing.
  if (!options.output.empty()) {
    DrawTable(table, name.substr(name.rfind('/') + 1), options.labels, options.output);
  }
  if (!options.page.empty()) {
    WriteHtmlPage(options.page, table, name.substr(name.rfind('/') + 1), options.labels);
  }
  std::cout << name << ": ";
  PrintReport(std::cout, table);
  if (!options.output.empty()) std::cout << "\nMade " << options.output << "\n";
  if (!options.page.empty()) std::cout << "\nMade " << options.page << "\n";
  if (!options.output.empty() && table.described.size() > kMostPanels) {
    std::cout << "It shows the first " << kMostPanels << " columns.\n";
  }
  if (!std::cout.flush()) throw std::runtime_error("cannot write to the standard output");
}

}  // namespace
}  // namespace vlm::describe

int main(int argc, char** argv) {
  return vlm::examples::RunProgram("describe", [&] {
    vlm::describe::Run(vlm::describe::ParseOptions({argv + 1, argv + argc}));
  });
}

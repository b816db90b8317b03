// Reports on a table of delimited text as a page of HTML; worksheet --help tells how.

#include <velum/files/HtmlReport.h>
#include <examples/common/HtmlParts.h>
#include <examples/common/Program.h>
#include <examples/worksheet/Charts.h>
#include <examples/worksheet/Options.h>
#include <examples/worksheet/Page.h>
#include <examples/worksheet/Progress.h>
#include <examples/worksheet/SampleTable.h>
#include <examples/worksheet/Settings.h>
#include <examples/worksheet/Sheet.h>

#include <unistd.h>

#include <iostream>
#include <stdexcept>

namespace vlm::worksheet {
namespace {

Sheet Read(const Options& options, const Settings& settings) {
  std::ifstream file = examples::OpenInput(options.file);
  file.seekg(0, std::ios::end);
  const auto size = static_cast<double>(file.tellg());
  file.clear();
  file.seekg(0);
  file.clear();
  TerminalProgress progress(std::cerr, options.progress || isatty(STDERR_FILENO) == 1);
  try {
    return ReadSheet(file, settings, progress, size);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(options.file + ": " + error.what());
  }
}

void Run(const Options& options) {
  if (options.help) {
    std::cout << UsageText();
    return;
  }
  if (options.sample > 0) {
    WriteSampleTable(options.file, options.sample);
    std::cout << "Made " << options.file << "\n";
    return;
  }
  const Settings settings = options.settings.empty() ? Settings() : ReadSettings(options.settings);
  const Sheet sheet = Read(options, settings);
  const std::vector<Chart> charts = DrawCharts(sheet, options.output);
  CHtmlReport report;
  WritePage(report, sheet, settings, options.file.substr(options.file.rfind('/') + 1), charts);
  examples::WriteReport(report, options.output);
  std::cout << sheet.rows << " rows, " << sheet.columns.size() << " columns\n";
  for (const SheetColumn& column : sheet.columns) {
    std::cout << column.setting.name << ": " << (column.type ? column.type->Name() : "texts")
              << "\n";
  }
  std::cout << "Made " << options.output << " and " << charts.size() << " charts\n";
  if (!std::cout.flush()) throw std::runtime_error("cannot write to the standard output");
}

}  // namespace
}  // namespace vlm::worksheet

int main(int argc, char** argv) {
  return vlm::examples::RunProgram("worksheet", [&] {
    vlm::worksheet::Run(vlm::worksheet::ParseOptions({argv + 1, argv + argc}));
  });
}

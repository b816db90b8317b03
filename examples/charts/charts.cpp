// Draws the charts of a column of numbers; charts --help tells how.

#include <velum/diagnostics/SystemInfo.h>
#include <examples/charts/ChartFiles.h>
#include <examples/charts/ChartSheet.h>
#include <examples/charts/Options.h>
#include <examples/common/Program.h>
#include <examples/describe/Table.h>

#include <fstream>
#include <iostream>
#include <stdexcept>

namespace vlm::charts {
namespace {

Sample Read(const Options& options, const std::string& name) {
  describe::TableRequest request;
  request.delimiter = options.delimiter;
  if (!options.column.empty()) request.columns = {options.column};
  std::ifstream file;
  if (options.file != "-") file = examples::OpenInput(options.file);
  try {
    const auto table = describe::ReadTable(options.file == "-" ? std::cin : file, request);
    const auto& column = table.columns[table.described.front()];
    return Sample(options.title.empty() ? column.name : options.title, column.Numbers());
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(name + ": " + error.what());
  }
}

void Run(const Options& options) {
  if (options.help) {
    std::cout << UsageText();
    return;
  }
  const std::string name = options.file == "-" ? "standard input" : options.file;
  Sample sample = Read(options, name);
  CSystemInfo::GetInstance().DefVariablePitchFace("Liberation Sans");
  WriteSheet(options.output, sample);
  std::vector<std::string> made = {options.output};
  if (!options.folder.empty()) {
    for (std::string& path : WriteCharts(options.folder, sample)) made.push_back(std::move(path));
  }
  const CUnivariateStatistics& stats = sample.stats;
  std::cout << name << ": " << sample.title << ", " << stats.Count << " values from "
            << stats.Minimum << " to " << stats.Maximum << ", mean " << stats.Mean
            << ", standard deviation " << stats.StdDev << "\n";
  for (const std::string& path : made) std::cout << "Made " << path << "\n";
  if (!std::cout.flush()) throw std::runtime_error("cannot write to the standard output");
}

}  // namespace
}  // namespace vlm::charts

int main(int argc, char** argv) {
  return vlm::examples::RunProgram("charts", [&] {
    vlm::charts::Run(vlm::charts::ParseOptions({argv + 1, argv + argc}));
  });
}

#include <examples/worksheet/Charts.h>

#include <velum/diagnostics/SystemInfo.h>
#include <examples/charts/ChartFiles.h>

#include <optional>
#include <stdexcept>
#include <utility>

namespace vlm::worksheet {
namespace {

constexpr int kWidth = 460;
constexpr int kHeight = 320;

std::optional<charts::Sample> SampleOf(const ColumnSetting& column, std::vector<double> numbers) {
  const std::string unit = column.unit.empty() ? "" : " (" + column.unit + ")";
  try {
    return charts::Sample(column.title + unit, std::move(numbers));
  } catch (const std::runtime_error&) {
    return {};  // too few numbers, or equal ones
  }
}

}  // namespace

std::vector<Chart> DrawCharts(const Sheet& sheet, const std::string& path) {
  CSystemInfo::GetInstance().DefVariablePitchFace("Liberation Sans");
  const std::string base = path.substr(0, path.rfind(".html"));
  std::vector<Chart> charts;
  for (unsigned i = 0; i < sheet.columns.size(); ++i) {
    const SheetColumn& column = sheet.columns[i];
    if (column.numbers == 0 || !column.setting.chart) continue;
    const std::string file = base + "-" + std::to_string(charts.size() + 1) + ".png";
    std::optional<charts::Sample> sample = SampleOf(column.setting, NumbersOf(sheet, i));
    if (!sample) continue;
    charts::WritePage(file, kWidth, kHeight, 2, [&](Gdiplus::Graphics& graphics) {
      charts::Draw(charts::Kind::Histogram, graphics, {0, 0, kWidth, kHeight}, *sample);
    });
    charts.push_back({file.substr(file.rfind('/') + 1), column.setting.title, kWidth, kHeight});
  }
  return charts;
}

}  // namespace vlm::worksheet

#include <examples/worksheet/Charts.h>

#include <examples/common/Picture.h>
#include <examples/describe/Histogram.h>

namespace vlm::worksheet {
namespace {

constexpr int kWidth = 400;
constexpr int kHeight = 250;

void DrawChart(const std::string& path, const ColumnSetting& column, std::vector<double> numbers) {
  const Box2d window(64, 14, kWidth - 14, kHeight - 42);
  describe::Sample sample{describe::NameLabel(column.title), std::move(numbers), {}, {}};
  Load(sample.stats, sample.numbers.begin(), sample.numbers.end());
  sample.axis = describe::MakePaddedAxis(sample.stats.Minimum, sample.stats.Maximum, 6);
  const std::string unit = column.unit.empty() ? "" : " (" + column.unit + ")";
  const std::string title = describe::NameLabel(column.title + unit);
  examples::WritePicture(path, kWidth, kHeight, [&](struct _cairo* context) {
    describe::DrawHistogram(context, window, sample, {0.2, "Count", title});
  });
}

}  // namespace

std::vector<Chart> DrawCharts(const Sheet& sheet, const std::string& path) {
  const std::string base = path.substr(0, path.rfind(".html"));
  std::vector<Chart> charts;
  for (unsigned i = 0; i < sheet.columns.size(); ++i) {
    const SheetColumn& column = sheet.columns[i];
    if (column.numbers == 0 || !column.setting.chart) continue;
    const std::string file = base + "-" + std::to_string(charts.size() + 1) + ".png";
    DrawChart(file, column.setting, NumbersOf(sheet, i));
    charts.push_back({file.substr(file.rfind('/') + 1), column.setting.title, kWidth, kHeight});
  }
  return charts;
}

}  // namespace vlm::worksheet

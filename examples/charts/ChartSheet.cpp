#include <examples/charts/ChartSheet.h>

#include <examples/charts/ChartFiles.h>

namespace vlm::charts {
namespace {

constexpr int kMargin = 16;
constexpr int kChartWidth = 440;
constexpr int kChartHeight = 330;
constexpr int kSmallWidth = 264;
constexpr int kSmallHeight = 210;
constexpr int kWidth = 3 * kMargin + 2 * kChartWidth;
constexpr int kBoxWidth = kWidth - 4 * kMargin - 2 * kSmallWidth;
constexpr int kBoxHeight = 36;
constexpr int kHeight = 3 * kMargin + kChartHeight + kSmallHeight;

}  // namespace

void WriteSheet(const std::string& path, Sample& sample) {
  WritePage(path, kWidth, kHeight, 2, [&](Gdiplus::Graphics& graphics) {
    const int second = 2 * kMargin + kChartWidth;
    const int below = 2 * kMargin + kChartHeight;
    Draw(Kind::Histogram, graphics, {kMargin, kMargin, kChartWidth, kChartHeight}, sample);
    Draw(Kind::Probability, graphics, {second, kMargin, kChartWidth, kChartHeight}, sample);
    const int boxTop = below + (kSmallHeight - kBoxHeight) / 2;
    Draw(Kind::Box, graphics, {kMargin, boxTop, kBoxWidth, kBoxHeight}, sample);
    const int small = 2 * kMargin + kBoxWidth;
    const int last = small + kSmallWidth + kMargin;
    Draw(Kind::Histogram, graphics, {small, below, kSmallWidth, kSmallHeight}, sample);
    Draw(Kind::Probability, graphics, {last, below, kSmallWidth, kSmallHeight}, sample);
  });
}

}  // namespace vlm::charts

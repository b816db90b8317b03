#include <examples/charts/Charts.h>

#include <velum/numerics/DrawStats.h>

#include <stdexcept>
#include <utility>

namespace vlm::charts {

Sample::Sample(std::string name, std::vector<double> numbers)
    : title(std::move(name)), values(std::move(numbers)) {
  if (values.size() < 11) {
    throw std::runtime_error("'" + title + "' has " + std::to_string(values.size()) +
                             " numbers; a histogram needs 11");
  }
  Load(stats, values.begin(), values.end());
  if (stats.Histogram.empty() || !(stats.StdDev > 0)) {
    throw std::runtime_error("the numbers of '" + title + "' are all the same");
  }
}

const char* NameOf(Kind kind) {
  switch (kind) {
    case Kind::Histogram:
      return "histogram";
    case Kind::Probability:
      return "probability";
    default:
      return "box";
  }
}

void Draw(Kind kind, Gdiplus::Graphics& graphics, const Gdiplus::Rect& rect, Sample& sample) {
  const CDrawStats chart(sample.title, 0);
  switch (kind) {
    case Kind::Histogram:
      chart.DrawHistogram(graphics, rect, CDrawStats::kEverything, sample.stats);
      break;
    case Kind::Probability:
      chart.DrawProbabilityPlot(graphics, rect, CDrawStats::kEverything, sample.stats,
                                sample.values.begin(), sample.values.end());
      break;
    case Kind::Box:
      chart.DrawBoxPlot(graphics, rect, sample.stats);
      break;
  }
}

}  // namespace vlm::charts

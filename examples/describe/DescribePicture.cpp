#include <examples/describe/DescribePicture.h>

#include <velum/core/StringFormat.h>
#include <velum/dates/NumberFormatSpec.h>
#include <velum/numerics/MultivariateStatistics.h>
#include <velum/numerics/UnivariateStatistics.h>
#include <examples/common/Axis.h>
#include <examples/common/PageText.h>
#include <examples/common/Panel.h>
#include <examples/common/Picture.h>
#include <examples/describe/Histogram.h>
#include <examples/describe/PointMap.h>

#include <cairo.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace vlm::describe {
namespace {

using examples::Align;
using examples::Axis;
using examples::DrawText;
using examples::kPale;
using examples::MakePaddedAxis;
using examples::NumberLabel;
using examples::Panel;
using examples::PanelDot;
using examples::Verbatim;

constexpr double kMargin = 16.0;
constexpr double kLeft = 58.0;        // of a panel, for ticks and title
constexpr double kBelow = 38.0;       // of a panel, for ticks and title
constexpr double kHeading = 40.0;     // above the panels
constexpr double kGap = 9.0;          // between panels
constexpr double kLegendLine = 11.0;  // below the panels
constexpr unsigned kMostDots = 3000;  // of a scatter plot

const Color4b kDot(38, 98, 148, 110);
const Color4b kRising(24, 84, 140, 255);
const Color4b kFalling(176, 52, 36, 255);

using Labels = std::map<std::string, std::string>;

std::string LabelOf(const Column& column, const Labels& labels) {
  const auto label = labels.find(column.name);
  return label == labels.end() ? Verbatim(column.name) : label->second;
}

Sample SampleOf(const Column& column, const Labels& labels, int ticks) {
  Sample sample{LabelOf(column, labels), column.Numbers(), {}, {}};
  if (sample.numbers.empty()) return sample;
  Load(sample.stats, sample.numbers.begin(), sample.numbers.end());
  sample.axis = MakePaddedAxis(sample.stats.Minimum, sample.stats.Maximum, ticks);
  return sample;
}

// How many intervals an axis wants in a picture of so many columns.
int IntervalsOf(std::size_t columns) {
  if (columns == 1) return 8;
  return columns < 5 ? 5 : 4;
}

std::string FigureText(double number) {
  const NumberFormatSpec spec(NumberFormatSpec::General, 4);
  return ToString(spec.GetFormat().c_str(), number);
}

// The part of the picture above the map.
class Panels {
 public:
  Panels(const Table& table, const Labels& labels) {
    const std::size_t count = std::min(table.described.size(), kMostPanels);
    const std::vector<std::size_t> shown(
        table.described.begin(), table.described.begin() + static_cast<std::ptrdiff_t>(count));
    for (const std::size_t column : shown) {
      samples_.push_back(SampleOf(table.columns[column], labels, IntervalsOf(count)));
    }
    if (count == 1) return;
    rows_ = WholeRows(table, shown);
    if (rows_.nRows() > 1) ranks_ = ComputeRankCorrelation(rows_);
    stride_ = rows_.nRows() / kMostDots + 1;
  }

  [[nodiscard]] double Width() const {
    return kLeft + Count() * Cell() + (Count() - 1.0) * kGap + kMargin;
  }
  [[nodiscard]] double Height() const {
    const double cells = Count() == 1 ? Cell() * 0.62 : Count() * Cell() + (Count() - 1.0) * kGap;
    return kHeading + cells + kBelow + Legend();
  }

  void Draw(cairo_t* context, const std::string& title) const {
    DrawText(context, Vec2d(kLeft, 20.0), {"{\\b " + Verbatim(title) + "}", 11.0});
    DrawText(context, Vec2d(kLeft, 33.0), {Subtitle(), 8.5, Align::Left, kPale, Room()});
    if (Count() == 1) {
      DrawOne(context);
    } else {
      DrawMatrix(context);
    }
    std::vector<std::string> legend = {
        "Box: quartiles and median; whiskers: 5th and 95th percentile; dots: extremes; diamond: "
        "mean",
        "Curve: normal distribution of the same mean and standard deviation"};
    if (Count() > 1) {
      legend[1] += "; histograms: all values";
      legend.push_back(
          "Below the diagonal: whole rows; above it: their rank correlations (Spearman)");
    }
    double y = Height() - Legend();
    for (const std::string& line : legend) {
      y += kLegendLine;
      DrawText(context, Vec2d(kLeft, y), {line, 8.0, Align::Left, kPale, Room()});
    }
  }

 private:
  [[nodiscard]] double Count() const { return static_cast<double>(samples_.size()); }
  [[nodiscard]] double Cell() const {
    constexpr std::array<double, kMostPanels> kCells = {480.0, 230.0, 170.0, 138.0, 122.0, 108.0};
    return kCells[samples_.size() - 1];
  }
  [[nodiscard]] double Legend() const { return (Count() == 1 ? 2.2 : 3.2) * kLegendLine; }
  [[nodiscard]] double Room() const { return Width() - kLeft - kMargin; }

  [[nodiscard]] Box2d Window(std::size_t row, std::size_t column) const {
    const double x = kLeft + static_cast<double>(column) * (Cell() + kGap);
    const double y = kHeading + static_cast<double>(row) * (Cell() + kGap);
    return Box2d(x, y, x + Cell(), y + (Count() == 1 ? Cell() * 0.62 : Cell()));
  }

  [[nodiscard]] std::string Subtitle() const {
    if (samples_.size() == 1) {
      const CUnivariateStatistics& stats = samples_[0].stats;
      return "{\\i n} = " + std::to_string(stats.Count) + ", mean " + FigureText(stats.Mean) +
             ", standard deviation " + FigureText(stats.StdDev) + ", median " +
             FigureText(stats.Median);
    }
    std::string text = "{\\i n} = " + std::to_string(rows_.nRows()) + " whole rows";
    if (stride_ > 1) text += ", one in " + std::to_string(stride_) + " of which is drawn";
    return text;
  }

  void DrawOne(cairo_t* context) const {
    DrawHistogram(context, Window(0, 0), samples_[0], {0.18, "Count", samples_[0].label});
  }

  void DrawMatrix(cairo_t* context) const {
    for (std::size_t i = 0; i < samples_.size(); ++i) {
      for (std::size_t j = 0; j < samples_.size(); ++j) {
        if (i < j) {
          DrawRank(context, Window(i, j), static_cast<unsigned>(i), static_cast<unsigned>(j));
        } else {
          DrawCell(context, i, j);
        }
      }
    }
  }

  void DrawCell(cairo_t* context, std::size_t i, std::size_t j) const {
    const Box2d window = Window(i, j);
    const std::string below = i + 1 == samples_.size() ? samples_[j].label : std::string();
    if (i == j) {
      DrawHistogram(context, window, samples_[i], {0.22, "", below});
      return;
    }
    Panel panel(context, window, samples_[j].axis, samples_[i].axis);
    std::vector<PanelDot> dots;
    for (unsigned row = 0; row < rows_.nRows(); row += stride_) {
      const Vec2d point(rows_(row, static_cast<unsigned>(j)), rows_(row, static_cast<unsigned>(i)));
      dots.push_back({point, 1.1, kDot});
    }
    panel.Dots(dots);
    panel.Frame();
    if (j == 0) panel.TicksLeft(samples_[i].label);
    if (!below.empty()) panel.TicksBelow(below);
  }

  void DrawRank(cairo_t* context, const Box2d& window, unsigned i, unsigned j) const {
    Panel panel(context, window, Axis(), Axis());
    panel.Frame();
    const double rank = rows_.nRows() > 1 ? ranks_(i, j) : std::nan("");
    const Vec2d center = window.Center();
    if (std::isnan(rank)) {
      DrawText(context, center, {"none", 9.0, Align::Center, kPale});
      return;
    }
    const double height = 10.0 + 16.0 * std::abs(rank);
    DrawText(context, Vec2d(center.x, center.y + 0.3 * height),
             {NumberLabel(rank, 0.01), height, Align::Center, rank < 0 ? kFalling : kRising});
    const auto name = [&](const Sample& sample, double above) {
      DrawText(context, Vec2d(center.x, window.yMax() - above),
               {sample.label, 7.5, Align::Center, kPale, window.xRange() - 8.0});
    };
    name(samples_[i], 16.0);
    name(samples_[j], 6.5);
  }

  std::vector<Sample> samples_;
  RMatrix rows_;
  RMatrix ranks_;
  unsigned stride_ = 1;
};

}  // namespace

void DrawTable(const Table& table, const std::string& title, const Labels& labels,
               const std::string& path) {
  const Panels panels(table, labels);
  const double width = panels.Width();
  double height = panels.Height() + kMargin * 1.5;
  RMatrix points;
  std::vector<std::string> names;
  Box2d map;
  if (!table.spatial.empty()) {
    points = WholeRows(table, table.spatial);
    for (const std::size_t column : table.spatial) {
      names.push_back(LabelOf(table.columns[column], labels));
    }
    const double mapWidth = width - kLeft - kMargin;
    const double mapHeight = PointMapHeight(mapWidth, points);
    map = Box2d(kLeft, height, width - kMargin, height + mapHeight);
    height += mapHeight + kBelow + kMargin / 2.0;
  }
  examples::WritePicture(path, width, height, [&](cairo_t* context) {
    panels.Draw(context, title);
    if (!table.spatial.empty()) DrawPointMap(context, map, points, names);
  });
}

}  // namespace vlm::describe

#pragma once

/// \file
/// The panel of one column: its histogram with a box plot and the normal curve.
///
///     vlm::describe::DrawHistogram(context, window, sample, {0.2, "Count", "Depth (m)"});

#include <velum/geometry/Box2.h>
#include <velum/numerics/UnivariateStatistics.h>
#include <examples/common/Axis.h>

#include <string>
#include <vector>

struct _cairo;

namespace vlm::describe {

/// A column as its panel needs it. A plain value.
struct Sample {
  std::string label;            ///< a math text
  std::vector<double> numbers;  ///< in any order
  CUnivariateStatistics stats;
  examples::Axis axis;  ///< of the numbers
};

/// What stands about a histogram. A plain value.
struct HistogramFrame {
  double headroom = 0.2;   ///< the share of the window's height that the box plot has
  std::string countTitle;  ///< the title of the counts, which have no ticks without it
  std::string title;       ///< the title of the numbers, which have no ticks without it
};

/// Draws the histogram of a sample below its box plot: a box from quartile to quartile with the
/// median, whiskers to the 5th and the 95th percentile, dots at the extremes, a diamond at the
/// mean. The curve is the normal distribution of the same mean and standard deviation.
///
/// A sample that has no bins shows each of its values by a stroke instead.
void DrawHistogram(struct _cairo* context, const Box2d& window, const Sample& sample,
                   const HistogramFrame& frame);

}  // namespace vlm::describe

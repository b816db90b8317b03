#pragma once

/// \file
/// Charts of a sample: its box plot, its histogram and its normal probability plot.
///
///     std::vector<double> depths = {3.1, 5.4, 4.4, 4.9, 12.7, 5, 6.2, 4.1, 5.5, 4.7, 5.2, 60.3};
///     vlm::CUnivariateStatistics stats;
///     vlm::Load(stats, depths.begin(), depths.end());
///     const vlm::CDrawStats chart("Depth (km)", 0);
///     chart.DrawHistogram(800, 600, "depths.png", vlm::CDrawStats::kEverything, stats);
///
/// A chart keeps inside of its rectangle, to the pixel. Around the plot there are bands for labels
/// and titles, at most a third of the rectangle on each side; where they would be larger, the
/// labels of that axis are left out, then its title. The x axis has as many ticks as leave their
/// labels apart; where none do, the fewest, whose labels may touch. A title longer than the
/// rectangle is cut by its edges; one that would lie on labels is left out, and so is a label of
/// the y axis on the one before.
///
/// The face is that of `CSystemInfo::DefVariablePitchFace`: labels have 10 points, titles 12 and
/// are bold. Numbers have the decimal point of the runtime's locale.

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/diagnostics/Forward.h>
#include <velum/numerics/Forward.h>

#include <bitset>
#include <string>
#include <vector>

namespace vlm {

/// Draws charts of samples that `Load` has told the statistics of.
///
/// A value. Any number of threads may draw with one at a time, each on its own `Graphics`, whose
/// clip holds and stays; a call that fails there stops nothing, and the `Graphics` keeps its
/// status. Coordinates are pixels; rectangles that are empty or reach beyond 1,000,000 of them are
/// not drawn.
class VELUM_API CDrawStats {
 public:
  /// What a chart has around its plot and over it, each a bit of the flags.
  enum Flag : unsigned int {
    kYTicks = 1,      ///< Ticks with labels on the y axis.
    kYTitle = 2,      ///< The title of the y axis: "Frequency" or "Normal Response".
    kXTicks = 4,      ///< Ticks with labels on the x axis.
    kXTitle = 8,      ///< The title of the x axis.
    kNormal = 16,     ///< The normal curve over the bars, or the line through the points, in red.
    kBoxPlot = 32,    ///< The box plot in a strip above the plot.
    kEverything = 63  ///< All of them.
  };

  /// A chart of data of that name, which is the title of their axis. `number` is kept with it and
  /// has no meaning here.
  CDrawStats(const std::string& title, int number);
  /// Copies title and number.
  CDrawStats(const CDrawStats& other);
  /// Copies title and number.
  CDrawStats& operator=(const CDrawStats& other);
  ~CDrawStats();

  /// Draws the box plot, which fills the rectangle: a box from quartile to quartile with the
  /// `Percentile_50` across it, lines to the extremes, a disc at the mean.
  ///
  /// - `Minimum` equal to `Maximum`: all of it is at the left edge. Where they are NaN: nothing.
  void DrawBoxPlot(Gdiplus::Graphics& graphics, const Gdiplus::Rect& rect,
                   const CUnivariateStatistics& stats) const;

  /// Draws the histogram, a bar for each bin.
  ///
  /// - `Minimum` not below `Maximum`, `StdDev` not above 0, no bins, or none with a count: nothing.
  void DrawHistogram(Gdiplus::Graphics& graphics, const Gdiplus::Rect& rect,
                     const std::bitset<6>& flags, const CUnivariateStatistics& stats) const;
  /// Writes the histogram to a PNG file on white. The path is of the library's form; a file that
  /// can't be written stays what it was, and nothing tells.
  void DrawHistogram(int width, int height, const std::string& path, const std::bitset<6>& flags,
                     const CUnivariateStatistics& stats) const;

  /// Draws the normal probability plot of a sample: each value across, and up the normal quantile
  /// of its rank by n + 1. Points of a normal sample lie along a line. The sample is put in
  /// ascending order.
  ///
  /// - `Minimum` not below `Maximum`, `StdDev` not above 0, no values, or another number of them
  ///   than `Count`: nothing, and the sample keeps its order; a NaN among them as well.
  /// - Points that fall on one pixel are drawn once.
  ///
  /// *Cost*: that of sorting the sample, and little more.
  void DrawProbabilityPlot(Gdiplus::Graphics& graphics, const Gdiplus::Rect& rect,
                           const std::bitset<6>& flags, const CUnivariateStatistics& stats,
                           std::vector<double>::iterator first,
                           std::vector<double>::iterator last) const;
  /// Writes the probability plot to a PNG file on white, as the histogram is written.
  void DrawProbabilityPlot(int width, int height, const std::string& path,
                           const std::bitset<6>& flags, const CUnivariateStatistics& stats,
                           std::vector<double>::iterator first,
                           std::vector<double>::iterator last) const;

 private:
  GString title_;
  [[maybe_unused]] int number_;
};

}  // namespace vlm

#pragma once

/// \file
/// The three charts of a sample, by kind.
///
///     vlm::charts::Sample sample("Depth (km)", depths);
///     vlm::charts::Draw(vlm::charts::Kind::Histogram, graphics, {0, 0, 640, 480}, sample);

#include <velum/diagnostics/GdiPlus.h>
#include <velum/numerics/UnivariateStatistics.h>

#include <string>
#include <vector>

namespace vlm::charts {

/// A sample with its statistics. Has the values in an order of its own.
struct Sample {
  /// *Errors*: `std::runtime_error` if there is nothing to draw: fewer than 11 values, or equal
  /// ones.
  Sample(std::string name, std::vector<double> numbers);

  std::string title;
  std::vector<double> values;
  CUnivariateStatistics stats;
};

/// The kinds of charts.
enum class Kind { Histogram, Probability, Box };

/// All of them.
inline constexpr Kind kKinds[] = {Kind::Histogram, Kind::Probability, Kind::Box};

/// What a kind is called.
[[nodiscard]] const char* NameOf(Kind kind);

/// Draws a chart with all that it can have.
void Draw(Kind kind, Gdiplus::Graphics& graphics, const Gdiplus::Rect& rect, Sample& sample);

}  // namespace vlm::charts

#pragma once

/// \file
/// An axis of a panel: its range, its ticks and their labels.
///
///     const vlm::examples::Axis axis = vlm::examples::MakeAxis(0.3, 97.0, 5);
///     axis.ticks;   // 20, 40, 60, 80
///     axis.labels;  // "20", "40", ...

#include <string>
#include <vector>

namespace vlm::examples {

/// A range with its ticks. A plain value.
struct Axis {
  double low = 0.0;
  double high = 1.0;
  std::vector<double> ticks;
  std::vector<std::string> labels;  ///< math texts, one for each tick
  std::string offset;  ///< what stands behind the title where labels leave out a large common part

  /// Where a value stands between `low` and `high`, which are 0 and 1.
  [[nodiscard]] double Share(double value) const;
};

/// Makes an axis over a range of finite numbers, which is widened if it has no width, for about
/// `count` intervals.
[[nodiscard]] Axis MakeAxis(double low, double high, int count);

/// The same with a share of the range added at both ends.
[[nodiscard]] Axis MakePaddedAxis(double low, double high, int count, double padding = 0.04);

/// The math text of a number, exact to a tick's `step`: decimals, or a power of ten where there
/// would be too many digits.
[[nodiscard]] std::string NumberLabel(double value, double step);

}  // namespace vlm::examples

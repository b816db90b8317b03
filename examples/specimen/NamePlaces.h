#pragma once

/// \file
/// Where the names under the brackets of a line stand, so that none lies on another.
///
///     std::vector<vlm::specimen::Bracket> brackets = {{40.0, 90.0, 30.0}, {90.0, 94.0, 60.0}};
///     vlm::specimen::PlaceNames(brackets, 36.0, 8.0);

#include <cstddef>
#include <vector>

namespace vlm::specimen {

/// A bracket, with the place of its name. A plain value.
struct Bracket {
  double left;
  double right;
  double nameWidth;
  double nameLeft = 0.0;
  /// 0 for a name in the middle below its bracket, else how many lanes lower it stands: then a line
  /// leads down to it from the middle of the bracket, and the name stands at the right of the line.
  std::size_t lane = 0;

  /// The middle, where the line to the name begins.
  [[nodiscard]] double Middle() const { return 0.5 * (left + right); }
};

/// Places the names of brackets that stand from left to right. Names in a lane are at least `gap`
/// apart, none begins left of `margin`, and no line to a name crosses another name.
///
/// *Cost*: quadratic at most in the names that are wider than their brackets, times the lanes.
void PlaceNames(std::vector<Bracket>& brackets, double margin, double gap);

}  // namespace vlm::specimen

#pragma once

/// \file
/// Glyphs while symbol sets are made.

#include <map>
#include <stdexcept>
#include <vector>

namespace vlm::sets {

/// A place on the grid: x goes right, y up, 0 is the baseline.
struct Point {
  int x = 0;
  int y = 0;

  friend bool operator==(const Point&, const Point&) = default;
};

using Polyline = std::vector<Point>;

/// A glyph in its cell.
struct Glyph {
  int left = 0;
  int right = 0;
  std::vector<Polyline> lines;
};

/// Glyphs by their codes.
using Face = std::map<unsigned char, Glyph>;

/// What stops the making of a set.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace vlm::sets

#pragma once

/// \file
/// Strokes as people write them: "-8,0 8,0; 0,-8 0,8" is a plus of two polylines.

#include <velum/fonts/detail/sets/Glyph.h>

#include <istream>
#include <string>
#include <vector>

namespace vlm::sets {

/// Reads strokes up to the end of the line.
///
/// *Errors*: `Failure` for what is none.
std::vector<Polyline> ReadStrokes(std::istream& text);

/// Reads a table of markers: a code, both edges and strokes to a line; "#" begins a comment.
///
/// *Errors*: `Failure`.
Face ReadMarkers(const std::string& path);

}  // namespace vlm::sets

#pragma once

/// \file
/// Glyphs made to fit: a fixed pitch, and no more strokes than a file holds.

#include <velum/fonts/detail/sets/Glyph.h>

#include <cstddef>

namespace vlm::sets {

/// Gives each glyph a cell of `width`, with what is drawn in its middle, and narrows those that are
/// wider.
void MakeFixedPitch(int width, Face& face);

/// Moves all glyphs to the side, so that their cells begin at 0.
void BeginAtZero(Face& face);

/// Moves all glyphs up.
void MoveUp(int height, Face& face);

/// Gives each glyph a cell of at least `width`, and shrinks and moves those that do not lie between
/// the heights `low` and `high`.
void FitIn(int low, int high, int width, Face& face);

/// Leaves at most `most` points: lines that go on where another ends become one, and points that
/// the shape misses least are taken out (D. Douglas, T. Peucker, 1973), from half a unit of the
/// grid on. Where straight lines alone are too many, the shortest are left out.
void LimitPoints(std::size_t most, Glyph& glyph);

}  // namespace vlm::sets

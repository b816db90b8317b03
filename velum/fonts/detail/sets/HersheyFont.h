#pragma once

/// \file
/// Reads the vector letters that A. V. Hershey drew at the U.S. National Bureau of Standards, in
/// the form that J. Hurt gave them: a line for each glyph, from the blank on.

#include <velum/fonts/detail/sets/Glyph.h>

#include <string>

namespace vlm::sets {

/// Reads the file at `path`. The first glyph gets the code 32; there are at most 96.
///
/// *Errors*: `Failure`.
Face ReadHersheyFont(const std::string& path);

}  // namespace vlm::sets

#pragma once

/// \file
/// Writes symbol sets; velum/fonts/StrokedFace.h tells their form.

#include <velum/fonts/detail/sets/Glyph.h>

#include <string>

namespace vlm::sets {

/// Writes a face to `path`. A line of one point gets another one at the same place.
///
/// *Errors*: `Failure` for what does not fit in the file's numbers, and if the file can't be
/// written.
void WriteSymbolSet(const Face& face, const std::string& path);

}  // namespace vlm::sets

#pragma once

/// \file
/// Letters of the languages of western Europe, made from the letters of a face and marks.

#include <velum/fonts/detail/sets/Glyph.h>

#include <string>

namespace vlm::sets {

/// Adds the letters and signs that the table at `path` tells; it explains itself.
///
/// *Errors*: `Failure`.
void AddWesternLetters(const std::string& path, Face& face);

}  // namespace vlm::sets

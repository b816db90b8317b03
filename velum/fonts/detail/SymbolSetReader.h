#pragma once

/// \file
/// Reads symbol sets.
///
///     vlm::detail::SymbolSet set;
///     const bool sound = vlm::detail::ReadSymbolSet(file, false, set);

#include <velum/files/Forward.h>
#include <velum/fonts/StrokedFace.h>

#include <vector>

namespace vlm::detail {

/// What a symbol set holds, with the measures of the whole; see the getters of `CStrokedFace`.
struct SymbolSet {
  int emSize = 0;
  int maxAscender = 0;
  int maxDescender = 0;
  int avgCharWidth = 0;
  int maxCharWidth = 0;
  double aspect = 0;
  unsigned short firstChar = 255;
  unsigned short lastChar = 0;
  unsigned short defaultChar = 32;
  unsigned short breakChar = 32;
  std::vector<CStrokedFace::GlyphInfo> glyphs;  ///< From the first to the last code.
};

/// Reads a set; with `isFixedPitch` the blank gets the mean width. False for a file that is none or
/// is damaged: there are no glyphs then, the codes are 0, and what was found out before stays.
///
/// *Errors*: those of reading; `std::bad_alloc`.
bool ReadSymbolSet(CBufferedFile& file, bool isFixedPitch, SymbolSet& set);

}  // namespace vlm::detail

#pragma once

/// \file
/// What labels need beyond the letters of western symbol sets: Greek letters by their place in
/// "KQ Symbol", and mathematical signs as strokes.
///
///     vlm::examples::GreekLetterCode(U'Δ');               // 'D'
///     vlm::examples::MathStrokes(U'→').metrics.gmCellIncX;  // 26

#include <velum/fonts/StrokedFace.h>

namespace vlm::examples {

/// The code of a Greek letter in "KQ Symbol"; 0 for another character.
[[nodiscard]] char GreekLetterCode(char32_t character);

/// A Greek letter that has an accent, without it; 0 for another character.
[[nodiscard]] char32_t WithoutTonos(char32_t character);

/// A letter with that accent above it.
[[nodiscard]] CStrokedFace::GlyphInfo AddTonos(const CStrokedFace::GlyphInfo& letter);

/// The strokes of a sign, on the grid of the symbol sets, where capitals are 21 units high; an
/// empty box for a sign that is not known.
///
/// *Lifetime*: that of the program.
[[nodiscard]] const CStrokedFace::GlyphInfo& MathStrokes(char32_t character);

}  // namespace vlm::examples

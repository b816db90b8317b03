#pragma once

/// \file
/// Glyphs of symbol sets as paths of a Cairo context.
///
///     const auto set = vlm::examples::FindSymbolSet("KQ Roman");
///     vlm::examples::AddStrokedGlyph(context, set->GetGlyphInfo('A'), vlm::Vec2d(20, 60), 0.5);
///     cairo_stroke(context);

#include <velum/fonts/StrokedFace.h>
#include <velum/geometry/Vec2.h>

#include <memory>
#include <string>

struct _cairo;

namespace vlm::examples {

/// The symbol set of a name, in any case; null if there is none.
///
/// *Errors*: those of `CStrokedFace` and `CSystemFaceInfo`.
[[nodiscard]] std::shared_ptr<const CStrokedFace> FindSymbolSet(const std::string& name);

/// Adds the polylines of a glyph to the path, with the left end of its baseline at `position`, each
/// unit of the set's grid `scale` units of the context long. `slant` leans it to the right: the
/// tangent of the angle.
void AddStrokedGlyph(struct _cairo* context, const CStrokedFace::GlyphInfo& glyph,
                     const Vec2d& position, double scale, double slant = 0.0);

/// Strokes the path with round ends and joints, and clears it.
void StrokeRound(struct _cairo* context, double width);

}  // namespace vlm::examples

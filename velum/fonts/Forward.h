#pragma once

/// \file
/// Declares the classes of the fonts, for headers that only name them.
///
///     #include <velum/fonts/Forward.h>
///     void Draw(const vlm::CStrokedFace& face);

namespace vlm {

class CFaceInfo;
class CStrokedFace;
class CSYMFaceInfo;
class CSYMSetInfo;
class CSystemFaceInfo;
class CTrueTypeFaceInfo;
class FontRefDC;
class PolygonalGlyph;
class PolygonalGlyphBuilder;
class PolygonalGlyphCache;
class ScopedScriptCache;
class UCS2Decomp;
class UCS2DecompIF;
class UCS2DecompSubSet;

}  // namespace vlm

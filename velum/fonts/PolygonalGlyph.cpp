#include <velum/fonts/PolygonalGlyph.h>

#include <velum/fonts/FaceInfo.h>
#include <velum/fonts/SystemFaceInfo.h>

namespace vlm {

PolygonalGlyph::PolygonalGlyph(unsigned short index) noexcept : index_(index) {}
PolygonalGlyph::PolygonalGlyph(const PolygonalGlyph& other) = default;
PolygonalGlyph& PolygonalGlyph::operator=(const PolygonalGlyph& other) = default;
PolygonalGlyph::~PolygonalGlyph() = default;

PolygonalGlyphBuilder::PolygonalGlyphBuilder(const CSystemFaceInfo& faces) noexcept
    : faces_(faces) {}
PolygonalGlyphBuilder::~PolygonalGlyphBuilder() = default;

std::unique_ptr<PolygonalGlyph> PolygonalGlyphBuilder::BuildGlyph(unsigned int face,
                                                                  unsigned short code) const {
  if (face >= faces_.GetNumItems()) return nullptr;
  const auto info = faces_.GetFaceInfo(face);
  if (code < info->GetFirstChar() || code > info->GetLastChar()) return nullptr;
  return DoBuildGlyph(face, code);
}

}  // namespace vlm

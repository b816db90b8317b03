#pragma once

/// \file
/// Glyphs of outline faces as polygons: curves flattened, overlapping contours resolved.
///
///     const vlm::examples::GlyphFlattener flattener(vlm::CSystemFaceInfo::GetInstance());
///     vlm::PolygonalGlyphCache cache(flattener, 1 << 20);
///     const auto glyph = cache.Glyph(face, 'B', true);  // three contours: one, and two holes

#include <velum/fonts/PolygonalGlyph.h>
#include <velum/geometry/GPolygon.h>
#include <velum/geometry/Vec2.h>
#include <examples/common/FontFile.h>

#include <map>
#include <memory>
#include <vector>

namespace vlm::examples {

/// Builds the polygons of glyphs from font files, for `PolygonalGlyphCache`.
///
/// A glyph has a count for each contour; its vertices are in units of the em square, with y up from
/// the baseline. Contours don't cross, and a point is inside if an odd number of them hold it: so
/// fill by the even-odd rule. A glyph without ink has none.
///
/// Has identity, keeps its font files open and is used by one thread at a time.
class GlyphFlattener final : public PolygonalGlyphBuilder {
 public:
  /// A builder for the faces of a list, which outlives it. No point of a curve is farther than
  /// `tolerance`, a share of the em, from the polygon.
  explicit GlyphFlattener(const CSystemFaceInfo& faces, double tolerance = 0.0005);
  ~GlyphFlattener() override;

 private:
  // Null for a symbol set.
  std::unique_ptr<PolygonalGlyph> DoBuildGlyph(unsigned int face,
                                               unsigned short code) const override;

  const CSystemFaceInfo& faces_;
  double tolerance_;
  mutable std::map<unsigned int, std::shared_ptr<const FontFile>> files_;
};

/// The area that contours wind around, as fonts mean them: where as many go one way around a point
/// as the other way, there is a hole. They may overlap, and cross each other and themselves.
///
/// *Cost*: quadratic in the points of a contour.
[[nodiscard]] GPolygon ResolveContours(const std::vector<std::vector<Vec2d>>& contours);

/// The area of a glyph of a font, in design units; empty if it has no ink or can't be read.
///
/// `tolerance` is in design units.
[[nodiscard]] GPolygon FlattenGlyph(const FontFile& font, unsigned int glyph, double tolerance);

}  // namespace vlm::examples

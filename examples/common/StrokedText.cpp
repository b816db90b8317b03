#include <examples/common/StrokedText.h>

#include <velum/core/StringCompare.h>
#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/SystemFaceInfo.h>

#include <cairo.h>

#include <cstddef>

namespace vlm::examples {

std::shared_ptr<const CStrokedFace> FindSymbolSet(const std::string& name) {
  // The list of sets is filled with the list of faces.
  (void)CSystemFaceInfo::GetInstance();
  for (const CSYMSetInfo& set : g_SYMSetList) {
    if (StringEquivalent()(set.GetFaceName(), name)) return set.GetStrokedFacePtr();
  }
  return nullptr;
}

void AddStrokedGlyph(cairo_t* context, const CStrokedFace::GlyphInfo& glyph, const Vec2d& position,
                     double scale, double slant) {
  std::size_t next = 0;
  for (const int count : glyph.counts) {
    for (int i = 0; i < count; ++i, ++next) {
      const Vec2d& point = glyph.vertices[next];
      const double x = position.x + scale * (point.x + slant * point.y);
      const double y = position.y - scale * point.y;
      if (i == 0) {
        cairo_move_to(context, x, y);
      } else {
        cairo_line_to(context, x, y);
      }
    }
  }
}

void StrokeRound(cairo_t* context, double width) {
  cairo_set_line_width(context, width);
  cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
  cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
  cairo_stroke(context);
}

}  // namespace vlm::examples

#include <examples/specimen/FacePainter.h>

#include <velum/fonts/SYMFaceInfo.h>
#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <examples/common/StrokedText.h>
#include <examples/specimen/FaceFacts.h>

#include <cairo.h>

#include <algorithm>
#include <cstddef>

namespace vlm::specimen {
namespace {

constexpr unsigned int kCacheBytes = 8U << 20;
// A pen for the lines of stroked faces, which grows less than the letters do. Full markers are
// filled by lines one unit of the grid apart: a pen for these leaves nothing between them.
double PenWidth(double height, double unit, bool isMarkers) {
  const double pen = 0.3 + 0.022 * height;
  return isMarkers ? std::max(pen, 1.15 * unit) : pen;
}

void AddPolygons(cairo_t* context, const PolygonalGlyph& glyph, const Vec2d& position,
                 double scale) {
  std::size_t next = 0;
  for (const unsigned int count : glyph.Counts()) {
    for (unsigned int i = 0; i < count; ++i, ++next) {
      const Vec2d& vertex = glyph.Vertices()[next];
      cairo_line_to(context, position.x + scale * vertex.x, position.y - scale * vertex.y);
    }
    cairo_close_path(context);
    cairo_new_sub_path(context);
  }
}

}  // namespace

FacePainter::FacePainter()
    : flattener_(CSystemFaceInfo::GetInstance()), cache_(flattener_, kCacheBytes) {}

double FacePainter::Advance(unsigned int face, const GString& text, double height) {
  const auto info = CSystemFaceInfo::GetInstance().GetFaceInfo(face);
  return info->GetEmToHeight(height) * info->CalcEmExtent(text);
}

void FacePainter::Draw(cairo_t* context, unsigned int face, const GString& text, Vec2d position,
                       double height) {
  const auto info = CSystemFaceInfo::GetInstance().GetFaceInfo(face);
  const double scale = info->GetEmToHeight(height);
  std::shared_ptr<const CStrokedFace> strokes;
  bool isMarkers = false;
  if (const auto* stroked = dynamic_cast<const CSYMFaceInfo*>(info.get())) {
    const unsigned int set = stroked->GetSYMSetIndex();
    strokes = g_SYMSetList[set].GetStrokedFacePtr();
    isMarkers = set >= kFirstMarkerSet;
  }
  cairo_new_path(context);
  for (const char byte : text.String()) {
    const auto code = info->MapCharCode(static_cast<unsigned char>(byte));
    if (strokes != nullptr) {
      examples::AddStrokedGlyph(context, strokes->GetGlyphInfo(code), position, scale);
    } else if (const auto glyph = cache_.Glyph(face, code, true)) {
      AddPolygons(context, *glyph, position, scale);
    }
    position.x += scale * info->GetGlyphMetrics(code).gmCellIncX;
  }
  if (strokes != nullptr) {
    examples::StrokeRound(context, PenWidth(height, scale, isMarkers));
    return;
  }
  // Contours of the cache's polygons don't cross, and holes are contours as well.
  const cairo_fill_rule_t rule = cairo_get_fill_rule(context);
  cairo_set_fill_rule(context, CAIRO_FILL_RULE_EVEN_ODD);
  cairo_fill(context);
  cairo_set_fill_rule(context, rule);
}

}  // namespace vlm::specimen

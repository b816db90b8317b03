#include <examples/specimen/ShapedText.h>

#include <velum/core/WideText.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <examples/common/FontFile.h>

#include <cairo.h>
#include <ft2build.h>
#include <hb.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <cstdint>

namespace vlm::specimen {
namespace {

constexpr unsigned int kWesternCodePage = 1252;
constexpr unsigned int kNamedInstanceShift = 16;

// Where the glyphs of a font come to.
struct Pen {
  cairo_t* context;
  Vec2d origin;
  double scale;

  [[nodiscard]] Vec2d At(const FT_Vector* point) const {
    return {origin.x + scale * static_cast<double>(point->x),
            origin.y - scale * static_cast<double>(point->y)};
  }
};

int MoveTo(const FT_Vector* to, void* user) {
  const Pen& pen = *static_cast<Pen*>(user);
  const Vec2d end = pen.At(to);
  cairo_close_path(pen.context);
  cairo_move_to(pen.context, end.x, end.y);
  return 0;
}
int LineTo(const FT_Vector* to, void* user) {
  const Pen& pen = *static_cast<Pen*>(user);
  const Vec2d end = pen.At(to);
  cairo_line_to(pen.context, end.x, end.y);
  return 0;
}
int CubicTo(const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* user) {
  const Pen& pen = *static_cast<Pen*>(user);
  const Vec2d a = pen.At(first);
  const Vec2d b = pen.At(second);
  const Vec2d end = pen.At(to);
  cairo_curve_to(pen.context, a.x, a.y, b.x, b.y, end.x, end.y);
  return 0;
}
int QuadraticTo(const FT_Vector* control, const FT_Vector* to, void* user) {
  const Pen& pen = *static_cast<Pen*>(user);
  Vec2d begin;
  cairo_get_current_point(pen.context, &begin.x, &begin.y);
  const Vec2d middle = pen.At(control);
  const Vec2d end = pen.At(to);
  const Vec2d a = begin + (middle - begin) * (2.0 / 3.0);
  const Vec2d b = end + (middle - end) * (2.0 / 3.0);
  cairo_curve_to(pen.context, a.x, a.y, b.x, b.y, end.x, end.y);
  return 0;
}

unsigned int IndexOf(const CFaceInfo* face) {
  const auto& faces = CSystemFaceInfo::GetInstance();
  unsigned int index = 0;
  while (faces.GetFaceInfo(index).get() != face) ++index;
  return index;
}

}  // namespace

struct Shaper::Font {
  explicit Font(const CFaceInfo& face) : file(examples::FontFile::Open(face)) {
    hb_blob_t* blob = hb_blob_create_from_file(file->Path().c_str());
    hb_face_t* opened = hb_face_create(blob, file->Index() & 0xFFFF);
    font = hb_font_create(opened);
    if (const unsigned int instance = file->Index() >> kNamedInstanceShift) {
      hb_font_set_var_named_instance(font, instance - 1);
    }
    unitsPerEm = hb_face_get_upem(opened);
    hb_face_destroy(opened);
    hb_blob_destroy(blob);
  }
  Font(const Font&) = delete;
  Font& operator=(const Font&) = delete;
  ~Font() { hb_font_destroy(font); }

  std::shared_ptr<const examples::FontFile> file;
  hb_font_t* font = nullptr;
  double unitsPerEm = 1.0;
};

Shaper::Shaper() = default;
Shaper::~Shaper() = default;

Shaper::Font& Shaper::FontOf(const CFaceInfo& face) {
  std::unique_ptr<Font>& font = fonts_[&face];
  if (font == nullptr) font = std::make_unique<Font>(face);
  return *font;
}

ShapedText Shaper::Shape(const TextPiece& piece) {
  ShapedText shaped;
  shaped.face = piece.face;
  if (piece.face->GetFaceType() != CFaceInfo::FACE_TYPE_TRUETYPE) {
    shaped.codes = GString(static_cast<const char*>(WtoA(piece.text.c_str(), kWesternCodePage)));
    shaped.advance = FacePainter::Advance(IndexOf(piece.face.get()), shaped.codes, 1.0);
    return shaped;
  }
  Font& font = FontOf(*piece.face);
  std::vector<std::uint16_t> units;
  for (const wchar_t unit : piece.text) units.push_back(static_cast<std::uint16_t>(unit));
  const std::unique_ptr<hb_buffer_t, void (*)(hb_buffer_t*)> buffer(hb_buffer_create(),
                                                                    &hb_buffer_destroy);
  const auto length = static_cast<int>(units.size());
  hb_buffer_add_utf16(buffer.get(), units.data(), length, 0, length);
  hb_buffer_set_direction(buffer.get(), piece.isRightToLeft ? HB_DIRECTION_RTL : HB_DIRECTION_LTR);
  hb_buffer_guess_segment_properties(buffer.get());
  hb_shape(font.font, buffer.get(), nullptr, 0);

  unsigned int count = 0;
  const hb_glyph_info_t* glyphs = hb_buffer_get_glyph_infos(buffer.get(), &count);
  const hb_glyph_position_t* places = hb_buffer_get_glyph_positions(buffer.get(), &count);
  for (unsigned int i = 0; i < count; ++i) {
    const double x = shaped.advance + places[i].x_offset / font.unitsPerEm;
    shaped.glyphs.push_back({glyphs[i].codepoint, Vec2d(x, places[i].y_offset / font.unitsPerEm)});
    shaped.advance += places[i].x_advance / font.unitsPerEm;
  }
  return shaped;
}

void Shaper::Draw(cairo_t* context, const ShapedText& text, const Vec2d& position, double height) {
  if (text.face->GetFaceType() != CFaceInfo::FACE_TYPE_TRUETYPE) {
    painter_.Draw(context, IndexOf(text.face.get()), text.codes, position, height);
    return;
  }
  const Font& font = FontOf(*text.face);
  const FT_Face face = font.file->Handle();
  const FT_Outline_Funcs functions{&MoveTo, &LineTo, &QuadraticTo, &CubicTo, 0, 0};
  cairo_new_path(context);
  for (const ShapedText::Glyph& glyph : text.glyphs) {
    if (FT_Load_Glyph(face, glyph.glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) != 0 ||
        face->glyph->format != FT_GLYPH_FORMAT_OUTLINE) {
      continue;
    }
    Pen pen{context,
            {position.x + height * glyph.position.x, position.y - height * glyph.position.y},
            height / font.unitsPerEm};
    FT_Outline_Decompose(&face->glyph->outline, &functions, &pen);
    cairo_close_path(context);
  }
  cairo_fill(context);
}

}  // namespace vlm::specimen

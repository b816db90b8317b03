#include <velum/platform/detail/OutlineFont.h>

#include <velum/platform/detail/CodePages.h>
#include <velum/platform/detail/FontTables.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_ADVANCES_H
#include FT_TRUETYPE_TABLES_H
#include FT_TRUETYPE_TAGS_H
#include FT_TYPE1_TABLES_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string_view>

namespace vlm::platform {

namespace {

/// FreeType's library with the lock under which faces are opened and closed.
struct Library {
  Library() {
    if (FT_Init_FreeType(&handle) != 0) handle = nullptr;
  }
  std::mutex lock;
  FT_Library handle = nullptr;
};

Library& TheLibrary() {
  // Never destroyed: faces that live as long as the process are closed after it would be.
  static Library& library = *new Library;
  return library;
}

const std::array<char16_t, 256>& Windows1252() {
  static const std::array<char16_t, 256> characters = [] {
    std::array<char16_t, 256> table{};
    for (unsigned int code = 0; code < 256; ++code) {
      const char byte = static_cast<char>(code);
      wchar_t wide[2] = {};
      NarrowToWide({&byte, 1}, 1252, wide);
      table[code] = static_cast<char16_t>(wide[0]);
    }
    return table;
  }();
  return characters;
}

std::int32_t Clamped(long value, long least = -32767, long most = 32767) {
  return static_cast<std::int32_t>(std::clamp(value, least, most));
}

}  // namespace

std::unique_ptr<OutlineFont> OutlineFont::Open(const std::string& file, unsigned int index) {
  Library& library = TheLibrary();
  std::unique_ptr<OutlineFont> font(new OutlineFont);
  {
    const std::lock_guard lock(library.lock);
    if (!library.handle ||
        FT_New_Face(library.handle, file.c_str(), static_cast<FT_Long>(index), &font->face_) != 0) {
      return nullptr;
    }
  }
  const FT_Face face = font->face_;
  if (!FT_IS_SCALABLE(face)) return nullptr;
  // FreeType chose a Unicode map if there is one, made from glyph names where need be.
  if (!face->charmap || face->charmap->encoding != FT_ENCODING_UNICODE) {
    font->isSymbol_ = FT_Select_Charmap(face, FT_ENCODING_MS_SYMBOL) == 0;
  }
  return font;
}

OutlineFont::~OutlineFont() {
  if (!face_) return;
  const std::lock_guard lock(TheLibrary().lock);
  FT_Done_Face(face_);
}

unsigned int OutlineFont::GlyphOfCharacter(char32_t character) const {
  return FT_Get_Char_Index(face_, character);
}

unsigned int OutlineFont::GlyphOfByte(unsigned char code) const {
  if (!isSymbol_) return GlyphOfCharacter(Windows1252()[code]);
  const unsigned int glyph = GlyphOfCharacter(0xF000u + code);
  return glyph != 0 ? glyph : GlyphOfCharacter(code);
}

bool OutlineFont::Measure(unsigned int glyph, GLYPHMETRICS& metrics) const {
  metrics = {};
  if (FT_Load_Glyph(face_, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) != 0) return false;
  const FT_Glyph_Metrics& measures = face_->glyph->metrics;
  metrics.gmBlackBoxX = static_cast<std::uint32_t>(Clamped(measures.width, 0));
  metrics.gmBlackBoxY = static_cast<std::uint32_t>(Clamped(measures.height, 0));
  metrics.gmptGlyphOrigin = {Clamped(measures.horiBearingX), Clamped(measures.horiBearingY)};
  metrics.gmCellIncX = static_cast<std::int16_t>(Clamped(measures.horiAdvance));
  return true;
}

void OutlineFont::FillCodes(TEXTMETRICA& metrics) const {
  unsigned int first = 256;
  unsigned int last = 0;
  for (unsigned int code = 32; code < 256; ++code) {
    if (GlyphOfByte(static_cast<unsigned char>(code)) == 0) continue;
    first = std::min(first, code);
    last = code;
  }
  if (first > last) {
    first = 32;
    last = 255;
  }
  metrics.tmFirstChar = static_cast<std::uint8_t>(first);
  metrics.tmLastChar = static_cast<std::uint8_t>(last);
  metrics.tmBreakChar = metrics.tmFirstChar;
  metrics.tmDefaultChar = static_cast<std::uint8_t>(first - 1);
}

bool OutlineFont::FillRecord(OUTLINETEXTMETRICA& record) const {
  record = {};
  record.otmSize = sizeof(record);
  record.otmEMSquare = face_->units_per_EM;
  TEXTMETRICA& metrics = record.otmTextMetrics;
  metrics.tmAscent = Clamped(face_->ascender, 0);
  metrics.tmDescent = Clamped(-face_->descender, 0);
  metrics.tmHeight = metrics.tmAscent + metrics.tmDescent;
  metrics.tmInternalLeading = metrics.tmHeight - face_->units_per_EM;
  metrics.tmExternalLeading = Clamped(face_->height - metrics.tmHeight, 0);
  metrics.tmMaxCharWidth = Clamped(face_->max_advance_width, 0);
  FT_Fixed width = 0;
  const bool hasWidth = FT_Get_Advance(face_, GlyphOfByte('x'), FT_LOAD_NO_SCALE, &width) == 0;
  metrics.tmAveCharWidth = hasWidth && width > 0 ? Clamped(width) : metrics.tmMaxCharWidth;
  metrics.tmWeight = (face_->style_flags & FT_STYLE_FLAG_BOLD) != 0 ? 700 : 400;
  metrics.tmItalic = (face_->style_flags & FT_STYLE_FLAG_ITALIC) != 0;
  metrics.tmDigitizedAspectX = 96;
  metrics.tmDigitizedAspectY = 96;
  const bool isFixedPitch = FT_IS_FIXED_WIDTH(face_);
  metrics.tmPitchAndFamily = static_cast<std::uint8_t>(isFixedPitch ? 0x32 : 0x03);
  metrics.tmCharSet = isSymbol_ ? 2 : 0;

  record.otmsCharSlopeRise = 1;
  PS_FontInfoRec info{};
  if (FT_Get_PS_Font_Info(face_, &info) == 0) {
    record.otmItalicAngle = Clamped(info.italic_angle, -90, 90) * 10;
  }
  record.otmAscent = metrics.tmAscent;
  record.otmDescent = -metrics.tmDescent;
  record.otmLineGap = static_cast<std::uint32_t>(metrics.tmExternalLeading);
  record.otmrcFontBox = {Clamped(face_->bbox.xMin), Clamped(face_->bbox.yMax),
                         Clamped(face_->bbox.xMax), Clamped(face_->bbox.yMin)};
  record.otmMacAscent = record.otmAscent;
  record.otmMacDescent = record.otmDescent;
  record.otmMacLineGap = record.otmLineGap;
  // FreeType has the middle of the line, records its upper edge.
  record.otmsUnderscoreSize = Clamped(face_->underline_thickness, 0);
  record.otmsUnderscorePosition =
      Clamped(face_->underline_position + face_->underline_thickness / 2);
  record.otmsStrikeoutSize = static_cast<std::uint32_t>(record.otmsUnderscoreSize);
  record.otmsStrikeoutPosition = metrics.tmAscent / 3;
  if (FT_IS_SFNT(face_)) FillFromOwnTables(record);
  return RecordProblem(record) == nullptr;
}

void OutlineFont::FillFromOwnTables(OUTLINETEXTMETRICA& record) const {
  std::array<std::array<char, 96>, 4> bytes;
  const auto read = [&](std::size_t place, FT_ULong tag) -> std::string_view {
    FT_ULong size = 0;
    if (FT_Load_Sfnt_Table(face_, tag, 0, nullptr, &size) != 0) return {};
    size = std::min<FT_ULong>(size, bytes[place].size());
    auto* const to = reinterpret_cast<FT_Byte*>(bytes[place].data());
    if (FT_Load_Sfnt_Table(face_, tag, 0, to, &size) != 0) return {};
    return {bytes[place].data(), size};
  };
  MeasureTables tables;
  tables.head = read(0, TTAG_head);
  tables.hhea = read(1, TTAG_hhea);
  tables.os2 = read(2, TTAG_OS2);
  tables.post = read(3, TTAG_post);
  FT_ULong size = 0;
  tables.isTrueType = FT_Load_Sfnt_Table(face_, TTAG_glyf, 0, nullptr, &size) == 0;
  FillFromTables(tables, record);
}

}  // namespace vlm::platform

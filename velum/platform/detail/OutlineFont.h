#pragma once

/// \file
/// The glyphs of an outline font.
///
///     const auto font = vlm::platform::OutlineFont::Open(entry.file, entry.index);
///     vlm::GLYPHMETRICS metrics;
///     if (font) font->Measure(font->GlyphOfByte('A'), metrics);

#include <velum/platform/Types.h>

#include <memory>
#include <string>

struct FT_FaceRec_;

namespace vlm::platform {

/// A face opened in FreeType, unscaled: lengths are in design units, unhinted.
///
/// One thread uses an object at a time; different threads may have objects of one file.
class OutlineFont {
 public:
  /// Opens a face, at `index` as `FontEntry` has it; null if it is no outline face or damaged.
  [[nodiscard]] static std::unique_ptr<OutlineFont> Open(const std::string& file,
                                                         unsigned int index);
  OutlineFont(const OutlineFont&) = delete;
  OutlineFont& operator=(const OutlineFont&) = delete;
  ~OutlineFont();

  /// The glyph of a character, 0 if it has none: that is the glyph for what is missing.
  [[nodiscard]] unsigned int GlyphOfCharacter(char32_t character) const;
  /// The glyph of a byte of text: of the character that it is in windows-1252, or in a symbol font
  /// of U+F000 + code.
  [[nodiscard]] unsigned int GlyphOfByte(unsigned char code) const;
  /// Gives size and place of a glyph; false, and 0 for all, if the glyph can't be read.
  bool Measure(unsigned int glyph, GLYPHMETRICS& metrics) const;

  /// Sets the codes of a record: `tmFirstChar` and `tmLastChar` are the lowest and the highest byte
  /// from 32 on that has a glyph, 32 and 255 if none has one; `tmBreakChar` is the lowest, most
  /// often the space; `tmDefaultChar` is the byte below it, which shows the glyph for what is
  /// missing.
  void FillCodes(TEXTMETRICA& metrics) const;
  /// Sets the measures of a record, for files that are not plain OpenType: from those of the usual
  /// tables that the font has, else from FreeType's own numbers. The mean width of a font that does
  /// not tell it is that of its x; no other glyph is measured. False if they make no sense.
  bool FillRecord(OUTLINETEXTMETRICA& record) const;

  /// FreeType's face.
  [[nodiscard]] FT_FaceRec_* Handle() const noexcept { return face_; }

 private:
  OutlineFont() = default;
  void FillFromOwnTables(OUTLINETEXTMETRICA& record) const;

  FT_FaceRec_* face_ = nullptr;
  bool isSymbol_ = false;
};

}  // namespace vlm::platform

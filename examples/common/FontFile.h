#pragma once

/// \file
/// The font file of an outline face, found by fontconfig and opened by FreeType.
///
///     const auto font = vlm::examples::FontFile::Open(*face);
///     FT_Load_Glyph(font->Handle(), font->GlyphOfCode('A'), FT_LOAD_NO_SCALE);

#include <velum/fonts/FaceInfo.h>

#include <memory>
#include <string>

struct FT_FaceRec_;
struct FT_LibraryRec_;

namespace vlm::examples {

/// An open font file. Has identity; one thread uses it at a time. Lengths are in design units.
class FontFile {
 public:
  /// Opens the file of an installed outline face.
  ///
  /// *Errors*: `std::runtime_error` with the name of the face if it has no file that can be read.
  [[nodiscard]] static std::shared_ptr<const FontFile> Open(const CFaceInfo& face);
  FontFile(const FontFile&) = delete;
  FontFile& operator=(const FontFile&) = delete;
  ~FontFile();

  /// The file.
  [[nodiscard]] const std::string& Path() const { return path_; }
  /// Which face of the file it is, as FreeType counts: a named instance, from 1, 16 bits higher.
  [[nodiscard]] unsigned int Index() const { return index_; }
  /// FreeType's face.
  [[nodiscard]] FT_FaceRec_* Handle() const { return face_; }
  /// The glyph of a code as `CFaceInfo` counts them, 0 if there is none: up to 255 a byte of
  /// windows-1252, or in a symbol font of its own set; beyond that a character.
  [[nodiscard]] unsigned int GlyphOfCode(unsigned short code) const;

 private:
  FontFile(std::string path, unsigned int index);

  std::string path_;
  unsigned int index_;
  FT_LibraryRec_* library_ = nullptr;
  FT_FaceRec_* face_ = nullptr;
};

}  // namespace vlm::examples

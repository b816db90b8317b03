#pragma once

/// \file
/// Outline faces of the system.
///
///     vlm::LOGFONTA description{};
///     std::strcpy(description.lfFaceName, "DejaVu Sans");
///     description.lfHeight = 2384;  // the height of its cell, where the em square has 2048 units
///     const vlm::CTrueTypeFaceInfo face(description, "DejaVu Sans");

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/fonts/FaceInfo.h>
#include <velum/platform/Types.h>

#include <vector>

namespace vlm {

namespace platform {
struct FontEntry;
}

/// An outline face of the system, in any format that its fonts have.
///
/// Its numbers are those of the font's own tables, in design units, without hinting. Ownership and
/// threads are those of `CFaceInfo`.
class VELUM_API CTrueTypeFaceInfo : public CFaceInfo {
 public:
  /// The installed face that a description names: of those whose name is `lfFaceName`, in any case,
  /// one of the family if there is any, and of these the one nearest in italic, then in weight,
  /// then in width for its height. The name of the face is `lfFaceName`, and `lfHeight` is the
  /// height of its cell in units of its em square. A weight of 0 is 400, a width of 0 any.
  CTrueTypeFaceInfo(const LOGFONTA& logFont, const GString& familyName);
  ~CTrueTypeFaceInfo() override;

  /// `FACE_TYPE_TRUETYPE`.
  [[nodiscard]] FaceType GetFaceType() const override;
  void GetDefinedGlyphRanges(std::vector<_CharRange>& ranges) const override;

  /// The description.
  [[nodiscard]] const LOGFONTA& GetLogFont() const noexcept { return logFont_; }

 protected:
  const OUTLINETEXTMETRICA* FetchOTM() const override;
  void FetchGlyphMetrics(unsigned short code) const override;
  unsigned int FetchCellHeight() const override;

 private:
  friend class CSystemFaceInfo;
  friend class FontRefDC;

  /// A listed face, whatever other faces are described alike.
  [[gnu::visibility("hidden")]] CTrueTypeFaceInfo(const LOGFONTA& logFont,
                                                  const platform::FontEntry& entry);
  /// The installed face, null if there is none.
  [[gnu::visibility("hidden")]] const platform::FontEntry* GetEntry() const;

  LOGFONTA logFont_;
  const platform::FontEntry* listed_ = nullptr;  // null for a face that users describe
};

}  // namespace vlm

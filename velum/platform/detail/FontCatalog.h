#pragma once

/// \file
/// The outline faces that are installed.
///
///     const auto& catalog = vlm::platform::FontCatalog::Instance();
///     for (const auto& font : catalog.Fonts()) puts(font.familyName.c_str());

#include <velum/platform/Types.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct _FcConfig;

namespace vlm::platform {

/// An installed outline face.
struct FontEntry {
  std::string file;        ///< The font file, as the system spells it.
  unsigned int index = 0;  ///< The face in the file; its named instance, from 1, 16 bits higher.
  std::string familyName;  ///< The family of up to four styles, in English if there is such a name.
  std::string faceName;    ///< The same, at most 31 bytes.
  std::string styleName;   ///< The style in that family.
  std::string fullName;    ///< Family and style.
  double width = 100;      ///< How wide its style is, in percent of a normal one.
  /// The measures in design units; without names, and without the codes, which `OutlineFont` tells.
  /// Those of a named instance are the variable font's, but for weight, slant and the mean width,
  /// which grows as the instance is wider.
  OUTLINETEXTMETRICA record{};
};

/// What a list of fonts that could not be made lacked.
enum class FontCatalogStatus : int {
  kGood = 0,
  kNoConfiguration = 1,  ///< The font service can't be set up.
  kNoFontSet = 2,        ///< It gives no list.
};

/// The scalable outline faces that fontconfig lists, in a configuration of our own.
///
/// Made once and never changed, so that any thread may read it. Faces are in the order of name,
/// family, italic, weight, how far they are from a normal width, file and index. What can't be
/// measured is left out: `Skipped` tells.
class FontCatalog {
 public:
  /// The faces installed when it was first asked for. *Errors*: `std::bad_alloc`.
  [[nodiscard]] static const FontCatalog& Instance();

  /// Reads the present configuration of the system.
  FontCatalog();
  FontCatalog(const FontCatalog&) = delete;
  FontCatalog& operator=(const FontCatalog&) = delete;
  ~FontCatalog();

  /// Whether the list could be made; it is empty if not.
  [[nodiscard]] FontCatalogStatus Status() const noexcept { return status_; }
  /// The faces.
  [[nodiscard]] const std::vector<FontEntry>& Fonts() const noexcept { return fonts_; }
  /// The files of faces that were left out, with the reason; also files that are named as fonts are
  /// but can't be read, if there are not hundreds of them.
  [[nodiscard]] const std::vector<std::string>& Skipped() const noexcept { return skipped_; }

  /// The face that a description names: of those named `lfFaceName`, in any case of ASCII letters,
  /// one of the family `familyName` if there is any, and of these the one nearest in italic, then
  /// in weight, then in the ratio of width to height. A weight of 0 is 400, a width of 0 any. Null
  /// if no face has the name.
  [[nodiscard]] const FontEntry* Find(const LOGFONTA& description,
                                      std::string_view familyName = {}) const noexcept;

  /// fontconfig's configuration, null if it can't be set up. Nobody changes it.
  [[nodiscard]] _FcConfig* Configuration() const noexcept { return configuration_; }

 private:
  FontCatalogStatus status_ = FontCatalogStatus::kGood;
  _FcConfig* configuration_ = nullptr;
  std::vector<FontEntry> fonts_;
  std::vector<std::string> skipped_;
};

/// The bytes of a UTF-8 name that fit into `lfFaceName`: at most 31, no character cut.
[[nodiscard]] std::size_t FaceNameBytes(std::string_view name) noexcept;

}  // namespace vlm::platform

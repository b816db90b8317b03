#pragma once

/// \file
/// The symbol sets: the library's own faces of plain lines.
///
///     (void)vlm::CSystemFaceInfo::GetInstance();
///     for (const vlm::CSYMSetInfo& set : vlm::g_SYMSetList) puts(set.GetFaceName().c_str());

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/fonts/StrokedFace.h>

#include <memory>
#include <vector>

namespace vlm {

/// A symbol set: its names, what kind of face it is, and the face once it was asked for.
///
/// A value. Copies share the face, and may be made while other threads ask for it.
class VELUM_API CSYMSetInfo {
 public:
  /// No set: empty names, and 0 for all else.
  CSYMSetInfo() noexcept;
  /// A set whose face is not read yet. `pitchAndFamily` is 1 for a fixed and 2 for a variable
  /// pitch, plus 0x10 for a roman, 0x20 for a swiss, 0x40 for a script and 0x50 for a decorative
  /// family; `charSet` is 0 for text and 2 for symbols; `index` is the place in `g_SYMSetList`.
  CSYMSetInfo(const GString& faceName, const GString& fileName, unsigned char pitchAndFamily,
              unsigned char charSet, unsigned int index);
  /// Shares the face of another one.
  CSYMSetInfo(const CSYMSetInfo& other);
  /// Shares the face of another one.
  CSYMSetInfo& operator=(const CSYMSetInfo& other);
  ~CSYMSetInfo();

  /// The name of the face.
  [[nodiscard]] const GString& GetFaceName() const noexcept { return faceName_; }
  /// The name of the file, without its folder.
  [[nodiscard]] const GString& GetFileName() const noexcept { return fileName_; }
  /// Pitch and family, as the constructor tells.
  [[nodiscard]] unsigned char GetPitchAndFamily() const noexcept { return pitchAndFamily_; }
  /// 0 for text, 2 for symbols.
  [[nodiscard]] unsigned char GetCharSet() const noexcept { return charSet_; }
  /// The place in `g_SYMSetList`.
  [[nodiscard]] unsigned int GetIndex() const noexcept { return index_; }

  /// The face, read from its file by the first call. Any thread may call it.
  ///
  /// *Errors*: those of `CStrokedFace`; the next call tries again.
  [[nodiscard]] std::shared_ptr<const CStrokedFace> GetStrokedFacePtr() const;

 private:
  GString faceName_;
  GString fileName_;
  unsigned char pitchAndFamily_ = 0;
  unsigned char charSet_ = 0;
  unsigned int index_ = 0;
  mutable std::shared_ptr<const CStrokedFace> face_;
};

/// The 28 symbol sets; empty until the list of faces is made.
VELUM_API extern const std::vector<CSYMSetInfo>& g_SYMSetList;

}  // namespace vlm

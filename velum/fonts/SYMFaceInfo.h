#pragma once

/// \file
/// Symbol sets as faces.
///
///     (void)vlm::CSystemFaceInfo::GetInstance();  // fills the list of sets
///     const vlm::CSYMFaceInfo face(0);

#include <velum/core/Api.h>
#include <velum/fonts/FaceInfo.h>
#include <velum/platform/Types.h>

#include <vector>

namespace vlm {

/// A symbol set as a face. Ownership and threads are those of `CFaceInfo`.
class VELUM_API CSYMFaceInfo : public CFaceInfo {
 public:
  /// The face of the set at an index of `g_SYMSetList`; both of its names are the set's.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for an index that is none.
  explicit CSYMFaceInfo(unsigned int setIndex);
  ~CSYMFaceInfo() override;

  /// `FACE_TYPE_SYM`.
  [[nodiscard]] FaceType GetFaceType() const override;
  /// One range, from the first to the last code.
  void GetDefinedGlyphRanges(std::vector<_CharRange>& ranges) const override;
  /// The place in `g_SYMSetList`.
  [[nodiscard]] unsigned int GetSYMSetIndex() const noexcept { return setIndex_; }

 protected:
  const OUTLINETEXTMETRICA* FetchOTM() const override;
  void FetchGlyphMetrics(unsigned short code) const override;
  unsigned int FetchCellHeight() const override;

 private:
  unsigned int setIndex_;
};

}  // namespace vlm

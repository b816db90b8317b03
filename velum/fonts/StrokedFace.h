#pragma once

/// \file
/// Faces that are drawn with plain lines.
///
///     (void)vlm::CSystemFaceInfo::GetInstance();  // fills the list of sets
///     const auto face = vlm::g_SYMSetList[0].GetStrokedFacePtr();
///     const auto& glyph = face->GetGlyphInfo('A');
///     double left = 0;
///     for (const vlm::Vec2d& point : glyph.vertices) left = std::min(left, point.x);

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/geometry/Vec2.h>
#include <velum/platform/Types.h>

#include <cstdint>
#include <vector>

namespace vlm {

/// The glyphs of a symbol set, as polylines on a grid of small whole numbers.
///
/// An object that never changes once it is made; any number of threads may read it. Lengths are in
/// units of the grid, x goes right and y up, and 0 is the baseline.
///
/// A symbol set is a file of bytes: "SYM", in any case, and then glyphs until it ends. A glyph is
/// its code, the left and the right edge of its cell, the number of its operations, both edges and
/// number signed, and that many operations; a number below 1 makes it blank. An operation is x, y
/// and what to do, signed: 3 moves there, anything else draws a line there. Glyphs stand in any
/// order.
class VELUM_API CStrokedFace {
 public:
  /// A stroke operation, as it stands in the file.
  struct GFESYMOP {
    std::int8_t x;          ///< Where to go.
    std::int8_t y;          ///< Where to go, upwards from the baseline.
    std::int8_t operation;  ///< 3 to move there, all else to draw a line there.
  };

  /// A glyph.
  struct GlyphInfo {
    GLYPHMETRICS metrics{};       ///< Its size and place.
    std::vector<Vec2d> vertices;  ///< The points of its polylines, one polyline after the other.
    std::vector<int> counts;      ///< How many points each polyline has.
  };

  /// Reads the symbol set at an index of `g_SYMSetList`.
  ///
  /// The file lies in the folder "Symbols" beside the running program; or, if both environment
  /// variables `KQSRC` and `KQSUBVER` are set, in the folder
  /// "$KQSRC/Subsystems/$KQSUBVER/Symbol". A file that is no symbol set, or a damaged one, gives a
  /// face without glyphs.
  ///
  /// *Errors*: `ERR_CUSTOM` "Symbol set file: %s\ndoes not exist or is not readable." from
  /// "StrokedFace", with the file's path; `ERR_INVALID_PARAMETER` for an index that is none.
  ///
  /// *Cost*: reads the file once, in memory of the size of its glyphs.
  explicit CStrokedFace(unsigned int setIndex);
  CStrokedFace(const CStrokedFace&) = delete;
  CStrokedFace& operator=(const CStrokedFace&) = delete;
  ~CStrokedFace();

  /// The glyph of a code, that of `GetDefaultChar` for a code that lies outside of the face, and an
  /// empty glyph in a face without glyphs.
  ///
  /// *Lifetime*: that of the face.
  [[nodiscard]] const GlyphInfo& GetGlyphInfo(unsigned int code) const noexcept;
  /// How many glyphs there are from the first to the last code, blank ones included.
  [[nodiscard]] unsigned int GetGlyphInfoListSize() const noexcept {
    return static_cast<unsigned int>(glyphs_.size());
  }

  /// The greatest height above the baseline and the greatest depth below it, together.
  [[nodiscard]] int GetEmSize() const noexcept { return emSize_; }
  /// The greatest height of a point above the baseline, at least 0.
  [[nodiscard]] int GetMaxAscender() const noexcept { return maxAscender_; }
  /// The greatest depth of a point below the baseline, at least 0.
  [[nodiscard]] int GetMaxDescender() const noexcept { return maxDescender_; }
  /// The mean width of the glyphs; blank ones count, but their widths do not.
  [[nodiscard]] int GetAvgCharWidth() const noexcept { return avgCharWidth_; }
  /// The greatest width of a glyph that is not blank.
  [[nodiscard]] int GetMaxCharWidth() const noexcept { return maxCharWidth_; }
  /// The em size over the mean width; 1 where one of them is 0.
  [[nodiscard]] double GetAspect() const noexcept { return aspect_; }
  /// The name of the symbol set.
  [[nodiscard]] const GString& GetFaceName() const noexcept { return faceName_; }
  /// The lowest code.
  [[nodiscard]] unsigned short GetFirstChar() const noexcept { return firstChar_; }
  /// The highest code.
  [[nodiscard]] unsigned short GetLastChar() const noexcept { return lastChar_; }
  /// The code that is shown for one outside of the face: the lowest of a blank glyph, or the first.
  [[nodiscard]] unsigned short GetDefaultChar() const noexcept { return defaultChar_; }
  /// The code that parts words: the same.
  [[nodiscard]] unsigned short GetBreakChar() const noexcept { return breakChar_; }

 private:
  int emSize_ = 0;
  int maxAscender_ = 0;
  int maxDescender_ = 0;
  int avgCharWidth_ = 0;
  int maxCharWidth_ = 0;
  double aspect_ = 0;
  GString faceName_;
  unsigned short firstChar_ = 0;
  unsigned short lastChar_ = 0;
  unsigned short defaultChar_ = 0;
  unsigned short breakChar_ = 0;
  std::vector<GlyphInfo> glyphs_;
};

}  // namespace vlm

#pragma once

/// \file
/// What a face measures, whether it is an outline face of the system or a symbol set.
///
///     const auto& faces = vlm::CSystemFaceInfo::GetInstance();
///     const auto face = faces.GetDefVariablePitchFaceInfo();
///     const double width = face->GetEmToHeight(12.0) * face->CalcEmExtent("Depth (m)");

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/platform/Types.h>

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace vlm {

/// The one view of a face: its names, its outline text metrics, the metrics of its glyphs, and what
/// a text measures in it.
///
/// An object with identity, cheap to make: metrics are fetched when they are first asked for, and
/// never change then. The list of faces shares it as `std::shared_ptr<const CFaceInfo>`. Any number
/// of threads may ask one object.
///
/// *Units*. Lengths are in units of the em square (`GetEmSize`). A record has x to the right and y
/// up from the baseline; `CalcEmBounds` has y down.
///
/// *Text*. A text is 8-bit: each byte is a code. In an outline face a byte from 32 to 126 stands
/// for its ASCII character, and one above 127 for its character of windows-1252, the western set:
/// 0x80 is the euro sign, 0xE9 an "é". The five bytes that windows-1252 leaves open stand for the
/// controls of the same number. In a symbol font, one whose characters are numbers and no letters,
/// byte b is the character U+F000 + b. Text in another encoding is converted first, see `WtoA`.
///
/// *Failure*. A face that can't be asked never raises. It reports that once in the log, and from
/// then on answers with the numbers of the default face of variable pitch.
class VELUM_API CFaceInfo {
 public:
  /// Kinds of faces, as bits.
  enum FaceType : unsigned int {
    FACE_TYPE_TRUETYPE = 1,  ///< an outline face of the system
    FACE_TYPE_SYM = 2        ///< a symbol set
  };
  /// A run of codes that have glyphs.
  struct _CharRange {
    unsigned short first;  ///< the first code
    unsigned short last;   ///< the last code
  };
  /// The highest code that the list of glyphs holds; others are fetched one by one.
  static constexpr unsigned short GMListMax = 255;

  CFaceInfo(const CFaceInfo&) = delete;
  CFaceInfo& operator=(const CFaceInfo&) = delete;
  virtual ~CFaceInfo();

  /// What kind of face this is.
  [[nodiscard]] virtual FaceType GetFaceType() const = 0;
  /// Gives the runs of codes from `GetFirstChar` to `GetLastChar` that have glyphs of their own, in
  /// place of what `ranges` held. Empty for an outline face that can't be opened.
  virtual void GetDefinedGlyphRanges(std::vector<_CharRange>& ranges) const = 0;

  /// The name of the family, in UTF-8.
  [[nodiscard]] GString GetFamilyName() const;
  /// The name by which the face is matched, in UTF-8: at most 31 bytes for an outline face.
  [[nodiscard]] GString GetFaceName() const;

  /// The outline text metrics.
  ///
  /// *Cost*: the first call opens the face. *Lifetime*: that of the face.
  [[nodiscard]] const OUTLINETEXTMETRICA& GetOTM() const;
  /// The units of the em square.
  [[nodiscard]] unsigned int GetEmSize() const;
  /// The height of the cell.
  [[nodiscard]] unsigned int GetCellHeight() const;
  /// The height of the cell over the mean width of the glyphs, times the digitized aspect; 1 where
  /// a width is 0.
  [[nodiscard]] double GetAspect() const;
  /// The factor from units of the em square to those of an em of the given height.
  [[nodiscard]] double GetEmToHeight(double height) const;
  /// The lowest code: the first that has a glyph, or the default one if that is lower.
  [[nodiscard]] unsigned short GetFirstChar() const;
  /// The highest code.
  [[nodiscard]] unsigned short GetLastChar() const;
  /// The code that is shown for one that is missing.
  [[nodiscard]] unsigned short GetDefaultChar() const;
  /// The code itself if it lies from the first to the last one; else the default one.
  [[nodiscard]] unsigned short MapCharCode(unsigned short code) const;

  /// The size and place of a glyph. A code outside of the face gives those of the default one.
  ///
  /// *Cost*: the first call measures all glyphs up to `GMListMax`. *Lifetime*: that of the face.
  [[nodiscard]] const GLYPHMETRICS& GetGlyphMetrics(unsigned short code) const;

  /// The width of a text: the sum of its glyphs' `gmCellIncX`, 0 for an empty text.
  ///
  /// *Cost*: linear; a look at a table for each byte.
  [[nodiscard]] unsigned int CalcEmExtent(const GString& text) const;
  /// The box around a text, with y down and the left end of the baseline at (0, 0).
  ///
  /// It is as high as the cell, and deeper if an underscore needs that. To the left and right it
  /// holds the ink of the first and of the last glyph where they reach beyond their cells.
  [[nodiscard]] RECT CalcEmBounds(const GString& text) const;
  /// The ends of a line through a text.
  void CalcEmStrikeoutLine(const GString& text, POINT& from, POINT& to) const;
  /// The ends of a line below a text.
  void CalcEmUnderscoreLine(const GString& text, POINT& from, POINT& to) const;

 protected:
  /// Reads the record of a face with all that follows it; empty if that can't be had.
  using OTMReader = std::vector<unsigned char>(const CFaceInfo& face);
  /// Appends the metrics of the codes from `first` to `last`; false if they can't be had.
  using GlyphReader = bool(const CFaceInfo& face, unsigned short first, unsigned short last,
                           std::vector<GLYPHMETRICS>& metrics);

  /// A face of these names, nothing fetched yet.
  CFaceInfo(const GString& familyName, const GString& faceName);

  /// Gives the outline text metrics, those of the default face where they can't be had. Never null.
  virtual const OUTLINETEXTMETRICA* FetchOTM() const = 0;
  /// Fills the list of glyphs, or for a code above `GMListMax` the entry of that code.
  virtual void FetchGlyphMetrics(unsigned short code) const = 0;
  /// Gives the height of the cell.
  virtual unsigned int FetchCellHeight() const = 0;

  /// Does what `FetchOTM` promises: reads the record under the lock of the metrics unless it was
  /// read before, logs the first failure, and does not try again.
  const OUTLINETEXTMETRICA* CopyOTM(OTMReader* read) const;
  /// Does what `FetchGlyphMetrics` promises: reads under the lock of the glyphs unless that was
  /// done before. A face without a record of its own gets the default face's glyphs.
  void CopyGlyphMetrics(unsigned short code, GlyphReader* read) const;

 private:
  struct Advances;

  [[gnu::visibility("hidden")]] void FetchDefaultGlyphMetrics(unsigned short code) const;
  [[gnu::visibility("hidden")]] const Advances& GetAdvances() const;

  GString familyName_;
  GString faceName_;
  mutable std::vector<unsigned char> otm_;
  mutable std::vector<GLYPHMETRICS> glyphList_;
  mutable std::map<unsigned short, GLYPHMETRICS> glyphMap_;
  mutable std::atomic<bool> listLoaded_{false};
  mutable std::mutex glyphLock_;
  mutable std::mutex metricsLock_;
  mutable bool metricsFailed_ = false;
  // What the lists above hold once it is there, for readers that take no lock.
  mutable std::atomic<const OUTLINETEXTMETRICA*> record_{nullptr};
  mutable std::atomic<const Advances*> advances_{nullptr};
};

/// True if the face name of `a` stands before that of `b`, in the order of their bytes. Neither is
/// null.
[[nodiscard]] VELUM_API bool FaceNameLess(std::shared_ptr<const CFaceInfo> a,
                                          std::shared_ptr<const CFaceInfo> b);

/// True if all fields are equal, and the names are the same text, case included.
[[nodiscard]] VELUM_API bool LOGFONTSAreEqual(const LOGFONTA& a, const LOGFONTA& b) noexcept;

}  // namespace vlm

#pragma once

/// \file
/// The list of all faces, and the one that answers a description best.
///
///     auto& faces = vlm::CSystemFaceInfo::GetInstance();
///     const int index = faces.Match("DejaVu Sans", 700, 0, 0, 0, 7, 65535);
///     const auto face = faces.GetFaceInfo(static_cast<unsigned int>(index));

#include <velum/core/Api.h>
#include <velum/core/GString.h>
#include <velum/core/Singleton.h>
#include <velum/fonts/FaceInfo.h>

#include <memory>
#include <mutex>
#include <vector>

namespace vlm {

namespace platform {
struct FontEntry;
}

/// What `CSystemFaceInfo::Match` compares, as bits.
enum FaceMatchFlags : int {
  FACE_MATCH_NAME = 1,     ///< the name of the face
  FACE_MATCH_WEIGHT = 2,   ///< the weight
  FACE_MATCH_ITALIC = 4,   ///< italic or not
  FACE_MATCH_CHARSET = 8,  ///< the character set
  FACE_MATCH_PITCH = 16,   ///< fixed or variable pitch
  FACE_MATCH_FAMILY = 32   ///< the family: roman, swiss, ...
};

/// All faces that the process can use: the outline faces of the system and the 28 symbol sets, in
/// the order of their names.
///
/// One object for the process, made when it is first asked for; a font that is installed later is
/// not seen. It owns the faces and shares them. Any number of threads may ask it; setting the flags
/// of the matchers is for one thread at a time.
///
/// Only scalable outline faces are listed. A variable font gives its named instances and a
/// collection each of its faces. A font file that is damaged is left out, with a line in the log.
/// Faces of the same name stand upright before italic, light before bold, and those of normal width
/// before others.
class VELUM_API CSystemFaceInfo : public Singleton<CSystemFaceInfo> {
 public:
  /// The index of the face that answers a description best, -1 if no face is of an accepted type.
  ///
  /// Only faces whose `GetFaceType` has a bit in `faceTypeFlags` take part. `matchFlags` is a sum
  /// of `FaceMatchFlags`; `CalcMatchValue` tells how well a face answers.
  /// - An empty name gives a default face: that of variable pitch, or with bit 16 of `matchFlags`
  ///   set and bit 0 of `pitchAndFamily` clear, that of fixed pitch.
  /// - The same question as before, the name in any case, gives the same answer at once.
  /// - If names count, faces whose name is `faceName`, case included, are looked at first, and one
  ///   that answers in full is taken.
  /// - Otherwise the face of the greatest value is taken: among equals a default face, and else the
  ///   first.
  ///
  /// A name of more than 31 bytes, which no face name has, is compared with those of families.
  ///
  /// *Cost*: a comparison for the same question, logarithmic for a name that is there, else linear
  /// in the number of faces. No face is opened.
  [[nodiscard]] int Match(const GString& faceName, long weight, unsigned char italic,
                          unsigned char charset, unsigned char pitchAndFamily, int matchFlags,
                          unsigned int faceTypeFlags);

  /// How well a face answers a description, 1500 at best: the sum of
  /// - 400 if `charset` is the face's;
  /// - 300 if `faceName` is the face's, or longer than 31 bytes and its family's, in any case;
  /// - 300 if bit 0 of `pitchAndFamily` is that of the face's `tmPitchAndFamily`;
  /// - 300 if the upper four bits of the two are equal;
  /// - up to 100 for the weight, 10 less for each 100 that it differs by, and so less than nothing
  ///   from 1100 on, up to weights of a thousand million;
  /// - 100 if both are italic or neither is.
  ///
  /// What `matchFlags` leaves out counts in full.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for an index that is none.
  [[nodiscard]] int CalcMatchValue(unsigned int index, const GString& faceName, long weight,
                                   unsigned char italic, unsigned char charset,
                                   unsigned char pitchAndFamily, int matchFlags) const;

  /// A face of the list.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for an index that is none.
  [[nodiscard]] std::shared_ptr<const CFaceInfo> GetFaceInfo(unsigned int index) const;
  /// How many faces there are.
  [[nodiscard]] unsigned int GetNumItems() const noexcept;
  /// What answers "Arial" of weight 400 among the outline faces.
  [[nodiscard]] std::shared_ptr<const CFaceInfo> GetDefVariablePitchFaceInfo() const;
  /// What answers "Courier New" of weight 400 among the outline faces.
  [[nodiscard]] std::shared_ptr<const CFaceInfo> GetDefFixedPitchFaceInfo() const;

  /// Keeps the types of faces that the application offers for text; 65535, all of them, at first.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for 0.
  void SetFontMatcherFaceTypeFlags(unsigned int flags);
  /// The types of faces that the application offers for text.
  [[nodiscard]] unsigned int GetFontMatcherFaceTypeFlags() const noexcept;
  /// Keeps the types of faces that the application offers for markers; 65535 at first.
  ///
  /// *Errors*: `ERR_INVALID_PARAMETER` for 0.
  void SetMarkerMatcherFaceTypeFlags(unsigned int flags);
  /// The types of faces that the application offers for markers.
  [[nodiscard]] unsigned int GetMarkerMatcherFaceTypeFlags() const noexcept;

 private:
  friend class Singleton<CSystemFaceInfo>;

  /// A description of a face, as `Match` gets it.
  struct Query {
    GString faceName;
    int matchFlags = 0;
    unsigned int faceTypeFlags = 0;
    long weight = 0;
    unsigned char italic = 0;
    unsigned char charset = 0;
    unsigned char pitchAndFamily = 0;
  };
  /// What is compared of a face.
  struct Features {
    GString name;
    GString familyName;
    unsigned int faceType;
    int weight;
    unsigned char italic;
    unsigned char charset;
    unsigned char pitchAndFamily;
  };

  /// Lists the faces.
  ///
  /// *Errors*: from "SystemFaceInfo", `ERR_CUSTOM` if the fonts of the system can't be had, and
  /// `ERR_INTERNAL` if there are none that can be used.
  [[gnu::visibility("hidden")]] CSystemFaceInfo();
  [[gnu::visibility("hidden")]] ~CSystemFaceInfo();

  [[gnu::visibility("hidden")]] void CollectTrueTypeFaceInfo();
  [[gnu::visibility("hidden")]] void UpdateFaceInfoList(const platform::FontEntry& font);
  [[gnu::visibility("hidden")]] void CollectSYMSetFaceInfo();
  [[gnu::visibility("hidden")]] void SortFaceList();
  [[gnu::visibility("hidden")]] static int CalcMatchValue(const Features& face, const Query& query);
  [[gnu::visibility("hidden")]] bool MatchCachedTypeface(const Query& query) const;
  [[gnu::visibility("hidden")]] int CheckForPerfectMatch(const Query& query) const;
  [[gnu::visibility("hidden")]] int FindBestMatch(const Query& query) const;
  [[gnu::visibility("hidden")]] void CacheTypeface(const Query& query, int result);

  std::vector<std::shared_ptr<const CFaceInfo>> faceList_;
  int defVariablePitchIndex_ = -1;
  int defFixedPitchIndex_ = -1;
  Query lastQuery_;
  int lastResult_ = -1;
  std::mutex lock_;
  unsigned int fontMatcherFaceTypeFlags_ = 65535;
  unsigned int markerMatcherFaceTypeFlags_ = 65535;
  // Beside the list, in its order, so that a search for the best face goes through memory in a
  // line.
  std::vector<Features> features_;
};

extern template class Singleton<CSystemFaceInfo>;

}  // namespace vlm

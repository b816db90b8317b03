#include <velum/fonts/SystemFaceInfo.h>

#include <velum/core/Exception.h>
#include <velum/core/StringCompare.h>
#include <velum/diagnostics/GdiPlusStart.h>
#include <velum/diagnostics/Logger.h>
#include <velum/diagnostics/detail/QuietLog.h>
#include <velum/fonts/SYMFaceInfo.h>
#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/TrueTypeFaceInfo.h>
#include <velum/fonts/detail/SymbolSetTable.h>
#include <velum/platform/detail/FontCatalog.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <numeric>
#include <string>
#include <utility>

namespace vlm {

namespace {

constexpr char kSource[] = "SystemFaceInfo";
/// The value of a face that answers in full.
constexpr int kFullValue = 1500;

/// The part of a name that a face's name can have.
GString CutName(const GString& name) {
  return GString(name.String().substr(0, platform::FaceNameBytes(name.String())));
}

/// How a face is asked for by its em square.
LOGFONTA Describe(const platform::FontEntry& font) {
  const TEXTMETRICA& metrics = font.record.otmTextMetrics;
  LOGFONTA description{};
  description.lfHeight = metrics.tmHeight;
  description.lfWidth = metrics.tmAveCharWidth;  // outline faces have square units
  description.lfWeight = metrics.tmWeight;
  description.lfItalic = metrics.tmItalic;
  description.lfCharSet = metrics.tmCharSet;
  description.lfOutPrecision = 3;   // strokes, as lists of outline faces say
  description.lfClipPrecision = 2;  // by strokes
  description.lfQuality = 1;        // draft
  // Bit 0 of a record is set for a variable pitch; a description has 1 for fixed, 2 for variable.
  description.lfPitchAndFamily = static_cast<std::uint8_t>(
      (metrics.tmPitchAndFamily & 0xF0) | ((metrics.tmPitchAndFamily & 1) ? 2 : 1));
  std::memcpy(description.lfFaceName, font.faceName.data(), font.faceName.size());
  return description;
}

}  // namespace

template class Singleton<CSystemFaceInfo>;

CSystemFaceInfo::CSystemFaceInfo() {
  CollectTrueTypeFaceInfo();
  CollectSYMSetFaceInfo();
  SortFaceList();
  defVariablePitchIndex_ = Match("Arial", 400, 0, 0, 0, FACE_MATCH_NAME | FACE_MATCH_WEIGHT,
                                 CFaceInfo::FACE_TYPE_TRUETYPE);
  defFixedPitchIndex_ = Match("Courier New", 400, 0, 0, 0, FACE_MATCH_NAME | FACE_MATCH_WEIGHT,
                              CFaceInfo::FACE_TYPE_TRUETYPE);
}

CSystemFaceInfo::~CSystemFaceInfo() = default;

void CSystemFaceInfo::CollectTrueTypeFaceInfo() {
  const CStartGdiPlus started;
  const platform::FontCatalog& catalog = platform::FontCatalog::Instance();
  const auto status = static_cast<int>(catalog.Status());
  if (catalog.Status() == platform::FontCatalogStatus::kNoConfiguration) {
    ThrowErrorImpl(kSource, __LINE__, ERR_CUSTOM,
                   "Can't construct InstalledFontCollection.\nError code = %d", status);
  }
  if (catalog.Status() == platform::FontCatalogStatus::kNoFontSet) {
    ThrowErrorImpl(kSource, __LINE__, ERR_CUSTOM,
                   "InstalledFontCollection::GetFamilyCount failed.\nError code = %d", status);
  }
  for (const std::string& skipped : catalog.Skipped()) {
    detail::LogQuietly(LogFailure, "CSystemFaceInfo: Left out the font %s", skipped.c_str());
  }
  for (const platform::FontEntry& font : catalog.Fonts()) {
    UpdateFaceInfoList(font);
  }
  if (faceList_.empty()) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
}

void CSystemFaceInfo::UpdateFaceInfoList(const platform::FontEntry& font) {
  // The catalog holds no face without an em square, a height and a width.
  const TEXTMETRICA& metrics = font.record.otmTextMetrics;
  faceList_.push_back(
      std::shared_ptr<const CTrueTypeFaceInfo>(new CTrueTypeFaceInfo(Describe(font), font)));
  features_.push_back({font.faceName, font.familyName, CFaceInfo::FACE_TYPE_TRUETYPE,
                       metrics.tmWeight, metrics.tmItalic, metrics.tmCharSet,
                       metrics.tmPitchAndFamily});
}

void CSystemFaceInfo::CollectSYMSetFaceInfo() {
  detail::FillSymbolSetList();
  for (const CSYMSetInfo& set : g_SYMSetList) {
    faceList_.push_back(std::make_shared<const CSYMFaceInfo>(set.GetIndex()));
    // What its metrics will say; the set's file is read when they are asked for.
    features_.push_back({set.GetFaceName(), set.GetFaceName(), CFaceInfo::FACE_TYPE_SYM, 400, 0,
                         set.GetCharSet(), set.GetPitchAndFamily()});
  }
}

void CSystemFaceInfo::SortFaceList() {
  std::vector<std::size_t> order(faceList_.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
    return FaceNameLess(faceList_[a], faceList_[b]);
  });
  std::vector<std::shared_ptr<const CFaceInfo>> faces;
  std::vector<Features> features;
  for (const std::size_t at : order) {
    faces.push_back(std::move(faceList_[at]));
    features.push_back(std::move(features_[at]));
  }
  faceList_ = std::move(faces);
  features_ = std::move(features);
}

int CSystemFaceInfo::CalcMatchValue(const Features& face, const Query& query) {
  const auto term = [&](int flag, int value, bool given) {
    return (query.matchFlags & flag) == 0 || given ? value : 0;
  };
  const auto differ = static_cast<unsigned int>(face.pitchAndFamily ^ query.pitchAndFamily);
  int value = term(FACE_MATCH_CHARSET, 400, face.charset == query.charset) +
              term(FACE_MATCH_PITCH, 300, (differ & 1) == 0) +
              term(FACE_MATCH_FAMILY, 300, (differ & 0xF0) == 0) +
              term(FACE_MATCH_ITALIC, 100, (face.italic != 0) == (query.italic != 0));
  if ((query.matchFlags & FACE_MATCH_WEIGHT) == 0) {
    value += 100;
  } else {
    // Far beyond any weight of a face, so that nothing overflows.
    const long weight = std::clamp(query.weight, -1000000000L, 1000000000L);
    value += static_cast<int>(10 * (10 - std::labs(face.weight - weight) / 100));
  }
  const auto sameName = [&] {
    // Longer than face names can be, it is a family's. Folding keeps the number of bytes.
    const bool isLong = query.faceName.size() >= sizeof(LOGFONTA::lfFaceName);
    const GString& name = isLong ? face.familyName : face.name;
    return name.size() == query.faceName.size() && StringEquivalent()(name, query.faceName);
  };
  return value +
         term(FACE_MATCH_NAME, 300, (query.matchFlags & FACE_MATCH_NAME) == 0 || sameName());
}

int CSystemFaceInfo::CalcMatchValue(unsigned int index, const GString& faceName, long weight,
                                    unsigned char italic, unsigned char charset,
                                    unsigned char pitchAndFamily, int matchFlags) const {
  if (index >= features_.size()) ThrowErrorImpl(kSource, __LINE__, ERR_INVALID_PARAMETER);
  return CalcMatchValue(features_[index],
                        {faceName, matchFlags, 0, weight, italic, charset, pitchAndFamily});
}

int CSystemFaceInfo::Match(const GString& faceName, long weight, unsigned char italic,
                           unsigned char charset, unsigned char pitchAndFamily, int matchFlags,
                           unsigned int faceTypeFlags) {
  const std::lock_guard lock(lock_);
  if (faceName.empty()) {
    const bool isVariable = (matchFlags & FACE_MATCH_PITCH) == 0 || (pitchAndFamily & 1) != 0;
    return isVariable ? defVariablePitchIndex_ : defFixedPitchIndex_;
  }
  const Query query{faceName, matchFlags, faceTypeFlags, weight, italic, charset, pitchAndFamily};
  if (MatchCachedTypeface(query)) return lastResult_;
  int result = CheckForPerfectMatch(query);
  if (result < 0) result = FindBestMatch(query);
  CacheTypeface(query, result);
  return result;
}

bool CSystemFaceInfo::MatchCachedTypeface(const Query& query) const {
  const Query& last = lastQuery_;
  return query.matchFlags == last.matchFlags && query.faceTypeFlags == last.faceTypeFlags &&
         query.weight == last.weight && query.italic == last.italic &&
         query.charset == last.charset && query.pitchAndFamily == last.pitchAndFamily &&
         StringEquivalent()(query.faceName, last.faceName);
}

int CSystemFaceInfo::CheckForPerfectMatch(const Query& query) const {
  if ((query.matchFlags & FACE_MATCH_NAME) == 0) return -1;
  const GString cut = CutName(query.faceName);
  const char* const name = cut.c_str();
  auto face = std::lower_bound(features_.begin(), features_.end(), name,
                               [](const Features& features, const char* text) {
                                 return std::strcmp(features.name.c_str(), text) < 0;
                               });
  for (; face != features_.end() && std::strcmp(face->name.c_str(), name) == 0; ++face) {
    if ((face->faceType & query.faceTypeFlags) != 0 && CalcMatchValue(*face, query) == kFullValue) {
      return static_cast<int>(face - features_.begin());
    }
  }
  return -1;
}

int CSystemFaceInfo::FindBestMatch(const Query& query) const {
  int best = -1;
  int bestValue = std::numeric_limits<int>::min();
  for (std::size_t i = 0; i < features_.size() && bestValue < kFullValue; ++i) {
    if ((features_[i].faceType & query.faceTypeFlags) == 0) continue;
    const int index = static_cast<int>(i);
    const int value = CalcMatchValue(features_[i], query);
    const bool isDefault = index == defVariablePitchIndex_ || index == defFixedPitchIndex_;
    if (value > bestValue || (value == bestValue && isDefault)) {
      best = index;
      bestValue = value;
    }
  }
  return best;
}

void CSystemFaceInfo::CacheTypeface(const Query& query, int result) {
  lastQuery_ = query;
  lastResult_ = result;
}

std::shared_ptr<const CFaceInfo> CSystemFaceInfo::GetFaceInfo(unsigned int index) const {
  if (index >= faceList_.size()) ThrowErrorImpl(kSource, __LINE__, ERR_INVALID_PARAMETER);
  return faceList_[index];
}

unsigned int CSystemFaceInfo::GetNumItems() const noexcept {
  return static_cast<unsigned int>(faceList_.size());
}

std::shared_ptr<const CFaceInfo> CSystemFaceInfo::GetDefVariablePitchFaceInfo() const {
  return GetFaceInfo(static_cast<unsigned int>(defVariablePitchIndex_));
}

std::shared_ptr<const CFaceInfo> CSystemFaceInfo::GetDefFixedPitchFaceInfo() const {
  return GetFaceInfo(static_cast<unsigned int>(defFixedPitchIndex_));
}

void CSystemFaceInfo::SetFontMatcherFaceTypeFlags(unsigned int flags) {
  if (flags == 0) ThrowErrorImpl(kSource, __LINE__, ERR_INVALID_PARAMETER);
  fontMatcherFaceTypeFlags_ = flags;
}

unsigned int CSystemFaceInfo::GetFontMatcherFaceTypeFlags() const noexcept {
  return fontMatcherFaceTypeFlags_;
}

void CSystemFaceInfo::SetMarkerMatcherFaceTypeFlags(unsigned int flags) {
  if (flags == 0) ThrowErrorImpl(kSource, __LINE__, ERR_INVALID_PARAMETER);
  markerMatcherFaceTypeFlags_ = flags;
}

unsigned int CSystemFaceInfo::GetMarkerMatcherFaceTypeFlags() const noexcept {
  return markerMatcherFaceTypeFlags_;
}

}  // namespace vlm

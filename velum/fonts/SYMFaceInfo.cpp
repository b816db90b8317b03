#include <velum/fonts/SYMFaceInfo.h>

#include <velum/core/Exception.h>
#include <velum/fonts/StrokedFace.h>
#include <velum/fonts/SymbolSets.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>

namespace vlm {

namespace {

const CSYMSetInfo& SetAt(unsigned int index) {
  if (index >= g_SYMSetList.size()) {
    ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INVALID_PARAMETER);
  }
  return g_SYMSetList[index];
}

const CSYMSetInfo& SetOf(const CFaceInfo& face) {
  return SetAt(static_cast<const CSYMFaceInfo&>(face).GetSYMSetIndex());
}

/// The face of a set; null if its file is missing, damaged or without a size.
std::shared_ptr<const CStrokedFace> StrokedFaceOf(const CFaceInfo& face) {
  try {
    auto stroked = SetOf(face).GetStrokedFacePtr();
    if (stroked->GetGlyphInfoListSize() == 0 || stroked->GetEmSize() == 0) return nullptr;
    return stroked;
  } catch (const Exception&) {
    return nullptr;
  }
}

std::vector<unsigned char> ReadRecord(const CFaceInfo& face) {
  const auto stroked = StrokedFaceOf(face);
  if (!stroked) return {};
  const CSYMSetInfo& set = SetOf(face);
  OUTLINETEXTMETRICA record{};
  record.otmSize = sizeof(record);
  record.otmEMSquare = static_cast<std::uint32_t>(stroked->GetEmSize());
  TEXTMETRICA& metrics = record.otmTextMetrics;
  metrics.tmHeight = stroked->GetEmSize();
  metrics.tmAscent = stroked->GetMaxAscender();
  metrics.tmDescent = stroked->GetMaxDescender();
  metrics.tmAveCharWidth = stroked->GetAvgCharWidth();
  metrics.tmMaxCharWidth = stroked->GetMaxCharWidth();
  metrics.tmWeight = 400;
  // What is very wide for its height has a smaller X, so that Y fits.
  double aspectX = 100000000;
  while (std::abs(aspectX / stroked->GetAspect()) > 2000000000) aspectX /= 10;
  metrics.tmDigitizedAspectX = static_cast<std::int32_t>(aspectX);
  metrics.tmDigitizedAspectY =
      static_cast<std::int32_t>(std::lround(aspectX / stroked->GetAspect()));
  metrics.tmFirstChar = static_cast<std::uint8_t>(stroked->GetFirstChar());
  metrics.tmLastChar = static_cast<std::uint8_t>(stroked->GetLastChar());
  metrics.tmDefaultChar = static_cast<std::uint8_t>(stroked->GetDefaultChar());
  metrics.tmBreakChar = static_cast<std::uint8_t>(stroked->GetBreakChar());
  metrics.tmPitchAndFamily = set.GetPitchAndFamily();
  metrics.tmCharSet = set.GetCharSet();
  record.otmItalicAngle = -150;
  record.otmusMinimumPPEM = 5;
  record.otmsStrikeoutSize = 1;
  record.otmsStrikeoutPosition = stroked->GetMaxAscender() / 3;
  record.otmsUnderscoreSize = 1;
  record.otmsUnderscorePosition = stroked->GetMaxDescender() / 4 - stroked->GetMaxDescender();
  std::vector<unsigned char> bytes(sizeof(record));
  std::memcpy(bytes.data(), &record, sizeof(record));
  return bytes;
}

bool ReadGlyphs(const CFaceInfo& face, unsigned short first, unsigned short last,
                std::vector<GLYPHMETRICS>& metrics) {
  const auto stroked = StrokedFaceOf(face);
  if (!stroked) return false;
  for (unsigned int code = first; code <= last; ++code) {
    metrics.push_back(stroked->GetGlyphInfo(code).metrics);
  }
  return true;
}

}  // namespace

CSYMFaceInfo::CSYMFaceInfo(unsigned int setIndex)
    : CFaceInfo(SetAt(setIndex).GetFaceName(), SetAt(setIndex).GetFaceName()),
      setIndex_(setIndex) {}

CSYMFaceInfo::~CSYMFaceInfo() = default;

CFaceInfo::FaceType CSYMFaceInfo::GetFaceType() const { return FACE_TYPE_SYM; }

void CSYMFaceInfo::GetDefinedGlyphRanges(std::vector<_CharRange>& ranges) const {
  ranges.assign(1, {GetFirstChar(), GetLastChar()});
}

const OUTLINETEXTMETRICA* CSYMFaceInfo::FetchOTM() const { return CopyOTM(&ReadRecord); }

void CSYMFaceInfo::FetchGlyphMetrics(unsigned short code) const {
  CopyGlyphMetrics(code, &ReadGlyphs);
}

unsigned int CSYMFaceInfo::FetchCellHeight() const {
  // The em size, but for a set that answers with the default face.
  return static_cast<unsigned int>(GetOTM().otmTextMetrics.tmHeight);
}

}  // namespace vlm

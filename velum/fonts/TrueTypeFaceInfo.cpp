#include <velum/fonts/TrueTypeFaceInfo.h>

#include <velum/fonts/FontRefDC.h>
#include <velum/platform/detail/FontCatalog.h>
#include <velum/platform/detail/OutlineFont.h>
#include <velum/platform/detail/ReferenceContext.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace vlm {

namespace {

/// Names that the library draws as symbol faces of its own reach to the end of the codes.
constexpr char kWholeRangePrefix[] = "KQI ";

/// The measures of the installed face and, behind them, its four names.
std::vector<unsigned char> ReadRecord(const LOGFONTA& logFont, const platform::FontEntry* entry) {
  const auto font = entry ? platform::OutlineFont::Open(entry->file, entry->index) : nullptr;
  if (!font) return {};
  OUTLINETEXTMETRICA record = entry->record;
  TEXTMETRICA& metrics = record.otmTextMetrics;
  font->FillCodes(metrics);
  if (std::strncmp(logFont.lfFaceName, kWholeRangePrefix, sizeof(kWholeRangePrefix) - 1) == 0) {
    metrics.tmLastChar = 255;
  }
  metrics.tmUnderlined = logFont.lfUnderline;
  metrics.tmStruckOut = logFont.lfStrikeOut;

  std::string names;
  const auto append = [&](const std::string& name) {
    const std::size_t place = sizeof(record) + names.size();
    names.append(name.c_str(), std::strlen(name.c_str()) + 1);
    return static_cast<std::uint32_t>(place);
  };
  record.otmpFamilyName = append(entry->familyName);
  record.otmpFaceName = append(entry->faceName);
  record.otmpStyleName = append(entry->styleName);
  record.otmpFullName = append(entry->fullName);
  record.otmSize = static_cast<std::uint32_t>(sizeof(record) + names.size());
  std::vector<unsigned char> bytes(record.otmSize);
  std::memcpy(bytes.data(), &record, sizeof(record));
  std::memcpy(bytes.data() + sizeof(record), names.data(), names.size());
  return bytes;
}

bool ReadGlyphs(const platform::FontEntry* entry, unsigned short first, unsigned short last,
                std::vector<GLYPHMETRICS>& metrics) {
  const auto font = entry ? platform::OutlineFont::Open(entry->file, entry->index) : nullptr;
  if (!font) return false;
  for (unsigned int code = first; code <= last; ++code) {
    GLYPHMETRICS measures;
    const unsigned int glyph = code <= CFaceInfo::GMListMax
                                   ? font->GlyphOfByte(static_cast<unsigned char>(code))
                                   : font->GlyphOfCharacter(code);
    font->Measure(glyph, measures);
    metrics.push_back(measures);
  }
  // A table of widths that is lost reads as zeros.
  return std::any_of(metrics.begin(), metrics.end(),
                     [](const GLYPHMETRICS& glyph) { return glyph.gmCellIncX != 0; });
}

}  // namespace

CTrueTypeFaceInfo::CTrueTypeFaceInfo(const LOGFONTA& logFont, const GString& familyName)
    : CFaceInfo(familyName,
                GString(std::string(logFont.lfFaceName,
                                    ::strnlen(logFont.lfFaceName, sizeof(logFont.lfFaceName))))),
      logFont_(logFont) {}

CTrueTypeFaceInfo::CTrueTypeFaceInfo(const LOGFONTA& logFont, const platform::FontEntry& entry)
    : CTrueTypeFaceInfo(logFont, GString(entry.familyName)) {
  listed_ = &entry;
}

CTrueTypeFaceInfo::~CTrueTypeFaceInfo() = default;

CFaceInfo::FaceType CTrueTypeFaceInfo::GetFaceType() const { return FACE_TYPE_TRUETYPE; }

void CTrueTypeFaceInfo::GetDefinedGlyphRanges(std::vector<_CharRange>& ranges) const {
  ranges.clear();
  FontRefDC context;
  context.SelectEmFont(*this);
  const platform::OutlineFont* const font = platform::SelectedFont(context);
  if (!font) return;
  const unsigned short last = GetLastChar();
  bool inRange = false;
  for (unsigned short code = GetFirstChar(); code <= last; ++code) {
    const bool isDefined = font->GlyphOfByte(static_cast<unsigned char>(code)) != 0;
    if (isDefined && inRange) ranges.back().last = code;
    if (isDefined && !inRange) ranges.push_back({code, code});
    inRange = isDefined;
  }
}

const OUTLINETEXTMETRICA* CTrueTypeFaceInfo::FetchOTM() const {
  return CopyOTM([](const CFaceInfo& face) {
    const auto& self = static_cast<const CTrueTypeFaceInfo&>(face);
    return ReadRecord(self.logFont_, self.GetEntry());
  });
}

void CTrueTypeFaceInfo::FetchGlyphMetrics(unsigned short code) const {
  CopyGlyphMetrics(code, [](const CFaceInfo& face, unsigned short first, unsigned short last,
                            std::vector<GLYPHMETRICS>& metrics) {
    return ReadGlyphs(static_cast<const CTrueTypeFaceInfo&>(face).GetEntry(), first, last, metrics);
  });
}

unsigned int CTrueTypeFaceInfo::FetchCellHeight() const {
  return static_cast<unsigned int>(logFont_.lfHeight);
}

const platform::FontEntry* CTrueTypeFaceInfo::GetEntry() const {
  if (listed_) return listed_;
  return platform::FontCatalog::Instance().Find(logFont_, GetFamilyName().String());
}

}  // namespace vlm

#include <velum/fonts/FaceInfo.h>

#include <velum/diagnostics/Logger.h>
#include <velum/diagnostics/detail/QuietLog.h>
#include <velum/fonts/SystemFaceInfo.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <utility>

namespace vlm {

namespace {

/// What is answered where no face can be asked at all.
constexpr OUTLINETEXTMETRICA kNoFace = [] {
  OUTLINETEXTMETRICA record{};
  record.otmSize = sizeof(record);
  record.otmEMSquare = 1000;
  TEXTMETRICA& metrics = record.otmTextMetrics;
  metrics.tmHeight = 1000;
  metrics.tmAscent = 800;
  metrics.tmDescent = 200;
  metrics.tmAveCharWidth = 500;
  metrics.tmMaxCharWidth = 500;
  metrics.tmWeight = 400;
  metrics.tmDigitizedAspectX = 1;
  metrics.tmDigitizedAspectY = 1;
  metrics.tmFirstChar = 32;
  metrics.tmLastChar = 255;
  metrics.tmDefaultChar = 31;
  metrics.tmBreakChar = 32;
  return record;
}();

constexpr GLYPHMETRICS kNoGlyph{};

/// The face that answers for one that can't be asked; null if there is none.
const CFaceInfo* DefaultFace() {
  try {
    return CSystemFaceInfo::GetInstance().GetDefVariablePitchFaceInfo().get();
  } catch (...) {
    return nullptr;  // a face never raises
  }
}

}  // namespace

/// The widths of all codes, so that measuring a text is a sum over one table.
struct CFaceInfo::Advances {
  std::array<std::int16_t, GMListMax + 1> widths;
};

CFaceInfo::CFaceInfo(const GString& familyName, const GString& faceName)
    : familyName_(familyName), faceName_(faceName) {}

CFaceInfo::~CFaceInfo() { delete advances_.load(std::memory_order_relaxed); }

GString CFaceInfo::GetFamilyName() const { return familyName_; }
GString CFaceInfo::GetFaceName() const { return faceName_; }

const OUTLINETEXTMETRICA& CFaceInfo::GetOTM() const {
  const OUTLINETEXTMETRICA* const record = record_.load(std::memory_order_acquire);
  return record ? *record : *FetchOTM();
}

unsigned int CFaceInfo::GetEmSize() const { return GetOTM().otmEMSquare; }
unsigned int CFaceInfo::GetCellHeight() const { return FetchCellHeight(); }

double CFaceInfo::GetAspect() const {
  const TEXTMETRICA& metrics = GetOTM().otmTextMetrics;
  if (metrics.tmDigitizedAspectX == 0 || metrics.tmAveCharWidth == 0) return 1.0;
  return static_cast<double>(metrics.tmDigitizedAspectY) / metrics.tmDigitizedAspectX *
         (static_cast<double>(metrics.tmHeight) / metrics.tmAveCharWidth);
}

double CFaceInfo::GetEmToHeight(double height) const { return height / GetEmSize(); }

unsigned short CFaceInfo::GetFirstChar() const {
  const TEXTMETRICA& metrics = GetOTM().otmTextMetrics;
  return std::min(metrics.tmFirstChar, metrics.tmDefaultChar);
}

unsigned short CFaceInfo::GetLastChar() const { return GetOTM().otmTextMetrics.tmLastChar; }
unsigned short CFaceInfo::GetDefaultChar() const { return GetOTM().otmTextMetrics.tmDefaultChar; }

unsigned short CFaceInfo::MapCharCode(unsigned short code) const {
  return code >= GetFirstChar() && code <= GetLastChar() ? code : GetDefaultChar();
}

const GLYPHMETRICS& CFaceInfo::GetGlyphMetrics(unsigned short code) const {
  code = MapCharCode(code);
  if (code > GMListMax) {
    const auto find = [&]() -> const GLYPHMETRICS* {
      const std::lock_guard lock(glyphLock_);
      const auto found = glyphMap_.find(code);
      return found == glyphMap_.end() ? nullptr : &found->second;
    };
    const GLYPHMETRICS* metrics = find();
    if (!metrics) {
      FetchGlyphMetrics(code);
      metrics = find();
    }
    return metrics ? *metrics : kNoGlyph;
  }
  if (!listLoaded_.load(std::memory_order_acquire)) FetchGlyphMetrics(code);
  const std::size_t place = static_cast<std::size_t>(code - GetFirstChar());
  // A default code above the last one has no entry.
  return place < glyphList_.size() ? glyphList_[place] : kNoGlyph;
}

const CFaceInfo::Advances& CFaceInfo::GetAdvances() const {
  if (const Advances* const known = advances_.load(std::memory_order_acquire)) return *known;
  auto made = std::make_unique<Advances>();
  for (unsigned short code = 0; code <= GMListMax; ++code) {
    made->widths[code] = GetGlyphMetrics(code).gmCellIncX;
  }
  // Another thread may have been faster; both tables are equal.
  const Advances* expected = nullptr;
  if (advances_.compare_exchange_strong(expected, made.get(), std::memory_order_acq_rel)) {
    return *made.release();
  }
  return *expected;
}

unsigned int CFaceInfo::CalcEmExtent(const GString& text) const {
  const auto& widths = GetAdvances().widths;
  unsigned int sum = 0;
  for (const char c : text.String()) {
    sum += static_cast<unsigned int>(widths[static_cast<unsigned char>(c)]);
  }
  return sum;
}

RECT CFaceInfo::CalcEmBounds(const GString& text) const {
  const OUTLINETEXTMETRICA& record = GetOTM();
  const std::int32_t descent = record.otmTextMetrics.tmDescent;
  const auto height = static_cast<std::int32_t>(GetCellHeight());
  RECT box{0, descent - height, static_cast<std::int32_t>(CalcEmExtent(text)), descent};
  const std::int32_t underscore = record.otmsUnderscorePosition - record.otmsUnderscoreSize / 2;
  if (underscore < 0 && underscore < -descent) box.bottom += -descent - underscore;
  if (text.empty()) return box;

  const std::string& bytes = text.String();
  const GLYPHMETRICS& first = GetGlyphMetrics(static_cast<unsigned char>(bytes.front()));
  const GLYPHMETRICS& last = GetGlyphMetrics(static_cast<unsigned char>(bytes.back()));
  if (first.gmptGlyphOrigin.x < 0) box.left += first.gmptGlyphOrigin.x;
  const std::int32_t bearing =
      last.gmCellIncX - last.gmptGlyphOrigin.x - static_cast<std::int32_t>(last.gmBlackBoxX);
  if (bearing <= 0) box.right -= bearing;
  return box;
}

void CFaceInfo::CalcEmStrikeoutLine(const GString& text, POINT& from, POINT& to) const {
  from = {0, GetOTM().otmsStrikeoutPosition};
  to = {static_cast<std::int32_t>(CalcEmExtent(text)), from.y};
}

void CFaceInfo::CalcEmUnderscoreLine(const GString& text, POINT& from, POINT& to) const {
  from = {0, GetOTM().otmsUnderscorePosition};
  to = {static_cast<std::int32_t>(CalcEmExtent(text)), from.y};
}

const OUTLINETEXTMETRICA* CFaceInfo::CopyOTM(OTMReader* read) const {
  bool failsNow = false;
  {
    const std::lock_guard lock(metricsLock_);
    if (!metricsFailed_ && otm_.empty()) {
      std::vector<unsigned char> record = read(*this);
      if (record.size() < sizeof(OUTLINETEXTMETRICA)) {
        metricsFailed_ = true;
        failsNow = true;
      } else {
        otm_ = std::move(record);
        record_.store(reinterpret_cast<const OUTLINETEXTMETRICA*>(otm_.data()),
                      std::memory_order_release);
      }
    }
    if (!otm_.empty()) return record_.load(std::memory_order_relaxed);
  }
  // Without the lock, since the log may call the application and the default face has its own.
  if (failsNow) {
    detail::LogQuietly(LogInformation, "CFaceInfo: Could not get text metrics for typeface '%s'",
                       faceName_.c_str());
  }
  const CFaceInfo* const face = DefaultFace();
  return face && face != this ? &face->GetOTM() : &kNoFace;
}

void CFaceInfo::CopyGlyphMetrics(unsigned short code, GlyphReader* read) const {
  const std::lock_guard lock(glyphLock_);
  const bool isListed = code <= GMListMax;
  if (isListed ? listLoaded_.load(std::memory_order_relaxed) : glyphMap_.count(code) != 0) return;
  const bool isOwn = &GetOTM() == record_.load(std::memory_order_relaxed);
  const unsigned short first = isListed ? GetFirstChar() : code;
  const unsigned short last = isListed ? GetLastChar() : code;
  std::vector<GLYPHMETRICS> metrics;
  if (!isOwn || !read(*this, first, last, metrics) || metrics.empty()) {
    FetchDefaultGlyphMetrics(code);
  } else if (isListed) {
    glyphList_ = std::move(metrics);
  } else {
    glyphMap_.emplace(code, metrics.front());
  }
  if (isListed) listLoaded_.store(true, std::memory_order_release);
}

void CFaceInfo::FetchDefaultGlyphMetrics(unsigned short code) const {
  const CFaceInfo* const face = DefaultFace();
  const auto glyph = [&](unsigned short of) {
    if (face && face != this) return face->GetGlyphMetrics(of);
    GLYPHMETRICS metrics{};
    metrics.gmCellIncX = static_cast<std::int16_t>(GetOTM().otmTextMetrics.tmAveCharWidth);
    return metrics;
  };
  if (code > GMListMax) {
    glyphMap_.emplace(code, glyph(code));
    return;
  }
  std::vector<GLYPHMETRICS> list;
  for (unsigned short of = GetFirstChar(); of <= GetLastChar(); ++of) list.push_back(glyph(of));
  glyphList_ = std::move(list);
}

bool FaceNameLess(std::shared_ptr<const CFaceInfo> a, std::shared_ptr<const CFaceInfo> b) {
  return std::strcmp(a->GetFaceName().c_str(), b->GetFaceName().c_str()) < 0;
}

bool LOGFONTSAreEqual(const LOGFONTA& a, const LOGFONTA& b) noexcept {
  return a.lfHeight == b.lfHeight && a.lfWidth == b.lfWidth && a.lfEscapement == b.lfEscapement &&
         a.lfOrientation == b.lfOrientation && a.lfWeight == b.lfWeight &&
         a.lfItalic == b.lfItalic && a.lfUnderline == b.lfUnderline &&
         a.lfStrikeOut == b.lfStrikeOut && a.lfCharSet == b.lfCharSet &&
         a.lfOutPrecision == b.lfOutPrecision && a.lfClipPrecision == b.lfClipPrecision &&
         a.lfQuality == b.lfQuality && a.lfPitchAndFamily == b.lfPitchAndFamily &&
         std::strncmp(a.lfFaceName, b.lfFaceName, sizeof(a.lfFaceName)) == 0;
}

}  // namespace vlm

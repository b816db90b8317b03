#include <velum/fonts/FontRefDC.h>

#include <velum/diagnostics/DrawingContext.h>
#include <velum/fonts/TrueTypeFaceInfo.h>
#include <velum/platform/detail/FontCatalog.h>
#include <velum/platform/detail/ReferenceContext.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <new>

namespace vlm {

namespace {

/// The installed face that answers what a face says of itself; null if none has its name.
const platform::FontEntry* FindEntry(const CFaceInfo& face) {
  const TEXTMETRICA& metrics = face.GetOTM().otmTextMetrics;
  LOGFONTA logFont{};
  logFont.lfHeight = static_cast<std::int32_t>(face.GetEmSize());
  logFont.lfWidth = static_cast<std::int32_t>(std::lround(face.GetEmSize() / face.GetAspect()));
  logFont.lfWeight = metrics.tmWeight;
  logFont.lfItalic = metrics.tmItalic;
  const GString faceName = face.GetFaceName();
  std::memcpy(logFont.lfFaceName, faceName.c_str(), platform::FaceNameBytes(faceName.String()));
  return platform::FontCatalog::Instance().Find(logFont, face.GetFamilyName().String());
}

}  // namespace

FontRefDC::FontRefDC() : context_(GetDC(nullptr)) {
  if (!context_) throw std::bad_alloc();
}

FontRefDC::~FontRefDC() {
  if (original_) platform::DeleteFontHandle(platform::SelectFontHandle(context_, original_));
  ReleaseDC(nullptr, context_);
}

void FontRefDC::SelectEmFont(const CFaceInfo& face) {
  const auto* const outline = dynamic_cast<const CTrueTypeFaceInfo*>(&face);
  const platform::FontEntry* const entry = outline ? outline->GetEntry() : FindEntry(face);
  if (!entry) return;
  const HFONT font = platform::CreateFontHandle(*entry);
  const HFONT before = platform::SelectFontHandle(context_, font);
  if (original_) {
    platform::DeleteFontHandle(before);
  } else {
    original_ = before;
  }
}

}  // namespace vlm

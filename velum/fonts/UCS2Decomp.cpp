#include <velum/fonts/UCS2Decomp.h>

#include <velum/core/Exception.h>
#include <velum/fonts/FaceInfo.h>
#include <velum/fonts/FontRefDC.h>
#include <velum/fonts/ScopedScriptCache.h>
#include <velum/fonts/SystemFaceInfo.h>
#include <velum/platform/detail/FontCatalog.h>
#include <velum/platform/detail/FontFallback.h>
#include <velum/platform/detail/ReferenceContext.h>
#include <velum/platform/detail/Shaper.h>
#include <velum/platform/detail/TextRuns.h>
#include <velum/platform/detail/Utf8.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

namespace vlm {

namespace {

constexpr char kSource[] = "UCS2Decomp";
constexpr std::size_t kMaxRuns = 2000;

/// What is particular about each script, by its number; empty if the service does not work.
const std::vector<SCRIPT_PROPERTIES>& ScriptTable() {
  static const std::vector<SCRIPT_PROPERTIES> table = [] {
    std::vector<SCRIPT_PROPERTIES> scripts(platform::ScriptCount());
    for (std::size_t i = 0; i < scripts.size(); ++i) {
      scripts[i].fComplex = platform::IsComplexScript(static_cast<std::uint16_t>(i)) ? 1 : 0;
      scripts[i].fCDM = i == platform::kCombiningScript ? 1 : 0;
    }
    return scripts;
  }();
  return table;
}

/// What is kept of the face that was checked last.
struct KeptFace {
  ScopedScriptCache cache;
  std::shared_ptr<const CFaceInfo> face;
  std::shared_ptr<const CFaceInfo> unusable;  ///< The last one that could not be had.
  std::vector<unsigned short> glyphs;         ///< For its memory.
};

KeptFace& Kept() {
  static KeptFace kept;
  return kept;
}

/// Gets a face ready for shaping; null, and what was kept stays, if it can't be.
platform::Shaper* PrepareFace(const std::shared_ptr<const CFaceInfo>& face) {
  KeptFace& kept = Kept();
  if (kept.unusable == face) return nullptr;
  if (!*kept.cache.CachePtr() || kept.face != face) {
    FontRefDC context;
    context.SelectEmFont(*face);
    const platform::FontEntry* const entry = platform::SelectedEntry(context);
    auto shaper = entry ? platform::Shaper::Open(entry->file, entry->index) : nullptr;
    if (!shaper) {
      kept.unusable = face;
      return nullptr;
    }
    kept.cache.CachePtr(shaper.release());
    kept.face = face;
  }
  return static_cast<platform::Shaper*>(*kept.cache.CachePtr());
}

/// Finds the glyphs of text of one script and direction; false, and none, if that can't be done.
bool FindGlyphs(const std::shared_ptr<const CFaceInfo>& face, std::wstring_view text,
                const SCRIPT_ANALYSIS& analysis, std::vector<unsigned short>& glyphs) {
  platform::Shaper* const shaper = PrepareFace(face);
  if (!shaper) return false;
  if (ScriptTable()[analysis.eScript].fComplex) {
    return shaper->Shape(text, analysis.eScript, analysis.fRTL, glyphs);
  }
  shaper->Map(text, glyphs);
  return true;
}

/// Makes the elements UTF-16.
std::wstring ToUtf16(const std::wstring& text) {
  const auto isUnit = [](wchar_t element) { return static_cast<char32_t>(element) <= 0xFFFF; };
  if (std::all_of(text.begin(), text.end(), isUnit)) return text;
  std::wstring units;
  units.reserve(text.size());
  for (const wchar_t element : text) {
    const auto code = static_cast<char32_t>(element);
    wchar_t pair[2];
    units.append(pair, platform::PutWide(code > 0x10FFFF ? platform::kReplacement : code, pair));
  }
  return units;
}

bool IsPair(wchar_t first, wchar_t second) {
  return (first & ~0x3FF) == 0xD800 && (second & ~0x3FF) == 0xDC00;
}

/// Puts the last character first, with pairs of surrogates as they were.
void ReverseCharacters(std::wstring& text) {
  std::wstring reversed;
  reversed.reserve(text.size());
  for (std::size_t i = text.size(); i-- > 0;) {
    if (i > 0 && IsPair(text[i - 1], text[i])) {
      reversed.append(text, --i, 2);
    } else if (!reversed.empty() && IsPair(reversed.back(), text[i])) {
      // Halves that do not belong together must not become a character.
      reversed.back() = static_cast<wchar_t>(platform::kReplacement);
      reversed += reversed.back();
    } else {
      reversed += text[i];
    }
  }
  text.swap(reversed);
}

}  // namespace

UCS2Decomp::UCS2Decomp() {
  if (ScriptTable().empty()) ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
}

UCS2Decomp::UCS2Decomp(const UCS2Decomp& other) = default;
UCS2Decomp& UCS2Decomp::operator=(const UCS2Decomp& other) = default;
UCS2Decomp::~UCS2Decomp() = default;

bool UCS2Decomp::SetupDecomp(const std::wstring& text) {
  valid_ = false;
  items_.clear();
  text_ = ToUtf16(text);
  std::vector<platform::TextRun> runs;
  const std::wstring_view characters(text_.c_str());
  if (!platform::FindTextRuns(characters, kMaxRuns, runs)) return false;
  items_.reserve(runs.size());
  for (const platform::TextRun& run : runs) {
    SCRIPT_ITEM item{};
    item.iCharPos = static_cast<std::int32_t>(run.first);
    item.a.eScript = run.script & 0x3FF;
    item.a.fRTL = run.level & 1;
    item.a.fLayoutRTL = run.level & 1;
    // Levels beyond 31 do not fit; what matters is which way they go.
    const int level = run.level < 32 ? run.level : 30 | (run.level & 1);
    item.a.s.uBidiLevel = level & 0x1F;
    items_.push_back(item);
  }
  valid_ = true;
  return true;
}

void UCS2Decomp::Decompose(UCS2DecompIF& sink, std::shared_ptr<const CFaceInfo> face,
                           unsigned int flags) {
  if (!valid_ || (!face && (flags & DECOMP_CHECK_GLYPHS) != 0)) {
    ThrowErrorImpl(kSource, __LINE__, ERR_INTERNAL);
  }
  sink.BeginDecomp();
  for (std::size_t i = 0; i < items_.size(); ++i) {
    const std::size_t end =
        i + 1 < items_.size() ? static_cast<std::size_t>(items_[i + 1].iCharPos) : text_.size();
    DecomposeRun(static_cast<unsigned>(items_[i].iCharPos), static_cast<unsigned>(end - 1),
                 items_[i].a, sink, face, flags);
  }
  sink.EndDecomp();
}

void UCS2Decomp::DecomposeRun(unsigned first, unsigned last, const SCRIPT_ANALYSIS& analysis,
                              UCS2DecompIF& sink, std::shared_ptr<const CFaceInfo> face,
                              unsigned flags) {
  const std::wstring_view run = std::wstring_view(text_).substr(first, last - first + 1);
  if ((flags & DECOMP_CHECK_GLYPHS) != 0 && face->GetFaceType() == CFaceInfo::FACE_TYPE_TRUETYPE) {
    std::vector<unsigned short>& glyphs = Kept().glyphs;
    if (!FindGlyphs(face, run, analysis, glyphs) ||
        GlyphsMissing(Kept().cache.CachePtr(), glyphs)) {
      FontRefDC context;
      context.SelectEmFont(*face);
      DecomposeRunUsingFontFallback(first, last, sink, face, context, analysis, flags);
      return;
    }
  }
  std::wstring piece(run);
  if (analysis.fLayoutRTL && (flags & DECOMP_REVERSE) != 0) ReverseCharacters(piece);
  sink.SubText(UCS2DecompSubSet(piece, std::move(face), analysis.fLayoutRTL));
}

void UCS2Decomp::DecomposeRunUsingFontFallback(unsigned first, unsigned last, UCS2DecompIF& sink,
                                               std::shared_ptr<const CFaceInfo> face, HDC dc,
                                               const SCRIPT_ANALYSIS& analysis, unsigned flags) {
  platform::FontFallback* const fallback = platform::FontFallback::Instance();
  if (!fallback) ThrowErrorImpl(kSource, __LINE__, ERR_CREATE_OBJECT, "IMLangFontLink2");

  std::wstring piece = text_.substr(first, last - first + 1);
  const bool rtl = analysis.fLayoutRTL;
  const bool isReversed = rtl && (flags & DECOMP_REVERSE) != 0;
  std::vector<platform::FontStretch> stretches{{0, piece.size(), nullptr}};
  const platform::FontEntry* const own = platform::SelectedEntry(dc);
  if (own) stretches = fallback->Cut(piece, *own, isReversed);
  if (isReversed) ReverseCharacters(piece);

  // Without another face for a part of it, a run would gain nothing from a change of weight.
  std::vector<unsigned short>& glyphs = Kept().glyphs;
  const auto isOther = [own](const platform::FontStretch& stretch) {
    return stretch.font && stretch.font->familyName != own->familyName;
  };
  const auto canStay = [&](const platform::FontStretch& stretch) {
    if (!stretch.font) return true;
    std::wstring part = piece.substr(stretch.first, stretch.length);
    if (isReversed) ReverseCharacters(part);
    return FindGlyphs(face, part, analysis, glyphs) &&
           !GlyphsMissing(Kept().cache.CachePtr(), glyphs);
  };
  const bool stays = std::none_of(stretches.begin(), stretches.end(), isOther) &&
                     std::all_of(stretches.begin(), stretches.end(), canStay);

  std::shared_ptr<const CFaceInfo> lastResort;
  const auto isUncovered = [](const platform::FontStretch& stretch) { return !stretch.font; };
  if (std::any_of(stretches.begin(), stretches.end(), isUncovered)) lastResort = LastResort(face);
  if (stays && (!lastResort || lastResort == face)) stretches = {{0, piece.size(), own}};
  for (const platform::FontStretch& stretch : stretches) {
    const wchar_t* const text = piece.data() + stretch.first;
    const auto count = static_cast<long>(stretch.length);
    if (stretch.font && !stays) {
      PassSubText(sink, text, count, stretch.font->familyName, rtl);
    } else {
      PassSubText(sink, text, count, stretch.font ? face : lastResort, rtl);
    }
  }
}

void UCS2Decomp::PassSubText(UCS2DecompIF& sink, const wchar_t* text, long count,
                             const GString& faceName, bool rtl) {
  PassSubText(sink, text, count, MatchFaceName(faceName), rtl);
}

void UCS2Decomp::PassSubText(UCS2DecompIF& sink, const wchar_t* text, long count,
                             std::shared_ptr<const CFaceInfo> face, bool rtl) {
  const std::wstring piece(text, static_cast<std::size_t>(count));
  sink.SubText(UCS2DecompSubSet(piece, std::move(face), rtl));
}

bool UCS2Decomp::GlyphsMissing(void** cache, const std::vector<unsigned short>& glyphs) const {
  const auto* const shaper = static_cast<const platform::Shaper*>(*cache);
  return std::find(glyphs.begin(), glyphs.end(), shaper->DefaultGlyph()) != glyphs.end();
}

std::shared_ptr<const CFaceInfo> UCS2Decomp::LastResort(
    const std::shared_ptr<const CFaceInfo>& face) const {
  for (const char* const name : {"Arial Unicode MS", "Tahoma"}) {
    auto matched = MatchFaceName(name);
    if (matched && matched->GetFaceName() == name) return matched;
  }
  return face;
}

std::shared_ptr<const CFaceInfo> UCS2Decomp::MatchFaceName(const GString& name) const {
  CSystemFaceInfo& faces = CSystemFaceInfo::Instance();
  const int index = faces.Match(name, 400, 0, 0, 0, FACE_MATCH_NAME | FACE_MATCH_WEIGHT,
                                CFaceInfo::FACE_TYPE_TRUETYPE);
  return index < 0 ? nullptr : faces.GetFaceInfo(static_cast<unsigned int>(index));
}

}  // namespace vlm

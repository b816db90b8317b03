#include <velum/fonts/StrokedFace.h>

#include <velum/core/Exception.h>
#include <velum/files/BufferedFile.h>
#include <velum/files/FileUtilities.h>
#include <velum/fonts/SymbolSets.h>
#include <velum/fonts/detail/SymbolSetReader.h>

#include <cstdlib>
#include <utility>

namespace vlm {

namespace {

/// The folder of all sets, with a separator at its end.
GString SetFolder() {
  const char* const sources = std::getenv("KQSRC");
  const char* const version = std::getenv("KQSUBVER");
  if (!sources || !version) return GetStartupPath(nullptr, true) + "Symbols\\";
  return GString(sources) + "\\Subsystems\\" + version + "\\Symbol\\";
}

[[noreturn]] void RefuseFile(const GString& path) {
  ThrowErrorImpl("StrokedFace", __LINE__, ERR_CUSTOM,
                 "Symbol set file: %s\ndoes not exist or is not readable.", path.c_str());
}

detail::SymbolSet ReadSetFile(const GString& path, bool isFixedPitch) {
  CBufferedFile file;
  if (!file.OpenNoThrow(path, "rb", CBufferedFile::ShareDenyNone, false)) RefuseFile(path);
  detail::SymbolSet set;
  try {
    detail::ReadSymbolSet(file, isFixedPitch, set);
  } catch (const Exception&) {
    RefuseFile(path);
  }
  return set;
}

bool IsFixedPitch(const CSYMSetInfo& set) { return (set.GetPitchAndFamily() & 3) == 1; }

}  // namespace

CStrokedFace::CStrokedFace(unsigned int setIndex) {
  if (setIndex >= g_SYMSetList.size()) {
    ThrowErrorImpl("StrokedFace", __LINE__, ERR_INVALID_PARAMETER);
  }
  const CSYMSetInfo& info = g_SYMSetList[setIndex];
  detail::SymbolSet set = ReadSetFile(SetFolder() + info.GetFileName(), IsFixedPitch(info));
  emSize_ = set.emSize;
  maxAscender_ = set.maxAscender;
  maxDescender_ = set.maxDescender;
  avgCharWidth_ = set.avgCharWidth;
  maxCharWidth_ = set.maxCharWidth;
  aspect_ = set.aspect;
  faceName_ = info.GetFaceName();
  firstChar_ = set.firstChar;
  lastChar_ = set.lastChar;
  defaultChar_ = set.defaultChar;
  breakChar_ = set.breakChar;
  glyphs_ = std::move(set.glyphs);
}

CStrokedFace::~CStrokedFace() = default;

const CStrokedFace::GlyphInfo& CStrokedFace::GetGlyphInfo(unsigned int code) const noexcept {
  static const GlyphInfo kNone;
  if (glyphs_.empty()) return kNone;
  const unsigned int shown = code < firstChar_ || code > lastChar_ ? defaultChar_ : code;
  return glyphs_[shown - firstChar_];
}

}  // namespace vlm

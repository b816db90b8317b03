#include <velum/platform/detail/TextRuns.h>

#include <velum/platform/detail/BracketLimit.h>
#include <velum/platform/detail/Utf8.h>

#include <unicode/ubidi.h>
#include <unicode/uchar.h>
#include <unicode/uscript.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>

namespace vlm::platform {

static_assert(kCombiningScript == USCRIPT_INHERITED);

namespace {

/// Scripts whose letters stand side by side, whatever their neighbours are.
constexpr UScriptCode kPlainScripts[] = {
    USCRIPT_COMMON,   USCRIPT_LATIN, USCRIPT_GREEK, USCRIPT_CYRILLIC, USCRIPT_ARMENIAN,
    USCRIPT_GEORGIAN, USCRIPT_HAN,   USCRIPT_YI,    USCRIPT_CHEROKEE, USCRIPT_ETHIOPIC,
    USCRIPT_BRAILLE,  USCRIPT_RUNIC, USCRIPT_OGHAM, USCRIPT_COPTIC,   USCRIPT_GOTHIC,
};

bool IsShared(UScriptCode script) {
  return script == USCRIPT_COMMON || script == USCRIPT_INHERITED || script == USCRIPT_UNKNOWN;
}

/// Syllables are written among ideographs, in one style, and change at every word.
UScriptCode Fold(UScriptCode script) {
  const bool isSyllabic =
      script == USCRIPT_HIRAGANA || script == USCRIPT_KATAKANA || script == USCRIPT_BOPOMOFO;
  return isSyllabic ? USCRIPT_HAN : script;
}

/// A character's script, and whether it combines with those beside it.
struct Character {
  UScriptCode script;
  bool combines;
};

Character Classify(char32_t code) {
  if (code < 0x80) {
    const bool isLetter = (code | 0x20) >= 'a' && (code | 0x20) <= 'z';
    return {isLetter ? USCRIPT_LATIN : USCRIPT_COMMON, false};
  }
  UErrorCode status = U_ZERO_ERROR;
  const auto character = static_cast<UChar32>(code);
  const UScriptCode script = uscript_getScript(character, &status);
  constexpr std::uint32_t kMarks = U_GC_MN_MASK | U_GC_MC_MASK | U_GC_ME_MASK;
  const bool combines =
      script == USCRIPT_INHERITED || (U_MASK(u_charType(character)) & kMarks) != 0;
  return {U_FAILURE(status) ? USCRIPT_UNKNOWN : Fold(script), combines};
}

struct Closer {
  void operator()(UBiDi* bidi) const { ubidi_close(bidi); }
};

/// The embedding levels of each element; empty where one level does for all, or on failure, which
/// `isBroken` tells.
class Levels {
 public:
  explicit Levels(std::wstring_view text) {
    // Below the first right-to-left letter and outside of the directional controls nothing can
    // raise a level.
    const auto mayTurn = [](wchar_t unit) {
      const auto code = static_cast<char32_t>(unit);
      return (code >= 0x590 && code < 0x900) || (code >= 0x200E && code < 0x2070) ||
             (code >= 0xD800 && code < 0xE000) || code >= 0xFB1D;
    };
    if (std::none_of(text.begin(), text.end(), mayTurn)) return;
    units_.reserve(text.size());
    BracketLimit limit;
    for (const wchar_t unit : text) units_.push_back(limit.Pass(static_cast<UChar>(unit)));
    UErrorCode status = U_ZERO_ERROR;
    const auto length = static_cast<std::int32_t>(units_.size());
    bidi_.reset(ubidi_openSized(length, 0, &status));
    if (U_SUCCESS(status)) {
      ubidi_setPara(bidi_.get(), units_.data(), length, UBIDI_LTR, nullptr, &status);
    }
    if (U_SUCCESS(status)) levels_ = ubidi_getLevels(bidi_.get(), &status);
    isBroken_ = U_FAILURE(status);
  }

  [[nodiscard]] bool IsBroken() const { return isBroken_; }
  [[nodiscard]] std::uint8_t At(std::size_t position) const {
    return levels_ ? levels_[position] : 0;
  }

 private:
  std::vector<UChar> units_;
  std::unique_ptr<UBiDi, Closer> bidi_;
  const UBiDiLevel* levels_ = nullptr;
  bool isBroken_ = false;
};

/// Gathers characters into runs.
class Gatherer {
 public:
  explicit Gatherer(std::vector<TextRun>& runs) : runs_(runs) {}

  void Add(std::size_t position, std::uint8_t level, Character character) {
    const bool isShared = IsShared(character.script);
    const bool continues = !runs_.empty() && runs_.back().level == level &&
                           (isShared || IsShared(script_) || script_ == character.script);
    if (!continues) {
      Finish();
      runs_.push_back({position, 0, level});
      script_ = character.script;
      combines_ = false;
    } else if (!isShared) {
      script_ = character.script;
    }
    combines_ = combines_ || character.combines;
  }

  /// Sets the script of the last run.
  void Finish() {
    if (runs_.empty()) return;
    const auto script = static_cast<std::uint16_t>(IsShared(script_) ? USCRIPT_COMMON : script_);
    runs_.back().script = combines_ && !IsComplexScript(script) ? kCombiningScript : script;
  }

 private:
  std::vector<TextRun>& runs_;
  UScriptCode script_ = USCRIPT_COMMON;
  bool combines_ = false;
};

}  // namespace

std::size_t ScriptCount() noexcept {
  return static_cast<std::size_t>(std::max(0, u_getIntPropertyMaxValue(UCHAR_SCRIPT) + 1));
}

bool IsComplexScript(std::uint16_t script) noexcept {
  return std::find(std::begin(kPlainScripts), std::end(kPlainScripts), script) ==
         std::end(kPlainScripts);
}

bool FindTextRuns(std::wstring_view text, std::size_t limit, std::vector<TextRun>& runs) {
  runs.clear();
  if (text.size() > std::numeric_limits<std::int32_t>::max()) return false;
  const Levels levels(text);
  if (levels.IsBroken()) return false;
  Gatherer gatherer(runs);
  const wchar_t* at = text.data();
  const wchar_t* const end = at + text.size();
  while (at != end) {
    const auto position = static_cast<std::size_t>(at - text.data());
    const char32_t code = NextCodePoint(at, end);
    gatherer.Add(position, levels.At(position), Classify(code));
    if (runs.size() > limit) {
      runs.clear();
      return false;
    }
  }
  gatherer.Finish();
  return true;
}

}  // namespace vlm::platform

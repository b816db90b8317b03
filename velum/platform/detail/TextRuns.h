#pragma once

/// \file
/// Text taken apart by direction and script.
///
///     std::vector<vlm::platform::TextRun> runs;
///     vlm::platform::FindTextRuns(L"abc \u05D0\u05D1", 2000, runs);  // two: Latin and Hebrew
///
/// Wide text is UTF-16, one unit to an element; a surrogate without its partner is a character that
/// belongs to no script.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vlm::platform {

/// Characters of one direction and one script.
struct TextRun {
  std::size_t first;     ///< The position of the first one.
  std::uint16_t script;  ///< The number of the script, below `ScriptCount()`.
  std::uint8_t level;    ///< The embedding level, odd from right to left.
};

/// The number of the script that stands for marks which combine with letters of a plain script.
///
/// A run that is drawn glyph by glyph but for such marks has this number.
inline constexpr std::uint16_t kCombiningScript = 1;

/// How many scripts there are, or 0 if the service does not work.
[[nodiscard]] std::size_t ScriptCount() noexcept;

/// True if the glyphs of a script depend on each other, so that text in it must be shaped; false
/// if a table gives each character's glyph.
[[nodiscard]] bool IsComplexScript(std::uint16_t script) noexcept;

/// Finds the runs of `text`, in the order of the text, by the Unicode Bidirectional Algorithm in
/// left-to-right paragraphs.
///
/// Spaces, digits and punctuation belong to the script before them, at the start of a level to the
/// one behind them; kana and bopomofo are of the script of the ideographs. Brackets are paired as
/// far as `BracketLimit` lets them. False, and no runs, if there are more than `limit` runs, or
/// more than 2^31 - 1 elements.
///
/// *Cost*: linear.
[[nodiscard]] bool FindTextRuns(std::wstring_view text, std::size_t limit,
                                std::vector<TextRun>& runs);

}  // namespace vlm::platform

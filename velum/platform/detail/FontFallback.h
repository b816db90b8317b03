#pragma once

/// \file
/// Which installed face covers which part of a text.
///
///     auto* fallback = vlm::platform::FontFallback::Instance();
///     const auto parts = fallback->Cut(L"a \u0905", *entry);
///     for (const auto& part : parts) puts(part.font ? part.font->faceName.c_str() : "none");
///
/// Wide text is UTF-16, one unit to an element; a surrogate without its partner is taken as U+FFFD.

#include <velum/platform/detail/FontCatalog.h>

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace vlm::platform {

/// A part of a text, and the face that covers it.
struct FontStretch {
  std::size_t first;      ///< The position of its first element.
  std::size_t length;     ///< How many elements it has.
  const FontEntry* font;  ///< The face, an entry of `FontCatalog::Instance()`; null for none.
};

/// Chooses faces for text that a face lacks. Of the faces of one name it takes the one nearest to
/// normal weight, upright if it can be.
///
/// One object for the process; one thread at a time. Faces are preferred in the order that
/// fontconfig has for the language of the process. Answers are kept: two bytes for each character
/// and each one near it, and those for some thousands of letters with marks.
class FontFallback {
 public:
  /// The service, made when it is first asked for; null if no face is installed.
  [[nodiscard]] static FontFallback* Instance();

  FontFallback(const FontFallback&) = delete;
  FontFallback& operator=(const FontFallback&) = delete;
  ~FontFallback();

  /// Cuts `text`, shown in a face of the name of `own`, into parts that one face each covers, as
  /// long as can be, in the order of the text and without gaps.
  ///
  /// - What that face covers stays there.
  /// - A character stays with the marks and joiners that follow it: a face that covers them all
  ///   comes before one that covers the character alone. A face with the character that letter and
  ///   marks make together covers them, and the other way round. Marks behind controls and line
  ///   ends are by themselves.
  /// - What that face lacks goes to the other face that was used last, if it covers it.
  /// - White space and what is invisible belong to the part before them if its face covers them, at
  ///   the start to the one behind.
  ///
  /// With `isReversed` the parts are those of the text with its last character first; marks and
  /// joiners still stay with the character that they follow in `text`.
  ///
  /// *Cost*: linear; what was not asked for before, one look at each face for each character.
  [[nodiscard]] std::vector<FontStretch> Cut(std::wstring_view text, const FontEntry& own,
                                             bool isReversed = false);

 private:
  struct State;
  explicit FontFallback(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

}  // namespace vlm::platform

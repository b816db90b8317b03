#pragma once

/// \file
/// Text made glyph numbers of a face.
///
///     const auto shaper = vlm::platform::Shaper::Open("/usr/share/fonts/a.ttf", 0);
///     std::vector<std::uint16_t> glyphs;
///     if (shaper) shaper->Map(L"Text", glyphs);
///
/// Wide text is UTF-16, one unit to an element; a surrogate without its partner is taken as U+FFFD.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vlm::platform {

/// The number of a glyph that stands for what is not drawn, such as a line end or a joiner.
inline constexpr std::uint16_t kNoGlyph = 0xFFFF;

/// True if a character is not drawn, so that no face need have a glyph of it: controls, line ends,
/// and what Unicode calls ignorable by default.
[[nodiscard]] bool IsInvisible(char32_t code) noexcept;

/// A face of a font file, ready to give glyphs.
///
/// Has identity; one thread at a time. It keeps what shaping needs of the file, so that no call
/// opens one. A file that is no OpenType font, such as a compressed one or one of Type 1, is read
/// through FreeType.
class Shaper {
 public:
  /// Opens a face: `index` is its place in the file, with the number of a named instance of a
  /// variable font, from 1, above the low 16 bits. Null if there is no such face, or no glyph in
  /// it.
  [[nodiscard]] static std::unique_ptr<Shaper> Open(const std::string& file, unsigned int index);
  Shaper(const Shaper&) = delete;
  Shaper& operator=(const Shaper&) = delete;
  ~Shaper();

  /// The glyph that is shown for a character that the face lacks.
  [[nodiscard]] std::uint16_t DefaultGlyph() const noexcept { return 0; }
  /// True if the face has a glyph of a character, or the character needs none.
  [[nodiscard]] bool Has(char32_t code) const noexcept;

  /// Shapes `text`, of one script (a number of TextRuns.h) and one direction, into `glyphs`, which
  /// are as many as the face makes of it. False if it could not be done.
  ///
  /// They come in the order of display, but long text is shaped in parts of some hundred characters
  /// that come in the order of the text; no ligature reaches from one to the next.
  ///
  /// *Cost*: linear.
  [[nodiscard]] bool Shape(std::wstring_view text, std::uint16_t script, bool isRightToLeft,
                           std::vector<std::uint16_t>& glyphs);
  /// Looks up the glyph of each element of `text`, with `kNoGlyph` for the second of a pair.
  void Map(std::wstring_view text, std::vector<std::uint16_t>& glyphs) const;

 private:
  struct State;
  explicit Shaper(std::unique_ptr<State> state);
  std::unique_ptr<State> state_;
};

}  // namespace vlm::platform

#pragma once

/// \file
/// A text of any script as pieces, each in one face and direction, and where each comes in a line.
///
///     for (const auto& piece : vlm::specimen::CutText("Depth עומק", face)) Show(piece.text);

#include <velum/fonts/FaceInfo.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace vlm::specimen {

/// A piece of a text. A plain value.
struct TextPiece {
  std::wstring text;  ///< UTF-16, one unit to an element, in the order of reading
  std::shared_ptr<const CFaceInfo> face;
  bool isRightToLeft = false;
  int level = 0;  ///< how deep it is embedded: odd from right to left, as bidirectional text is
};

/// Cuts a text in UTF-8 into its pieces, in the order of reading; what `face` lacks comes in other
/// faces.
///
/// *Errors*: `std::runtime_error` for a text of more runs than the library takes; those of
/// `UCS2Decomp`.
[[nodiscard]] std::vector<TextPiece> CutText(const std::string& text,
                                             const std::shared_ptr<const CFaceInfo>& face);

/// Before which UTF-16 units of a text a line may end and the next one begin, by the rules of
/// Unicode and, where a script parts no words, by Pango's dictionaries. Never before the first.
[[nodiscard]] std::vector<bool> LineBreaks(const std::wstring& text);

/// The order from left to right of what stands in a line: the places of `levels` in the order in
/// which they are seen, by rule L2 of the Unicode Bidirectional Algorithm.
[[nodiscard]] std::vector<std::size_t> VisualOrder(const std::vector<int>& levels);

}  // namespace vlm::specimen

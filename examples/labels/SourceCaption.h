#pragma once

/// \file
/// The source text of a label as lines of a caption.
///
///     const auto lines = vlm::examples::WrapSource("CO\\dn20 {\\fs65 2}", 12);
///     // "CO\dn20 ", "{\fs65 2}"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vlm::examples {

/// Breaks a math text into lines of at most `width` characters of UTF-8, for a face of fixed width.
///
/// Line ends of the text stay; a tab shows as an arrow. A line too long is broken in its second
/// half: before a directive or an opening brace if there is one, else behind a blank, else where
/// the width ends. `width` must not be 0.
[[nodiscard]] std::vector<std::string> WrapSource(std::string_view text, std::size_t width);

}  // namespace vlm::examples

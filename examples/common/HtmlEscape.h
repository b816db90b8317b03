#pragma once

/// \file
/// Any text within a page of HTML.
///
///     report << vlm::Paragraph(vlm::examples::HtmlEscape("µ < 3"));  // &#181; &lt; 3

#include <string>

namespace vlm::examples {

/// A text in UTF-8 as it stands in a page in ASCII: `<`, `>`, `&` and quotes as entities, what is
/// not ASCII by its number; control characters and malformed bytes as U+FFFD. Line ends and tabs
/// stay.
[[nodiscard]] std::string HtmlEscape(const std::string& text);

}  // namespace vlm::examples

#pragma once

/// \file
/// A line of a script taken apart.
///
///     vlm::sketchbook::ReadWords("do add label text=\"a, b\"");  // do, add, label, text=a, b
///     vlm::sketchbook::HasOpenQuote("text=\"first line");        // true: it goes on

#include <velum/core/GString.h>

#include <string>
#include <vector>

namespace vlm::sketchbook {

/// The words of a line, which are separated by blanks and tabs. Double quotation marks, also in the
/// middle of a word, keep what is between them together; two in a row between them are one mark. A
/// "#" at the start of a word begins a comment.
[[nodiscard]] std::vector<GString> ReadWords(const std::string& line);

/// True if a quotation mark is open at the end: the text goes on in the next line.
[[nodiscard]] bool HasOpenQuote(const std::string& line);

}  // namespace vlm::sketchbook

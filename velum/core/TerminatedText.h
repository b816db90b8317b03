#pragma once

/// \file
/// Small operations on terminated text, beside those of `GString`.
///
///     std::vector<std::string> lines;
///     const int count = vlm::BreakIntoSubstrings("a\r\nb\n", lines);  // 2
///     char name[8];
///     vlm::MyStrncpy(name, "Depth below ground", sizeof(name));       // Depth b

#include <velum/core/Api.h>

#include <string>
#include <vector>

namespace vlm {

/// Copies as much of `source` as `target` takes, which has room for `targetSize` characters, and a
/// terminator. A null `source` gives the empty text; without room for a terminator nothing is done.
VELUM_API void MyStrncpy(char* target, const char* source, unsigned int targetSize);
/// The same for wide text.
VELUM_API void MyStrncpy(wchar_t* target, const wchar_t* source, unsigned int targetSize);

/// Cuts the white space off the end of `text`, in place, and gives its first character that is no
/// white space; null for null. White space is what the runtime's present locale takes for it.
VELUM_API char* Trim(char* text);

/// True if `part` stands in `text`, exactly; never if either is empty.
[[nodiscard]] VELUM_API bool Contains(const std::string& text, const std::string& part);
/// The same for wide text.
[[nodiscard]] VELUM_API bool Contains(const std::wstring& text, const std::wstring& part);

/// Replaces `lines` by the lines of `text`, without their ends, and gives how many there are. A
/// line ends with a carriage return, a line feed, or the one and then the other; the last needs no
/// end.
///
/// `"a\r\nb\n\n"` has the lines "a", "b" and ""; the empty text and null have none.
VELUM_API int BreakIntoSubstrings(const char* text, std::vector<std::string>& lines);

}  // namespace vlm

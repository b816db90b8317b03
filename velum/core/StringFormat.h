#pragma once

/// \file
/// Text formatted in the language of `printf`.
///
///     std::string line;
///     const bool fits = vlm::FormatString(line, "%-8s %8.2f", "Depth", 12.5);
///     const std::string id = vlm::ToString("%I64d", std::int64_t{1} << 40);
///
/// The language is that of C's `printf` with these additions:
///
/// | directive | argument |
/// |---|---|
/// | `%I64d`, `%I32d` | an integer of 64 or 32 bits; so `i`, `o`, `u`, `x`, `X` |
/// | `%Id`, `%Iu` | an integer as wide as `std::ptrdiff_t` or `std::size_t` |
/// | `%s`, `%c` | text or a character of the width of the format |
/// | `%S`, `%C` | text or a character of the other width |
/// | `%hs`, `%hc` | narrow text, in either form |
/// | `%ls`, `%lc`, `%ws`, `%wc` | wide text, in either form |
///
/// Narrow text is UTF-8 and wide text is UTF-16, one unit to an element, whatever the locale; text
/// that changes width and is malformed gives U+FFFD. A null text prints as "(null)". The width and
/// the precision count bytes in the narrow form and elements in the wide one; a character is not
/// cut when its width changes. The decimal point is that of the runtime's locale.
///
/// `%n`, numbered arguments such as `%1$d` and directives that C does not know are refused.

#include <velum/core/Api.h>

#include <cstdarg>
#include <string>

namespace vlm {

/// Replaces `target` by the formatted text.
///
/// The text ends at its first terminator. It has at most 8191 characters; a longer one, a null
/// format and a refused directive give false and leave `target` as it was. The arguments may point
/// into `target`.
VELUM_API bool FormatString(std::string& target, const char* format, ...);
/// The same for wide text.
VELUM_API bool FormatString(std::wstring& target, const wchar_t* format, ...);

/// `FormatString` with an argument list, which is used up.
VELUM_API bool FormatStringVA(std::string& target, const char* format, va_list arguments);
/// The same for wide text.
VELUM_API bool FormatStringVA(std::wstring& target, const wchar_t* format, va_list arguments);

/// Appends the text that `FormatString` would give; false leaves `target` as it was.
VELUM_API bool AppendFormatString(std::string& target, const char* format, ...);
/// The same for wide text.
VELUM_API bool AppendFormatString(std::wstring& target, const wchar_t* format, ...);

/// `AppendFormatString` with an argument list, which is used up.
VELUM_API bool AppendFormatStringVA(std::string& target, const char* format, va_list arguments);
/// The same for wide text.
VELUM_API bool AppendFormatStringVA(std::wstring& target, const wchar_t* format, va_list arguments);

/// The formatted text; empty where `FormatString` gives false.
[[nodiscard]] VELUM_API std::string ToString(const char* format, ...);
/// The same for wide text.
[[nodiscard]] VELUM_API std::wstring ToString(const wchar_t* format, ...);

}  // namespace vlm

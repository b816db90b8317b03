#pragma once

/// \file
/// Text that was written for HTML or XML, made plain again.
///
///     const std::string title = vlm::ReplaceHTMLSpecialEntities("a &lt; 5_x0020_m");  // a < 5 m

#include <velum/core/Api.h>

#include <string>

namespace vlm {

/// A copy in which each "_x0041_", that is one to four hexadecimal digits, is the character of that
/// number: the low byte of the number.
[[nodiscard]] VELUM_API std::string ReplaceHTMLHexCodes(const std::string& text);
/// The same for wide text, where the number is one element.
[[nodiscard]] VELUM_API std::wstring ReplaceHTMLHexCodes(const std::wstring& text);

/// A copy with the characters that `&quot;`, `&apos;`, `&lt;`, `&gt;` and `&amp;` stand for, and
/// then without codes, see `ReplaceHTMLHexCodes`. `"&amp;lt;"` gives `"&lt;"`.
[[nodiscard]] VELUM_API std::string ReplaceHTMLSpecialEntities(const std::string& text);
/// The same for wide text.
[[nodiscard]] VELUM_API std::wstring ReplaceHTMLSpecialEntities(const std::wstring& text);

}  // namespace vlm

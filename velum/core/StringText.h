#pragma once

/// \file
/// Case, white space, fields of a line and wild cards.
///
///     unsigned int position = 0;
///     const std::string name = vlm::ParseToken("\"a b\" , c", position, ',');  // a b
///     const bool data = vlm::WildCmp("*.dat", "wells.dat", true);
///
/// All of it works on single bytes or elements. Case follows the runtime's present locale.

#include <velum/core/Api.h>

#include <string>

namespace vlm {

/// A copy in small letters: the runtime's `tolower` on each byte.
[[nodiscard]] VELUM_API std::string ToLower(const std::string& text);
/// The same narrow function on each element below 256; the others stay.
[[nodiscard]] VELUM_API std::wstring ToLower(const std::wstring& text);

/// A copy in capital letters: the runtime's `toupper` on each byte.
[[nodiscard]] VELUM_API std::string ToUpper(const std::string& text);
/// The same narrow function on each element below 256; the others stay.
[[nodiscard]] VELUM_API std::wstring ToUpper(const std::wstring& text);

/// `ToLower` in place.
VELUM_API void MakeLower(std::string& text);
/// `ToLower` in place.
VELUM_API void MakeLower(std::wstring& text);

/// `ToUpper` in place.
VELUM_API void MakeUpper(std::string& text);
/// `ToUpper` in place.
VELUM_API void MakeUpper(std::wstring& text);

/// Removes white space at both ends, as the global `std::locale` knows it; gives `text`.
VELUM_API std::string& Trim(std::string& text);
/// The same for wide text.
VELUM_API std::wstring& Trim(std::wstring& text);

/// `Trim` at the start alone.
VELUM_API std::string& TrimLeft(std::string& text);
/// The same for wide text.
VELUM_API std::wstring& TrimLeft(std::wstring& text);

/// `Trim` at the end alone.
VELUM_API std::string& TrimRight(std::string& text);
/// The same for wide text.
VELUM_API std::wstring& TrimRight(std::wstring& text);

/// Gives the next field of a delimited line and moves `position` behind its delimiter.
///
/// White space around a field is no part of it, as the runtime's present locale knows it. A field
/// in double quotation marks ends at the next such mark, for which there is no escape; what follows
/// up to the delimiter is passed over. At the end of the line the field is empty and `position`
/// stays.
///
/// `"a b" , c,,d` has the fields "a b", "c", "" and "d".
VELUM_API std::string ParseToken(const std::string& text, unsigned int& position, char delimiter);
/// The same for wide text.
VELUM_API std::wstring ParseToken(const std::wstring& text, unsigned int& position,
                                  wchar_t delimiter);

/// True if all of `text` matches `pattern`, where "*" is any run of characters, the empty one too,
/// and "?" is any one character.
///
/// Without `caseSensitive`, characters are compared in small letters. A null argument gives false.
///
/// *Cost*: at worst the product of the lengths; no recursion.
[[nodiscard]] VELUM_API bool WildCmp(const char* pattern, const char* text, bool caseSensitive);
/// The same for wide text.
[[nodiscard]] VELUM_API bool WildCmp(const wchar_t* pattern, const wchar_t* text,
                                     bool caseSensitive);

}  // namespace vlm

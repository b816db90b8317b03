#pragma once

/// \file
/// Numbers and fields in terminated text, such as the lines of a table.
///
///     const char* line = "  1.5, \"Well 7\"";
///     double depth = 0;
///     if (!vlm::ParseDouble(line, &depth, &line)) return;
///     std::string name;
///     line += vlm::ParseString(line, name);
///
/// White space is what the runtime's present locale takes for it.

#include <velum/core/Api.h>

#include <string>

namespace vlm {

/// True if `text` starts with a number that ends at white space or with the text.
///
/// White space may stand before it. A number has a sign, if any, digits with a point, if any, and
/// an exponent after "e", "E", "d" or "D", if any:
/// - `"1.5e3"`, `".5"`, `"1."`, `"1d5"`, `"7 wells"` are numbers;
/// - `"."`, `"1e"`, `"7wells"`, the empty text and null are not.
[[nodiscard]] VELUM_API bool IsNumber(const char* text);
/// The same for wide text.
[[nodiscard]] VELUM_API bool IsNumber(const wchar_t* text);

/// Reads the number that `text` starts with, whatever the locale, and one comma behind it.
///
/// White space may stand before the number and before the comma. The number is a sign, digits, a
/// point and digits, "e" or "E" with a sign and digits, each of them if it is there; something
/// behind the sign must be. `next`, unless it is null, gets the place behind.
///
/// - `"1.5 , 2"` gives 1.5 and leads to `" 2"`;
/// - `"1e"` gives 1, `"."` and `"e5"` give 0;
/// - `"-"`, `"abc"`, a null `text` or `value`, and 255 characters or more give false; nothing
///   changes;
/// - a value too large for a `double` gives infinity.
VELUM_API bool ParseDouble(const char* text, double* value, const char** next);

/// Reads one field and the comma behind it; gives how many characters that were. Null gives 0.
///
/// A field ends at white space or a comma; one that starts with a double quotation mark ends at the
/// next such mark, and two in a row stand for one. White space around a field is passed over.
///
/// `buffer` gets the field's first `bufferSize - 1` characters and a terminator; without room for
/// that it is left alone.
VELUM_API int ParseString(const char* text, char* buffer, int bufferSize);
/// The same for wide text.
VELUM_API int ParseString(const wchar_t* text, wchar_t* buffer, int bufferSize);
/// The same with a string for the whole field.
VELUM_API int ParseString(const char* text, std::string& value);
/// The same for wide text.
VELUM_API int ParseString(const wchar_t* text, std::wstring& value);

/// Replaces each comma outside of double quotation marks by a blank, in place. Null is left alone.
VELUM_API void CommaToBlank(char* text);
/// The same for wide text.
VELUM_API void CommaToBlank(wchar_t* text);

}  // namespace vlm

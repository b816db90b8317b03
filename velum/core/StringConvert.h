#pragma once

/// \file
/// Numbers and truth values read from text, and written.
///
///     double depth = 0;
///     if (!vlm::StringToDouble(" 2.5e3 ", depth)) return;
///     const std::string text = vlm::DoubleToString(depth, 2);  // 2500.00

#include <velum/core/Api.h>

#include <cstdint>
#include <string>

namespace vlm {

/// Reads "t", "1", "true" as true and "f", "0", "false" as false, in any case.
///
/// False for any other text, white space included: `value` is then false.
VELUM_API bool StringToBool(const std::string& text, bool& value);
/// The same for wide text.
VELUM_API bool StringToBool(const std::wstring& text, bool& value);

/// Reads a decimal number: a sign, digits with a point, an exponent after "e" or "E".
///
/// White space at the ends is passed over, as `Trim` finds it. The point is that of the runtime's
/// locale, as `setlocale` sets it. `value` is 0 where the result is false.
/// - `" 2.5e3 "` gives 2500, `"+1."` gives 1, `".5"` gives 0.5;
/// - white space alone gives true and 0, the empty text false;
/// - a value too large for a `double` gives false, one too small the nearest that there is;
/// - `"1d5"`, `"0x10"`, `"inf"`, `"nan"` and text with anything left over give false.
VELUM_API bool StringToDouble(const std::string& text, double& value);
/// The same for wide text.
VELUM_API bool StringToDouble(const std::wstring& text, double& value);

/// Reads a whole number in base 10: one "-", if any, and digits alone.
///
/// `value` is 0 where the result is false.
/// - `"-"` gives true and 0, the empty text false;
/// - `"+1"`, `" 1"`, `"1 "` give false;
/// - a value out of range gives false, and so does a limit of the range with zeros before it.
VELUM_API bool StringToInt(const std::string& text, int& value);
/// The same for wide text.
VELUM_API bool StringToInt(const std::wstring& text, int& value);

/// Reads a whole number of 64 bits, by the rules of `StringToInt`.
VELUM_API bool StringToInt64(const std::string& text, std::int64_t& value);
/// The same for wide text.
VELUM_API bool StringToInt64(const std::wstring& text, std::int64_t& value);

/// Reads a whole number from 0, by the rules of `StringToInt` without the sign.
VELUM_API bool StringToUnsigned(const std::string& text, unsigned int& value);
/// The same for wide text.
VELUM_API bool StringToUnsigned(const std::wstring& text, unsigned int& value);

/// "True" or "False", which `StringToBool` reads back.
[[nodiscard]] VELUM_API std::string BoolToString(bool value);
/// The same as wide text.
[[nodiscard]] VELUM_API std::wstring BoolToStringW(bool value);

/// `value` in fixed notation with `decimals` digits behind the point.
///
/// It is the text that a standard stream gives, with the point and the grouping of the global
/// `std::locale`; "inf" and "nan", with a "-" where the sign bit is set, for what is no number.
[[nodiscard]] VELUM_API std::string DoubleToString(double value, unsigned int decimals);
/// The same as wide text.
[[nodiscard]] VELUM_API std::wstring DoubleToStringW(double value, unsigned int decimals);

}  // namespace vlm

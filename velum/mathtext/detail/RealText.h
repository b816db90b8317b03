#pragma once

/// \file
/// Reads real numbers of math text, whatever the locale.
///
///     double value;
///     detail::ReadReal(text, text + 4, value);  // "+.5e" has been checked by the grammar

namespace vlm::detail {

/// Reads a number whose form is known to be right: an optional sign, digits with at most one point,
/// an optional exponent. The result is the double nearest to it.
///
/// - Too large for a double: false.
/// - Too small: 0, with the sign, and true.
[[nodiscard]] bool ReadReal(const char* first, const char* last, double& value);

/// Reads what begins with "nan" or "inf", in any case, behind an optional sign.
[[nodiscard]] double ReadRealWord(const char* word);

}  // namespace vlm::detail

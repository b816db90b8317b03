#pragma once

/// \file
/// What the text of a field says: a number, that there is none, or something else.
///
///     double number;
///     vlm::describe::ReadValue(" 1.5e3 ", number);  // ValueKind::Number, 1500

#include <string_view>

namespace vlm::describe {

/// What a field holds.
enum class ValueKind { Number, Missing, Text };

/// Reads a finite number with a decimal point, blanks around it allowed, into `number`.
///
/// - Nothing, "NA", "N/A", "NaN", "null" in any case, "-": missing.
/// - Anything else, an infinity or a number beyond the largest `double` as well: text.
[[nodiscard]] ValueKind ReadValue(std::string_view text, double& number);

/// The text without blanks around it.
[[nodiscard]] std::string_view Trimmed(std::string_view text);

}  // namespace vlm::describe

#pragma once

/// \file
/// Finds out where and why a math text is wrong, by scanning it without laying it out.
///
///     const auto fault = vlm::examples::FindFault("Depth \\zzz(m)");
///     // fault->line is 1, fault->column is 7, fault->reason "cannot read '\zzz(m)'"

#include <cstddef>
#include <optional>
#include <string>

namespace vlm::examples {

/// What is wrong with a math text, and where. A plain value.
struct LabelFault {
  std::string reason;      ///< in words, without the place
  std::size_t line = 1;    ///< of the text, counted from 1
  std::size_t column = 0;  ///< in bytes, counted from 1; 0 where only the line is known

  /// The place in words: "line 1, column 7".
  [[nodiscard]] std::string Place() const;

  /// The place and the reason: "line 1, column 7: cannot read '\zzz(m)'".
  [[nodiscard]] std::string InWords() const;
};

/// Finds the first fault of a text: a directive that can't be read, a brace that has no partner in
/// its line, a substring that has no beginning or no end.
///
/// Nothing if there is none of these; `CMTContext::Parse` refuses a few texts more, whose numbers
/// are too large or whose substrings are nested too deeply.
[[nodiscard]] std::optional<LabelFault> FindFault(const std::string& text);

}  // namespace vlm::examples

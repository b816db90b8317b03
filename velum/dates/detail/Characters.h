#pragma once

/// \file
/// The classes of characters that dates are made of, whatever the locale.
///
///     detail::EqualsFolded("DEC", "Dec");  // true

#include <velum/platform/detail/Ascii.h>

#include <cstddef>
#include <string_view>

namespace vlm::detail {

using platform::IsDigit;

[[nodiscard]] constexpr bool IsBlank(char c) noexcept {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// The small letter of an ASCII letter; something that is no letter of anything else.
[[nodiscard]] constexpr char Folded(char c) noexcept { return static_cast<char>(c | 0x20); }

[[nodiscard]] constexpr bool IsLetter(char c) noexcept {
  return Folded(c) >= 'a' && Folded(c) <= 'z';
}

/// True if two texts of ASCII letters are equal but for their cases.
[[nodiscard]] constexpr bool EqualsFolded(std::string_view text, std::string_view name) noexcept {
  if (text.size() != name.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (Folded(text[i]) != Folded(name[i])) return false;
  }
  return true;
}

}  // namespace vlm::detail

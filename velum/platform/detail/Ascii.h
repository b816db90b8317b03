#pragma once

/// \file
/// The characters of ASCII, whatever the locale.
///
///     vlm::platform::FoldAscii('A');  // 'a'

namespace vlm::platform {

/// True for a decimal digit.
[[nodiscard]] constexpr bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

/// True for a control character, tabs and line ends among them: what could end or garble a line.
[[nodiscard]] constexpr bool IsControl(char c) noexcept {
  return static_cast<unsigned char>(c) < ' ' || c == '\x7F';
}

/// The small letter of an ASCII capital letter; every other byte stays.
[[nodiscard]] constexpr char FoldAscii(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

}  // namespace vlm::platform

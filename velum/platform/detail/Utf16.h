#pragma once

/// \file
/// UTF-16 as files store it, made wide and back.
///
///     wchar_t text[2];
///     vlm::platform::Utf16ToWide("\xFC\0!\0", 2, false, text);  // ü!
///
/// Nothing is refused: a surrogate without its partner gives U+FFFD in both directions, an element
/// above 0xFFFF is taken as that code point.

#include <cstddef>
#include <string_view>

namespace vlm::platform {

/// Converts `count` units at `bytes`, two bytes each, to as many elements.
void Utf16ToWide(const char* bytes, std::size_t count, bool highFirst, wchar_t* out) noexcept;

/// Converts `text`; gives the number of bytes written to `out`, which are 4 for an element at most.
std::size_t WideToUtf16(std::wstring_view text, bool highFirst, char* out) noexcept;

/// The unit whose two bytes stand at `bytes`.
constexpr wchar_t UnitAt(const char* bytes, bool highFirst) noexcept {
  const auto first = static_cast<unsigned char>(bytes[0]);
  const auto second = static_cast<unsigned char>(bytes[1]);
  return static_cast<wchar_t>(highFirst ? first << 8 | second : second << 8 | first);
}

/// True for the first half of a pair.
constexpr bool IsHighSurrogate(wchar_t unit) noexcept { return unit >= 0xD800 && unit <= 0xDBFF; }

/// True for the second half of a pair.
constexpr bool IsLowSurrogate(wchar_t unit) noexcept { return unit >= 0xDC00 && unit <= 0xDFFF; }

}  // namespace vlm::platform

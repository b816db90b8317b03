#pragma once

/// \file
/// UTF-8 and UTF-16 in `wchar_t` elements, one made from the other.
///
///     const std::size_t units = vlm::platform::Utf8ToWide("Größe", nullptr);  // 5
///
/// Nothing is refused: malformed UTF-8 gives U+FFFD for each longest part of a character that could
/// still have gone on, a surrogate without its partner gives U+FFFD, an element above 0xFFFF is
/// taken as that code point.

#include <cstddef>
#include <string>
#include <string_view>

namespace vlm::platform {

/// Stands for what can't be read.
inline constexpr char32_t kReplacement = 0xFFFD;

/// Converts `text`; gives the number of elements written to `out`, or needed if `out` is null.
///
/// There are at most as many elements as bytes.
std::size_t Utf8ToWide(std::string_view text, wchar_t* out) noexcept;

/// Converts `text`; gives the number of bytes written to `out`, or needed if `out` is null.
std::size_t WideToUtf8(std::wstring_view text, char* out) noexcept;
/// A copy of `text` in UTF-8.
[[nodiscard]] std::string WideToUtf8(std::wstring_view text);

/// How many bytes a character has that starts with `lead`; 1 for what starts none.
constexpr std::size_t Utf8Length(unsigned char lead) noexcept {
  if (lead < 0xC2 || lead > 0xF4) return 1;
  return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

/// `NextCodePoint` for any character, well formed or not.
constexpr char32_t NextCodePointSlowly(const char*& at, const char* end) noexcept {
  const auto lead = static_cast<unsigned char>(*at++);
  if (lead < 0x80) return lead;
  const std::size_t length = Utf8Length(lead);
  if (length == 1) return kReplacement;
  // The first continuation byte has a narrower range where a longer form, a surrogate or a number
  // above 0x10FFFF would begin.
  unsigned char low = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
  unsigned char high = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
  char32_t code = lead & (0x7Fu >> length);
  for (std::size_t i = 1; i < length; ++i) {
    if (at == end) return kReplacement;
    const auto next = static_cast<unsigned char>(*at);
    if (next < low || next > high) return kReplacement;
    code = code << 6 | (next & 0x3Fu);
    low = 0x80;
    high = 0xBF;
    ++at;
  }
  return code;
}

/// The code point at `at`, which moves behind it; `at` is before `end`.
constexpr char32_t NextCodePoint(const char*& at, const char* end) noexcept {
  const auto byte = [&at](int i) {
    return static_cast<char32_t>(static_cast<unsigned char>(at[i]));
  };
  const char32_t lead = byte(0);
  if (lead < 0x80) {
    ++at;
    return lead;
  }
  // Well-formed characters of two and three bytes are nearly all that there are.
  if (end - at >= 3) {
    const char32_t second = byte(1) ^ 0x80;
    if (lead >= 0xC2 && lead < 0xE0 && second < 0x40) {
      at += 2;
      return (lead & 0x1F) << 6 | second;
    }
    const char32_t third = byte(2) ^ 0x80;
    const char32_t code = (lead & 0xF) << 12 | second << 6 | third;
    if (lead >= 0xE0 && lead < 0xF0 && (second | third) < 0x40 && code >= 0x800 &&
        (code < 0xD800 || code > 0xDFFF)) {
      at += 3;
      return code;
    }
  }
  return NextCodePointSlowly(at, end);
}

/// The code point at `at`, which moves behind it; `at` is before `end`.
constexpr char32_t NextCodePoint(const wchar_t*& at, const wchar_t* end) noexcept {
  const auto first = static_cast<char32_t>(*at++);
  if (first < 0xD800 || (first > 0xDFFF && first <= 0x10FFFF)) return first;
  if (first > 0xDBFF || at == end) return kReplacement;
  const auto second = static_cast<char32_t>(*at);
  if (second < 0xDC00 || second > 0xDFFF) return kReplacement;
  ++at;
  return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

/// Writes `code` to `out` as one or two elements; gives their number.
constexpr std::size_t PutWide(char32_t code, wchar_t* out) noexcept {
  if (code <= 0xFFFF) {
    out[0] = static_cast<wchar_t>(code);
    return 1;
  }
  out[0] = static_cast<wchar_t>(0xD7C0 + (code >> 10));
  out[1] = static_cast<wchar_t>(0xDC00 + (code & 0x3FF));
  return 2;
}

/// Writes `code` to `out` as one to four bytes; gives their number.
constexpr std::size_t PutUtf8(char32_t code, char* out) noexcept {
  const auto tail = [code](int shift) { return static_cast<char>(0x80 | (code >> shift & 0x3F)); };
  if (code < 0x80) {
    out[0] = static_cast<char>(code);
    return 1;
  }
  if (code < 0x800) {
    out[0] = static_cast<char>(0xC0 | code >> 6);
    out[1] = tail(0);
    return 2;
  }
  if (code < 0x10000) {
    out[0] = static_cast<char>(0xE0 | code >> 12);
    out[1] = tail(6);
    out[2] = tail(0);
    return 3;
  }
  out[0] = static_cast<char>(0xF0 | code >> 18);
  out[1] = tail(12);
  out[2] = tail(6);
  out[3] = tail(0);
  return 4;
}

}  // namespace vlm::platform

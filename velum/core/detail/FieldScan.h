#pragma once

/// \file
/// The steps that readers of fields share: white space, quoted text, plain text.
///
///     std::string field;
///     const auto store = [&field](char c) { field += c; };
///     const char* rest = vlm::detail::ScanPlain(vlm::detail::SkipSpace(" a, b"), store);  // ", b"
///
/// White space is what the runtime's present locale takes for it, which `setlocale` sets.

#include <cctype>
#include <cwctype>

namespace vlm::detail {

/// True for white space.
inline bool IsRuntimeSpace(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }
/// True for white space.
inline bool IsRuntimeSpace(wchar_t c) { return std::iswspace(static_cast<std::wint_t>(c)) != 0; }

/// The first character that is no white space, at the latest the terminator.
template <class Char>
Char* SkipSpace(Char* text) {
  while (IsRuntimeSpace(*text)) ++text;
  return text;
}

/// Behind one comma, if `text` stands at one.
template <class Char>
const Char* SkipComma(const Char* text) {
  return *text == Char(',') ? text + 1 : text;
}

/// Stores the characters behind the double quotation mark at `text`; two marks in a row are one of
/// them. Gives the closing mark, or the terminator if there is none.
template <class Char, class Store>
const Char* ScanQuoted(const Char* text, Store store) {
  constexpr Char kMark = '"';
  for (++text; *text; ++text) {
    if (*text == kMark && *++text != kMark) return text - 1;
    store(*text);
  }
  return text;
}

/// Stores the characters up to white space, a comma or the terminator; gives that place.
template <class Char, class Store>
const Char* ScanPlain(const Char* text, Store store) {
  for (; *text && *text != Char(',') && !IsRuntimeSpace(*text); ++text) store(*text);
  return text;
}

}  // namespace vlm::detail

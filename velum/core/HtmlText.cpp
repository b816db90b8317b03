#include <velum/core/HtmlText.h>

#include <cstddef>

namespace vlm {

namespace {

/// The value of a hexadecimal digit, -1 for any other character.
template <class Char>
int HexValue(Char c) {
  if (c >= Char('0') && c <= Char('9')) return static_cast<int>(c - Char('0'));
  if (c >= Char('a') && c <= Char('f')) return static_cast<int>(c - Char('a')) + 10;
  if (c >= Char('A') && c <= Char('F')) return static_cast<int>(c - Char('A')) + 10;
  return -1;
}

/// The length of the code "_x0041_" at `at`, which stands at a "_"; 0 if it is none. `value` gets
/// its number.
template <class Char>
std::size_t CodeLength(const std::basic_string<Char>& text, std::size_t at, unsigned int& value) {
  constexpr std::size_t kFirstDigit = 2;
  constexpr std::size_t kMostDigits = 4;
  // The terminator of the string ends each comparison.
  const Char* const code = text.c_str() + at;
  if (code[1] != Char('x') && code[1] != Char('X')) return 0;
  value = 0;
  std::size_t digits = 0;
  for (; digits < kMostDigits && HexValue(code[kFirstDigit + digits]) >= 0; ++digits) {
    value = value * 16 + static_cast<unsigned int>(HexValue(code[kFirstDigit + digits]));
  }
  const bool isCode = digits > 0 && code[kFirstDigit + digits] == Char('_');
  return isCode ? kFirstDigit + digits + 1 : 0;
}

template <class Char>
std::basic_string<Char> WithoutCodes(const std::basic_string<Char>& text) {
  std::basic_string<Char> plain;
  plain.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    unsigned int value = 0;
    const std::size_t length = text[at] == Char('_') ? CodeLength(text, at, value) : 0;
    plain += length ? static_cast<Char>(value) : text[at];
    at += length ? length : 1;
  }
  return plain;
}

struct Entity {
  const char* name;
  char character;
};

constexpr Entity kEntities[] = {
    {"&quot;", '"'}, {"&apos;", '\''}, {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}};

/// The length of `name` if `text` starts with it, otherwise 0.
template <class Char>
std::size_t MatchLength(const Char* text, const char* name) {
  std::size_t length = 0;
  for (; name[length]; ++length) {
    if (text[length] != static_cast<Char>(name[length])) return 0;
  }
  return length;
}

/// One pass is enough: no replacement completes another entity, since only the last of them gives
/// an ampersand.
template <class Char>
std::basic_string<Char> WithoutEntities(const std::basic_string<Char>& text) {
  std::basic_string<Char> plain;
  plain.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    Char character = text[at];
    std::size_t length = 0;
    if (character == Char('&')) {
      for (const Entity& entity : kEntities) {
        length = MatchLength(text.c_str() + at, entity.name);
        if (length == 0) continue;
        character = static_cast<Char>(entity.character);
        break;
      }
    }
    plain += character;
    at += length ? length : 1;
  }
  return plain;
}

}  // namespace

std::string ReplaceHTMLHexCodes(const std::string& text) { return WithoutCodes(text); }
std::wstring ReplaceHTMLHexCodes(const std::wstring& text) { return WithoutCodes(text); }

std::string ReplaceHTMLSpecialEntities(const std::string& text) {
  return WithoutCodes(WithoutEntities(text));
}

std::wstring ReplaceHTMLSpecialEntities(const std::wstring& text) {
  return WithoutCodes(WithoutEntities(text));
}

}  // namespace vlm

#pragma once

/// \file
/// The grammar of the format language: what stands between "%" and the letter of a conversion.
///
///     const char* at = "-8.2f";
///     vlm::detail::FormatDirective directive;
///     const bool known = vlm::detail::ReadDirective(at, directive);  // width 8, precision 2

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace vlm::detail {

/// The type of an argument, as the letters before the conversion give it.
enum class ArgumentSize {
  kPlain,       ///< No letter.
  kChar,        ///< hh
  kShort,       ///< h; narrow text.
  kLong,        ///< l; wide text.
  kLongLong,    ///< ll
  kMax,         ///< j
  kSize,        ///< z
  kDifference,  ///< t
  kLongDouble,  ///< L
  kInt32,       ///< I32
  kInt64,       ///< I64
  kPointer,     ///< I: as wide as a pointer.
  kWide,        ///< w: wide text.
};

/// What a conversion takes from the arguments.
enum class ArgumentKind : unsigned char {
  kNone,
  kSigned,
  kUnsigned,
  kFloat,
  kString,
  kCharacter,
  kAddress
};

/// The kind of the conversion that `letter` stands for; `kNone` if there is none.
constexpr ArgumentKind KindOf(unsigned char letter) noexcept {
  switch (letter) {
    case 'd':
    case 'i':
      return ArgumentKind::kSigned;
    case 'o':
    case 'u':
    case 'x':
    case 'X':
      return ArgumentKind::kUnsigned;
    case 'f':
    case 'F':
    case 'e':
    case 'E':
    case 'g':
    case 'G':
    case 'a':
    case 'A':
      return ArgumentKind::kFloat;
    case 's':
    case 'S':
      return ArgumentKind::kString;
    case 'c':
    case 'C':
      return ArgumentKind::kCharacter;
    case 'p':
      return ArgumentKind::kAddress;
    default:
      return ArgumentKind::kNone;
  }
}

/// One directive of the language.
struct FormatDirective {
  static constexpr int kNone = -1;      ///< No width or precision is given.
  static constexpr int kArgument = -2;  ///< The number comes with the arguments: "*".
  static constexpr std::string_view kFlags = "-+ #0";
  static constexpr unsigned int kLeft = 1;  ///< The bit of "-".

  unsigned int flags = 0;  ///< A bit for each of `kFlags`.
  int width = kNone;       ///< The least number of characters.
  int precision = kNone;   ///< What stands behind the point.
  ArgumentSize size = ArgumentSize::kPlain;
  char conversion = '\0';
  ArgumentKind kind = ArgumentKind::kNone;

  /// True if the conversion is one of the language, and the size goes with it.
  [[nodiscard]] constexpr bool IsKnown() const noexcept {
    using enum ArgumentSize;
    switch (kind) {
      case ArgumentKind::kSigned:
      case ArgumentKind::kUnsigned:
        return size != kLongDouble && size != kWide;
      case ArgumentKind::kFloat:
        return size == kPlain || size == kLong || size == kLongDouble;
      case ArgumentKind::kString:
      case ArgumentKind::kCharacter:
        return size == kPlain || size == kShort || size == kLong || size == kWide;
      default:
        return kind == ArgumentKind::kAddress && size == kPlain;
    }
  }

  /// True if C's narrow `printf` reads a known directive as this language does in its narrow form.
  [[nodiscard]] constexpr bool IsNative() const noexcept {
    using enum ArgumentSize;
    if (kind == ArgumentKind::kString || kind == ArgumentKind::kCharacter) {
      return size == kPlain && conversion != 'S' && conversion != 'C';
    }
    return size != kInt32 && size != kInt64 && size != kPointer;
  }
};

/// Steps over `word` if it stands at `at`.
template <class Char>
constexpr bool TakeWord(const Char*& at, std::string_view word) noexcept {
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (at[i] != Char(word[i])) return false;
  }
  at += word.size();
  return true;
}

/// Reads "*" or digits; `otherwise` if there are none.
template <class Char>
constexpr int TakeNumber(const Char*& at, int otherwise) noexcept {
  constexpr int kEnough = 1000000;  // More than any text has room for.
  if (TakeWord(at, "*")) return FormatDirective::kArgument;
  if (*at < Char('0') || *at > Char('9')) return otherwise;
  int number = 0;
  for (; *at >= Char('0') && *at <= Char('9'); ++at) {
    number = std::min(number * 10 + static_cast<int>(*at - Char('0')), kEnough);
  }
  return number;
}

/// Reads the letters that say the size of the argument.
template <class Char>
constexpr ArgumentSize TakeSize(const Char*& at) noexcept {
  using enum ArgumentSize;
  switch (*at) {
    case Char('h'):
      ++at;
      return TakeWord(at, "h") ? kChar : kShort;
    case Char('l'):
      ++at;
      return TakeWord(at, "l") ? kLongLong : kLong;
    case Char('I'):
      ++at;
      return TakeWord(at, "64") ? kInt64 : TakeWord(at, "32") ? kInt32 : kPointer;
    case Char('j'):
      ++at;
      return kMax;
    case Char('z'):
      ++at;
      return kSize;
    case Char('t'):
      ++at;
      return kDifference;
    case Char('L'):
      ++at;
      return kLongDouble;
    case Char('w'):
      ++at;
      return kWide;
    default:
      return kPlain;
  }
}

/// Reads "-", "+", " ", "#" and "0" in any order; gives their bits.
template <class Char>
constexpr unsigned int TakeFlags(const Char*& at) noexcept {
  unsigned int flags = 0;
  // All flags stand before the digits 1 to 9 in ASCII.
  for (; *at <= Char('0'); ++at) {
    const std::size_t flag = FormatDirective::kFlags.find(static_cast<char>(*at));
    if (flag == std::string_view::npos) break;
    flags |= 1u << flag;
  }
  return flags;
}

/// Reads the directive at `at`, the character behind the "%", and steps over it.
///
/// False for what is not part of the language.
template <class Char>
constexpr bool ReadDirective(const Char*& at, FormatDirective& directive) noexcept {
  directive = {};
  directive.flags = TakeFlags(at);
  directive.width = TakeNumber(at, FormatDirective::kNone);
  if (TakeWord(at, ".")) directive.precision = TakeNumber(at, 0);
  directive.size = TakeSize(at);
  if (*at <= Char(0) || *at > Char('z')) return false;
  directive.conversion = static_cast<char>(*at++);
  directive.kind = KindOf(static_cast<unsigned char>(directive.conversion));
  return directive.IsKnown();
}

}  // namespace vlm::detail

#include <velum/core/StringFormat.h>

#include <velum/core/detail/FormatDirective.h>
#include <velum/platform/detail/RuntimeLocale.h>
#include <velum/platform/detail/Utf8.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <string_view>
#include <system_error>

namespace vlm {

namespace {

using detail::ArgumentKind;
using detail::ArgumentSize;
using detail::FormatDirective;
using detail::ReadDirective;

/// The longest text that can be formatted.
constexpr std::size_t kLimit = 8191;

/// An argument list that functions can use up together.
class Arguments {
 public:
  explicit Arguments(va_list list) { va_copy(list_, list); }
  Arguments(const Arguments&) = delete;
  Arguments& operator=(const Arguments&) = delete;
  ~Arguments() { va_end(list_); }

  template <class T>
  T Next() {
    return va_arg(list_, T);
  }

 private:
  va_list list_;
};

std::intmax_t NextSigned(ArgumentSize size, Arguments& arguments) {
  switch (size) {
    case ArgumentSize::kChar:
      return static_cast<signed char>(arguments.Next<int>());
    case ArgumentSize::kShort:
      return static_cast<short>(arguments.Next<int>());
    case ArgumentSize::kLong:
      return arguments.Next<long>();
    case ArgumentSize::kLongLong:
      return arguments.Next<long long>();
    case ArgumentSize::kMax:
      return arguments.Next<std::intmax_t>();
    case ArgumentSize::kInt64:
      return arguments.Next<std::int64_t>();
    case ArgumentSize::kSize:
    case ArgumentSize::kDifference:
    case ArgumentSize::kPointer:
      return arguments.Next<std::ptrdiff_t>();
    default:
      return arguments.Next<int>();
  }
}

std::uintmax_t NextUnsigned(ArgumentSize size, Arguments& arguments) {
  const auto value = static_cast<std::uintmax_t>(NextSigned(size, arguments));
  switch (size) {
    case ArgumentSize::kChar:
      return static_cast<unsigned char>(value);
    case ArgumentSize::kShort:
      return static_cast<unsigned short>(value);
    case ArgumentSize::kPlain:
    case ArgumentSize::kInt32:
      return static_cast<unsigned int>(value);
    default:
      return value;
  }
}

/// Reads one character at `at`, steps over it and writes it to `out`, which has room for four
/// elements; gives the number of elements written.
std::size_t Transcode(const char*& at, wchar_t* out) {
  const std::size_t length = platform::Utf8Length(static_cast<unsigned char>(*at));
  const char* end = at + 1;
  while (end < at + length && *end) ++end;  // The text may stop inside of the character.
  return platform::PutWide(platform::NextCodePoint(at, end), out);
}

std::size_t Transcode(const wchar_t*& at, char* out) {
  return platform::PutUtf8(platform::NextCodePoint(at, at + 2), out);
}

std::size_t Transcode(const wchar_t*& at, wchar_t* out) {
  if (static_cast<char32_t>(*at) > 0xFFFF) {
    return platform::PutWide(platform::NextCodePoint(at, at + 1), out);
  }
  *out = *at++;
  return 1;
}

std::size_t Transcode(const char*& at, char* out) {
  *out = *at++;
  return 1;
}

/// Formats all of the language, in either width, into a text of at most `kLimit` characters.
template <class Char>
class Formatter {
 public:
  explicit Formatter(va_list arguments) : arguments_(arguments) {}

  /// False for a text that does not fit, or a directive that is refused.
  bool Run(const Char* at) {
    while (*at && text_.size() <= kLimit) {
      if (*at == Char('%') && at[1] != Char('%')) {
        FormatDirective directive;
        if (!ReadDirective(++at, directive) || !Put(directive)) return false;
      } else {
        if (*at == Char('%')) ++at;
        Char out[4];
        text_.append(out, Transcode(at, out));
      }
    }
    return text_.size() <= kLimit;
  }

  /// The text, up to its first terminator.
  [[nodiscard]] std::basic_string_view<Char> Text() const { return text_.c_str(); }

 private:
  bool Put(FormatDirective& directive) {
    TakeCounts(directive);
    if (directive.width > static_cast<int>(kLimit)) return false;
    switch (directive.kind) {
      case ArgumentKind::kString:
        IsWide(directive) ? PutString(directive, arguments_.Next<const wchar_t*>())
                          : PutString(directive, arguments_.Next<const char*>());
        return true;
      case ArgumentKind::kCharacter:
        IsWide(directive)
            ? PutCharacter(directive, static_cast<wchar_t>(arguments_.Next<std::wint_t>()))
            : PutCharacter(directive, static_cast<char>(arguments_.Next<int>()));
        return true;
      case ArgumentKind::kSigned:
        return PutNumber(directive, 'j', NextSigned(directive.size, arguments_));
      case ArgumentKind::kUnsigned:
        return PutNumber(directive, 'j', NextUnsigned(directive.size, arguments_));
      case ArgumentKind::kFloat:
        return directive.size == ArgumentSize::kLongDouble
                   ? PutNumber(directive, 'L', arguments_.Next<long double>())
                   : PutNumber(directive, 'l', arguments_.Next<double>());
      default:
        return PutNumber(directive, '\0', arguments_.Next<void*>());
    }
  }

  /// Fetches the width and the precision where they come as arguments.
  void TakeCounts(FormatDirective& directive) {
    if (directive.width == FormatDirective::kArgument) {
      directive.width = arguments_.Next<int>();
      if (directive.width < 0) {
        directive.flags |= FormatDirective::kLeft;
        directive.width = -std::max(directive.width, -static_cast<int>(kLimit) - 1);
      }
    }
    if (directive.precision == FormatDirective::kArgument) {
      directive.precision = std::max(arguments_.Next<int>(), FormatDirective::kNone);
    }
  }

  /// True if the text or character of a directive is wide.
  static bool IsWide(const FormatDirective& directive) {
    switch (directive.size) {
      case ArgumentSize::kShort:
        return false;
      case ArgumentSize::kLong:
      case ArgumentSize::kWide:
        return true;
      default:
        return (sizeof(Char) > 1) != (directive.conversion == 'S' || directive.conversion == 'C');
    }
  }

  template <class From>
  void PutString(const FormatDirective& directive, const From* text) {
    constexpr From kNull[] = {'(', 'n', 'u', 'l', 'l', ')', '\0'};
    if (!text) text = kNull;
    std::size_t limit = kLimit + 1;
    if (directive.precision >= 0)
      limit = std::min(limit, static_cast<std::size_t>(directive.precision));
    std::basic_string<Char> piece;
    while (piece.size() < limit && *text) {
      Char out[4];
      const std::size_t length = Transcode(text, out);
      if (piece.size() + length > limit) break;
      piece.append(out, length);
    }
    PutPadded(directive, piece);
  }

  template <class From>
  void PutCharacter(const FormatDirective& directive, From c) {
    const From text[] = {c, From()};
    const From* at = text;
    Char out[4];
    const std::size_t length = Transcode(at, out);
    PutPadded(directive, {out, length});
  }

  void PutPadded(const FormatDirective& directive, std::basic_string_view<Char> piece) {
    const auto width = static_cast<std::size_t>(std::max(directive.width, 0));
    const std::size_t padding = width - std::min(width, piece.size());
    const bool left = (directive.flags & FormatDirective::kLeft) != 0;
    if (!left) text_.append(padding, Char(' '));
    text_.append(piece);
    if (left) text_.append(padding, Char(' '));
  }

  /// Leaves a number to C, with the letter for the size that it now has.
  template <class Number>
  bool PutNumber(const FormatDirective& directive, char size, Number number) {
    char format[16] = "%";
    char* at = format + 1;
    for (std::size_t i = 0; i < FormatDirective::kFlags.size(); ++i) {
      if (directive.flags & 1u << i) *at++ = FormatDirective::kFlags[i];
    }
    for (const char c : {'*', '.', '*', size, directive.conversion}) {
      if (c) *at++ = c;
    }
    char digits[kLimit + 1];
    const int length = std::snprintf(digits, sizeof(digits), format, std::max(directive.width, 0),
                                     directive.precision, number);
    if (length < 0 || length > static_cast<int>(kLimit)) return false;
    PutDigits({digits, static_cast<std::size_t>(length)});
    return true;
  }

  void PutDigits(std::string_view digits) {
    if constexpr (sizeof(Char) == 1) {
      text_.append(digits);
    } else {
      Char wide[kLimit];
      text_.append(wide, platform::Utf8ToWide(digits, wide));
    }
  }

  Arguments arguments_;
  std::basic_string<Char> text_;
};

/// Who can format a text.
enum class Engine {
  kRuntime,  ///< C's `printf`.
  kOurs,     ///< Only `Formatter`.
  kNone,     ///< Nobody: the format has what is not part of the language.
};

Engine FindEngine(const char* at) {
  Engine engine = Engine::kRuntime;
  while ((at = std::strchr(at, '%'))) {
    if (*++at == '%') {
      ++at;
      continue;
    }
    FormatDirective directive;
    if (!ReadDirective(at, directive)) return Engine::kNone;
    if (!directive.IsNative()) engine = Engine::kOurs;
  }
  return engine;
}

template <class Char>
bool Store(std::basic_string<Char>& target, std::basic_string_view<Char> text, bool append) {
  append ? target.append(text) : target.assign(text);
  return true;
}

template <class Char>
bool FormatWithOurs(std::basic_string<Char>& target, const Char* format, va_list arguments,
                    bool append) {
  Formatter<Char> formatter(arguments);
  return formatter.Run(format) && Store(target, formatter.Text(), append);
}

/// Reads what stands behind the "%" of "%f", "%.2f", "%g" or "%.14g"; false for anything else.
bool ReadPlainReal(const char*& at, std::chars_format& form, int& precision) {
  precision = 6;
  if (*at == '.') {
    constexpr int kMostDigits = 99;
    precision = 0;
    for (++at; *at >= '0' && *at <= '9' && precision <= kMostDigits; ++at) {
      precision = precision * 10 + (*at - '0');
    }
  }
  form = *at == 'f' ? std::chars_format::fixed : std::chars_format::general;
  return *at == 'f' || *at == 'g';
}

/// Writes a number as C's `printf` does; null where the room is short or only the runtime knows
/// how.
char* WriteReal(char* out, char* end, double value, std::chars_format form, int precision) {
#if defined(__cpp_lib_to_chars)
  const char* const point = platform::DecimalPoint();
  if (point[0] != '.' || point[1] != '\0') return nullptr;
  const auto written = std::to_chars(out, end, value, form, precision);
  return written.ec == std::errc() ? written.ptr : nullptr;
#else
  static_cast<void>(out), static_cast<void>(end), static_cast<void>(value);
  static_cast<void>(form), static_cast<void>(precision);
  return nullptr;
#endif
}

/// Formats text, "%s", "%d", "%u", "%c", "%%", and "%f" and "%g" with or without a precision into
/// the room from `out` to `end`; most formats hold nothing else. Gives the end of the text, null
/// where something else stands or the room is short.
char* FormatQuickly(char* out, char* end, const char* at, va_list list) {
  Arguments arguments(list);
  const auto number = [&out, end](auto value) {
    const auto written = std::to_chars(out, end, value);
    out = written.ptr;
    return written.ec == std::errc();
  };
  for (; *at; ++at) {
    if (out == end) return nullptr;
    if (*at != '%') {
      *out++ = *at;
      continue;
    }
    switch (*++at) {
      case '%':
        *out++ = '%';
        break;
      case 'c':
        *out = static_cast<char>(arguments.Next<int>());
        if (!*out++) return nullptr;
        break;
      case 'd':
        if (!number(arguments.Next<int>())) return nullptr;
        break;
      case 'u':
        if (!number(arguments.Next<unsigned int>())) return nullptr;
        break;
      case 's': {
        const char* const text = arguments.Next<const char*>();
        const std::size_t size = text ? std::strlen(text) : kLimit + 1;
        if (size > static_cast<std::size_t>(end - out)) return nullptr;
        out = std::copy(text, text + size, out);
        break;
      }
      default: {
        std::chars_format form;
        int precision = 0;
        if (!ReadPlainReal(at, form, precision)) return nullptr;
        out = WriteReal(out, end, arguments.Next<double>(), form, precision);
        if (!out) return nullptr;
        break;
      }
    }
  }
  return out;
}

bool Format(std::string& target, const char* format, va_list arguments, bool append) {
  if (!format) return false;
  char text[kLimit + 1];
  if (const char* const end = FormatQuickly(text, text + kLimit, format, arguments)) {
    return Store(target, std::string_view(text, static_cast<std::size_t>(end - text)), append);
  }
  const Engine engine = FindEngine(format);
  if (engine == Engine::kNone) return false;
  if (engine == Engine::kOurs) return FormatWithOurs(target, format, arguments, append);
  const int length = std::vsnprintf(text, sizeof(text), format, arguments);
  if (length < 0 || length > static_cast<int>(kLimit)) return false;
  return Store(target, std::string_view(text), append);
}

bool Format(std::wstring& target, const wchar_t* format, va_list arguments, bool append) {
  return format && FormatWithOurs(target, format, arguments, append);
}

}  // namespace

bool FormatString(std::string& target, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const bool done = Format(target, format, arguments, false);
  va_end(arguments);
  return done;
}

bool FormatString(std::wstring& target, const wchar_t* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const bool done = Format(target, format, arguments, false);
  va_end(arguments);
  return done;
}

bool FormatStringVA(std::string& target, const char* format, va_list arguments) {
  return Format(target, format, arguments, false);
}

bool FormatStringVA(std::wstring& target, const wchar_t* format, va_list arguments) {
  return Format(target, format, arguments, false);
}

bool AppendFormatString(std::string& target, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const bool done = Format(target, format, arguments, true);
  va_end(arguments);
  return done;
}

bool AppendFormatString(std::wstring& target, const wchar_t* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const bool done = Format(target, format, arguments, true);
  va_end(arguments);
  return done;
}

bool AppendFormatStringVA(std::string& target, const char* format, va_list arguments) {
  return Format(target, format, arguments, true);
}

bool AppendFormatStringVA(std::wstring& target, const wchar_t* format, va_list arguments) {
  return Format(target, format, arguments, true);
}

std::string ToString(const char* format, ...) {
  std::string text;
  va_list arguments;
  va_start(arguments, format);
  Format(text, format, arguments, false);
  va_end(arguments);
  return text;
}

std::wstring ToString(const wchar_t* format, ...) {
  std::wstring text;
  va_list arguments;
  va_start(arguments, format);
  Format(text, format, arguments, false);
  va_end(arguments);
  return text;
}

}  // namespace vlm

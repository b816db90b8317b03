#include <velum/core/FieldText.h>

#include <velum/core/detail/FieldScan.h>
#include <velum/platform/detail/RuntimeLocale.h>

#include <cstddef>
#include <cstdlib>

namespace vlm {

using detail::IsRuntimeSpace;
using detail::SkipComma;
using detail::SkipSpace;

namespace {

template <class Char>
bool IsDigit(Char c) {
  return c >= Char('0') && c <= Char('9');
}

template <class Char>
bool IsSign(Char c) {
  return c == Char('+') || c == Char('-');
}

template <class Char>
const Char* SkipDigits(const Char* text) {
  while (IsDigit(*text)) ++text;
  return text;
}

template <class Char>
bool StartsWithNumber(const Char* text) {
  if (!text) return false;
  text = SkipSpace(text);
  if (IsSign(*text)) ++text;
  if (!IsDigit(*text) && !(*text == Char('.') && IsDigit(text[1]))) return false;
  text = SkipDigits(text);
  if (*text == Char('.')) text = SkipDigits(text + 1);
  if (*text == Char('e') || *text == Char('E') || *text == Char('d') || *text == Char('D')) {
    ++text;
    if (IsSign(*text)) ++text;
    if (!IsDigit(*text)) return false;
    text = SkipDigits(text);
  }
  return !*text || IsRuntimeSpace(*text);
}

template <class Char, class Store>
int ScanField(const Char* const text, Store store) {
  const Char* at = SkipSpace(text);
  if (*at == Char('"')) {
    at = detail::ScanQuoted(at, store);
    if (*at) ++at;
  } else {
    at = detail::ScanPlain(at, store);
  }
  return static_cast<int>(SkipComma(SkipSpace(at)) - text);
}

template <class Char>
int ScanIntoBuffer(const Char* text, Char* buffer, int bufferSize) {
  const bool fits = buffer && bufferSize > 0;
  Char* const last = fits ? buffer + bufferSize - 1 : buffer;
  const int consumed = text ? ScanField(text,
                                        [&buffer, last](Char c) {
                                          if (buffer != last) *buffer++ = c;
                                        })
                            : 0;
  if (fits) *buffer = Char();
  return consumed;
}

template <class Char>
int ScanIntoString(const Char* text, std::basic_string<Char>& value) {
  value.clear();
  return text ? ScanField(text, [&value](Char c) { value += c; }) : 0;
}

template <class Char>
void BlankCommas(Char* text) {
  if (!text) return;
  bool inside = false;
  for (; *text; ++text) {
    if (*text == Char('"')) inside = !inside;
    if (*text == Char(',') && !inside) *text = Char(' ');
  }
}

}  // namespace

bool IsNumber(const char* text) { return StartsWithNumber(text); }
bool IsNumber(const wchar_t* text) { return StartsWithNumber(text); }

bool ParseDouble(const char* text, double* value, const char** next) {
  constexpr std::ptrdiff_t kTooLong = 255;
  if (!text || !value) return false;
  text = SkipSpace(text);
  const bool negative = *text == '-';
  if (IsSign(*text)) ++text;

  const char* const first = text;
  text = SkipDigits(text);
  const char* const point = text;
  if (*text == '.') text = SkipDigits(text + 1);
  const bool hasPoint = *point == '.';
  if (*text == 'e' || *text == 'E') {
    ++text;
    if (IsSign(*text)) ++text;
    text = SkipDigits(text);
  }
  if (text == first || text - first >= kTooLong) return false;

  // The runtime reads the number with the point of its present locale.
  std::string number(first, text);
  if (hasPoint) {
    number.replace(static_cast<std::size_t>(point - first), 1, platform::DecimalPoint());
  }
  const double magnitude = std::strtod(number.c_str(), nullptr);
  *value = negative ? -magnitude : magnitude;
  if (next) *next = SkipComma(SkipSpace(text));
  return true;
}

int ParseString(const char* text, char* buffer, int bufferSize) {
  return ScanIntoBuffer(text, buffer, bufferSize);
}

int ParseString(const wchar_t* text, wchar_t* buffer, int bufferSize) {
  return ScanIntoBuffer(text, buffer, bufferSize);
}

int ParseString(const char* text, std::string& value) { return ScanIntoString(text, value); }
int ParseString(const wchar_t* text, std::wstring& value) { return ScanIntoString(text, value); }

void CommaToBlank(char* text) { BlankCommas(text); }
void CommaToBlank(wchar_t* text) { BlankCommas(text); }

}  // namespace vlm

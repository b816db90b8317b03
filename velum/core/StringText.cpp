#include <velum/core/StringText.h>

#include <velum/core/detail/FieldScan.h>
#include <velum/core/detail/WhiteSpace.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cwctype>

namespace vlm {

using detail::IsRuntimeSpace;

namespace {

char Fold(char c, int (*fold)(int)) {
  return static_cast<char>(fold(static_cast<unsigned char>(c)));
}

wchar_t Fold(wchar_t c, int (*fold)(int)) {
  // The narrow functions know nothing above a byte.
  const auto value = static_cast<std::wint_t>(c);
  return value < 256 ? static_cast<wchar_t>(fold(static_cast<int>(value))) : c;
}

template <class Char>
void FoldAll(std::basic_string<Char>& text, int (*fold)(int)) {
  for (Char& c : text) c = Fold(c, fold);
}

template <class Char>
std::basic_string<Char> Folded(std::basic_string<Char> text, int (*fold)(int)) {
  FoldAll(text, fold);
  return text;
}

template <class Char>
std::basic_string<Char>& TrimEnd(std::basic_string<Char>& text) {
  const detail::WhiteSpace<Char> isSpace;
  std::size_t size = text.size();
  while (size > 0 && isSpace(text[size - 1])) --size;
  text.resize(size);
  return text;
}

template <class Char>
std::basic_string<Char>& TrimStart(std::basic_string<Char>& text) {
  const detail::WhiteSpace<Char> isSpace;
  std::size_t start = 0;
  while (start < text.size() && isSpace(text[start])) ++start;
  text.erase(0, start);
  return text;
}

template <class Char>
std::basic_string<Char> NextToken(const std::basic_string<Char>& text, unsigned int& position,
                                  Char delimiter) {
  const std::size_t end = text.size();
  std::size_t first = position;
  if (first >= end) return {};
  while (first < end && IsRuntimeSpace(text[first])) ++first;
  std::size_t last, next;
  if (first < end && text[first] == Char('"')) {
    ++first;
    last = std::min(text.find(Char('"'), first), end);
    next = std::min(text.find(delimiter, std::min(last + 1, end)), end);
  } else {
    next = std::min(text.find(delimiter, first), end);
    last = next;
    while (last > first && IsRuntimeSpace(text[last - 1])) --last;
  }
  position = static_cast<unsigned int>(next < end ? next + 1 : end);
  return text.substr(first, last - first);
}

bool Same(char a, char b) {
  return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

bool Same(wchar_t a, wchar_t b) {
  return std::towlower(static_cast<std::wint_t>(a)) == std::towlower(static_cast<std::wint_t>(b));
}

template <class Char>
bool Matches(const Char* pattern, const Char* text, bool caseSensitive) {
  if (!pattern || !text) return false;
  const auto fits = [caseSensitive](Char wanted, Char c) {
    return wanted == c || wanted == Char('?') || (!caseSensitive && Same(wanted, c));
  };
  while (*text && *pattern != Char('*')) {
    if (!fits(*pattern++, *text++)) return false;
  }
  // The last star met is tried with ever longer runs; earlier stars never need another look.
  const Char* afterStar = nullptr;
  const Char* retry = nullptr;
  while (*text) {
    if (*pattern == Char('*')) {
      if (!*++pattern) return true;
      afterStar = pattern;
      retry = text + 1;
    } else if (fits(*pattern, *text)) {
      ++pattern;
      ++text;
    } else {
      pattern = afterStar;
      text = retry++;
    }
  }
  while (*pattern == Char('*')) ++pattern;
  return !*pattern;
}

}  // namespace

std::string ToLower(const std::string& text) { return Folded(text, std::tolower); }
std::wstring ToLower(const std::wstring& text) { return Folded(text, std::tolower); }
std::string ToUpper(const std::string& text) { return Folded(text, std::toupper); }
std::wstring ToUpper(const std::wstring& text) { return Folded(text, std::toupper); }

void MakeLower(std::string& text) { FoldAll(text, std::tolower); }
void MakeLower(std::wstring& text) { FoldAll(text, std::tolower); }
void MakeUpper(std::string& text) { FoldAll(text, std::toupper); }
void MakeUpper(std::wstring& text) { FoldAll(text, std::toupper); }

std::string& Trim(std::string& text) { return TrimStart(TrimEnd(text)); }
std::wstring& Trim(std::wstring& text) { return TrimStart(TrimEnd(text)); }
std::string& TrimLeft(std::string& text) { return TrimStart(text); }
std::wstring& TrimLeft(std::wstring& text) { return TrimStart(text); }
std::string& TrimRight(std::string& text) { return TrimEnd(text); }
std::wstring& TrimRight(std::wstring& text) { return TrimEnd(text); }

std::string ParseToken(const std::string& text, unsigned int& position, char delimiter) {
  return NextToken(text, position, delimiter);
}

std::wstring ParseToken(const std::wstring& text, unsigned int& position, wchar_t delimiter) {
  return NextToken(text, position, delimiter);
}

bool WildCmp(const char* pattern, const char* text, bool caseSensitive) {
  return Matches(pattern, text, caseSensitive);
}

bool WildCmp(const wchar_t* pattern, const wchar_t* text, bool caseSensitive) {
  return Matches(pattern, text, caseSensitive);
}

}  // namespace vlm

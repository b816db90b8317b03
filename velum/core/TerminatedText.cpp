#include <velum/core/TerminatedText.h>

#include <velum/core/detail/FieldScan.h>

#include <cstddef>
#include <cstring>

namespace vlm {

namespace {

template <class Char>
void CopyBounded(Char* target, const Char* source, unsigned int targetSize) {
  if (!target || targetSize == 0) return;
  const Char* const last = target + targetSize - 1;
  while (source && target != last && *source) *target++ = *source++;
  *target = Char();
}

template <class String>
bool HasPart(const String& text, const String& part) {
  return !part.empty() && text.find(part) != String::npos;
}

}  // namespace

void MyStrncpy(char* target, const char* source, unsigned int targetSize) {
  CopyBounded(target, source, targetSize);
}

void MyStrncpy(wchar_t* target, const wchar_t* source, unsigned int targetSize) {
  CopyBounded(target, source, targetSize);
}

char* Trim(char* text) {
  if (!text) return nullptr;
  char* const first = detail::SkipSpace(text);
  char* end = first + std::strlen(first);
  while (end != first && detail::IsRuntimeSpace(end[-1])) --end;
  *end = '\0';
  return first;
}

bool Contains(const std::string& text, const std::string& part) { return HasPart(text, part); }
bool Contains(const std::wstring& text, const std::wstring& part) { return HasPart(text, part); }

int BreakIntoSubstrings(const char* text, std::vector<std::string>& lines) {
  lines.clear();
  while (text && *text) {
    const std::size_t length = std::strcspn(text, "\r\n");
    lines.emplace_back(text, length);
    text += length;
    if (*text == '\r' && text[1] == '\n') ++text;
    if (*text) ++text;
  }
  return static_cast<int>(lines.size());
}

}  // namespace vlm

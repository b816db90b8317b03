// Text between narrow and wide, numbers read from text, and wild cards, each held against a second
// way to the same result. The first byte of the input chooses, the rest is the text.

#include <velum/core/GString.h>
#include <velum/core/StringConvert.h>
#include <velum/core/StringText.h>
#include <velum/platform/detail/CodePages.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

std::wstring Widen(std::string_view text, unsigned int codePage) {
  std::wstring wide(vlm::platform::NarrowToWide(text, codePage, nullptr), L'\0');
  Require(vlm::platform::NarrowToWide(text, codePage, wide.data()) == wide.size());
  return wide;
}

std::string Narrow(std::wstring_view text, unsigned int codePage) {
  std::string narrow(vlm::platform::WideToNarrow(text, codePage, nullptr), '\0');
  Require(vlm::platform::WideToNarrow(text, codePage, narrow.data()) == narrow.size());
  return narrow;
}

// What has been wide once goes there and back unchanged, through this library's UTF-8 and through
// ICU's GB 18030, which holds all of Unicode.
void TestUnicode(std::string_view text) {
  const std::wstring wide = Widen(text, 0);
  for (const wchar_t unit : wide) Require(unit >= 0 && unit <= 0xFFFF);
  const std::string again = Narrow(wide, 0);
  Require(Widen(again, 0) == wide);
  if (wide.find(L'\uFFFD') == std::wstring::npos) Require(again == text);
  Require(Widen(Narrow(wide, 54936), 54936) == wide);

  // The string's own road stops at the first terminator.
  const vlm::GString string{std::string(text)};
  Require(string.ToWide() == Widen(string.c_str(), 0));
}

// A page may lose what it lacks, but only once.
void TestPage(std::string_view text) {
  constexpr unsigned int kPages[] = {437,   864,   932,   936,   949,   950,   1252, 1258,
                                     20127, 50220, 50225, 52936, 54936, 57002, 65000};
  if (text.empty()) return;
  const unsigned int page = kPages[static_cast<unsigned char>(text[0]) % std::size(kPages)];
  const std::wstring wide = Widen(text.substr(1), page);
  Narrow(wide, page);
  const std::wstring direct(text.begin(), text.end());
  const std::wstring kept = Widen(Narrow(direct, page), page);
  if (page == 1252 || page == 437) Require(Widen(Narrow(kept, page), page) == kept);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

/// The same grammar in other words, in the "C" locale: the parts are cut out and given to strtod.
bool ReadDoubleSlowly(std::string text, double& value) {
  value = 0;
  if (text.empty()) return false;
  const char* const blanks = " \t\n\v\f\r";
  const std::size_t first = text.find_first_not_of(blanks);
  if (first == std::string::npos) return true;
  text = text.substr(first, text.find_last_not_of(blanks) - first + 1);
  std::size_t at = 0;
  const auto digits = [&text, &at] {
    const std::size_t start = at;
    while (at < text.size() && IsDigit(text[at])) ++at;
    return at - start;
  };
  if (text[at] == '+' || text[at] == '-') ++at;
  std::size_t count = digits();
  if (at < text.size() && text[at] == '.') {
    ++at;
    count += digits();
  }
  if (count == 0) return false;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    ++at;
    if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
    if (digits() == 0) return false;
  }
  if (at != text.size()) return false;
  const double number = std::strtod(text.c_str(), nullptr);
  if (std::isinf(number)) return false;
  value = number;
  return true;
}

template <class Integer>
bool ReadIntegerSlowly(const std::string& text, Integer& value) {
  value = 0;
  if (text.empty()) return false;
  const bool negative = std::numeric_limits<Integer>::is_signed && text[0] == '-';
  __extension__ typedef __int128 Wide;
  constexpr Wide kEnough = Wide{1} << 100;
  Wide number = 0;
  for (std::size_t i = negative ? 1 : 0; i < text.size(); ++i) {
    if (!IsDigit(text[i])) return false;
    if (number < kEnough) number = number * 10 + (text[i] - '0');
  }
  if (negative) number = -number;
  constexpr Wide kLowest = std::numeric_limits<Integer>::min();
  constexpr Wide kHighest = std::numeric_limits<Integer>::max();
  if (number < kLowest || number > kHighest) return false;
  const bool isLimit = number == kHighest || (negative && number == kLowest);
  if (isLimit && text != std::to_string(static_cast<Integer>(number))) return false;
  value = static_cast<Integer>(number);
  return true;
}

void TestNumbers(std::string_view view) {
  const std::string text(view);
  const std::wstring wide(text.begin(), text.end());
  double real, sameReal, wideReal;
  const bool isReal = vlm::StringToDouble(text, real);
  Require(isReal == ReadDoubleSlowly(text, sameReal));
  Require(std::memcmp(&real, &sameReal, sizeof(real)) == 0);
  Require(vlm::StringToDouble(wide, wideReal) == isReal);
  Require(std::memcmp(&real, &wideReal, sizeof(real)) == 0);

  int whole, sameWhole;
  Require(vlm::StringToInt(text, whole) == ReadIntegerSlowly(text, sameWhole));
  Require(whole == sameWhole);
  std::int64_t large, sameLarge;
  Require(vlm::StringToInt64(text, large) == ReadIntegerSlowly(text, sameLarge));
  Require(large == sameLarge);
  unsigned int natural, sameNatural;
  Require(vlm::StringToUnsigned(text, natural) == ReadIntegerSlowly(text, sameNatural));
  Require(natural == sameNatural);
}

bool MatchesSlowly(const char* pattern, const char* text) {
  if (!*pattern) return !*text;
  if (*pattern == '*') {
    return MatchesSlowly(pattern + 1, text) || (*text && MatchesSlowly(pattern, text + 1));
  }
  return *text && (*pattern == '?' || *pattern == *text) && MatchesSlowly(pattern + 1, text + 1);
}

void TestWildCards(std::string_view view) {
  const std::size_t cut = view.find('\n');
  if (cut == std::string_view::npos) return;
  const std::string pattern(view.substr(0, cut));
  const std::string text(view.substr(cut + 1));
  const bool matches = vlm::WildCmp(pattern.c_str(), text.c_str(), true);
  // The naive matcher takes exponential time.
  if (pattern.size() <= 8 && text.size() <= 16) {
    Require(matches == MatchesSlowly(pattern.c_str(), text.c_str()));
  }
  if (matches) Require(vlm::WildCmp(pattern.c_str(), text.c_str(), false));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
  switch (data[0] % 4) {
    case 0:
      TestUnicode(text);
      break;
    case 1:
      TestPage(text);
      break;
    case 2:
      TestNumbers(text);
      break;
    default:
      TestWildCards(text);
  }
  return 0;
}

#include <velum/core/StringCompare.h>

#include <velum/platform/detail/RuntimeLocale.h>

#include <cwctype>

namespace vlm::detail {

int CompareFolded(const char* a, const char* b) noexcept { return platform::CompareFolded(a, b); }

int CompareFolded(const wchar_t* a, const wchar_t* b) noexcept {
  for (;; ++a, ++b) {
    const std::wint_t x = std::towlower(static_cast<std::wint_t>(*a));
    const std::wint_t y = std::towlower(static_cast<std::wint_t>(*b));
    if (x != y) return x < y ? -1 : 1;
    if (*a == L'\0') return 0;
  }
}

}  // namespace vlm::detail

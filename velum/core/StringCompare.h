#pragma once

/// \file
/// Order and sameness of texts without regard to case, for maps and look-ups.
///
///     std::map<vlm::GString, int, vlm::StringLess> limits;
///     limits["Depth"] = 3;
///     const bool known = limits.count("DEPTH") == 1;  // true

#include <velum/core/Api.h>

#include <string>

namespace vlm {

namespace detail {

/// The order of two terminated texts in small letters: below, at or above 0.
[[nodiscard]] VELUM_API int CompareFolded(const char* a, const char* b) noexcept;
/// The same for wide text.
[[nodiscard]] VELUM_API int CompareFolded(const wchar_t* a, const wchar_t* b) noexcept;

}  // namespace detail

/// An order of texts that ignores case.
///
/// Each element is folded to its small letter by the runtime's present locale before two are
/// compared as unsigned values, up to the first difference or the first terminator in either text:
/// - "abc" stands before "ABD";
/// - "a_b" stands before "aZb", since "_" (0x5F) is below "z" (0x7A).
///
/// Narrow texts are folded byte by byte.
struct VELUM_API StringLess {
  /// True if `a` stands before `b`.
  [[nodiscard]] bool operator()(const std::string& a, const std::string& b) const noexcept {
    return detail::CompareFolded(a.c_str(), b.c_str()) < 0;
  }
  /// True if `a` stands before `b`.
  [[nodiscard]] bool operator()(const std::wstring& a, const std::wstring& b) const noexcept {
    return detail::CompareFolded(a.c_str(), b.c_str()) < 0;
  }
};

/// Sameness of texts that ignores case, with the folding of `StringLess`.
struct VELUM_API StringEquivalent {
  /// True if neither text stands before the other.
  [[nodiscard]] bool operator()(const std::string& a, const std::string& b) const noexcept {
    return detail::CompareFolded(a.c_str(), b.c_str()) == 0;
  }
  /// True if neither text stands before the other.
  [[nodiscard]] bool operator()(const std::wstring& a, const std::wstring& b) const noexcept {
    return detail::CompareFolded(a.c_str(), b.c_str()) == 0;
  }
};

}  // namespace vlm

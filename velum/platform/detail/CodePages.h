#pragma once

/// \file
/// Text in the code pages of the system, made wide and back.
///
///     using vlm::platform::NarrowToWide;
///     const std::size_t units = NarrowToWide("caf\xE9", 1252, nullptr);  // 4
///
/// Wide text is UTF-16, one unit to an element; see Utf8.h for what else an element may hold. What
/// is malformed becomes U+FFFD, a character that the page lacks becomes "?".

#include <cstddef>
#include <string>
#include <string_view>

namespace vlm::platform {

/// True for the numbers of UTF-8: 65001, and the system's own two, 0 and 1.
constexpr bool IsUtf8Page(unsigned int codePage) noexcept {
  return codePage <= 1 || codePage == 65001;
}

/// True if there is a code page of that number.
[[nodiscard]] bool IsCodePage(unsigned int codePage);

/// Converts `text`, bytes of 0 included.
///
/// Gives the number of elements written to `out`, which has room for them all, or needed if `out`
/// is null: 0 for a number that is no code page.
std::size_t NarrowToWide(std::string_view text, unsigned int codePage, wchar_t* out);

/// Appends `text`, converted, to `out`, which grows as it needs to: faster than to ask for its
/// length first. Nothing for a number that is no code page.
void AppendWide(std::string_view text, unsigned int codePage, std::wstring& out);

/// Converts `text`, elements of 0 included.
///
/// Gives the number of bytes written to `out`, which has room for them all, or needed if `out` is
/// null: 0 for a number that is no code page.
std::size_t WideToNarrow(std::wstring_view text, unsigned int codePage, char* out);

}  // namespace vlm::platform

#pragma once

/// \file
/// Where a line ends, in bytes and in units of two bytes.
///
///     const char* const stop = vlm::platform::FindLineEnd(at, end);  // at "\r", "\n" or the end

namespace vlm::platform {

/// The first line feed or carriage return; `end` if there is none.
[[nodiscard]] const char* FindLineEnd(const char* at, const char* end) noexcept;

/// The same for units of two bytes; `end` is whole units behind `at`.
[[nodiscard]] const char* FindLineEnd16(const char* at, const char* end, bool highFirst) noexcept;

}  // namespace vlm::platform

#pragma once

/// \file
/// Which converter serves which code page.
///
///     const char* name = vlm::platform::CodePageName(1252);  // windows-1252

namespace vlm::platform {

/// ICU's name for a code page; null for one that ICU has no table for, and for UTF-8.
[[nodiscard]] const char* CodePageName(unsigned int codePage) noexcept;

}  // namespace vlm::platform

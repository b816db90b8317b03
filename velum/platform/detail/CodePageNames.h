#pragma once

/// \file
/// Which converter serves which code page.
///
///     const char* name = vlm::platform::CodePageName(866);  // ibm-866

namespace vlm::platform {

/// ICU's name for a code page; null for one that ICU has no table for, and for UTF-8.
[[nodiscard]] const char* CodePageName(unsigned int codePage) noexcept;

}  // namespace vlm::platform

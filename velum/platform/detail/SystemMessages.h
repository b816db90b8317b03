#pragma once

/// \file
/// The system's error numbers with their texts, and its numbers for threads.
///
///     const char* text = vlm::platform::SystemErrorText(2);  // No such file or directory

namespace vlm::platform {

/// A file exists already: the number that the library's callers know that by, whatever the system
/// has for it and means by this one.
inline constexpr int kFileExists = 80;

/// The English text for one of `errno`'s numbers or `kFileExists`; null for a number that the
/// system does not know.
[[nodiscard]] const char* SystemErrorText(unsigned long number) noexcept;

/// The calling thread's last error number.
[[nodiscard]] unsigned long LastSystemError() noexcept;

/// The system's number of the calling thread.
[[nodiscard]] unsigned long CurrentThreadNumber() noexcept;

}  // namespace vlm::platform

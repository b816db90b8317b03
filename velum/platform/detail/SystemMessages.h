#pragma once

/// \file
/// The system's error numbers with their texts, and its numbers for threads.
///
///     const char* text = vlm::platform::SystemErrorText(2);  // No such file or directory

namespace vlm::platform {

/// The English text for one of `errno`'s numbers; null for a number that the system does not know.
///
/// 80 stands for a file that exists already, as the library's callers know it, and not for what
/// this system counts so.
[[nodiscard]] const char* SystemErrorText(unsigned long number) noexcept;

/// The calling thread's last error number.
[[nodiscard]] unsigned long LastSystemError() noexcept;

/// The system's number of the calling thread.
[[nodiscard]] unsigned long CurrentThreadNumber() noexcept;

}  // namespace vlm::platform

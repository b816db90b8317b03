#pragma once

/// \file
/// Files and the terminal for the handler of a signal: nothing here allocates, locks or waits
/// without a limit. Paths are the system's own. What fails leaves the reason in errno.
///
///     const int file = vlm::platform::OpenPrivateFile("/opt/gridder/Gridder.dmp");
///     if (file >= 0 && WriteSafely(file, text) && CloseSafely(file)) ...

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vlm::platform {

/// Makes a file for writing that its owner alone may read; an old one, or a link, is removed
/// before. -1 for failure.
[[nodiscard]] int OpenPrivateFile(const char* path) noexcept;

/// Opens a file for appending, or makes one. Unless `keeps`, a regular file is replaced by a new
/// one. -1 for failure.
[[nodiscard]] int OpenToAppend(const char* path, bool keeps) noexcept;

/// Opens a file for reading. -1 for failure.
[[nodiscard]] int OpenToRead(const char* path) noexcept;

/// Reads up to `size` bytes; 0 at the end, -1 for failure.
[[nodiscard]] std::int64_t ReadSafely(int file, char* out, std::size_t size) noexcept;

/// Writes all of a text, or fails; a pipe or a terminal that takes nothing for two seconds fails.
bool WriteSafely(int file, std::string_view text) noexcept;

/// Closes a file; false if what was written is lost.
bool CloseSafely(int file) noexcept;

/// Gives a file another path; a file or link that is there is replaced. False for failure.
[[nodiscard]] bool MoveSafely(const char* from, const char* to) noexcept;

/// Removes a file.
void RemoveSafely(const char* path) noexcept;

/// The standard error.
inline constexpr int kStandardError = 2;

/// True if a descriptor is a terminal.
[[nodiscard]] bool IsTerminal(int file) noexcept;

/// What somebody at the terminal says.
enum class Answer { kNobody, kYes, kNo };

/// Puts a question on the standard error and reads the answer from the standard input, if both are
/// a terminal and this process is in its foreground: a line that begins with n or N is No, one that
/// begins with y or Y and an empty one is Yes. What was typed before is dropped. Nobody is there
/// who has not answered after so many seconds.
[[nodiscard]] Answer AskAtTerminal(std::string_view question, int seconds) noexcept;

}  // namespace vlm::platform

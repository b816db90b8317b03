#pragma once

/// \file
/// The last lines of the log, for a report of a crash.
///
///     static char lines[vlm::kRecentLogBytes];
///     extern "C" void OnCrash(int) {
///       const std::size_t size = vlm::CopyRecentLogLines(lines, sizeof(lines));
///       write(STDERR_FILENO, lines, size);
///       _exit(1);
///     }

#include <velum/core/Api.h>

#include <cstddef>

namespace vlm {

/// How many bytes hold all that `CopyRecentLogLines` gives.
enum : std::size_t { kRecentLogBytes = 100 * (1024 + 1) + 1 };

/// Copies the last lines of all logs together, up to 100, oldest first, each with a line feed, and
/// ends them with a terminator; gives the number of bytes before that.
///
/// - A line of more than 1024 bytes was cut at a character, and ends in "...".
/// - Too small a buffer: the last of the lines, whole, as many as there is room for.
/// - A null buffer, or one of no bytes: 0, and nothing is written.
///
/// A line is here from the moment an enabled logger is given it, even if its file can't be opened.
///
/// Threads: any thread may call it at any time, as may a signal handler: it takes no lock, asks for
/// no memory and calls nothing of the system. A line that is being written, or written over, at
/// that moment is left out.
VELUM_API std::size_t CopyRecentLogLines(char* out, std::size_t size) noexcept;

}  // namespace vlm

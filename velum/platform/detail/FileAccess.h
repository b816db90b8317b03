#pragma once

/// \file
/// Files opened with sharing, and their bytes read and written.
///
///     vlm::platform::OpenWish wish;
///     wish.sharing.reads = true;
///     const int file = vlm::platform::OpenFile("\\etc\\hostname", wish);
///     char text[80];
///     const std::int64_t count = vlm::platform::ReadFile(file, text, sizeof(text));
///
/// What fails gives -1, or what a function says, and leaves the reason in errno.

#include <velum/platform/detail/FileSharing.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>

namespace vlm::platform {

/// How a file is to be opened.
struct OpenWish {
  Sharing sharing;               ///< What is done with it, and what others may do.
  bool creates = false;          ///< Makes a file that is not there.
  bool mustBeNew = false;        ///< Fails for a file that is there; with `creates`.
  bool empties = false;          ///< Cuts a file that is there to no bytes.
  bool appends = false;          ///< Writes at the end only.
  bool atOnce = false;           ///< Fails for a pipe that nobody reads, and waits for nothing.
  unsigned int permissions = 0;  ///< Those of a file that is made, before the process's mask.
};

/// Opens the file at one of the library's paths; the descriptor is not passed to other programs.
///
/// A folder is refused with EISDIR, sharing with EAGAIN. Nothing is emptied before all else has
/// succeeded.
[[nodiscard]] int OpenFile(const char* path, const OpenWish& wish);

/// The same as a stream of the C library, which does no locking of its own: one thread uses it at a
/// time. Null for failure.
[[nodiscard]] std::FILE* OpenStream(const char* path, const OpenWish& wish);

/// Reads until `count` bytes are there or the file ends; gives their number.
[[nodiscard]] std::int64_t ReadFile(int file, void* data, std::size_t count) noexcept;

/// Reads up to `count` bytes, what is there at once; gives their number, 0 at the end.
[[nodiscard]] std::int64_t ReadSome(int file, void* data, std::size_t count) noexcept;

/// Writes all of the bytes. False for failure, when some may be written.
[[nodiscard]] bool WriteFile(int file, const void* data, std::size_t count) noexcept;

/// Moves the position: `origin` is 0 for the begin of the file, 1 for the position, 2 for the end.
/// Gives the new position.
[[nodiscard]] std::int64_t SeekFile(int file, std::int64_t offset, int origin) noexcept;

/// Whether the position of a file is at its end or beyond: 1 or 0, and 0 for what has no length.
[[nodiscard]] int IsAtEnd(int file) noexcept;

/// Puts what was written on the disk. True for what lies on none.
[[nodiscard]] bool CommitFile(int file) noexcept;

/// Closes the descriptor, in any case. False if what was written before is lost.
bool CloseFile(int file) noexcept;

/// Appends what a stream holds up to and with its next line feed; false if it holds nothing more,
/// or for an error, which the stream's flag tells. No other thread uses the stream meanwhile.
bool AppendLine(std::FILE* stream, std::string& line);

}  // namespace vlm::platform

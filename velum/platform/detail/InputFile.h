#pragma once

/// \file
/// A file that is only read, without a claim on it: others may do with it what they like.
///
///     vlm::platform::InputFile file;
///     if (!file.Open("plots.ini")) return;
///     char text[80];
///     const std::int64_t count = file.Read(text, sizeof(text));

#include <cstddef>
#include <cstdint>
#include <string>

namespace vlm::platform {

/// A regular file that is open for reading, or none. What fails leaves the reason in errno.
class InputFile {
 public:
  InputFile() noexcept = default;
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  /// Opens the file at one of the library's paths. A folder is refused with EISDIR, what is no
  /// regular file with EINVAL; nothing waits for the other end of a pipe.
  [[nodiscard]] bool Open(const char* path);
  /// Opens the file at a path as the system spells it.
  [[nodiscard]] bool OpenNative(const std::string& native);
  /// True after a successful opening.
  [[nodiscard]] bool IsOpen() const noexcept { return file_ != -1; }
  /// The descriptor; -1 if nothing is open.
  [[nodiscard]] int Descriptor() const noexcept { return file_; }
  /// Reads up to `count` bytes, fewer only at the end; gives their number, -1 for failure.
  [[nodiscard]] std::int64_t Read(void* data, std::size_t count) const noexcept;

 private:
  int file_ = -1;
};

/// The text of a small file at a path as the system spells it, or its first 64 kB; empty if it
/// can't be read.
[[nodiscard]] std::string TextOfFile(const std::string& native);

}  // namespace vlm::platform

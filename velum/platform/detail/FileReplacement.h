#pragma once

/// \file
/// A file replaced at once by a changed copy of itself.
///
///     vlm::platform::FileReplacement file;
///     if (!file.Begin("plots.ini")) return false;
///     return file.Append("[Axes]\n") && file.AppendOld(7, file.OldSize()) && file.Commit();
///
/// Others see the old file or the new one, never a part of it. Of those who replace a file through
/// this class one does at a time, over all threads and processes; the others wait in `Begin`.

#include <velum/platform/detail/InputFile.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace vlm::platform {

/// One replacement, from `Begin` to `Commit` or the destructor, which gives up and leaves the old
/// file. What fails leaves the reason in errno, and only giving up is left then.
///
/// The new file is written in `.NAME.velum-lock` beside the file `NAME`, and the lock on that file
/// is what others wait for. So a process that is killed leaves nothing but that file, which the
/// next one takes over, or takes away if another user's process has left it. A link, a file with a
/// second name, and what is no regular file were not made here: with one of that name `Begin` fails
/// with EEXIST and leaves it alone.
class FileReplacement {
 public:
  FileReplacement() noexcept = default;
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;
  ~FileReplacement();

  /// Waits for the turn on the file at one of the library's paths, or where a symbolic link there
  /// leads to, and opens what is there. Refuses a file that can't be read or may not be written.
  [[nodiscard]] bool Begin(const char* path);
  /// The file that is there; not open if none is.
  [[nodiscard]] const InputFile& Old() const noexcept { return old_; }
  /// The number of its bytes.
  [[nodiscard]] std::uint64_t OldSize() const noexcept { return oldSize_; }
  /// True if hard links lead to it from elsewhere, which would keep the old file.
  [[nodiscard]] bool OldHasOtherNames() const noexcept { return oldHasOtherNames_; }

  /// Appends bytes to the new file.
  [[nodiscard]] bool Append(std::string_view bytes);
  /// Appends the bytes from `first` up to `last` of the old file to the new one.
  [[nodiscard]] bool AppendOld(std::uint64_t first, std::uint64_t last);
  /// Puts the new file on the disk and in the place of the old one, with its permissions.
  [[nodiscard]] bool Commit();

 private:
  [[nodiscard]] bool TakeTurn();
  [[nodiscard]] bool Prepare();

  std::string target_;
  std::string lockName_;
  int lock_ = -1;
  InputFile old_;
  std::uint64_t oldSize_ = 0;
  bool oldHasOtherNames_ = false;
};

/// True if errno tells of a disk that is full or failing: who then wrote in place would lose the
/// old file, too.
[[nodiscard]] bool IsDiskInDanger() noexcept;

}  // namespace vlm::platform

#pragma once

/// \file
/// Questions to the file system, and changes to it. Paths are the library's.
///
///     if (!vlm::platform::IsThere("\\tmp\\plots")) vlm::platform::MakeFolder("\\tmp\\plots");
///
/// What fails says so and leaves the reason in errno.

#include <cstddef>
#include <cstdint>
#include <string>

namespace vlm::platform {

/// What stands at a path.
enum class FileKind { kNothing, kFile, kFolder };

/// Looks what stands at `path`; everything that is no folder is a file.
[[nodiscard]] FileKind KindOf(const char* path);

/// True if the process may read what stands at `path`.
[[nodiscard]] bool MayRead(const char* path);

/// The size of a file in bytes, 0 for a folder; -1 if nothing is there.
[[nodiscard]] std::int64_t SizeOf(const char* path);

/// True for a file with bytes of its own: no folder, pipe or device.
[[nodiscard]] bool IsRegularFile(const char* path);

/// Removes a file, and no folder.
bool RemoveFile(const char* path);

/// Removes a folder that is empty.
bool RemoveFolder(const char* path);

/// Makes one folder.
bool MakeFolder(const char* path);

/// Makes `kFileExists` of SystemMessages.h the last error.
void SetFileExistsError() noexcept;

/// The folder for temporary files, with a separator at its end.
[[nodiscard]] std::string TemporaryFolder();

/// Makes an empty file in a folder, given with a separator at its end. The name is new and begins
/// with `prefix`. Gives the path; empty if that fails or the path is longer than `limit`.
[[nodiscard]] std::string MakeTemporaryFile(const std::string& folder, const char* prefix,
                                            std::size_t limit);

/// The current folder, without a separator at its end unless it is the root; empty if it is gone.
[[nodiscard]] std::string CurrentFolder();

}  // namespace vlm::platform

#pragma once

/// \file
/// Simple questions about files, and where programs and modules lie.
///
///     if (vlm::FileExists("wells.dat") && vlm::GetFileSize("wells.dat") > 0) Load("wells.dat");
///     const vlm::GString symbols = vlm::GetStartupPath(nullptr, true) + "Symbols\\";
///
/// Nothing here throws but for want of memory: a question that has no answer gives false, -1 or the
/// empty text. Any thread may call these functions.

#include <velum/core/Api.h>
#include <velum/core/GString.h>

#include <cstdint>

namespace vlm {

/// True if a file or folder is there.
[[nodiscard]] VELUM_API bool FileExists(const GString& path);
/// The same as `FileExists`.
[[nodiscard]] VELUM_API bool PathExists(const GString& path);
/// True if a file or folder is there that this process may read.
[[nodiscard]] VELUM_API bool IsFileReadable(const GString& path);
/// True if this process can open the file for writing now, or create it; found out by trying. One
/// that was created for the trial is removed.
///
/// - A file that another opener lets nobody write: false.
[[nodiscard]] VELUM_API bool IsFileWritable(const GString& path);
/// The size of a file in bytes, 0 for a folder; -1 if it is not there.
[[nodiscard]] VELUM_API std::int64_t GetFileSize(const GString& path);

/// Removes a file; false if that fails, and for a folder.
VELUM_API bool RemoveFile(const GString& path);
/// Removes a folder that holds nothing; false if that fails.
VELUM_API bool RemoveEmptyFolder(const GString& path);

/// The process's current folder; empty if it is longer than 259 bytes.
[[nodiscard]] VELUM_API GString GetCWD(bool keepSeparator);
/// The path of a loaded module, by an address inside it or the handle that the loader gave; of the
/// running program for null. Empty for what is neither, and for more than 259 bytes.
[[nodiscard]] VELUM_API GString GetModuleFilename(void* module);
/// The name of a module's file.
[[nodiscard]] VELUM_API GString GetStartupFilename(void* module, bool withExtension);
/// The folder of a module's file.
[[nodiscard]] VELUM_API GString GetStartupPath(void* module, bool keepSeparator);
/// The file name of the module `name` as it is built here: `name` itself.
[[nodiscard]] VELUM_API GString ConstructModuleName(const GString& name);

}  // namespace vlm

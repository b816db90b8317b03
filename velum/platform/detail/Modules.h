#pragma once

/// \file
/// The modules of the process, and what a module's file says of itself.
///
///     for (const std::string& path : vlm::platform::LoadedModules(1024)) {
///       vlm::platform::ModuleFile file;
///       if (vlm::platform::ReadModuleFile(path, file)) Report(path, file.version);
///     }

#include <velum/platform/Types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vlm::platform {

/// A native path, absolute and without links; empty if nothing is there.
[[nodiscard]] std::string RealPath(const std::string& native);

/// The native path of a module's file: absolute, and without links as long as the file is there.
/// `name` is the loader's, empty for the program; `address` lies in the module. Empty for what has
/// no file.
///
/// A relative name was so when the module was loaded, in a folder which need not be the current one
/// now: the kernel is asked for the path of such a module, and of one whose file is gone.
[[nodiscard]] std::string PathOfModule(const char* name, const void* address);

/// The native paths, as `PathOfModule` gives them, of the modules that the loader has, the program
/// first, `limit` of them at most. What has no file is left out. Allocates: it is not for a process
/// that has crashed.
[[nodiscard]] std::vector<std::string> LoadedModules(std::size_t limit);

/// What a module's file is and says.
struct ModuleFile {
  std::int64_t size = 0;  ///< In bytes.
  SYSTEMTIME written{};   ///< When it was last written, in local time.
  bool hasTime = false;   ///< False if that is no time from 1601 to 30827.
  std::string soname;     ///< The name that it goes by; empty without one.
  std::string version;    ///< Its version; empty without one.
};

/// Reads the file at a native path; false, and nothing is set, if it can't be opened.
[[nodiscard]] bool ReadModuleFile(const std::string& native, ModuleFile& file);

}  // namespace vlm::platform

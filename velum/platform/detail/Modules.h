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

/// The file of a loaded module as a path of the library: absolute, and without links as long as the
/// file is there. The module is given by an address in it or by the handle that the loader gave;
/// null is the running program. Empty for neither, and for a module that has no file.
///
/// A module may have been loaded by a relative name, in a folder which need not be the current one
/// now: the kernel is asked for the path of such a module, and of one whose file is gone.
[[nodiscard]] std::string ModulePath(const void* module);

/// The native paths, else as `ModulePath` gives them, of the modules that the loader has, the
/// program first, `limit` of them at most. What has no file is left out. Allocates: it is not for a
/// process that has crashed.
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

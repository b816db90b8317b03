#pragma once

/// \file
/// Libraries that the system's loader loads at run time.
///
///     void* library = vlm::platform::OpenSharedObject("libz.so.1");
///     void* version = vlm::platform::FindSymbol(library, "zlibVersion");

#include <string>

namespace vlm::platform {

/// Loads a library and gives the loader's handle; null if that fails. A name without a folder goes
/// to the loader, which looks for it; another one is a path of the library's. A file at a path that
/// is cut short is refused, since the loader would not survive it.
[[nodiscard]] void* OpenSharedObject(const char* path);

/// Keeps this library, which the process could unload, in memory until the process ends: for code
/// that a thread or the handler of a signal may run at any time.
void KeepThisLibrary() noexcept;

/// Lets a library go that was opened, and not null.
void CloseSharedObject(void* library) noexcept;

/// The address of a symbol; null if the library and those that it needs have none of that name.
[[nodiscard]] void* FindSymbol(void* library, const char* name) noexcept;

/// The native path of the file that `OpenSharedObject` would take: that of a path, that of a
/// library which is loaded already, or the first in the folders that the loader searches; else
/// empty. The loader's cache, which it asks before the system's own folders, is not read.
[[nodiscard]] std::string SharedObjectFile(const char* path);

}  // namespace vlm::platform

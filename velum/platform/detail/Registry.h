#pragma once

/// \file
/// Texts that stay from one run of a program to the next, each under a root, a path and a name.
///
///     const vlm::platform::RegistryEntry entry{0x80000001, "Software\\Plots", "Title"};
///     vlm::platform::WriteRegistry(entry, "Depth");
///     std::string title;
///     if (!vlm::platform::ReadRegistry(entry, title)) title = "Untitled";
///
/// They are rows of the table `entries` in one SQLite file with write-ahead logging, to which the
/// process holds one connection. Every function may be called on any thread; one works at a time.
/// One that waits for another process, 5 seconds at most, lets the others and a fork go first.
/// Before a process forks the connection is closed, since neither side could use it after that.

#include <cstdint>
#include <string>
#include <string_view>

namespace vlm::platform {

/// Where an entry stands. Path and name are compared without the case of ASCII letters, up to a
/// byte 0; backslashes around the path count for nothing.
struct RegistryEntry {
  std::uint32_t root;
  std::string_view path;
  std::string_view name;
};

/// What became of a change.
enum class RegistryResult {
  kDone,       ///< It will be there after a kill of the process.
  kNotOpened,  ///< The file can't be opened or made, may not be written, or is something else.
  kNotWritten  ///< The writing has failed, or the text is longer than SQLite takes.
};

/// Reads a text; false, and `value` stays, if it is missing, is no text or can't be read. Makes no
/// file, and reads also where nothing may be written.
[[nodiscard]] bool ReadRegistry(const RegistryEntry& entry, std::string& value);

/// Writes a text in a transaction of its own; makes the file, and its folder for the user alone.
[[nodiscard]] RegistryResult WriteRegistry(const RegistryEntry& entry, std::string_view value);

/// Removes an entry if it is there; makes no file.
void RemoveFromRegistry(const RegistryEntry& entry) noexcept;

/// Names the file by one of the library's paths; the empty path goes back to what `VELUM_REGISTRY`
/// says, or `velum/registry.db` in the user's configuration folder. A relative path is one from the
/// folder that is current now, or where the environment's value is first used.
void SetRegistryPath(const std::string& path);

}  // namespace vlm::platform

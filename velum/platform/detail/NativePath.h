#pragma once

/// \file
/// The library's paths as this system spells them, and back.
///
///     vlm::platform::NativePath("\\tmp\\wells.dat");  // /tmp/wells.dat

#include <string>
#include <string_view>

namespace vlm::platform {

/// True for what separates the folders of the library's paths.
[[nodiscard]] constexpr bool IsSeparator(char c) noexcept { return c == '\\' || c == '/'; }

/// True for a path that begins with a drive: one character and a colon.
[[nodiscard]] constexpr bool HasDrive(std::string_view path) noexcept {
  return path.size() > 1 && path[1] == ':' && !IsSeparator(path[0]);
}

/// The path as the system takes it; every function of the system takes the result for a missing
/// file if it is empty.
///
/// - With a drive, of which this system has none: empty.
[[nodiscard]] std::string NativePath(const char* path);

/// A path of the system from the root on, links and dots as they are; empty if it is empty, or
/// begins in a current folder that is gone.
[[nodiscard]] std::string AbsoluteNativePath(const std::string& native);

/// A path of the system that is absolute and without links; empty if nothing is there.
[[nodiscard]] std::string RealPath(const std::string& native);

/// A folder or file of the system as a path of the library.
[[nodiscard]] std::string PathFromNative(std::string native);

}  // namespace vlm::platform

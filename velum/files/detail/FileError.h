#pragma once

/// \file
/// What to do when a file fails: errors with the system's text, and removal of what is left.
///
///     vlm::detail::ThrowSystemError(__FILE_NAME__, __LINE__, vlm::ERR_READ, path);

#include <velum/core/Exception.h>
#include <velum/core/GString.h>
#include <velum/core/SystemError.h>
#include <velum/platform/detail/FileSystem.h>

#include <new>

namespace vlm::detail {

/// Throws `code` about the file at `path`, with the system's text for the last error.
[[noreturn]] inline void ThrowSystemError(const char* srcFile, int line, int code,
                                          const GString& path) {
  const GString text = FormatSystemErrorMsg();
  ThrowErrorImpl(srcFile, line, code, path.c_str(), text.c_str());
}

/// Removes the file at `path` if there is one; the outcome does not matter.
inline void RemoveQuietly(const GString& path) noexcept {
  try {
    if (!path.empty()) platform::RemoveFile(path.c_str());
  } catch (const std::bad_alloc&) {
  }
}

}  // namespace vlm::detail

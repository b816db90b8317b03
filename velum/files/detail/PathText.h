#pragma once

/// \file
/// The rules of paths, on their text alone but for what is said of single functions.
///
///     const auto parts = vlm::detail::SplitPath("c:\\data\\wells.dat");  // c: \data\ wells .dat
///
/// `Path.h` tells the form of paths.

#include <velum/core/GString.h>
#include <velum/platform/detail/Ascii.h>

#include <cstddef>
#include <string_view>

namespace vlm::detail {

inline constexpr std::size_t kLongestPath = 259;  ///< The most bytes of a path that is made here.
inline constexpr std::size_t kLongestPart = 255;  ///< The most bytes of a part that is given out.
inline constexpr std::string_view kSeparators = "\\/";  ///< What stands between folders.

/// The parts of a path, which joined are the path again.
///
/// *Lifetime*: that of the path's text.
struct PathParts {
  std::string_view drive;      ///< With its colon.
  std::string_view directory;  ///< With the last separator.
  std::string_view name;       ///< Without the extension.
  std::string_view extension;  ///< With its point.
};

/// Takes a path apart.
[[nodiscard]] PathParts SplitPath(std::string_view path) noexcept;

/// The drive of a path, or two separators and the name of a server behind them.
///
/// *Lifetime*: that of the path's text.
[[nodiscard]] std::string_view RootName(std::string_view path) noexcept;

/// The path without its name and the separators before that; of those only the root's stays, as
/// `\`.
[[nodiscard]] GString ParentOf(const GString& path);

/// The absolute form of a path, see `CPath::GetFullPath`; empty if it is too long or the current
/// folder is needed and gone.
[[nodiscard]] GString FullPath(const char* path);

/// Makes the folder at a path and those above it; true if it is there now. Leaves 80 as the last
/// error if a file stands in its place.
[[nodiscard]] bool MakeFolders(std::string_view path);

using platform::FoldAscii;

/// A copy with small ASCII letters.
[[nodiscard]] GString FoldAscii(GString text);

}  // namespace vlm::detail

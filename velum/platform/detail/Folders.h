#pragma once

/// \file
/// What folders hold.
///
///     std::vector<std::string> names;
///     if (vlm::platform::ListFolder("\\tmp\\", names)) std::sort(names.begin(), names.end());
///
/// What fails gives false and leaves the reason in errno.

#include <velum/platform/Types.h>

#include <string>
#include <vector>

namespace vlm::platform {

/// Gives the names of all that a folder holds, "." and ".." among them, in no order. The empty path
/// is the current folder.
[[nodiscard]] bool ListFolder(const std::string& folder, std::vector<std::string>& names);

/// Describes the entry `name` of a folder, given with a separator at its end or empty for the
/// current one. A link is described as what it leads to, if that is there.
///
/// The attributes are those that this system knows: a folder; read-only where nobody has the
/// permission to write; hidden for a name that begins with a point, other than "." and ".."; normal
/// for none of these. The size of a folder is 0, the short name empty. Where the file system does
/// not keep the time of creation, it is that of the last write. A time before 1601 or beyond 63
/// bits is 0.
[[nodiscard]] bool DescribeEntry(const std::string& folder, const std::string& name,
                                 WIN32_FIND_DATAA& entry);

}  // namespace vlm::platform

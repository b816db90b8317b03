#include <velum/diagnostics/LocateFile.h>

#include <velum/diagnostics/SystemInfo.h>
#include <velum/files/FileUtilities.h>
#include <velum/files/Path.h>
#include <velum/platform/detail/NativePath.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

namespace vlm {

namespace {

/// The longest path that is found in the system's places.
constexpr unsigned kLongestPath = 262;

/// The folder of the library's own data; empty if its path is too long.
GString DataFolder() {
  static char inside;  // An address in the library.
  const GString library = GetStartupPath(&inside, true);
  if (library.empty()) return {};
  return CPath::AppendDirSeparator(CPath(library + VELUM_DATA_FROM_LIBRARY).GetFullPath(), true);
}

/// Calls `look` with each folder of the list that the environment variable PATH holds, until it is
/// true.
template <class Look>
bool AnyOfPath(Look look) {
  const char* const list = std::getenv("PATH");
  for (std::string_view rest = list ? list : ""; !rest.empty();) {
    const std::string_view entry = rest.substr(0, rest.find(':'));
    rest.remove_prefix(std::min(entry.size() + 1, rest.size()));
    if (entry.empty()) continue;  // Means the current folder, where the search has been.
    const GString folder = platform::PathFromNative(std::string(entry));
    const GString full = folder[0] == '\\' ? folder : CPath(folder).GetFullPath();
    if (look(CPath::AppendDirSeparator(full, true))) return true;
  }
  return false;
}

/// Looks for a file where the system keeps such files, whatever the length of its path; empty if it
/// is not there.
GString Search(const GString& name) {
  if (platform::IsSeparator(name[0])) return FileExists(name) ? name : GString();
  GString found;
  const auto look = [&](const GString& folder) {
    found = folder + name;
    return !folder.empty() && FileExists(found);
  };
  const bool isThere = look(GetStartupPath(nullptr, true)) || look(GetCWD(true)) ||
                       look(DataFolder()) || AnyOfPath(look);
  return isThere ? found : GString();
}

}  // namespace

GString LocateFile(const GString& name) {
  const GString wanted(name.c_str());
  if (wanted.empty() || platform::HasDrive(wanted.c_str())) return {};
  for (const GString& folder : CSystemInfo::GetInstance().ExtraSearchPaths()) {
    GString path = folder + wanted;
    if (FileExists(path)) return path;
  }
  GString found = Search(wanted);
  return found.size() <= kLongestPath ? found : GString();
}

}  // namespace vlm

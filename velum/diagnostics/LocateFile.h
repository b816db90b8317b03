#pragma once

/// \file
/// Finds a file by its name.
///
///     const vlm::GString colours = vlm::LocateFile("Colors.ini");
///     if (colours.empty()) puts("Colors.ini is not there");

#include <velum/core/Api.h>
#include <velum/core/GString.h>

namespace vlm {

/// Gives the path of a file or folder, looked for in these places, in this order:
/// 1. the folders of `CSystemInfo::ExtraSearchPaths`, each as it was given;
/// 2. the folder of the running program;
/// 3. the current folder;
/// 4. the folder of the library's own data, `share/velum` where the library is installed;
/// 5. the folders of the environment variable `PATH`; one that is relative lies in the current
///    folder.
///
/// The name is joined to each place as it stands, folders and steps upwards included, and ends at
/// its first terminator. Of a name that begins with a separator places 2 to 5 give that very file.
///
/// - An empty name, a file that is nowhere: empty.
/// - A name with a drive, of which this system has none: empty.
/// - A file that is found in places 2 to 5, and whose path is longer than 262 bytes: empty.
///
/// *Errors*: those of `CSystemInfo::Instance`.
/// *Cost*: a question to the system for each place.
///
/// Threads: reads the settings, see `CSystemInfo`, the environment and the current folder.
[[nodiscard]] VELUM_API GString LocateFile(const GString& name);

}  // namespace vlm

#pragma once

/// \file
/// Where the files of a user lie. Paths are the system's own.
///
///     const std::string folder = vlm::platform::UserConfigFolder();  // /home/ada/.config

#include <string>

namespace vlm::platform {

/// The folder of the user's configuration: what `XDG_CONFIG_HOME` says, if that is an absolute
/// path, or else `.config` of the home folder, which is what `HOME` or the system's list of users
/// says. Empty if there is none.
[[nodiscard]] std::string UserConfigFolder();

/// Makes a folder and those above it for the user alone, as far as they are not there; false if
/// that fails.
[[nodiscard]] bool MakePrivateFolders(const std::string& folder);

}  // namespace vlm::platform

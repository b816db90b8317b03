#include <velum/platform/detail/UserFolders.h>

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <vector>

namespace vlm::platform {

namespace {

std::string AbsoluteFromEnvironment(const char* name) {
  const char* const value = std::getenv(name);
  return value && *value == '/' ? value : "";
}

std::string HomeFromUserList() {
  constexpr std::size_t kMost = 1 << 20;
  passwd entry{};
  passwd* found = nullptr;
  std::vector<char> room(1024);
  while (::getpwuid_r(::getuid(), &entry, room.data(), room.size(), &found) == ERANGE &&
         room.size() < kMost) {
    room.resize(room.size() * 2);
  }
  return found && found->pw_dir && *found->pw_dir == '/' ? found->pw_dir : "";
}

}  // namespace

std::string UserConfigFolder() {
  const std::string configured = AbsoluteFromEnvironment("XDG_CONFIG_HOME");
  if (!configured.empty()) return configured;
  std::string home = AbsoluteFromEnvironment("HOME");
  if (home.empty()) home = HomeFromUserList();
  return home.empty() ? home : home + "/.config";
}

bool MakePrivateFolders(const std::string& folder) {
  for (std::size_t end = 0; end != std::string::npos;) {
    end = folder.find('/', end + 1);
    const std::string part = folder.substr(0, end);
    if (::mkdir(part.c_str(), S_IRWXU) == 0 || errno == EEXIST) continue;
    // A system may refuse to make, for another reason, what is there.
    struct stat status {};
    if (::stat(part.c_str(), &status) != 0) return false;
  }
  struct stat status {};
  return ::stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

}  // namespace vlm::platform

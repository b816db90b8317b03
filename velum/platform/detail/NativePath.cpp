#include <velum/platform/detail/NativePath.h>

#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <memory>

namespace vlm::platform {

std::string NativePath(const char* path) {
  std::string native(path);
  if (HasDrive(native)) return {};
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

std::string AbsoluteNativePath(const std::string& native) {
  if (native.empty() || native.front() == '/') return native;
  const std::unique_ptr<char, decltype(&::free)> folder(::getcwd(nullptr, 0), &::free);
  return folder ? std::string(folder.get()) + '/' + native : std::string();
}

std::string RealPath(const std::string& native) {
  const std::unique_ptr<char, decltype(&::free)> real(::realpath(native.c_str(), nullptr), &::free);
  return real ? real.get() : std::string();
}

std::string PathFromNative(std::string native) {
  std::replace(native.begin(), native.end(), '/', '\\');
  return native;
}

}  // namespace vlm::platform

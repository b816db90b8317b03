#include <velum/platform/detail/NativePath.h>

#include <algorithm>

namespace vlm::platform {

std::string NativePath(const char* path) {
  std::string native(path);
  if (HasDrive(native)) return {};
  std::replace(native.begin(), native.end(), '\\', '/');
  return native;
}

std::string PathFromNative(std::string native) {
  std::replace(native.begin(), native.end(), '/', '\\');
  return native;
}

}  // namespace vlm::platform

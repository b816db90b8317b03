#include <velum/platform/detail/InputFile.h>

#include <velum/platform/detail/FileAccess.h>
#include <velum/platform/detail/NativePath.h>
#include <velum/platform/detail/Uninterrupted.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace vlm::platform {

InputFile::~InputFile() {
  if (file_ != -1) ::close(file_);
}

bool InputFile::Open(const char* path) { return OpenNative(NativePath(path)); }

bool InputFile::OpenNative(const std::string& native) {
  constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  const int file = Uninterrupted([&] { return ::open(native.c_str(), kFlags); });
  if (file == -1) return false;
  struct stat status {};
  int error = ::fstat(file, &status) == 0 ? 0 : errno;
  if (error == 0 && !S_ISREG(status.st_mode)) error = S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
  if (error != 0) {
    ::close(file);
    errno = error;
    return false;
  }
  if (file_ != -1) ::close(file_);
  file_ = file;
  return true;
}

std::int64_t InputFile::Read(void* data, std::size_t count) const noexcept {
  return ReadFile(file_, data, count);
}

std::string TextOfFile(const std::string& native) {
  constexpr std::size_t kMost = 64 * 1024;
  InputFile file;
  if (!file.OpenNative(native)) return {};
  std::string text(kMost, '\0');
  const std::int64_t count = file.Read(text.data(), text.size());
  text.resize(count < 0 ? 0 : static_cast<std::size_t>(count));
  return text;
}

}  // namespace vlm::platform

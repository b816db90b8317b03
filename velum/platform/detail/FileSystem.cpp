#include <velum/platform/detail/FileSystem.h>

#include <velum/platform/detail/NativePath.h>
#include <velum/platform/detail/SystemMessages.h>

#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

namespace vlm::platform {

FileKind KindOf(const char* path) {
  struct stat status {};
  if (::stat(NativePath(path).c_str(), &status) != 0) return FileKind::kNothing;
  return S_ISDIR(status.st_mode) ? FileKind::kFolder : FileKind::kFile;
}

bool MayRead(const char* path) { return ::access(NativePath(path).c_str(), R_OK) == 0; }

std::int64_t SizeOf(const char* path) {
  struct stat status {};
  if (::stat(NativePath(path).c_str(), &status) != 0) return -1;
  return S_ISDIR(status.st_mode) ? 0 : status.st_size;
}

bool IsRegularFile(const char* path) {
  struct stat status {};
  return ::stat(NativePath(path).c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool RemoveFile(const char* path) { return ::unlink(NativePath(path).c_str()) == 0; }

bool RemoveFolder(const char* path) { return ::rmdir(NativePath(path).c_str()) == 0; }

bool MakeFolder(const char* path) {
  constexpr mode_t kAll = 0777;  // Less the process's mask.
  return ::mkdir(NativePath(path).c_str(), kAll) == 0;
}

void SetFileExistsError() noexcept { errno = kFileExists; }

std::string TemporaryFolder() {
  const char* const chosen = ::getenv("TMPDIR");
  std::string folder = PathFromNative(chosen && *chosen == '/' ? chosen : P_tmpdir);
  if (folder.back() != '\\') folder += '\\';
  return folder;
}

std::string MakeTemporaryFile(const std::string& folder, const char* prefix, std::size_t limit) {
  constexpr char kSuffix[] = ".tmp";
  const std::string path = folder + prefix + "XXXXXX" + kSuffix;
  std::string native = NativePath(path.c_str());
  if (native.empty() || path.size() > limit) {
    errno = native.empty() ? ENOENT : ENAMETOOLONG;
    return {};
  }
  const int file = ::mkstemps(native.data(), sizeof(kSuffix) - 1);
  if (file == -1) return {};
  ::close(file);
  return folder + native.substr(folder.size());
}

std::string CurrentFolder() {
  const std::unique_ptr<char, decltype(&::free)> folder(::getcwd(nullptr, 0), &::free);
  return folder ? PathFromNative(folder.get()) : std::string();
}

}  // namespace vlm::platform

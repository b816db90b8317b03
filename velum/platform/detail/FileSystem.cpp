#include <velum/platform/detail/FileSystem.h>

#include <velum/platform/detail/Modules.h>
#include <velum/platform/detail/NativePath.h>
#include <velum/platform/detail/SystemMessages.h>

#include <dlfcn.h>
#include <link.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>

namespace vlm::platform {

namespace {

/// The loader's record of a module that `module` is the handle of.
const link_map* MapOfHandle(const void* module) {
  struct Search {
    const void* handle;
    const link_map* found;
  } search{module, nullptr};
  const auto visit = [](dl_phdr_info* object, std::size_t, void* data) {
    auto* const wanted = static_cast<Search*>(data);
    Dl_info info;
    void* map = nullptr;
    if (::dladdr1(object->dlpi_phdr, &info, &map, RTLD_DL_LINKMAP) && map == wanted->handle) {
      wanted->found = static_cast<const link_map*>(map);
    }
    return wanted->found ? 1 : 0;
  };
  ::dl_iterate_phdr(visit, &search);
  return search.found;
}

}  // namespace

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

std::string ModulePath(const void* module) {
  if (!module) return PathFromNative(PathOfModule("", nullptr));
  Dl_info info;
  void* found = nullptr;
  const link_map* map = ::dladdr1(module, &info, &found, RTLD_DL_LINKMAP)
                            ? static_cast<const link_map*>(found)
                            : MapOfHandle(module);
  return map ? PathFromNative(PathOfModule(map->l_name, map->l_ld)) : std::string();
}

}  // namespace vlm::platform

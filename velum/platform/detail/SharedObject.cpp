#include <velum/platform/detail/SharedObject.h>

#include <velum/platform/detail/ElfNames.h>
#include <velum/platform/detail/InputFile.h>
#include <velum/platform/detail/NativePath.h>

#include <dlfcn.h>
#include <link.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <memory>
#include <string_view>

namespace vlm::platform {

namespace {

/// What the loader is to be given: a name as it stands, a path in the system's form. Empty, which
/// the loader would take for the program itself, for what names nothing.
std::string LoaderName(const char* path) {
  const std::string_view text(path);
  return text.find_first_of("\\/") == std::string_view::npos && !HasDrive(text) ? std::string(text)
                                                                                : NativePath(path);
}

/// A path that holds whatever becomes the current folder, since the loader keeps what it is given.
std::string Absolute(const std::string& path) {
  if (path.front() == '/') return path;
  const std::unique_ptr<char, decltype(&::free)> folder(::getcwd(nullptr, 0), &::free);
  return folder ? std::string(folder.get()) + '/' + path : path;
}

struct Close {
  void operator()(void* library) const noexcept { CloseSharedObject(library); }
};

/// True for a file that lacks what the loader would map.
bool IsCut(const std::string& native) {
  InputFile file;
  struct stat status {};
  return file.OpenNative(native) && ::fstat(file.Descriptor(), &status) == 0 &&
         IsCutElf(FileBytes(file), static_cast<std::uint64_t>(status.st_size));
}

}  // namespace

void* OpenSharedObject(const char* path) {
  std::string name = LoaderName(path);
  if (name.find('/') != std::string::npos) {
    name = Absolute(name);
    if (IsCut(name)) return nullptr;
  }
  return name.empty() ? nullptr : ::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void CloseSharedObject(void* library) noexcept { ::dlclose(library); }

void* FindSymbol(void* library, const char* name) noexcept { return ::dlsym(library, name); }

std::string SharedObjectFile(const char* path) {
  const std::string name = LoaderName(path);
  if (name.empty() || name.find('/') != std::string::npos) return name;
  const std::unique_ptr<void, Close> loaded(::dlopen(name.c_str(), RTLD_LAZY | RTLD_NOLOAD));
  link_map* map = nullptr;
  return loaded && ::dlinfo(loaded.get(), RTLD_DI_LINKMAP, &map) == 0 ? map->l_name : std::string();
}

}  // namespace vlm::platform

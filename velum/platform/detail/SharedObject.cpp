#include <velum/platform/detail/SharedObject.h>

#include <velum/platform/detail/ElfNames.h>
#include <velum/platform/detail/InputFile.h>
#include <velum/platform/detail/NativePath.h>

#include <dlfcn.h>
#include <link.h>
#include <stdlib.h>
#include <sys/stat.h>

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

/// An address in this library.
constexpr char kAddress = 0;

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

std::string LoadedFile(const std::string& name) {
  const std::unique_ptr<void, Close> loaded(::dlopen(name.c_str(), RTLD_LAZY | RTLD_NOLOAD));
  link_map* map = nullptr;
  return loaded && ::dlinfo(loaded.get(), RTLD_DI_LINKMAP, &map) == 0 ? map->l_name : std::string();
}

/// The library of a name in the folders that the loader searches on this library's behalf.
std::string FileInSearchedFolders(const std::string& name) {
  Dl_info info;
  void* self = nullptr;
  Dl_serinfo size{};
  if (!::dladdr1(&kAddress, &info, &self, RTLD_DL_LINKMAP) ||
      ::dlinfo(self, RTLD_DI_SERINFOSIZE, &size) != 0) {
    return {};
  }
  const std::unique_ptr<void, decltype(&::free)> room(::malloc(size.dls_size), &::free);
  auto* const folders = static_cast<Dl_serinfo*>(room.get());
  if (!folders || ::dlinfo(self, RTLD_DI_SERINFOSIZE, folders) != 0 ||
      ::dlinfo(self, RTLD_DI_SERINFO, folders) != 0) {
    return {};
  }
  for (unsigned i = 0; i < folders->dls_cnt; ++i) {
    std::string file = std::string(folders->dls_serpath[i].dls_name) + '/' + name;
    ElfNames names;
    InputFile library;
    // As the loader does, pass over files that are none of this machine's.
    if (library.OpenNative(file) && ReadElfNames(FileBytes(library), names)) return file;
  }
  return {};
}

}  // namespace

void* OpenSharedObject(const char* path) {
  std::string name = LoaderName(path);
  if (name.find('/') != std::string::npos) {
    // The loader keeps what it is given, whatever becomes the current folder.
    name = AbsoluteNativePath(name);
    if (IsCut(name)) return nullptr;
  }
  return name.empty() ? nullptr : ::dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
}

void KeepThisLibrary() noexcept {
  Dl_info info{};
  if (::dladdr(&kAddress, &info) == 0 || !info.dli_fname) return;
  if (void* const self = ::dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE)) {
    ::dlclose(self);
  }
}

void CloseSharedObject(void* library) noexcept { ::dlclose(library); }

void* FindSymbol(void* library, const char* name) noexcept { return ::dlsym(library, name); }

std::string SharedObjectFile(const char* path) {
  const std::string name = LoaderName(path);
  if (name.empty() || name.find('/') != std::string::npos) return name;
  std::string file = LoadedFile(name);
  return file.empty() ? FileInSearchedFolders(name) : file;
}

}  // namespace vlm::platform

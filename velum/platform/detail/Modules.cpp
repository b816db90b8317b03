#include <velum/platform/detail/Modules.h>

#include <velum/platform/detail/ElfNames.h>
#include <velum/platform/detail/InputFile.h>
#include <velum/platform/detail/LoadedCode.h>
#include <velum/platform/detail/NativePath.h>

#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <cstdint>
#include <ctime>
#include <exception>
#include <memory>
#include <string_view>
#include <utility>

namespace vlm::platform {

namespace {

/// The loader's names of its modules, each with an address in the module; the first name, of the
/// program, is empty.
struct ModuleNames {
  std::size_t limit;
  std::vector<std::pair<std::string, const void*>> names;
  std::exception_ptr thrown;
};

int AddName(dl_phdr_info* module, std::size_t, void* data) {
  auto& list = *static_cast<ModuleNames*>(data);
  // Nothing may be thrown through the loader.
  try {
    if (list.names.size() == list.limit) return 1;
    list.names.emplace_back(module->dlpi_name ? module->dlpi_name : "", module->dlpi_phdr);
    return 0;
  } catch (...) {
    list.thrown = std::current_exception();
    return 1;
  }
}

/// A path that the kernel gives for an open file, without links and without what it adds when the
/// file is removed.
std::string PathFromKernel(std::string_view path) {
  constexpr std::string_view kRemoved = " (deleted)";
  std::string real = RealPath(std::string(path));
  if (!real.empty()) return real;
  if (path.ends_with(kRemoved)) path.remove_suffix(kRemoved.size());
  return std::string(path);
}

std::string ProgramPath() {
  char path[PATH_MAX];
  const ssize_t length = ::readlink("/proc/self/exe", path, sizeof(path));
  return length > 0 ? PathFromKernel({path, static_cast<std::size_t>(length)}) : std::string();
}

/// The files of modules. The kernel's list is read once, and only for a name that needs it.
class ModuleFiles {
 public:
  std::string PathOf(const std::string& name, const void* address) {
    if (name.empty()) return ProgramPath();
    // Only what the kernel itself provides has a name without a folder.
    if (name.find('/') == std::string::npos) return {};
    std::string real = name.front() == '/' ? RealPath(name) : std::string();
    if (!real.empty()) return real;
    const CodeModule* const code = List().Find(reinterpret_cast<std::uintptr_t>(address));
    return code && code->isFile ? PathFromKernel(code->path) : name;
  }

 private:
  const LoadedCode& List() {
    if (!code_) {
      code_ = std::make_unique<LoadedCode>();
      code_->Read();
    }
    return *code_;
  }

  std::unique_ptr<LoadedCode> code_;
};

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

bool ToLocalTime(const timespec& time, SYSTEMTIME& local) {
  constexpr int kFirstYear = 1601;
  constexpr int kLastYear = 30827;
  std::tm parts{};
  if (!::localtime_r(&time.tv_sec, &parts)) return false;
  if (parts.tm_year < kFirstYear - 1900 || parts.tm_year > kLastYear - 1900) return false;
  const auto word = [](long number) { return static_cast<std::uint16_t>(number); };
  local = {word(parts.tm_year + 1900), word(parts.tm_mon + 1),        word(parts.tm_wday),
           word(parts.tm_mday),        word(parts.tm_hour),           word(parts.tm_min),
           word(parts.tm_sec),         word(time.tv_nsec / 1'000'000)};
  return true;
}

}  // namespace

std::string ModulePath(const void* module) {
  if (!module) return PathFromNative(ProgramPath());
  Dl_info info;
  void* found = nullptr;
  const link_map* map = ::dladdr1(module, &info, &found, RTLD_DL_LINKMAP)
                            ? static_cast<const link_map*>(found)
                            : MapOfHandle(module);
  if (!map) return {};
  return PathFromNative(ModuleFiles().PathOf(map->l_name ? map->l_name : "", map->l_ld));
}

std::vector<std::string> LoadedModules(std::size_t limit) {
  ModuleNames list{limit, {}, nullptr};
  ::dl_iterate_phdr(&AddName, &list);
  if (list.thrown) std::rethrow_exception(list.thrown);
  std::vector<std::string> paths;
  ModuleFiles files;
  for (const auto& [name, address] : list.names) {
    std::string path = files.PathOf(name, address);
    if (!path.empty()) paths.push_back(std::move(path));
  }
  return paths;
}

bool ReadModuleFile(const std::string& native, ModuleFile& facts) {
  InputFile file;
  struct stat status {};
  if (!file.OpenNative(native) || ::fstat(file.Descriptor(), &status) != 0) return false;
  facts = {};
  facts.size = status.st_size;
  facts.hasTime = ToLocalTime(status.st_mtim, facts.written);
  ElfNames names;
  const FileBytes bytes(file);
  if (!IsCutElf(bytes, static_cast<std::uint64_t>(status.st_size)) && ReadElfNames(bytes, names)) {
    facts.version = VersionIn(names);
    facts.soname = std::move(names.soname);
  }
  return true;
}

}  // namespace vlm::platform

#include <velum/platform/detail/Modules.h>

#include <velum/platform/detail/ElfNames.h>
#include <velum/platform/detail/InputFile.h>

#include <link.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <ctime>
#include <exception>
#include <memory>

namespace vlm::platform {

namespace {

/// The loader's names of its modules; the first, of the program, is empty.
struct ModuleNames {
  std::size_t limit;
  std::vector<std::string> names;
  std::exception_ptr thrown;
};

int AddName(dl_phdr_info* module, std::size_t, void* data) {
  auto& list = *static_cast<ModuleNames*>(data);
  // Nothing may be thrown through the loader.
  try {
    if (list.names.size() == list.limit) return 1;
    list.names.emplace_back(module->dlpi_name ? module->dlpi_name : "");
    return 0;
  } catch (...) {
    list.thrown = std::current_exception();
    return 1;
  }
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

std::string RealPath(const std::string& native) {
  const std::unique_ptr<char, decltype(&::free)> real(::realpath(native.c_str(), nullptr), &::free);
  return real ? real.get() : std::string();
}

std::vector<std::string> LoadedModules(std::size_t limit) {
  ModuleNames list{limit, {}, nullptr};
  ::dl_iterate_phdr(&AddName, &list);
  if (list.thrown) std::rethrow_exception(list.thrown);
  std::vector<std::string> paths;
  for (const std::string& name : list.names) {
    // Only what the kernel itself provides has a name without a folder.
    if (!name.empty() && name.find('/') == std::string::npos) continue;
    std::string path = RealPath(name.empty() ? "/proc/self/exe" : name);
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
  if (ReadElfNames(FileBytes(file), names)) {
    facts.version = VersionIn(names);
    facts.soname = std::move(names.soname);
  }
  return true;
}

}  // namespace vlm::platform

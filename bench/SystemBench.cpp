#include <velum/diagnostics/DllCache.h>
#include <velum/diagnostics/LocateFile.h>
#include <velum/diagnostics/Logger.h>
#include <velum/diagnostics/ModQuery.h>
#include <velum/diagnostics/Timer.h>

#include <benchmark/benchmark.h>
#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <chrono>
#include <climits>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <unordered_map>

namespace {

template <class Work>
void Row(const char* name, Work work) {
  benchmark::RegisterBenchmark(name, [work](benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(work());
  });
}

/// What a table of libraries keeps of one.
struct Counted {
  vlm::HINSTANCE module;
  int refCount;
};

/// A text with small ASCII letters.
std::string Folded(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
  }
  return text;
}

/// True if a file is beside the program, in the current folder, among the library's data or in a
/// folder of PATH, asked for with nothing but the system's calls.
bool IsAnywhere(const std::string& name) {
  const auto isIn = [&name](const std::string& folder) {
    return access((folder + '/' + name).c_str(), F_OK) == 0;
  };
  char text[PATH_MAX];
  const ssize_t length = readlink("/proc/self/exe", text, sizeof(text));
  if (length > 0) {
    const std::string program(text, static_cast<std::size_t>(length));
    if (isIn(program.substr(0, program.rfind('/')))) return true;
  }
  if (getcwd(text, sizeof(text)) && isIn(text)) return true;
  Dl_info library;
  if (dladdr(reinterpret_cast<void*>(&vlm::LocateFile), &library) &&
      realpath(library.dli_fname, text)) {
    const std::string file(text);
    if (isIn(file.substr(0, file.rfind('/')) + "/../share/velum")) return true;
  }
  const char* const list = std::getenv("PATH");
  std::istringstream folders(list ? list : "");
  for (std::string folder; std::getline(folders, folder, ':');) {
    if (isIn(folder)) return true;
  }
  return false;
}

/// What a look at every module costs at least: its name from the loader, and its size and time.
std::int64_t SizeOfModules() {
  std::int64_t sum = 0;
  const auto add = [](dl_phdr_info* module, std::size_t, void* data) {
    struct stat status {};
    const char* const path = *module->dlpi_name ? module->dlpi_name : "/proc/self/exe";
    if (stat(path, &status) == 0) *static_cast<std::int64_t*>(data) += status.st_size;
    return 0;
  };
  dl_iterate_phdr(add, &sum);
  return sum;
}

[[maybe_unused]] const bool registered = [] {
  static const vlm::CTimer timer;
  Row("Ticks/velum/now", [] { return timer.GetTicks(); });
  Row("Ticks/clock_gettime/now", [] {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{now.tv_sec} * 1'000'000'000 + now.tv_nsec;
  });
  Row("Ticks/chrono/now", [] { return std::chrono::steady_clock::now().time_since_epoch(); });

  static const vlm::GString library("libm.so.6");
  static vlm::CDllCache& cache = vlm::CDllCache::GetInstance();
  cache.Load("libc.so.6");
  cache.Load("libpthread.so.0");
  cache.Load("libdl.so.2");
  static std::unordered_map<std::string, Counted> table{{"libc.so.6", {}},
                                                        {"libpthread.so.0", {}},
                                                        {"libdl.so.2", {}},
                                                        {library, {cache.Load(library), 1}}};
  Row("CachedLibrary/velum/load", [] {
    const vlm::HINSTANCE module = cache.Load(library);
    cache.DecRef(module);
    return module;
  });
  Row("CachedLibrary/unordered_map/load", [] {
    Counted& entry = table.find(Folded(library))->second;
    ++entry.refCount;
    benchmark::ClobberMemory();
    --entry.refCount;
    return entry.module;
  });
  Row("CachedLibrary/dlopen/load", [] {
    void* const module = dlopen(library.c_str(), RTLD_NOW);
    dlclose(module);
    return module;
  });

  Row("Locate/velum/nowhere", [] { return vlm::LocateFile("velum that is nowhere").empty(); });
  Row("Locate/access/nowhere", [] { return IsAnywhere("velum that is nowhere"); });

  // What has no peer: modules with their versions, of which sizes alone are the floor, and reports.
  Row("Modules/velum/memory", [] { return vlm::CModQuery(1).size(); });
  Row("Modules/velum/all", [] { return vlm::CModQuery().size(); });
  Row("ModuleSizes/stat/memory", [] { return SizeOfModules(); });
  static vlm::CLogger log;
  Row("ConfigReport/velum/all", [] {
    log.EmptyBuffer();
    log.LogAllConfigInfo();
    return log.GetBuffer().size();
  });
  return true;
}();

}  // namespace

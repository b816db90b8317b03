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

#include <chrono>
#include <cstdint>
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
  // The map minds the case of letters.
  Row("CachedLibrary/unordered_map/load", [] {
    Counted& entry = table.find(library)->second;
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

  Row("Modules/velum/memory", [] { return vlm::CModQuery(1).size(); });
  Row("Modules/stat/memory", [] { return SizeOfModules(); });
  Row("Modules/velum/all", [] { return vlm::CModQuery().size(); });
  Row("Locate/velum/nowhere", [] { return vlm::LocateFile("velum that is nowhere").empty(); });

  static vlm::CLogger log;
  Row("ConfigReport/velum/all", [] {
    log.EmptyBuffer();
    log.LogAllConfigInfo();
    return log.GetBuffer().size();
  });
  return true;
}();

}  // namespace

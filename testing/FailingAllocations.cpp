#include <testing/FailingAllocations.h>

#include <link.h>
#include <malloc.h>
#include <unwind.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string_view>

namespace vlm::testing {
namespace {

// What `operator new` gave and has not got back, and the most of it since the last measurement
// began.
constinit std::atomic<std::ptrdiff_t> held{0};
constinit std::atomic<std::ptrdiff_t> most{0};

void Count(std::ptrdiff_t bytes) noexcept {
  const std::ptrdiff_t now = held.fetch_add(bytes, std::memory_order_relaxed) + bytes;
  std::ptrdiff_t known = most.load(std::memory_order_relaxed);
  while (now > known && !most.compare_exchange_weak(known, now, std::memory_order_relaxed)) {
  }
}

// Where a shared library lies in memory.
struct Stretch {
  std::uintptr_t begin = 0;
  std::uintptr_t end = 0;

  bool Has(std::uintptr_t address) const noexcept { return address >= begin && address < end; }
};

struct Libraries {
  Stretch velum;
  Stretch standard;
};

int NoteLibrary(dl_phdr_info* info, std::size_t, void* argument) noexcept {
  const std::string_view path(info->dlpi_name);
  const std::string_view name = path.substr(path.rfind('/') + 1);
  auto& libraries = *static_cast<Libraries*>(argument);
  Stretch* const stretch = name.starts_with("libvelum.so")    ? &libraries.velum
                           : name.starts_with("libstdc++.so") ? &libraries.standard
                                                              : nullptr;
  if (!stretch) return 0;
  for (int i = 0; i < info->dlpi_phnum; ++i) {
    const auto& part = info->dlpi_phdr[i];
    if (part.p_type != PT_LOAD) continue;
    const std::uintptr_t begin = info->dlpi_addr + part.p_vaddr;
    if (stretch->begin == 0) stretch->begin = begin;
    stretch->end = begin + part.p_memsz;
  }
  return 0;
}

const Libraries& TheLibraries() noexcept {
  static const Libraries libraries = [] {
    Libraries found;
    dl_iterate_phdr(&NoteLibrary, &found);
    return found;
  }();
  return libraries;
}

// Who has called the standard library: the first beyond its frames, which come after those of this
// file.
struct Walk {
  bool isStandard = false;
  bool isVelum = false;
};

_Unwind_Reason_Code Step(_Unwind_Context* context, void* argument) noexcept {
  auto& walk = *static_cast<Walk*>(argument);
  const std::uintptr_t address = _Unwind_GetIP(context);
  if (TheLibraries().standard.Has(address)) {
    walk.isStandard = true;
    return _URC_NO_REASON;
  }
  if (!walk.isStandard) return _URC_NO_REASON;
  walk.isVelum = TheLibraries().velum.Has(address);
  return _URC_END_OF_STACK;
}

bool IsAskedByVelum(const void* caller) noexcept {
  const auto address = reinterpret_cast<std::uintptr_t>(caller);
  if (TheLibraries().velum.Has(address)) return true;
  if (!TheLibraries().standard.Has(address)) return false;
  Walk walk;
  _Unwind_Backtrace(&Step, &walk);
  return walk.isVelum;
}

}  // namespace

constinit thread_local FailingAllocations* FailingAllocations::active_ = nullptr;

FailingAllocations::FailingAllocations(std::size_t succeeding, std::size_t failing,
                                       Asker asker) noexcept
    : outer_(active_), succeeding_(succeeding), failing_(failing), asker_(asker) {
  (void)TheLibraries();
  active_ = this;
}

FailingAllocations::~FailingAllocations() { active_ = outer_; }

bool FailingAllocations::NextFails(const void* caller) noexcept {
  if (!active_) return false;
  if (active_->asker_ == Asker::Library && !IsAskedByVelum(caller)) return false;
  if (active_->succeeding_ > 0) {
    --active_->succeeding_;
    return false;
  }
  if (active_->failing_ == 0) return false;
  --active_->failing_;
  active_->failed_ = true;
  return true;
}

bool FailingAllocations::NextMallocFails(const void* caller) noexcept {
  return active_ && active_->asker_ == Asker::Library && NextFails(caller);
}

AllocationPeak::AllocationPeak() noexcept : before_(held.load(std::memory_order_relaxed)) {
  most.store(before_, std::memory_order_relaxed);
}

std::size_t AllocationPeak::Bytes() const noexcept {
  return static_cast<std::size_t>(most.load(std::memory_order_relaxed) - before_);
}

}  // namespace vlm::testing

namespace {

void* Allocate(std::size_t size, const void* caller) noexcept {
  if (vlm::testing::FailingAllocations::NextFails(caller)) return nullptr;
  void* const memory = std::malloc(size ? size : 1);
  if (memory) vlm::testing::Count(static_cast<std::ptrdiff_t>(malloc_usable_size(memory)));
  return memory;
}

void Free(void* memory) noexcept {
  if (memory) vlm::testing::Count(-static_cast<std::ptrdiff_t>(malloc_usable_size(memory)));
  std::free(memory);
}

void* AllocateOrThrow(std::size_t size, const void* caller) {
  void* const memory = Allocate(size, caller);
  if (!memory) throw std::bad_alloc();
  return memory;
}

}  // namespace

// All forms without an alignment, so that none of them meets one of another library.

void* operator new(std::size_t size) { return AllocateOrThrow(size, __builtin_return_address(0)); }
void* operator new[](std::size_t size) {
  return AllocateOrThrow(size, __builtin_return_address(0));
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size, __builtin_return_address(0));
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return Allocate(size, __builtin_return_address(0));
}

void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { Free(memory); }

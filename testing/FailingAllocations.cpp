#include <testing/FailingAllocations.h>

#include <malloc.h>
#include <atomic>
#include <cstdlib>
#include <new>

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

}  // namespace

constinit thread_local FailingAllocations* FailingAllocations::active_ = nullptr;

FailingAllocations::FailingAllocations(std::size_t succeeding, std::size_t failing) noexcept
    : outer_(active_), succeeding_(succeeding), failing_(failing) {
  active_ = this;
}

FailingAllocations::~FailingAllocations() { active_ = outer_; }

bool FailingAllocations::NextFails() noexcept {
  if (!active_) return false;
  if (active_->succeeding_ > 0) {
    --active_->succeeding_;
    return false;
  }
  if (active_->failing_ == 0) return false;
  --active_->failing_;
  active_->failed_ = true;
  return true;
}

AllocationPeak::AllocationPeak() noexcept : before_(held.load(std::memory_order_relaxed)) {
  most.store(before_, std::memory_order_relaxed);
}

std::size_t AllocationPeak::Bytes() const noexcept {
  return static_cast<std::size_t>(most.load(std::memory_order_relaxed) - before_);
}

}  // namespace vlm::testing

namespace {

void* Allocate(std::size_t size) noexcept {
  if (vlm::testing::FailingAllocations::NextFails()) return nullptr;
  void* const memory = std::malloc(size ? size : 1);
  if (memory) vlm::testing::Count(static_cast<std::ptrdiff_t>(malloc_usable_size(memory)));
  return memory;
}

void Free(void* memory) noexcept {
  if (memory) vlm::testing::Count(-static_cast<std::ptrdiff_t>(malloc_usable_size(memory)));
  std::free(memory);
}

void* AllocateOrThrow(std::size_t size) {
  void* const memory = Allocate(size);
  if (!memory) throw std::bad_alloc();
  return memory;
}

}  // namespace

// All forms without an alignment, so that none of them meets one of another library.

void* operator new(std::size_t size) { return AllocateOrThrow(size); }
void* operator new[](std::size_t size) { return AllocateOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }

void operator delete(void* memory) noexcept { Free(memory); }
void operator delete[](void* memory) noexcept { Free(memory); }
void operator delete(void* memory, std::size_t) noexcept { Free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { Free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { Free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { Free(memory); }

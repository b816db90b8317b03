#include <testing/FailingAllocations.h>

#include <cstdlib>
#include <new>

namespace vlm::testing {

constinit thread_local FailingAllocations* FailingAllocations::active_ = nullptr;

FailingAllocations::FailingAllocations(std::size_t succeeding) noexcept
    : outer_(active_), succeeding_(succeeding) {
  active_ = this;
}

FailingAllocations::~FailingAllocations() { active_ = outer_; }

bool FailingAllocations::NextFails() noexcept {
  if (!active_) return false;
  if (active_->succeeding_ > 0) {
    --active_->succeeding_;
    return false;
  }
  active_->failed_ = true;
  return true;
}

}  // namespace vlm::testing

namespace {

void* Allocate(std::size_t size) noexcept {
  return vlm::testing::FailingAllocations::NextFails() ? nullptr : std::malloc(size ? size : 1);
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

void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }

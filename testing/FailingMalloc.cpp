// Replaces malloc and its kin in the program that it is part of, so that what the library asks of
// them fails when a test wants it to. Sanitizers keep them to themselves.

#include <testing/FailingAllocations.h>

#include <malloc.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstdlib>

// The C library's own, by the names that it has them under for those who replace the others.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}

namespace {

constinit std::atomic<std::ptrdiff_t> held{0};

std::ptrdiff_t Room(void* memory) noexcept {
  return memory ? static_cast<std::ptrdiff_t>(malloc_usable_size(memory)) : 0;
}

void* Counted(void* memory) noexcept {
  held.fetch_add(Room(memory), std::memory_order_relaxed);
  return memory;
}

bool Fails(const void* caller) noexcept {
  if (!vlm::testing::FailingAllocations::NextMallocFails(caller)) return false;
  errno = ENOMEM;
  return true;
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) noexcept {
  if (Fails(__builtin_return_address(0))) return nullptr;
  return Counted(__libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) noexcept {
  if (Fails(__builtin_return_address(0))) return nullptr;
  return Counted(__libc_calloc(count, size));
}

void* realloc(void* memory, std::size_t size) noexcept {
  if (Fails(__builtin_return_address(0))) return nullptr;
  const std::ptrdiff_t before = Room(memory);
  void* const moved = __libc_realloc(memory, size);
  if (moved || size == 0) held.fetch_sub(before, std::memory_order_relaxed);
  return Counted(moved);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
  return Counted(__libc_memalign(alignment, size));
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return Counted(__libc_memalign(alignment, size));
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
  void* const block = Counted(__libc_memalign(alignment, size));
  if (!block) return ENOMEM;
  *memory = block;
  return 0;
}

void free(void* memory) noexcept {
  held.fetch_sub(Room(memory), std::memory_order_relaxed);
  __libc_free(memory);
}

}  // extern "C"

std::ptrdiff_t vlm::testing::HeldOfMalloc() noexcept {
  return held.load(std::memory_order_relaxed);
}

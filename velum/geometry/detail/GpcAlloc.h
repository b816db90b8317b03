#pragma once

/// \file
/// Memory of the polygon clipper: blocks of `malloc`, or the error that names what they were for.
///
///     auto* const vertices = GPCAllocArray<gpc_vertex>(__LINE__, "vertex creation", count);
///     std::free(vertices);

#include <cstddef>
#include <cstdlib>
#include <memory>

namespace vlm::detail {

/// The source file that the clipper's failing allocations name.
inline constexpr char kGpcSource[] = "Gpc";

/// Gives `size` bytes, which `std::free` takes back; null for a size of 0.
///
/// *Errors*: `ERR_OUT_OF_MEMORY` of the module "GPC Library", the source `fileName` and `line`,
/// with the message "GPCAlloc failure: " and `label`.
[[nodiscard]] void* GPCAlloc(int line, const char* label, std::size_t size,
                             const char* fileName = kGpcSource);

/// Gives room for `count` values of a plain type, as `GPCAlloc` does. A count whose size is no
/// `std::size_t` fails too.
template <class T>
[[nodiscard]] T* GPCAllocArray(int line, const char* label, std::size_t count) {
  std::size_t size = 0;
  if (__builtin_mul_overflow(count, sizeof(T), &size)) size = static_cast<std::size_t>(-1);
  return static_cast<T*>(GPCAlloc(line, label, size));
}

/// Returns a block to `std::free`.
struct GPCFree {
  void operator()(void* block) const noexcept { std::free(block); }
};

/// A block with an owner, until it stands where it belongs.
template <class T>
using GPCBlock = std::unique_ptr<T[], GPCFree>;

/// Gives a block that `std::free` takes back, or null.
using GPCMalloc = void* (*)(std::size_t size);

/// What gives the memory of the clipper and its file readers on this thread: `std::malloc`, until a
/// test sets one that fails when it wants.
extern constinit thread_local GPCMalloc gpcMalloc;

}  // namespace vlm::detail

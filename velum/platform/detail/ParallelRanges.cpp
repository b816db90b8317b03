#include <velum/platform/detail/ParallelRanges.h>

#include <velum/platform/detail/TaskPool.h>

#include <atomic>
#include <new>

namespace vlm::platform {
namespace {

// The service does not come back from a start that found no memory.
constinit std::atomic<bool> g_canStart{true};

// The service orders memory between its threads, but out of sight of thread checkers: it is not
// built for them. These two say so once more.
constinit std::atomic<unsigned> g_begun{0};
constinit std::atomic<unsigned> g_done{0};

}  // namespace

void ForRanges(std::size_t count, std::size_t grain,
               const std::function<void(std::size_t begin, std::size_t end)>& body) {
  if (g_canStart) {
    try {
      g_begun.fetch_add(1, std::memory_order_acq_rel);
      RunOnAllProcessors(count, grain, [&body](std::size_t begin, std::size_t end) {
        static_cast<void>(g_begun.load(std::memory_order_acquire));
        body(begin, end);
        g_done.fetch_add(1, std::memory_order_acq_rel);
      });
      static_cast<void>(g_done.load(std::memory_order_acquire));
      return;
    } catch (const std::bad_alloc&) {
      g_canStart = false;
    }
  }
  body(0, count);
}

}  // namespace vlm::platform

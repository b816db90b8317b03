#include <velum/platform/detail/ParallelRanges.h>

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <atomic>
#include <new>

namespace vlm::detail {
namespace {

// The service does not come back from a start that found no memory.
constinit std::atomic<bool> g_canStart{true};

}  // namespace

void ForRanges(std::size_t count, std::size_t grain,
               const std::function<void(std::size_t begin, std::size_t end)>& body) {
  // The service orders memory between its threads, but out of sight of thread checkers; these two
  // say so once more.
  std::atomic<int> begun{0};
  std::atomic<int> done{0};
  if (g_canStart) {
    try {
      begun.store(1, std::memory_order_release);
      tbb::parallel_for(tbb::blocked_range<std::size_t>(0, count, grain),
                        [&](const tbb::blocked_range<std::size_t>& range) {
                          static_cast<void>(begun.load(std::memory_order_acquire));
                          body(range.begin(), range.end());
                          done.fetch_add(1, std::memory_order_release);
                        });
      static_cast<void>(done.load(std::memory_order_acquire));
      return;
    } catch (const std::bad_alloc&) {
      g_canStart = false;
    }
  }
  body(0, count);
}

}  // namespace vlm::detail

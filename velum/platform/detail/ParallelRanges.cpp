#include <velum/platform/detail/ParallelRanges.h>

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

#include <atomic>

namespace vlm::detail {

void ForRanges(std::size_t count, std::size_t grain,
               const std::function<void(std::size_t begin, std::size_t end)>& body) {
  // The service orders memory between its threads, but inside of a library that thread checkers do
  // not see into; these two say so once more.
  std::atomic<bool> begun{false};
  std::atomic<std::size_t> done{0};
  begun.store(true, std::memory_order_release);
  tbb::parallel_for(tbb::blocked_range<std::size_t>(0, count, grain),
                    [&](const tbb::blocked_range<std::size_t>& range) {
                      if (begun.load(std::memory_order_acquire)) {
                        body(range.begin(), range.end());
                      }
                      done.fetch_add(range.size(), std::memory_order_release);
                    });
  while (done.load(std::memory_order_acquire) != count) {
  }
}

}  // namespace vlm::detail

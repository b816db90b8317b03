#include <velum/platform/detail/TaskPool.h>

#include <tbb/blocked_range.h>
#include <tbb/parallel_for.h>

namespace vlm::platform {

void RunOnAllProcessors(std::size_t count, std::size_t grain,
                        const std::function<void(std::size_t begin, std::size_t end)>& body) {
  using Range = tbb::blocked_range<std::size_t>;
  tbb::parallel_for(Range(0, count, grain),
                    [&](const Range& range) { body(range.begin(), range.end()); });
}

}  // namespace vlm::platform

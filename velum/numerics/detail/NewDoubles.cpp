#include <velum/numerics/detail/NewDoubles.h>

#include <limits>
#include <new>

namespace vlm::detail {

std::unique_ptr<double[]> NewDoubles(std::uint64_t count) {
  constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max() / sizeof(double);
  if (count > kMost) throw std::bad_alloc();
  return std::unique_ptr<double[]>(count == 0 ? nullptr : new double[count]);
}

}  // namespace vlm::detail

#include <velum/numerics/detail/RadialKernels.h>
#include <velum/numerics/detail/RadialLanes.h>
#include <velum/platform/detail/VectorUnit.h>

#include <emmintrin.h>

namespace vlm::detail {

namespace {

struct TwoLanes {
  using Real = __m128d;
  using Bits [[gnu::vector_size(16)]] = unsigned long long;
  static constexpr std::size_t kCount = 2;

  static Real Load(const double* from) noexcept { return _mm_loadu_pd(from); }
  static void Store(double* to, Real value) noexcept { _mm_storeu_pd(to, value); }
  static Real All(double value) noexcept { return _mm_set1_pd(value); }
  static Real Root(Real value) noexcept { return _mm_sqrt_pd(value); }
};

}  // namespace

constinit const RadialKernelSet kRadialKernelsTwoWide = {FillRow<TwoLanes>, AddSum<TwoLanes>,
                                                         AddSums<TwoLanes>};

const RadialKernelSet& RadialKernels() noexcept {
  return platform::HasFourWide() ? kRadialKernelsFourWide : kRadialKernelsTwoWide;
}

}  // namespace vlm::detail

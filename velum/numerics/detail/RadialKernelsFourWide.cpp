// Compiled for AVX2, so nothing that other sources share may be made here: what is instantiated
// below is of a type that no other source has.
#include <velum/numerics/detail/RadialKernels.h>
#include <velum/numerics/detail/RadialLanes.h>

#include <immintrin.h>

namespace vlm::detail {

namespace {

struct FourLanes {
  using Real = __m256d;
  using Bits [[gnu::vector_size(32)]] = unsigned long long;
  static constexpr std::size_t kCount = 4;

  static Real Load(const double* from) noexcept { return _mm256_loadu_pd(from); }
  static void Store(double* to, Real value) noexcept { _mm256_storeu_pd(to, value); }
  static Real All(double value) noexcept { return _mm256_set1_pd(value); }
  static Real Root(Real value) noexcept { return _mm256_sqrt_pd(value); }
};

}  // namespace

constinit const RadialKernelSet kRadialKernelsFourWide = {FillRow<FourLanes>, AddSum<FourLanes>,
                                                          AddSums<FourLanes>};

}  // namespace vlm::detail

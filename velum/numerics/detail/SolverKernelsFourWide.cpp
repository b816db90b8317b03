// Compiled for AVX2, so nothing that other sources share may be made here: what is instantiated
// below is of a type that no other source has.
#include <velum/numerics/detail/SolverKernels.h>
#include <velum/numerics/detail/SolverLanes.h>

#include <immintrin.h>

namespace vlm::detail {

namespace {

struct FourLanes {
  using Real = __m256d;
  static constexpr std::size_t kCount = 4;

  static Real Load(const double* from) noexcept { return _mm256_loadu_pd(from); }
  static void Store(double* to, Real value) noexcept { _mm256_storeu_pd(to, value); }
  static void Transpose(Real (&rows)[kCount]) noexcept {
    const Real a = _mm256_unpacklo_pd(rows[0], rows[1]);
    const Real b = _mm256_unpackhi_pd(rows[0], rows[1]);
    const Real c = _mm256_unpacklo_pd(rows[2], rows[3]);
    const Real d = _mm256_unpackhi_pd(rows[2], rows[3]);
    rows[0] = _mm256_permute2f128_pd(a, c, 0x20);
    rows[1] = _mm256_permute2f128_pd(b, d, 0x20);
    rows[2] = _mm256_permute2f128_pd(a, c, 0x31);
    rows[3] = _mm256_permute2f128_pd(b, d, 0x31);
  }
};

}  // namespace

constinit const SolverKernelSet kSolverKernelsFourWide = KernelsOf<FourLanes>();

}  // namespace vlm::detail

#include <velum/numerics/detail/SolverKernels.h>
#include <velum/numerics/detail/SolverLanes.h>
#include <velum/platform/detail/VectorUnit.h>

#include <emmintrin.h>

namespace vlm::detail {

namespace {

struct TwoLanes {
  using Real = __m128d;
  static constexpr std::size_t kCount = 2;

  static Real Load(const double* from) noexcept { return _mm_loadu_pd(from); }
  static void Store(double* to, Real value) noexcept { _mm_storeu_pd(to, value); }
  static void Transpose(Real (&rows)[kCount]) noexcept {
    const Real left = _mm_unpacklo_pd(rows[0], rows[1]);
    rows[1] = _mm_unpackhi_pd(rows[0], rows[1]);
    rows[0] = left;
  }
};

}  // namespace

constinit const SolverKernelSet kSolverKernelsTwoWide = KernelsOf<TwoLanes>();

const SolverKernelSet& SolverKernels() noexcept {
  return platform::HasFourWide() ? kSolverKernelsFourWide : kSolverKernelsTwoWide;
}

}  // namespace vlm::detail

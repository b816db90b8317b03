#include <velum/geometry/detail/InverseFourWide.h>

#ifdef __x86_64__
#include <immintrin.h>
#include <cmath>

namespace vlm::detail {

// The columns of the inverse are the cross products of the rows over the determinant. They are
// left rotated, (z, x, y), until the end, which saves a permutation each.
[[gnu::target("avx2")]] bool InvertAffineFourWide(const double* m, double* out) noexcept {
  constexpr int kYzx = 0b11'00'10'01;
  constexpr int kZxy = 0b11'01'00'10;
  const __m256d zero = _mm256_setzero_pd();
  const __m256d row0 = _mm256_loadu_pd(m);
  const __m256d row1 = _mm256_loadu_pd(m + 4);
  const __m256d row2 = _mm256_loadu_pd(m + 8);
  const __m256d yzx0 = _mm256_permute4x64_pd(row0, kYzx);
  const __m256d yzx1 = _mm256_permute4x64_pd(row1, kYzx);
  const __m256d yzx2 = _mm256_permute4x64_pd(row2, kYzx);
  const __m256d zxy2 = _mm256_permute4x64_pd(row2, kZxy);

  // The six terms of the determinant: those of one sign, then those of the other. Each is split
  // into a positive and a negative share; NaN counts as negative.
  const __m256d p = _mm256_mul_pd(row0, yzx1);
  const __m256d n = _mm256_mul_pd(yzx0, row1);
  const __m256d plus = _mm256_mul_pd(p, zxy2);
  const __m256d minus = _mm256_xor_pd(_mm256_mul_pd(n, zxy2), _mm256_set1_pd(-0.0));
  const __m256d plusAbove = _mm256_cmp_pd(plus, zero, _CMP_GT_OQ);
  const __m256d minusAbove = _mm256_cmp_pd(minus, zero, _CMP_GT_OQ);
  const __m256d plusPositive = _mm256_and_pd(plusAbove, plus);
  const __m256d plusNegative = _mm256_andnot_pd(plusAbove, plus);
  const __m256d minusPositive = _mm256_and_pd(minusAbove, minus);
  const __m256d minusNegative = _mm256_andnot_pd(minusAbove, minus);
  const __m256d plus02 = _mm256_unpacklo_pd(plusPositive, plusNegative);
  const __m256d plus1 = _mm256_unpackhi_pd(plusPositive, plusNegative);
  const __m256d minus02 = _mm256_unpacklo_pd(minusPositive, minusNegative);
  const __m256d minus1 = _mm256_unpackhi_pd(minusPositive, minusNegative);
  __m128d sums = _mm_add_pd(_mm256_castpd256_pd128(plus02), _mm256_castpd256_pd128(plus1));
  sums = _mm_add_pd(sums, _mm256_extractf128_pd(plus02, 1));
  sums = _mm_add_pd(sums, _mm256_castpd256_pd128(minus1));
  sums = _mm_add_pd(sums, _mm256_castpd256_pd128(minus02));
  sums = _mm_add_pd(sums, _mm256_extractf128_pd(minus02, 1));
  const double determinant = sums[0] + sums[1];
  const double range = sums[0] - sums[1];
  constexpr double kSmallest = 2.220446049250313e-16;
  // Most matrices are so far from singular that it is seen without a division.
  const bool isFar = std::abs(determinant) > range * (2 * kSmallest);
  if (!isFar && !(std::abs(determinant / range) >= kSmallest)) {
    return false;
  }

  const __m256d reciprocal = _mm256_set1_pd(1 / determinant);
  const __m256d column0 = _mm256_mul_pd(
      _mm256_sub_pd(_mm256_mul_pd(row1, yzx2), _mm256_mul_pd(yzx1, row2)), reciprocal);
  const __m256d column1 = _mm256_mul_pd(
      _mm256_sub_pd(_mm256_mul_pd(row2, yzx0), _mm256_mul_pd(yzx2, row0)), reciprocal);
  const __m256d column2 = _mm256_mul_pd(_mm256_sub_pd(p, n), reciprocal);
  const __m256d even01 = _mm256_unpacklo_pd(column0, column1);
  const __m256d odd01 = _mm256_unpackhi_pd(column0, column1);
  const __m256d even2 = _mm256_unpacklo_pd(column2, zero);
  const __m256d odd2 = _mm256_unpackhi_pd(column2, zero);
  const __m256d x = _mm256_permute2f128_pd(odd01, odd2, 0x20);
  const __m256d y = _mm256_permute2f128_pd(even01, even2, 0x31);
  const __m256d z = _mm256_permute2f128_pd(even01, even2, 0x20);
  __m256d offset = _mm256_add_pd(_mm256_mul_pd(_mm256_broadcast_sd(m + 12), x),
                                 _mm256_mul_pd(_mm256_broadcast_sd(m + 13), y));
  offset = _mm256_add_pd(offset, _mm256_mul_pd(_mm256_broadcast_sd(m + 14), z));
  offset = _mm256_xor_pd(offset, _mm256_set1_pd(-0.0));
  offset = _mm256_blend_pd(offset, _mm256_set1_pd(1), 0b1000);
  _mm256_storeu_pd(out, x);
  _mm256_storeu_pd(out + 4, y);
  _mm256_storeu_pd(out + 8, z);
  _mm256_storeu_pd(out + 12, offset);
  return true;
}

}  // namespace vlm::detail

#else

namespace vlm::detail {

bool InvertAffineFourWide(const double*, double*) noexcept { return false; }

}  // namespace vlm::detail

#endif

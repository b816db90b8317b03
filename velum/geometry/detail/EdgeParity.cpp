#include <velum/geometry/detail/EdgeParity.h>

#include <velum/platform/detail/VectorUnit.h>

#include <bit>
#include <cstdint>
#include <cstring>

#ifdef __x86_64__
#include <immintrin.h>
#endif

namespace vlm::detail {

namespace {

// Points are looked at in blocks of so many; more edges than the few of one are computed all.
constexpr unsigned kBlock = 16;
constexpr int kFew = 2;

// Whether the edge from `a` to `b` passes `p` on its left: its ends lie on different sides of the
// point's height, the lower one on it or below. No side needs a quotient; NaN fails every
// comparison of products.
bool Passes(const Vec2d& p, const Vec2d& a, const Vec2d& b) noexcept {
  const double lhs = (p.y - b.y) * (a.x - b.x);
  const double rhs = (a.y - b.y) * (p.x - b.x);
  const bool rises = b.y <= p.y;
  const bool spans = rises != (a.y <= p.y);
  return spans & (rises ? lhs > rhs : lhs < rhs);
}

#ifdef __x86_64__
typedef double Four __attribute__((vector_size(32)));
typedef std::int64_t FourBits __attribute__((vector_size(32)));

// x and y of four points, both in the same order, which is not theirs.
struct Coordinates {
  Four x;
  Four y;
};

[[gnu::target("avx2"), gnu::always_inline]] inline Coordinates Load(const Vec2d* points) noexcept {
  Four a;
  Four b;
  std::memcpy(&a, points, sizeof(a));
  std::memcpy(&b, points + 2, sizeof(b));
  return {__builtin_shufflevector(a, b, 0, 4, 2, 6), __builtin_shufflevector(a, b, 1, 5, 3, 7)};
}

// `Passes` for the edges from points[-1], ..., points[2] to points[0], ..., points[3].
[[gnu::target("avx2"), gnu::always_inline]] inline FourBits FourPass(Four px, Four py,
                                                                     const Vec2d* points) noexcept {
  const Coordinates a = Load(points - 1);
  const Coordinates b = Load(points);
  const Four lhs = (py - b.y) * (a.x - b.x);
  const Four rhs = (a.y - b.y) * (px - b.x);
  const FourBits rises = b.y <= py;
  const FourBits spans = rises ^ (a.y <= py);
  return spans & ((rises & (lhs > rhs)) | (~rises & (lhs < rhs)));
}

// Which of sixteen points are at the height `py` or below, a bit each.
[[gnu::target("avx2"), gnu::always_inline]] inline unsigned BelowBits(const Vec2d* points,
                                                                      __m256d py) noexcept {
  unsigned bits = 0;
  for (unsigned i = 0; i < kBlock; i += 4) {
    const __m256d a = _mm256_loadu_pd(&points[i].x);
    const __m256d b = _mm256_loadu_pd(&points[i + 2].x);
    const __m256d y = _mm256_permute4x64_pd(_mm256_unpackhi_pd(a, b), 0b11011000);
    const __m256d isBelow = _mm256_cmp_pd(y, py, _CMP_LE_OQ);
    bits |= static_cast<unsigned>(_mm256_movemask_pd(isBelow)) << i;
  }
  return bits;
}

#endif

}  // namespace

bool OddNumberOnPath(const Vec2d& p, const Vec2d* points, unsigned count) noexcept {
  bool isOdd = false;
  for (std::size_t i = 1; i < count; ++i) isOdd ^= Passes(p, points[i - 1], points[i]);
  return isOdd;
}

#ifdef __x86_64__

// Edges that span the point's height are few on most outlines: they are picked out by their ends.
// Where they are many, all of a block are computed.
[[gnu::target("avx2")]] bool OddNumberOnPathFourWide(const Vec2d& p, const Vec2d* points,
                                                     unsigned count) noexcept {
  const Four px = {p.x, p.x, p.x, p.x};
  const Four py = {p.y, p.y, p.y, p.y};
  FourBits odd = {0, 0, 0, 0};
  bool isOdd = false;
  unsigned before = points[0].y <= p.y ? 1 : 0;
  std::size_t i = 1;
  for (; i + kBlock <= count; i += kBlock) {
    const unsigned below = BelowBits(points + i, py);
    unsigned spans = (below ^ (below << 1 | before)) & ((1U << kBlock) - 1);
    before = below >> (kBlock - 1);
    if (std::popcount(spans) > kFew) {
      for (unsigned k = 0; k < kBlock; k += 4) odd ^= FourPass(px, py, points + i + k);
    } else {
      for (; spans != 0; spans &= spans - 1) {
        const std::size_t edge = i + static_cast<std::size_t>(std::countr_zero(spans));
        isOdd ^= Passes(p, points[edge - 1], points[edge]);
      }
    }
  }
  isOdd ^= ((odd[0] ^ odd[1] ^ odd[2] ^ odd[3]) & 1) != 0;
  return isOdd ^ OddNumberOnPath(p, points + (i - 1), count - static_cast<unsigned>(i - 1));
}

#else

bool OddNumberOnPathFourWide(const Vec2d& p, const Vec2d* points, unsigned count) noexcept {
  return OddNumberOnPath(p, points, count);
}

#endif

bool OddNumberOfEdges(const Vec2d& p, const Vec2d* points, unsigned count) noexcept {
  const bool isOdd = platform::HasFourWide() ? OddNumberOnPathFourWide(p, points, count)
                                             : OddNumberOnPath(p, points, count);
  return isOdd ^ Passes(p, points[count - 1], points[0]);
}

}  // namespace vlm::detail

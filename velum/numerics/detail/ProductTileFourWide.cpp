#include <velum/numerics/detail/ProductTile.h>

#include <immintrin.h>

namespace vlm::detail {

namespace {

// All ones in the first `count` lanes.
[[gnu::target("avx2")]] inline __m256i FirstLanes(unsigned count) noexcept {
  alignas(32) constexpr long long kOnes[] = {-1, -1, -1, -1, 0, 0, 0, 0};
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(kOnes + 4 - count));
}

// Faster than a masked store.
[[gnu::target("avx2")]] inline void StoreFirst(double* out, __m256d value,
                                               unsigned count) noexcept {
  __m128d pair = _mm256_castpd256_pd128(value);
  if (count & 2) {
    _mm_storeu_pd(out, pair);
    pair = _mm256_extractf128_pd(value, 1);
    out += 2;
  }
  if (count & 1) _mm_store_sd(out, pair);
}

// A tile of kRows rows and kVectors registers across. Of the last register `last` lanes are there;
// unless kPart, all of them. With kPanels, the operands are copied into panels of a tile's size.
template <unsigned kRows, unsigned kVectors, bool kPart, bool kPanels = false>
[[gnu::target("avx2")]] void Tile(const TileOperands& operands, unsigned last) noexcept {
  const TileOperands t = operands;
  const __m256i mask = FirstLanes(kPart ? last : 4);
  __m256d sums[kRows][kVectors];
#pragma GCC unroll 4
  for (unsigned r = 0; r < kRows; ++r) {
#pragma GCC unroll 4
    for (unsigned v = 0; v < kVectors; ++v) {
      const double* const out = t.out + r * t.outRow + 4 * v;
      sums[r][v] = !t.continues                 ? _mm256_setzero_pd()
                   : kPart && v == kVectors - 1 ? _mm256_maskload_pd(out, mask)
                                                : _mm256_loadu_pd(out);
    }
  }
  const std::size_t aRow = kPanels ? 1 : t.aRow;
  const std::size_t aDepth = kPanels ? kTileRows : t.aDepth;
  const std::size_t bDepth = kPanels ? kTileCols : t.bDepth;
  const double* a = t.a;
  const double* b = t.b;
  for (std::size_t k = 0; k < t.depth; ++k) {
    __m256d factors[kVectors];
#pragma GCC unroll 4
    for (unsigned v = 0; v < kVectors; ++v) {
      factors[v] = kPart && v == kVectors - 1 ? _mm256_maskload_pd(b + 4 * v, mask)
                                              : _mm256_loadu_pd(b + 4 * v);
    }
#pragma GCC unroll 4
    for (unsigned r = 0; r < kRows; ++r) {
      const __m256d factor = _mm256_broadcast_sd(a + r * aRow);
#pragma GCC unroll 4
      for (unsigned v = 0; v < kVectors; ++v) {
        sums[r][v] = _mm256_add_pd(sums[r][v], _mm256_mul_pd(factor, factors[v]));
      }
    }
    a += aDepth;
    b += bDepth;
  }
#pragma GCC unroll 4
  for (unsigned r = 0; r < kRows; ++r) {
#pragma GCC unroll 4
    for (unsigned v = 0; v < kVectors; ++v) {
      double* const out = t.out + r * t.outRow + 4 * v;
      if (kPart && v == kVectors - 1) {
        StoreFirst(out, sums[r][v], last);
      } else {
        _mm256_storeu_pd(out, sums[r][v]);
      }
    }
  }
}

using TileForm = void(const TileOperands& operands, unsigned last) noexcept;

// By rows less 1, registers across less 1, and whether the last one is a part.
constexpr TileForm* kForms[kTileRows][kTileCols / 4][2] = {
    {{Tile<1, 1, false>, Tile<1, 1, true>},
     {Tile<1, 2, false>, Tile<1, 2, true>},
     {Tile<1, 3, false>, Tile<1, 3, true>}},
    {{Tile<2, 1, false>, Tile<2, 1, true>},
     {Tile<2, 2, false>, Tile<2, 2, true>},
     {Tile<2, 3, false>, Tile<2, 3, true>}},
    {{Tile<3, 1, false>, Tile<3, 1, true>},
     {Tile<3, 2, false>, Tile<3, 2, true>},
     {Tile<3, 3, false>, Tile<3, 3, true>}},
    {{Tile<4, 1, false>, Tile<4, 1, true>},
     {Tile<4, 2, false>, Tile<4, 2, true>},
     {Tile<4, 3, false>, Tile<4, 3, true>}},
};

}  // namespace

void ProductTileFourWide(unsigned rows, unsigned cols, const TileOperands& operands) noexcept {
  if (rows == kTileRows && cols == kTileCols && operands.aRow == 1 &&
      operands.aDepth == kTileRows && operands.bDepth == kTileCols) {
    return Tile<4, 3, false, true>(operands, 4);
  }
  const unsigned before = (cols - 1) / 4;
  const unsigned last = cols - 4 * before;
  kForms[rows - 1][before][last < 4](operands, last);
}

}  // namespace vlm::detail

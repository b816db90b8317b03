#include <velum/numerics/detail/ProductTile.h>

#include <emmintrin.h>
#include <algorithm>

namespace vlm::detail {

namespace {

constexpr unsigned kCols = 6;  // what a tile of registers has across

// A tile of kRows rows and kVectors registers across. Unless kPart, both lanes of the last one are
// there.
template <unsigned kRows, unsigned kVectors, bool kPart>
void Tile(const TileOperands& t) noexcept {
  __m128d sums[kRows][kVectors];
#pragma GCC unroll 4
  for (unsigned r = 0; r < kRows; ++r) {
#pragma GCC unroll 4
    for (unsigned v = 0; v < kVectors; ++v) {
      const double* const out = t.out + r * t.outRow + 2 * v;
      sums[r][v] = !t.continues                 ? _mm_setzero_pd()
                   : kPart && v == kVectors - 1 ? _mm_load_sd(out)
                                                : _mm_loadu_pd(out);
    }
  }
  const double* a = t.a;
  const double* b = t.b;
  for (std::size_t k = 0; k < t.depth; ++k) {
    __m128d factors[kVectors];
#pragma GCC unroll 4
    for (unsigned v = 0; v < kVectors; ++v) {
      factors[v] = kPart && v == kVectors - 1 ? _mm_load_sd(b + 2 * v) : _mm_loadu_pd(b + 2 * v);
    }
#pragma GCC unroll 4
    for (unsigned r = 0; r < kRows; ++r) {
      const __m128d factor = _mm_set1_pd(a[r * t.aRow]);
#pragma GCC unroll 4
      for (unsigned v = 0; v < kVectors; ++v) {
        sums[r][v] = _mm_add_pd(sums[r][v], _mm_mul_pd(factor, factors[v]));
      }
    }
    a += t.aDepth;
    b += t.bDepth;
  }
#pragma GCC unroll 4
  for (unsigned r = 0; r < kRows; ++r) {
#pragma GCC unroll 4
    for (unsigned v = 0; v < kVectors; ++v) {
      double* const out = t.out + r * t.outRow + 2 * v;
      if (kPart && v == kVectors - 1) {
        _mm_store_sd(out, sums[r][v]);
      } else {
        _mm_storeu_pd(out, sums[r][v]);
      }
    }
  }
}

using TileForm = void(const TileOperands& operands) noexcept;

// By rows less 1 and columns less 1.
constexpr TileForm* kForms[kTileRows][kCols] = {
    {Tile<1, 1, true>, Tile<1, 1, false>, Tile<1, 2, true>, Tile<1, 2, false>, Tile<1, 3, true>,
     Tile<1, 3, false>},
    {Tile<2, 1, true>, Tile<2, 1, false>, Tile<2, 2, true>, Tile<2, 2, false>, Tile<2, 3, true>,
     Tile<2, 3, false>},
    {Tile<3, 1, true>, Tile<3, 1, false>, Tile<3, 2, true>, Tile<3, 2, false>, Tile<3, 3, true>,
     Tile<3, 3, false>},
    {Tile<4, 1, true>, Tile<4, 1, false>, Tile<4, 2, true>, Tile<4, 2, false>, Tile<4, 3, true>,
     Tile<4, 3, false>},
};

}  // namespace

void ProductTileTwoWide(unsigned rows, unsigned cols, const TileOperands& operands) noexcept {
  TileOperands part = operands;
  for (unsigned first = 0; first < cols; first += kCols) {
    kForms[rows - 1][std::min(cols - first, kCols) - 1](part);
    part.b += kCols;
    part.out += kCols;
  }
}

}  // namespace vlm::detail

#include <velum/numerics/detail/BlockedProduct.h>

#include <velum/platform/detail/VectorUnit.h>

#include <emmintrin.h>
#include <algorithm>
#include <cstring>
#include <memory>

namespace vlm::detail {

namespace {

// The depth of a block: a tile's columns, copied, take 24 kB and stay in the nearest cache.
constexpr std::size_t kBlockDepth = 256;
// The rows of a block: copied, they take 192 kB and stay in the second cache.
constexpr std::size_t kBlockRows = 96;
// The columns of a block: copied, they take 2 MB.
constexpr std::size_t kBlockCols = 85 * kTileCols;
// What is so small stays in the nearest cache without a copy.
constexpr std::size_t kSmall = 52 * 52;

std::size_t RoundUp(std::size_t count, std::size_t step) noexcept {
  return (count + step - 1) / step * step;
}

// Copies `depth` times `count` numbers that stand side by side, leaving room for kWidth.
template <std::size_t kWidth>
void CopyRuns(std::size_t depth, std::size_t count, const double* from, std::size_t stride,
              double* out) noexcept {
  for (std::size_t k = 0; k < depth; ++k) {
    const double* const run = from + k * stride;
    if (count == kWidth) {
      std::memcpy(out + k * kWidth, run, kWidth * sizeof(double));
    } else {
      for (std::size_t j = 0; j < count; ++j) out[k * kWidth + j] = run[j];
    }
  }
}

// The same of numbers that stand one below the other: two by two are turned at a time.
template <std::size_t kWidth>
void CopyColumns(std::size_t depth, std::size_t count, const double* from, std::size_t stride,
                 double* out) noexcept {
  std::size_t j = 0;
  for (; j + 1 < count; j += 2) {
    const double* const left = from + j * stride;
    const double* const right = left + stride;
    std::size_t k = 0;
    for (; k + 1 < depth; k += 2) {
      const __m128d l = _mm_loadu_pd(left + k);
      const __m128d r = _mm_loadu_pd(right + k);
      _mm_store_pd(out + k * kWidth + j, _mm_unpacklo_pd(l, r));
      _mm_store_pd(out + (k + 1) * kWidth + j, _mm_unpackhi_pd(l, r));
    }
    if (k < depth) _mm_store_pd(out + k * kWidth + j, _mm_setr_pd(left[k], right[k]));
  }
  if (j < count) {
    for (std::size_t k = 0; k < depth; ++k) out[k * kWidth + j] = from[j * stride + k];
  }
}

// Copies a block into panels of kWidth columns, one below the other: `depth` times kWidth numbers
// side by side. Of the last panel only what is there is written.
template <std::size_t kWidth>
void CopyPanels(std::size_t depth, std::size_t cols, const double* first, std::size_t depthStride,
                std::size_t colStride, double* out) noexcept {
  for (std::size_t left = 0; left < cols; left += kWidth) {
    const std::size_t count = std::min(kWidth, cols - left);
    if (colStride == 1) {
      CopyRuns<kWidth>(depth, count, first + left, depthStride, out);
    } else {
      CopyColumns<kWidth>(depth, count, first + left * colStride, colStride, out);
    }
    out += depth * kWidth;
  }
}

// Room for panels, so that no register full of them crosses a line of the cache. Little room needs
// no allocation; much is one, since the C library gives several back to the system each time.
class Panels {
 public:
  explicit Panels(std::size_t count)
      : more_(count > kLittle ? new Lanes[count / 4 + 1] : nullptr),
        first_(more_ ? more_[0].values : little_) {}
  Panels(const Panels&) = delete;
  Panels& operator=(const Panels&) = delete;
  double* First() const noexcept { return first_; }

 private:
  struct alignas(32) Lanes {
    double values[4];
  };
  static constexpr std::size_t kLittle = 512;

  std::unique_ptr<Lanes[]> more_;
  double* first_;
  alignas(32) double little_[kLittle];
};

}  // namespace

void BlockedProduct(std::size_t rows, std::size_t cols, std::size_t depth, const ProductOperand& a,
                    const ProductOperand& b, const ProductTarget& out, TileFunction* tile) {
  if (depth == 0 && !out.continues) {
    for (std::size_t i = 0; i < rows; ++i) std::fill_n(out.first + i * out.rowStride, cols, 0.0);
  }
  const bool copiesA = rows * depth > kSmall;
  const bool copiesB = b.colStride != 1 || depth * cols > kSmall;
  const std::size_t blockDepth = std::min(depth, kBlockDepth);
  const std::size_t blockRows = std::min(RoundUp(rows, kTileRows), kBlockRows);
  const std::size_t blockCols = std::min(RoundUp(cols, kTileCols), kBlockCols);
  const std::size_t roomForA = copiesA ? blockRows * blockDepth : 0;
  const Panels panels(roomForA + (copiesB ? blockCols * blockDepth : 0));
  double* const panelsA = panels.First();
  double* const panelsB = panels.First() + roomForA;

  for (std::size_t left = 0; left < cols; left += kBlockCols) {
    const std::size_t width = std::min(kBlockCols, cols - left);
    for (std::size_t front = 0; front < depth; front += kBlockDepth) {
      TileOperands t{};
      t.depth = std::min(kBlockDepth, depth - front);
      t.outRow = out.rowStride;
      t.continues = out.continues || front > 0;
      const double* const blockB = b.first + front * b.rowStride + left * b.colStride;
      if (copiesB) {
        CopyPanels<kTileCols>(t.depth, width, blockB, b.rowStride, b.colStride, panelsB);
      }
      t.bDepth = copiesB ? kTileCols : b.rowStride;
      for (std::size_t top = 0; top < rows; top += kBlockRows) {
        const std::size_t height = std::min(kBlockRows, rows - top);
        const double* const blockA = a.first + top * a.rowStride + front * a.colStride;
        if (copiesA) {
          CopyPanels<kTileRows>(t.depth, height, blockA, a.colStride, a.rowStride, panelsA);
        }
        t.aRow = copiesA ? 1 : a.rowStride;
        t.aDepth = copiesA ? kTileRows : a.colStride;
        for (std::size_t j = 0; j < width; j += kTileCols) {
          const auto tileCols = static_cast<unsigned>(std::min<std::size_t>(kTileCols, width - j));
          t.b = copiesB ? panelsB + j * t.depth : blockB + j;
          for (std::size_t i = 0; i < height; i += kTileRows) {
            const auto tileRows =
                static_cast<unsigned>(std::min<std::size_t>(kTileRows, height - i));
            t.a = copiesA ? panelsA + i * t.depth : blockA + i * a.rowStride;
            t.out = out.first + (top + i) * out.rowStride + left + j;
            tile(tileRows, tileCols, t);
          }
        }
      }
    }
  }
}

void BlockedProduct(std::size_t rows, std::size_t cols, std::size_t depth, const ProductOperand& a,
                    const ProductOperand& b, const ProductTarget& out) {
  BlockedProduct(rows, cols, depth, a, b, out,
                 platform::HasFourWide() ? ProductTileFourWide : ProductTileTwoWide);
}

}  // namespace vlm::detail

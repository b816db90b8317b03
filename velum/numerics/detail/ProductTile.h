#pragma once

/// \file
/// The innermost part of matrix products: a tile of at most 4 rows and 12 columns of sums, which
/// stay in registers while all their products are added.
///
///     TileFunction* const tile =
///         platform::HasFourWide() ? ProductTileFourWide : ProductTileTwoWide;
///     tile(4, 12, operands);
///
/// Several sums lie side by side in a register; each of them is added up in the order of the
/// indices, so that its bits do not depend on how many there are.

#include <cstddef>

namespace vlm::detail {

constexpr unsigned kTileRows = 4;   ///< The rows of a full tile.
constexpr unsigned kTileCols = 12;  ///< The columns of a full tile.

/// What the sums of a tile are made of: element (i, j) is the sum over k of `a[i * aRow + k *
/// aDepth]` times `b[k * bDepth + j]`.
struct TileOperands {
  std::size_t depth;   ///< The number of products in a sum.
  const double* a;     ///< The rows.
  std::size_t aRow;    ///< From a row to the next one.
  std::size_t aDepth;  ///< From a product to the next one.
  const double* b;     ///< The columns, side by side.
  std::size_t bDepth;  ///< From a product to the next one.
  double* out;         ///< The sums, those of a row side by side.
  std::size_t outRow;  ///< From a row of sums to the next one.
  bool continues;      ///< Sums go on from what `out` holds; otherwise they begin with 0.
};

/// Makes a tile of 1 to 4 rows and 1 to 12 columns.
using TileFunction = void(unsigned rows, unsigned cols, const TileOperands& operands) noexcept;

/// Four doubles to a register; only where `platform::HasFourWide`.
TileFunction ProductTileFourWide;

/// Two doubles to a register.
TileFunction ProductTileTwoWide;

}  // namespace vlm::detail

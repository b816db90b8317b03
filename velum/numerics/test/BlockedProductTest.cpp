#include <velum/numerics/detail/BlockedProduct.h>

#include <velum/numerics/test/MatrixOf.h>
#include <velum/numerics/test/reference/PlainProducts.h>
#include <velum/platform/detail/VectorUnit.h>

#include <gtest/gtest.h>

#include <random>

namespace vlm::detail {
namespace {

using reference::PlainProduct;
using vlm::testing::RandomOf;
using vlm::testing::SameBits;

// Both kinds of tiles, whatever this processor would choose.
TEST(BlockedProduct, HasTheSameBitsInRegistersOfAnyWidth) {
  std::mt19937 random(13);
  SCOPED_TRACE("seed 13");
  std::uniform_int_distribution<unsigned> small(1, 30);
  std::uniform_int_distribution<unsigned> large(1, 110);
  for (int i = 0; i < 300; ++i) {
    auto& size = i % 10 ? small : large;
    const unsigned rows = size(random);
    const unsigned cols = size(random);
    const unsigned depth = i % 50 ? size(random) : 300;
    SCOPED_TRACE(::testing::Message() << rows << " by " << cols << ", depth " << depth);
    const RMatrix a = RandomOf(RMatrix(rows, depth), random, i % 3 == 0);
    const RMatrix b = RandomOf(RMatrix(cols, depth), random, i % 3 == 0);
    const RMatrix expected = PlainProduct(a, false, b, true);
    RMatrix out(rows, cols);
    for (TileFunction* const tile : {ProductTileTwoWide, ProductTileFourWide}) {
      if (tile == ProductTileFourWide && !platform::HasFourWide()) continue;
      Fill(out, 7);
      BlockedProduct(rows, cols, depth, {a.Base(), depth, 1}, {b.Base(), 1, depth},
                     {out.Base(), cols}, tile);
      EXPECT_TRUE(SameBits(expected, out));
    }
  }
}

TEST(BlockedProduct, GoesOnFromEarlierSumsInsideALargerMatrix) {
  std::mt19937 random(14);
  SCOPED_TRACE("seed 14");
  const RMatrix a = RandomOf(RMatrix(9, 70), random);
  const RMatrix b = RandomOf(RMatrix(70, 15), random);
  const RMatrix expected = PlainProduct(a, false, b, false);
  RMatrix out(9, 20);
  Fill(out, 7);
  for (const unsigned first : {0u, 33u}) {
    BlockedProduct(9, 15, first == 0 ? 33 : 37, {a.Base(0, first), 70, 1},
                   {b.Base(first, 0), 15, 1}, {out.Base(0, 2), 20, first > 0});
  }
  for (unsigned i = 0; i < 9; ++i) {
    EXPECT_TRUE(SameBits(expected.Base(i, 0), out.Base(i, 2), 15));
    EXPECT_TRUE(out(i, 1) == 7 && out(i, 17) == 7) << "what is beside it stays";
  }
}

TEST(BlockedProduct, WithoutDepthIsZero) {
  double out[] = {7, 7};
  BlockedProduct(1, 2, 0, {nullptr, 0, 1}, {nullptr, 0, 1}, {out, 2});
  EXPECT_EQ(out[0], 0);
  EXPECT_EQ(out[1], 0);
}

}  // namespace
}  // namespace vlm::detail

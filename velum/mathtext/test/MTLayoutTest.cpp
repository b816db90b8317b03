#include <velum/mathtext/MTLayout.h>

#include <velum/core/Exception.h>
#include <gtest/gtest.h>

namespace vlm {
namespace {

TEST(CalcLeftBaseline, PutsEachSideOfTheBoxOnThePoint) {
  const Box2d box(-10.0, -20.0, 30.0, 40.0);
  const double xs[] = {100.0, 90.0, 70.0};           // left, center, right
  const double ys[] = {220.0, 200.0, 160.0, 190.0};  // top, baseline, bottom, center
  for (unsigned int h = 0; h < 3; ++h)
    for (unsigned int v = 0; v < 4; ++v)
      EXPECT_EQ(CalcLeftBaseline(box, Vec2d(100.0, 200.0), h, v), Vec2d(xs[h], ys[v])) << h << v;
}

TEST(CalcLeftBaseline, RefusesAlignmentsThatAreNone) {
  const unsigned int wrong[][2] = {{3, 0}, {0, 4}};
  for (const auto& [h, v] : wrong) {
    try {
      (void)CalcLeftBaseline(Box2d(), Vec2d(), h, v);
      ADD_FAILURE() << h << v;
    } catch (const Exception& error) {
      EXPECT_EQ(error.GetErrCode(), ERR_INTERNAL);
      EXPECT_EQ(error.GetSrcFile(), "MTParser");
    }
  }
}

TEST(HorizJustify, MapsToAlignmentsAndBack) {
  for (unsigned int align = 0; align < 3; ++align) {
    EXPECT_EQ(MapKQTextIFHorizAlignToHorizJustify(align), align + 1);
    EXPECT_EQ(MapKQTextIFHorizJustifyToHorizAlign(align + 1), align);
  }
  EXPECT_EQ(MapKQTextIFHorizAlignToHorizJustify(3), 1U);
  EXPECT_EQ(MapKQTextIFHorizJustifyToHorizAlign(0), 0U);
  EXPECT_EQ(MapKQTextIFHorizJustifyToHorizAlign(4), 0U);
}

}  // namespace
}  // namespace vlm

#include <velum/geometry/RectTransformer.h>

#include <gtest/gtest.h>

namespace vlm {
namespace {

TEST(RectTransformer, ChoosesItsScales) {
  struct Row {
    const char* why;
    Box2d source;
    bool isotropic;
    Vec2d scale;
  };
  const Box2d destination(10, 20, 30, 60);
  const Row rows[] = {
      {"each its own", Box2d(0, 0, 4, 5), false, Vec2d(5, 8)},
      {"isotropic", Box2d(0, 0, 4, 5), true, Vec2d(5, 5)},
      {"isotropic, the other smaller", Box2d(0, 0, 2, 8), true, Vec2d(5, 5)},
      {"isotropic keeps signs", Box2d(0, 5, 4, 0), true, Vec2d(5, -5)},
      {"no height", Box2d(0, 7, 4, 7), false, Vec2d(5, 5)},
      {"no width", Box2d(7, 0, 7, -5), false, Vec2d(-8, -8)},
      {"neither", Box2d(7, 7, 7, 7), true, Vec2d(1, 1)},
      {"below the threshold", Box2d(0, 0, 2e-16, 8), false, Vec2d(5, 5)},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    const CRectTransformer transformer(row.source, destination, row.isotropic);
    EXPECT_EQ(transformer.Transform(row.source.Center()), Vec2d(20, 40)) << "centre on centre";
    EXPECT_EQ(transformer.Transform(row.source.Center() + 1) - Vec2d(20, 40), row.scale);
    EXPECT_EQ(transformer.ReverseTransform(Vec2d(20, 40)), row.source.Center());
  }
}

TEST(RectTransformer, TakesTheThresholdItselfForAWidth) {
  constexpr double kWidth = 2.220446049250313e-16;
  const CRectTransformer transformer(Box2d(0, 0, kWidth, 0), Box2d(10, 20, 30, 60), false);
  EXPECT_EQ(transformer.Transform(Vec2d(kWidth, 0)), Vec2d(30, 40));
}

TEST(RectTransformer, MapsAllShapesBothWays) {
  const CRectTransformer transformer(Box2d(0, 0, 4, 4), Box2d(0, 0, 10, -6), false);
  EXPECT_EQ(transformer.Transform(Box2d(0, 1, 4, 2)), Box2d(0, -1.5, 10, -3));
  EXPECT_EQ(transformer.ReverseTransform(Box2d(0, -1.5, 10, -3)), Box2d(0, 1, 4, 2));
  const POINT p = transformer.Transform(POINT{1, 1});
  EXPECT_EQ(Vec2i(p), Vec2i(3, -2)) << "2.5 and -1.5, half away from zero";
  const POINT back = transformer.ReverseTransform(POINT{3, -2});
  EXPECT_EQ(Vec2i(back), Vec2i(1, 1)) << "1.2 and 1.33";
  const RECT rect = transformer.Transform(RECT{0, 1, 4, 3});
  EXPECT_EQ(Box2d(rect.left, rect.top, rect.right, rect.bottom), Box2d(0, -2, 10, -5));
  const RECT reverse = transformer.ReverseTransform(RECT{0, -6, 10, 0});
  EXPECT_EQ(Box2d(reverse.left, reverse.top, reverse.right, reverse.bottom), Box2d(0, 4, 4, 0));
}

TEST(RectTransformer, IsAMatrixToo) {
  const CRectTransformer transformer(Box2d(0, 2, 4, 6), Box2d(0, 0, 10, -6), false);
  // Centres (2, 4) and (5, -3), scales 2.5 and -1.5.
  const Mat3d m = transformer;
  EXPECT_TRUE(m.Equals(Mat3d(2.5, 0, 0, -1.5, 0, 3), 0));
  EXPECT_EQ(Vec2d(3, 8) * m, transformer.Transform(Vec2d(3, 8)));
}

TEST(RectTransformer, WrapsPointsThatAreTooFarAway) {
  const CRectTransformer wide(Box2d(0, 0, 1, 1), Box2d(0, 0, 4294967296.0, 1e300), false);
  EXPECT_EQ(Vec2i(wide.Transform(POINT{3, 1})), Vec2i(0, 0)) << "3 * 2^32, and beyond 64 bits";
  const CRectTransformer flat(Box2d(0, 0, 1, 1), Box2d(0, 0, 0, 1), false);
  EXPECT_EQ(Vec2i(flat.ReverseTransform(POINT{1, 1})), Vec2i(0, 1)) << "divided by zero";
}

}  // namespace
}  // namespace vlm

#include <velum/geometry/PolygonClipping.h>

#include <velum/geometry/GPolygon.h>
#include <velum/geometry/GPolygon2d.h>
#include <velum/geometry/PolygonMeasures.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace vlm {
namespace {

using ::testing::ElementsAre;

// A U, which a low rectangle splits.
const Vec2d kU[] = {{0, 0}, {9, 0}, {9, 9}, {6, 9}, {6, 3}, {3, 3}, {3, 9}, {0, 9}};
const unsigned int kCount = 8;

struct Arrays {
  std::vector<Vec2d> points = {Vec2d(7, 7)};
  std::vector<unsigned int> counts = {1};

  double Area() const {
    return std::abs(
        PolygonArea(points.data(), counts.data(), static_cast<unsigned int>(counts.size())));
  }
};

TEST(PolygonClipping, RectanglesCutContourByContour) {
  const Box2d window(-1, 10, 10, 5);  // Upside down.
  GPolygon polygon(kU, 8);
  GClipGPolygonToRect(polygon, window, polygon);
  EXPECT_EQ(polygon.GetNumContours(), 1u) << "joined along the rectangle's edge";
  EXPECT_EQ(polygon.GetBBox(), Box2d(0, 5, 9, 9));
  Arrays arrays;
  GClipPolyPolygonToRect(kU, &kCount, 1, window, arrays.points, arrays.counts, false);
  EXPECT_EQ(arrays.Area(), 24);
  GClipPolyPolygonToRectUsingGPolygon2d(kU, &kCount, 1, Box2d(-1, 5, 10, 10), arrays.points,
                                        arrays.counts, true);
  EXPECT_THAT(arrays.counts, ElementsAre(5u, 5u));
  EXPECT_EQ(arrays.Area(), 24);
}

TEST(PolygonClipping, NothingLeftLeavesTheArraysAlone) {
  const Box2d beside(20, 20, 30, 30);
  Arrays arrays;
  GClipGPolygonToRect(GPolygon(kU, 8), beside, arrays.points, arrays.counts, true);
  GClipGPolygonToRect(GPolygon2d(kU, 8), beside, arrays.points, arrays.counts, true);
  GClipGPolygonToGPolygon(GPolygon(kU, 8), GPolygon(20, 20, 30, 30), arrays.points, arrays.counts,
                          true);
  EXPECT_THAT(arrays.points, ElementsAre(Vec2d(7, 7)));
  EXPECT_THAT(arrays.counts, ElementsAre(1u));
}

template <class Polygon>
void TestClipToPolygon() {
  const Vec2d triangle[] = {{0, 0}, {9, 0}, {0, 9}};
  Arrays arrays;
  GClipPolyPolygonToGPolygon(kU, &kCount, 1, Polygon(triangle, 3), arrays.points, arrays.counts,
                             false);
  EXPECT_NEAR(arrays.Area(), 36, 1e-12) << "below the line from (9, 0) to (0, 9), without the gap";
  Polygon result;
  GClipGPolygonToGPolygon(Polygon(kU, 8), Polygon(0, 0, 9, 2), result);
  EXPECT_EQ(result.GetBBox(), Box2d(0, 0, 9, 2));
  EXPECT_TRUE(GPolygonContains(Polygon(0, 0, 9, 9), Polygon(kU, 8)));
  EXPECT_FALSE(GPolygonContains(Polygon(0, 0, 9, 9), Polygon())) << "its box is inverted";
  EXPECT_TRUE(GPolygonContains(Polygon(kU, 8), Polygon()));
  EXPECT_TRUE(GPolygonContains(Polygon(kU, 8), Polygon(1, 1, 8, 3)));
  EXPECT_FALSE(GPolygonContains(Polygon(kU, 8), Polygon(1, 1, 8, 4)));
  EXPECT_TRUE(GPolygonContains(Polygon(0, 0, 9, 9), kU, &kCount, 1));
  EXPECT_FALSE(GPolygonContains(Polygon(0, 0, 9, 8), kU, &kCount, 1));
}

TEST(PolygonClipping, PolygonsClipAndHoldEachOther) {
  TestClipToPolygon<GPolygon>();
  TestClipToPolygon<GPolygon2d>();
}

}  // namespace
}  // namespace vlm

#include <velum/geometry/Arcs.h>
#include <velum/geometry/GDashLineGenerator.h>
#include <velum/geometry/GPolygon.h>
#include <velum/geometry/GPolygon2d.h>
#include <velum/geometry/GPolyline.h>
#include <velum/geometry/PolygonClipping.h>
#include <velum/geometry/PolygonRings.h>
#include <velum/geometry/Segments.h>

#include <gtest/gtest.h>

#include <type_traits>
#include <vector>

namespace vlm {
namespace {

static_assert(std::is_nothrow_move_constructible_v<GPolygon2d>);

// Null arrays and numbers in braces are no type's own: that a call takes them has to be seen to.
template <class Polygon>
class PlainCalls : public ::testing::Test {};
using Polygons = ::testing::Types<GPolygon, GPolygon2d>;
TYPED_TEST_SUITE(PlainCalls, Polygons);

TYPED_TEST(PlainCalls, PolygonsTakeNullArrays) {
  TypeParam polygon(nullptr, 0);
  EXPECT_EQ(polygon.GetTotalVertexCount(), 0u);
  EXPECT_EQ(TypeParam(nullptr, nullptr, 0).GetNumContours(), 0u);
  polygon.AddContours(nullptr, nullptr, 0);
  EXPECT_EQ(polygon.GetNumContours(), TypeParam(nullptr, 0).GetNumContours());
}

TEST(PlainCalls, RingsAndPathsTakeNullArrays) {
  GPolyline line(nullptr, 0);
  line.Append(nullptr, 0);
  EXPECT_EQ(line.GetNumVertices(), 0u);
  Ring2d ring{{1, 1}};
  InitRing(nullptr, 0, ring);
  EXPECT_TRUE(ring.empty());
  MultiPolygon2d rings;
  rings.resize(1);
  InitMultiPolygon(nullptr, nullptr, 0, rings);
  EXPECT_TRUE(rings.empty());
  rings.resize(1);
  InitMultiPolygonUINTCounts(nullptr, nullptr, 0, rings);
  EXPECT_TRUE(rings.empty());
  GDashLineGenerator dashes = {nullptr, 0};
  std::vector<GLine2> out;
  const Vec2d path[] = {{0, 0}, {1, 0}};
  dashes.Decompose(path, 2, out);
  EXPECT_EQ(out.size(), 1u);
  dashes.Decompose(path, 2, nullptr, nullptr);
}

TEST(PlainCalls, BoxesAndPointsAreNumbersInBraces) {
  GPolygon2d square(2, 2, 9, 9);
  GPolygon2d result;
  square.Intersection({0, 0, 6, 6}, result);
  square.Intersection({0, 0, 5, 5});
  EXPECT_EQ(result.GetBBox(), Box2d(2, 2, 6, 6));
  EXPECT_EQ(square.GetBBox(), Box2d(2, 2, 5, 5));
  EXPECT_TRUE(GAreCollinear({0, 0}, {1, 1}, {2, 2}));
  EXPECT_EQ(PointLineSegDistSq({0, 3}, {-1, 0}, {1, 0}), 9);
  EXPECT_EQ(PointLineSegDistSq({0, 3, 4}, {-1, 0, 0}, {1, 0, 0}), 25);
  EXPECT_TRUE(ArcToCurve({-2, -1, 2, 1}, {1, 0}, {0, 1}, 4, nullptr, nullptr));
  EXPECT_TRUE(ChordToArea({-2, -1, 2, 1}, {1, 0}, {0, 1}, 4, nullptr, nullptr));
  EXPECT_TRUE(PieToArea({-2, -1, 2, 1}, {1, 0}, {0, 1}, 5, nullptr, nullptr));
}

TEST(PlainCalls, ContainersAndPolygonsMayBeOfBothKinds) {
  GPolygon2d frame(0, 0, 9, 9);
  frame.Difference(GPolygon2d(3, 3, 6, 6));
  EXPECT_TRUE(GPolygonContains(GPolygon(0, 0, 9, 9), frame));
  EXPECT_TRUE(GPolygonContains(frame, GPolygon(0, 0, 3, 9)));
  EXPECT_FALSE(GPolygonContains(frame, GPolygon(0, 0, 4, 9))) << "a part is in the hole";
}

}  // namespace
}  // namespace vlm

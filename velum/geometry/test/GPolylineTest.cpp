#include <velum/geometry/GPolyline.h>

#include <gtest/gtest.h>

#include <limits>

namespace vlm {
namespace {

using Points = std::vector<Vec2d>;

Points VerticesOf(const GPolyline& line) {
  Points vertices;
  const unsigned count = line.GetVertices(vertices);
  EXPECT_EQ(count, vertices.size());
  return vertices;
}

Points Appended(const Points& points) {
  return VerticesOf(GPolyline(points.data(), static_cast<unsigned>(points.size())));
}

TEST(GPolyline, DropsWhatLiesOnOneLine) {
  const struct {
    const char* why;
    Points points;
    Points vertices;
  } rows[] = {
      {"nothing", {}, {}},
      {"one point", {{1, 2}}, {{1, 2}}},
      {"the first point again", {{1, 2}, {1, 2}}, {{1, 2}}},
      {"a straight run", {{0, 0}, {1, 0}, {2, 0}, {3, 0}}, {{0, 0}, {3, 0}}},
      {"the second point again", {{0, 0}, {1, 0}, {1, 0}}, {{0, 0}, {1, 0}}},
      {"a corner", {{0, 0}, {1, 0}, {1, 1}}, {{0, 0}, {1, 0}, {1, 1}}},
      {"the tip of a turn on the line", {{0, 0}, {5, 0}, {3, 0}}, {{0, 0}, {3, 0}}},
      {"back to the start and on", {{0, 0}, {5, 0}, {0, 0}, {0, 1}}, {{0, 0}, {0, 1}}},
  };
  for (const auto& row : rows) EXPECT_EQ(Appended(row.points), row.vertices) << row.why;
}

TEST(GPolyline, BoundsAllThatWasAppendedSinceItWasEmpty) {
  const tagPOINT turn[] = {{0, 0}, {5, 0}, {3, 0}};
  GPolyline line(turn, 3);
  EXPECT_EQ(line.GetBBox(), Box2d(0, 0, 5, 0)) << "the tip is gone, but was there";
  GPolyline copy(line);
  line.Empty();
  EXPECT_EQ(line.GetNumVertices(), 0u);
  EXPECT_EQ(line.GetBBox(), Box2d());
  EXPECT_EQ(copy.GetBBox(), Box2d(0, 0, 5, 0));
  line = copy;
  EXPECT_EQ(line[1], Vec2d(3, 0));
  line.Append(static_cast<const Vec2d*>(nullptr), 3);
  EXPECT_EQ(line.GetNumVertices(), 2u);
}

TEST(GPolyline, HalvesCurves) {
  const Vec2d a(0, 0), b(0, 8), c(8, 8), d(8, 0);
  EXPECT_EQ(VerticesOf(GPolyline(a, b, c, d, 1)), Points({a, {4, 6}, d}));
  EXPECT_EQ(VerticesOf(GPolyline(a, b, c, d, 2)), Points({a, {1.25, 4.5}, {4, 6}, {6.75, 4.5}, d}));
  EXPECT_EQ(GPolyline(a, b, c, d, 7).GetNumVertices(), 129u);
  EXPECT_EQ(VerticesOf(GPolyline(a, b, c, d, 0)), VerticesOf(GPolyline(a, b, c, d, 1)));
  EXPECT_EQ(VerticesOf(GPolyline(a, b, c, d, -7)), VerticesOf(GPolyline(a, b, c, d, 1)));
  GPolyline own(a, b, c, d, 1);
  own.Append(own[2], own[1], own[0], own[1], 1);
  EXPECT_EQ(own[own.GetNumVertices() - 1], Vec2d(4, 6)) << "the path's own points serve";
}

TEST(GPolyline, GoesOnWithACurveFromItsOwnStart) {
  const GPolyline arch(Vec2d(100, 100), Vec2d(100, 108), Vec2d(108, 108), Vec2d(108, 100), 1);
  GPolyline line(arch);  // a copy has no room to spare: its vertices move when it grows
  line.Append(line[0], line[1], line[2], line[1], 1);
  EXPECT_EQ(line.GetNumVertices(), 6u);
  EXPECT_EQ(line.GetBBox(), Box2d(100, 100, 108, 106));
}

TEST(GPolyline, DividesNoDeeperThanMakesSense) {
  const Vec2d a(0, 0), d(8, 0);
  const unsigned deepest = GPolyline(a, Vec2d(0, 8), Vec2d(8, 8), d, 20).GetNumVertices();
  EXPECT_EQ(GPolyline(a, Vec2d(0, 8), Vec2d(8, 8), d, 2147483647).GetNumVertices(), deepest);
}

TEST(GPolyline, RoundsToIntegersHalfAwayFromZero) {
  const double infinity = std::numeric_limits<double>::infinity();
  GPolyline line;
  for (const Vec2d& p : {Vec2d(0.5, -0.5), Vec2d(1.4, -1.6), Vec2d(3e9, -infinity),
                         Vec2d(std::nan(""), 2147483646.6)}) {
    line.Append(&p, 1);
  }
  std::vector<tagPOINT> points;
  ASSERT_EQ(line.GetVertices(points), 4u);
  const tagPOINT expected[] = {{1, -1}, {1, -2}, {2147483647, -2147483647 - 1}, {0, 2147483647}};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(points[static_cast<unsigned>(i)].x, expected[i].x) << i;
    EXPECT_EQ(points[static_cast<unsigned>(i)].y, expected[i].y) << i;
  }
  EXPECT_EQ(line.GetVertices(nullptr), 4u);
}

TEST(GPolyline, IsThinnedInPlace) {
  const Points zigzag{{0, 0}, {1, 1}, {2, 1.25}, {3, 0}, {4, 2}, {5, 2.5}};
  GPolyline line(zigzag.data(), 6);
  line.ThinByAngularDeviation(1);
  EXPECT_EQ(VerticesOf(line), Points({{0, 0}, {2, 1.25}, {3, 0}, {5, 2.5}}));
  line = GPolyline(zigzag.data(), 6);
  line.ThinToMinimalDetail();
  EXPECT_EQ(VerticesOf(line), Points({{0, 0}, {2, 1.25}, {3, 0}, {5, 2.5}}));
  EXPECT_EQ(line.GetBBox(), Box2d(0, 0, 5, 2.5));
  GPolyline empty;
  empty.ThinByAngularDeviation(0);
  empty.ThinToMinimalDetail();
  EXPECT_EQ(empty.GetNumVertices(), 0u);
}

TEST(GPolyline, ListsBecomePointsAndCounts) {
  const Vec2d corner[] = {{0, 0}, {1, 0}, {1, 1}};
  Points points{{9, 9}};
  std::vector<unsigned> counts{1};
  GPolylineVectorToPolyPolyline({GPolyline(corner, 3), GPolyline(), GPolyline(corner, 2)}, points,
                                counts);
  EXPECT_EQ(points, Points({{9, 9}, {0, 0}, {1, 0}, {1, 1}, {0, 0}, {1, 0}}));
  EXPECT_EQ(counts, std::vector<unsigned>({1, 3, 0, 2}));
}

}  // namespace
}  // namespace vlm

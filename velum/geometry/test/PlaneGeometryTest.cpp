// The free functions on points, segments and contours.

#include <velum/geometry/Arcs.h>
#include <velum/geometry/Constants.h>
#include <velum/geometry/GLine.h>
#include <velum/geometry/PointInPolygon.h>
#include <velum/geometry/PolygonMeasures.h>
#include <velum/geometry/Segments.h>
#include <velum/geometry/TriStripOutline.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace vlm {
namespace {

const double kNaN = std::numeric_limits<double>::quiet_NaN();
const Vec2d kSquare[] = {{0, 0}, {3, 0}, {3, 3}, {0, 3}};

TEST(PointInPolygon, GivesEachEdgeOfASquareToOneSide) {
  const struct {
    Vec2d p;
    bool isInside;
  } rows[] = {{{1, 1}, true},  {{1, 0}, true},  {{1, 3}, false},    {{0, 1}, true},
              {{3, 1}, false}, {{0, 0}, true},  {{3, 3}, false},    {{-1, 1}, false},
              {{4, 1}, false}, {{1, 4}, false}, {{kNaN, 1}, false}, {{1, kNaN}, false}};
  const tagPOINT square[] = {{0, 0}, {3, 0}, {3, 3}, {0, 3}};
  for (const auto& row : rows) {
    EXPECT_EQ(PointInPolygon(row.p, kSquare, 4), row.isInside) << row.p.x << ", " << row.p.y;
    if (row.p.x == row.p.x && row.p.y == row.p.y) {
      const tagPOINT p = {static_cast<int>(row.p.x), static_cast<int>(row.p.y)};
      EXPECT_EQ(PointInPolygon(p, square, 4), row.isInside) << p.x << ", " << p.y;
    }
  }
}

TEST(PointInPolygon, TakesHostileInput) {
  const tagPOINT integers[] = {
      {-2147483647 - 1, -2147483647 - 1}, {2147483647, 0}, {0, 2147483647}};
  const long counts[] = {-5, 3};
  EXPECT_FALSE(PointInPolygon(Vec2d(1, 1), kSquare, 0));
  EXPECT_FALSE(PointInPolygon(Vec2d(1, 1), nullptr, 4));
  EXPECT_FALSE(PointInPolygon(Vec2d(1, 1), kSquare, nullptr, 4));
  EXPECT_FALSE(PointInPolygon(tagPOINT{1, 1}, nullptr, 4));
  EXPECT_TRUE(PointInPolygon(tagPOINT{1, 1}, integers, 3)) << "differences need 33 bits";
  EXPECT_FALSE(PointInPolygon(tagPOINT{-2147483647, 2147483646}, integers, 3));
  EXPECT_TRUE(PointInPolygon(tagPOINT{1, 1}, integers, counts, 2));
}

TEST(PointInPolygon, RoundsWhereAnIntegerEdgePasses) {
  // Both edges pass y = 1 half way, 0.5 before and behind their upper end, away from which the half
  // is rounded.
  const tagPOINT right[] = {{-9, 0}, {0, 0}, {1, 2}, {-9, 2}};
  const tagPOINT left[] = {{-9, 0}, {0, 0}, {-1, 2}, {-9, 2}};
  for (const auto* contour : {right, left}) {
    EXPECT_TRUE(PointInPolygon(tagPOINT{-1, 1}, contour, 4));
    EXPECT_FALSE(PointInPolygon(tagPOINT{0, 1}, contour, 4));
  }
}

TEST(PointInPolygon, CountsContours) {
  const Vec2d points[] = {{0, 0}, {9, 0}, {9, 9}, {0, 9}, {3, 3}, {6, 3}, {6, 6}, {3, 6}};
  const unsigned counts[] = {4, 0, 4};
  EXPECT_TRUE(PointInPolygon(Vec2d(1, 1), points, counts, 3));
  EXPECT_FALSE(PointInPolygon(Vec2d(4, 4), points, counts, 3)) << "in two of them";
  EXPECT_FALSE(PointInPolygon(Vec2d(4, 4), points, counts, 0));
}

TEST(Segments, CrossWhereBothLieOnBothSides) {
  const struct {
    const char* why;
    Vec2d a, b, c, d;
    bool crosses;
  } rows[] = {
      {"a cross", {0, 0}, {2, 2}, {0, 2}, {2, 0}, true},
      {"too short", {0, 0}, {2, 2}, {0, 2}, {0.5, 1.5}, false},
      {"on one line", {0, 0}, {2, 2}, {1, 1}, {3, 3}, false},
      {"an end on the other, from the left", {0, 0}, {2, 0}, {1, 0}, {1, 1}, true},
      {"an end on the other, from the right", {0, 0}, {2, 0}, {1, 0}, {1, -1}, false},
      {"its own end on the other", {1, 1}, {1, 0}, {0, 0}, {2, 0}, true},
      {"not a number", {kNaN, 0}, {2, 2}, {0, 2}, {2, 0}, false},
      {"a point", {1, 1}, {1, 1}, {0, 2}, {2, 0}, false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(SegmentsIntersect(row.a, row.b, row.c, row.d), row.crosses) << row.why;
  }
}

TEST(Segments, AreAsFarAsTheirClosestPoint) {
  const Vec2d a(0, 0), b(10, 0);
  EXPECT_EQ(PointLineSegDistSq(Vec2d(5, 3), a, b), 9);
  EXPECT_EQ(PointLineSegDistSq(Vec2d(-3, 4), a, b), 25);
  EXPECT_EQ(PointLineSegDistSq(Vec2d(13, 4), a, b), 25);
  EXPECT_EQ(PointLineSegDistSq(Vec2d(3, 4), a, a), 25);
  EXPECT_EQ(PointLineSegDistSq(Vec3d(5, 3, 4), Vec3d(0, 0, 0), Vec3d(10, 0, 0)), 25);
  EXPECT_EQ(PointLineSegDistSq(tagPOINT{2147483647, 0}, {-2147483647 - 1, 0}, {-2147483647, 0}),
            4294967294.0 * 4294967294.0);
}

TEST(Segments, FirstOfTheClosestIsFound) {
  const Vec2d path[] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
  const tagPOINT integers[] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
  double distance = 0;
  EXPECT_EQ(FindClosestSegment(path, 4, Vec2d(9, 5), &distance), 1u);
  EXPECT_EQ(distance, 1);
  EXPECT_EQ(FindClosestSegment(path, 4, Vec2d(5, 5), nullptr), 0u) << "three are 5 away";
  EXPECT_EQ(FindClosestSegment(integers, 4, tagPOINT{5, 9}, &distance), 2u);
  EXPECT_EQ(FindClosestSegment(path, 1, Vec2d(5, 5), &distance), 0u);
  EXPECT_EQ(distance, std::numeric_limits<double>::max());
  EXPECT_EQ(FindClosestSegment(static_cast<const Vec2d*>(nullptr), 4, Vec2d(), &distance), 0u);
}

TEST(Segments, CollinearPointsSpanNoArea) {
  EXPECT_TRUE(GAreCollinear(Vec2d(0, 7), Vec2d(5, 7), Vec2d(9, 7)));
  EXPECT_TRUE(GAreCollinear(Vec2d(0, 0), Vec2d(5, 5), Vec2d(2, 2))) << "in any order";
  EXPECT_FALSE(GAreCollinear(Vec2d(0, 0), Vec2d(5, 5), Vec2d(2, 2.0000001)));
  EXPECT_TRUE(GAreCollinear(Vec2f(0, 0), Vec2f(5, 5), Vec2f(2, 2.0000002f)))
      << "the tolerance is that of the type";
  EXPECT_FALSE(GAreCollinear(Vec2d(1, 1), Vec2d(1, 1), Vec2d(1, 1)));
  EXPECT_FALSE(GAreCollinear(Vec2d(kNaN, 1), Vec2d(2, 1), Vec2d(3, 1)));
}

TEST(GLine, IsTurnedRoundInPlace) {
  GLine2 line(Vec2d(1, 2), Vec2d(3, 4));
  line.Set(line.GetEnd(), line.GetBegin());
  EXPECT_EQ(line.GetBegin(), Vec2d(3, 4));
  EXPECT_EQ(line.GetEnd(), Vec2d(1, 2));
}

TEST(PolygonMeasures, SumOverContours) {
  const Vec2d points[] = {{0, 0}, {3, 0}, {3, 3}, {0, 3}, {1, 1}, {1, 2}, {2, 2}, {2, 1}, {1, 1}};
  const unsigned counts[] = {4, 0, 5};
  EXPECT_EQ(PolylineLength(points, 4), 9);
  EXPECT_EQ(PolylineLength(points, 1), 0);
  EXPECT_EQ(PolylineLength(nullptr, 4), 0);
  EXPECT_EQ(PolygonPerimeter(points, 4), 12);
  EXPECT_EQ(PolygonPerimeter(points + 4, 5), 4) << "closed already";
  EXPECT_EQ(PolygonPerimeter(points, counts, 3), 16);
  EXPECT_EQ(PolygonPerimeter(points, nullptr, 3), 0);
  EXPECT_EQ(PolygonArea(points, 4), 9);
  EXPECT_EQ(PolygonArea(points + 4, 5), -1) << "clockwise";
  EXPECT_EQ(PolygonArea(points, counts, 3), 8);
  EXPECT_EQ(PolygonArea(points, 2), 0);
  EXPECT_EQ(PolygonArea(nullptr, counts, 3), 0);
  EXPECT_EQ(PolygonArea(points, counts, 0), 0);
}

TEST(TriStripOutline, GoesRoundTheStrip) {
  const Vec2d strip[] = {{0, 0}, {0, 1}, {1, 0}, {1, 1}, {2, 0}};
  Vec2d out[5];
  GTriStripToCCWPolygon(strip, 5, out);
  EXPECT_EQ(std::vector<Vec2d>(out, out + 5),
            std::vector<Vec2d>({{0, 0}, {1, 0}, {2, 0}, {1, 1}, {0, 1}}));
  EXPECT_EQ(PolygonArea(out, 5), 1.5);
  GTriStripToCWPolygon(strip, 5, out);
  EXPECT_EQ(std::vector<Vec2d>(out, out + 5),
            std::vector<Vec2d>({{0, 1}, {1, 1}, {2, 0}, {1, 0}, {0, 0}}));
  GTriStripToCWPolygon(strip, 0, nullptr);
}

TEST(Arcs, MeetTheEllipseWhereTheDirectionsDo) {
  SCOPED_TRACE("seed 3");
  std::mt19937 random(3);
  std::uniform_real_distribution<double> number(-4, 4);
  const Box2d box(-1, 1, 5, 3);
  const Vec2d centre = box.Center();
  for (int round = 0; round < 500; ++round) {
    const Vec2d start = centre + Vec2d(number(random), number(random));
    const Vec2d end = centre + Vec2d(number(random), number(random));
    const auto count = static_cast<unsigned>(2 + random() % 200);
    std::vector<Vec2d> points(count);
    Box2d bounds;
    ASSERT_TRUE(ArcToCurve(box, start, end, count, points.data(), &bounds));
    Box2d expected;
    expected.BoundPoints(points.data(), count);
    EXPECT_EQ(bounds, expected);
    const auto angle = [&](const Vec2d& p) { return std::atan2(p.y - centre.y, p.x - centre.x); };
    double turn = angle(end) - angle(start);
    if (turn <= 0) turn += TWO_PI;
    for (unsigned i = 0; i < count; ++i) {
      const Vec2d d = (points[i] - centre) / Vec2d(3, 1);
      EXPECT_NEAR(d.LengthSquared(), 1, 1e-12);
      const double behind = angle(points[i]) - angle(start) - turn * i / (count - 1);
      // Points near the top and the bottom are moved there.
      EXPECT_NEAR(std::remainder(behind, TWO_PI), 0, 0.00501) << i;
    }
  }
}

TEST(Arcs, ReachTheTopAndTheBottomInTheSecondTurnAsWell) {
  const Box2d box(-2, -1, 2, 1);
  Vec2d points[3];
  ASSERT_TRUE(ArcToCurve(box, Vec2d(0, -1), Vec2d(0, -1), 2, points, nullptr));
  EXPECT_EQ(points[0], Vec2d(0, -1));
  EXPECT_EQ(points[1], Vec2d(0, -1));
  ASSERT_TRUE(ArcToCurve(box, Vec2d(0, -1), Vec2d(0, -1), 3, points, nullptr));
  EXPECT_EQ(points[1], Vec2d(0, 1));
  ASSERT_TRUE(ArcToCurve(box, Vec2d(1, 0), Vec2d(1, 0), 2, points, nullptr));
  EXPECT_TRUE(points[0].Equals(points[1], 1e-14)) << "equal directions give a full turn";
}

TEST(Arcs, AreAsExactInAnySize) {
  const Vec2d start(3, 1), end(-1, 2);
  Vec2d usual[5], scaled[5];
  ASSERT_TRUE(ArcToCurve(Box2d(-2, -1, 2, 1), start, end, 5, usual, nullptr));
  for (const int exponent : {-1000, -570, -500, 500, 664, 1000}) {
    const double size = std::ldexp(1.0, exponent);
    ASSERT_TRUE(
        ArcToCurve(Box2d(-2, -1, 2, 1) * size, start * size, end * size, 5, scaled, nullptr));
    for (int i = 0; i < 5; ++i) EXPECT_EQ(scaled[i], usual[i] * size) << exponent;
  }
  EXPECT_FALSE(ArcToCurve(Box2d(-1e200, -1, 1e200, 1), start, end, 5, scaled, nullptr));
}

TEST(Arcs, ReportWhatGivesNone) {
  const double infinity = std::numeric_limits<double>::infinity();
  const Box2d box(-2, -1, 2, 1);
  const Vec2d p(1, 0);
  Vec2d points[4];
  EXPECT_FALSE(ArcToCurve(box, p, p, 1, points, nullptr));
  EXPECT_FALSE(ArcToCurve(box, Vec2d(0, 0), p, 4, points, nullptr));
  EXPECT_FALSE(ArcToCurve(box, p, Vec2d(0, 0), 4, points, nullptr));
  EXPECT_FALSE(ArcToCurve(Box2d(0, -1, 0, 1), p, p, 4, points, nullptr));
  EXPECT_FALSE(ArcToCurve(box, Vec2d(kNaN, 0), p, 4, points, nullptr));
  EXPECT_FALSE(ArcToCurve(Box2d(-infinity, -1, 2, 1), p, p, 4, points, nullptr));
  EXPECT_FALSE(ChordToArea(box, p, p, 2, points, nullptr));
  EXPECT_FALSE(PieToArea(box, p, p, 3, points, nullptr));
  EXPECT_TRUE(PieToArea(box, p, p, 4, static_cast<Vec2d*>(nullptr), nullptr));
}

template <class Box, class Vec>
void ExpectOutlinesAreClosed() {
  const Box box(-2, -1, 2, 1);
  Vec points[7];
  Box bounds;
  ASSERT_TRUE(PieToArea(box, Vec(1, 0), Vec(0, 1), 7, points, &bounds));
  EXPECT_EQ(points[0], Vec(2, 0));
  EXPECT_EQ(points[4], Vec(0, 1));
  EXPECT_EQ(points[5], Vec(0, 0));
  EXPECT_EQ(points[6], Vec(2, 0));
  EXPECT_EQ(bounds, Box(0, 0, 2, 1));
  bounds.MakeEmpty();
  ASSERT_TRUE(ChordToArea(box, Vec(1, 0), Vec(0, 1), 6, points, &bounds));
  EXPECT_EQ(points[4], Vec(0, 1));
  EXPECT_EQ(points[5], Vec(2, 0));
}

TEST(Arcs, OutlinesAreClosed) {
  ExpectOutlinesAreClosed<Box2d, Vec2d>();
  ExpectOutlinesAreClosed<Box2f, Vec2f>();
}

}  // namespace
}  // namespace vlm

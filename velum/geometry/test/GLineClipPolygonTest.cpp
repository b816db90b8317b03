#include <velum/geometry/GLineClipPolygon.h>

#include <velum/core/Exception.h>
#include <velum/geometry/ClipUtil.h>
#include <velum/geometry/GDashLineGenerator.h>
#include <velum/geometry/GLine.h>
#include <velum/geometry/GPolygon.h>
#include <velum/geometry/GPolyline.h>
#include <velum/geometry/PointInPolygon.h>
#include <velum/geometry/Segments.h>
#include <velum/geometry/test/reference/PlainLineClip.h>

#include <testing/Sanitized.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace vlm {
namespace {

using Points = std::vector<Vec2d>;
using Counts = std::vector<unsigned>;
using Pieces = std::vector<std::pair<Vec2d, Vec2d>>;

struct Outline {
  Points points;
  Counts counts;

  [[nodiscard]] GLineClipPolygon Clipper() const {
    return GLineClipPolygon(points.data(), counts.data(), static_cast<unsigned>(counts.size()));
  }
};

const Outline kFrame{{{0, 0}, {9, 0}, {9, 9}, {0, 9}, {3, 3}, {6, 3}, {6, 6}, {3, 6}}, {4, 4}};
// Bounded by the steps (0, 0), (6, 0), (6, 2), (3, 2), (3, 4), (0, 4).
const Outline kStep{{{0, 0}, {6, 0}, {6, 2}, {3, 2}, {3, 4}, {0, 4}}, {6}};

Pieces Clipped(const GLineClipPolygon& polygon, const Vec2d& a, const Vec2d& b) {
  std::vector<GLine2> lines;
  polygon.Clip(GLine2(a, b), lines);
  Pieces pieces;
  for (const GLine2& line : lines) pieces.emplace_back(line.GetBegin(), line.GetEnd());
  return pieces;
}

TEST(GLineClipPolygon, CutsSegmentsAtEdges) {
  const struct {
    const char* why;
    const Outline& outline;
    Vec2d a, b;
    Pieces pieces;
  } rows[] = {
      {"along the way to the hole", kFrame, {1, 1}, {2, 2}, {{{1, 1}, {2, 2}}}},
      {"through the hole", kFrame, {-1, 3}, {10, 3}, {{{0, 3}, {9, 3}}}},
      {"through the middle", kFrame, {-1, 4}, {10, 4}, {{{0, 4}, {3, 4}}, {{6, 4}, {9, 4}}}},
      {"backwards", kFrame, {10, 4}, {-1, 4}, {{{0, 4}, {3, 4}}, {{6, 4}, {9, 4}}}},
      {"corner to corner", kFrame, {-1, -1}, {10, 10}, {{{0, 0}, {3, 3}}, {{6, 6}, {9, 9}}}},
      {"past it", kFrame, {-1, 10}, {10, 11}, {}},
      {"touching a corner", kFrame, {-1, 1}, {1, -1}, {}},
      {"along an outer edge", kFrame, {-1, 0}, {10, 0}, {}},
      {"on an outer edge", kFrame, {1, 0}, {8, 0}, {}},
      {"along an edge and on inside", kStep, {-1, 2}, {8, 2}, {{{0, 2}, {3, 2}}, {{3, 2}, {6, 2}}}},
      {"along an edge and on inside, upright",
       kStep,
       {3, -1},
       {3, 5},
       {{{3, 0}, {3, 2}}, {{3, 2}, {3, 4}}}},
      {"from the middle of an edge", kStep, {4, 2}, {1, 2}, {{{1, 2}, {3, 2}}, {{3, 2}, {4, 2}}}},
      {"from an edge inwards", kStep, {0, 1}, {2, 1}, {{{0, 1}, {2, 1}}}},
      {"no length", kStep, {1, 1}, {1, 1}, {}},
      {"hardly any", kStep, {1, 1}, {1.000005, 1}, {}},
      {"not a number", kStep, {std::nan(""), 1}, {2, 1}, {}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Clipped(row.outline.Clipper(), row.a, row.b), row.pieces) << row.why;
  }
  EXPECT_EQ(Clipped(GLineClipPolygon(), {3, 0}, {1, 1}), Pieces({{{1, 1}, {3, 0}}}));
  EXPECT_EQ(Clipped(GLineClipPolygon(GPolygon()), {1, 1}, {3, 0}), Pieces({{{1, 1}, {3, 0}}}))
      << "without contours all passes";
}

TEST(GLineClipPolygon, TellsOfThePathThroughItsContours) {
  const GLineClipPolygon frame = kFrame.Clipper();
  EXPECT_EQ(frame.GetNumContours(), 1u);
  EXPECT_EQ(frame.GetBBox(), Box2d(0, 0, 9, 9));
  Points path{{7, 7}};
  frame.GetPolygon(path);
  EXPECT_EQ(path, Points({{7, 7},
                          {0, 0},
                          {9, 0},
                          {9, 9},
                          {0, 9},
                          {0, 0},
                          {3, 3},
                          {6, 3},
                          {6, 6},
                          {3, 6},
                          {3, 3},
                          {0, 0}}));
  EXPECT_EQ(frame.GetContourVertexCount(0), 11u);
  EXPECT_EQ(frame.GetTotalVertexCount(), 11u);
  EXPECT_EQ(frame.GetContourVertexCount(1), 0u);
  EXPECT_FALSE(frame.IsRectangle(nullptr));

  const Outline straight{{{0, 0}, {4, 0}, {9, 0}, {9, 7}, {5, 7}, {0, 7}}, {6}};
  GLineClipPolygon rectangle = straight.Clipper();
  Box2d box;
  EXPECT_TRUE(rectangle.IsRectangle(&box)) << "points between others on a line are left out";
  EXPECT_EQ(box, Box2d(0, 0, 9, 7));
  const GLineClipPolygon copy(rectangle);
  rectangle = GLineClipPolygon();
  EXPECT_EQ(rectangle.GetTotalVertexCount(), 0u);
  EXPECT_FALSE(rectangle.IsRectangle(&box));
  EXPECT_FALSE(rectangle.PointInside(Vec2d(1, 1)));
  EXPECT_EQ(copy.GetContourVertexCount(0), 5u);
}

TEST(GLineClipPolygon, TellsWhatIsInside) {
  const GLineClipPolygon frame = kFrame.Clipper();
  EXPECT_TRUE(frame.PointInside(Vec2d(1, 1)));
  EXPECT_TRUE(frame.PointInside(Vec2d(7, 3))) << "level with an edge of the hole";
  EXPECT_FALSE(frame.PointInside(Vec2d(4, 4)));
  EXPECT_FALSE(frame.PointInside(Vec2d(10, 4)));
  EXPECT_FALSE(frame.PointInside(Vec2d(std::nan(""), 4)));
}

TEST(GLineClipPolygon, JoinsPiecesToRuns) {
  const GLineClipPolygon step = kStep.Clipper();
  Points points;
  Counts counts;
  const Points path{{-1, 1}, {2, 1}, {2, 3}, {9, 3}, {9, 1}, {1, 1}, {1, 0.5}};
  step.Clip(path.data(), 7, points, counts);
  EXPECT_EQ(points, Points({{0, 1}, {2, 1}, {2, 3}, {3, 3}, {6, 1}, {1, 1}, {1, 0.5}}));
  EXPECT_EQ(counts, Counts({4, 3}));
  step.Clip(path.data(), 0, points, counts);
  step.Clip(nullptr, 5, points, counts);
  EXPECT_EQ(counts, Counts({4, 3}));
  std::vector<GLine2> lines;
  step.Clip(path.data(), 7, lines);
  EXPECT_EQ(lines.size(), 5u);
  step.Clip(GPolyline(path.data(), 7), lines);
  EXPECT_EQ(lines.size(), 10u);
}

class RandomOutline {
 public:
  explicit RandomOutline(unsigned seed) : random_(seed) {}

  unsigned Below(unsigned limit) { return static_cast<unsigned>(random_() % limit); }
  double Grid() { return static_cast<double>(Below(7)); }
  double Anywhere() { return std::uniform_real_distribution<double>(-5, 5)(random_); }
  Vec2d Point(bool isOnGrid) {
    return isOnGrid ? Vec2d(Grid(), Grid()) : Vec2d(Anywhere(), Anywhere());
  }
  Outline Make(bool isOnGrid, unsigned contours, unsigned most) {
    Outline outline;
    for (unsigned i = 0; i < contours; ++i) {
      outline.counts.push_back(3 + Below(most - 2));
      for (unsigned k = 0; k < outline.counts.back(); ++k) {
        outline.points.push_back(Point(isOnGrid));
      }
    }
    return outline;
  }
  // A segment in general position, along an edge, or from one vertex to another.
  std::pair<Vec2d, Vec2d> Segment(const Outline& outline, bool isOnGrid) {
    const auto vertex = [&] {
      return outline.points[Below(static_cast<unsigned>(outline.points.size()))];
    };
    switch (Below(4)) {
      case 0:
        return {vertex(), vertex()};
      case 1: {
        const unsigned i = Below(outline.counts[0] - 1);
        const Vec2d d = outline.points[i + 1] - outline.points[i];
        return {outline.points[i] - d * 0.5, outline.points[i + 1] + d * 0.25};
      }
      case 2:
        return {vertex(), Point(isOnGrid)};
      default:
        return {Point(isOnGrid) * 3 - 6, Point(isOnGrid) * 3 - 6};
    }
  }

 private:
  std::mt19937 random_;
};

// Whether the points between `a` and `b` are all inside, or all outside, where they are far enough
// from the boundary for rounding not to matter.
bool Lies(const Outline& outline, const Vec2d& a, const Vec2d& b, bool isInside) {
  if (a.Distance(b) < 1e-4) return true;
  for (const double t : {0.5, 0.1, 0.83}) {
    const Vec2d p = a.Lerp(b, t);
    double distance = 1;
    const Vec2d* contour = outline.points.data();
    for (unsigned count : outline.counts) {
      for (unsigned i = 0; i < count; ++i) {
        const Vec2d& next = contour[i + 1 == count ? 0 : i + 1];
        distance = std::min(distance, PointLineSegDistSq(p, contour[i], next));
      }
      contour += count;
    }
    const auto contours = static_cast<unsigned>(outline.counts.size());
    if (distance > 1e-14 &&
        PointInPolygon(p, outline.points.data(), outline.counts.data(), contours) != isInside) {
      return false;
    }
  }
  return true;
}

TEST(GLineClipPolygon, KeepsWhatIsInsideAndNothingElse) {
  SCOPED_TRACE("seed 6");
  RandomOutline random(6);
  for (int round = 0; round < testing::Rounds(20000); ++round) {
    const bool isOnGrid = round % 2 == 0;
    const Outline outline = random.Make(isOnGrid, 1 + random.Below(4), round % 20 == 0 ? 200 : 8);
    const GLineClipPolygon polygon = outline.Clipper();
    for (int i = 0; i < 4; ++i) {
      auto [a, b] = random.Segment(outline, isOnGrid);
      if (b < a) std::swap(a, b);
      Vec2d from = a;
      bool isRight = true;
      for (const auto& [begin, end] : Clipped(polygon, a, b)) {
        isRight &= Lies(outline, from, begin, false) && Lies(outline, begin, end, true);
        isRight &= (begin - from).Dot(b - a) > -1e-9 && (end - begin).Dot(b - a) > 0;
        from = end;
      }
      isRight &= Lies(outline, from, b, false);
      ASSERT_TRUE(isRight) << "round " << round << ": " << a.x << ", " << a.y << " to " << b.x
                           << ", " << b.y;
    }
  }
}

TEST(GLineClipPolygon, IsThePlainWalkOnOneContour) {
  SCOPED_TRACE("seed 7");
  RandomOutline random(7);
  for (int round = 0; round < 10000; ++round) {
    const Outline outline = random.Make(false, 1, 12);
    const Vec2d a = random.Point(false) * 1.5;
    const Vec2d b = random.Point(false);
    ASSERT_EQ(Clipped(outline.Clipper(), a, b), reference::PlainLineClip(outline.points).Clip(a, b))
        << "round " << round;
  }
}

TEST(GLineClipPolygon, TakesHostileCoordinates) {
  const double odd[] = {0,
                        1,
                        -1,
                        5e-324,
                        1e308,
                        -1e308,
                        1e160,
                        std::nan(""),
                        std::numeric_limits<double>::infinity(),
                        1e-170};
  SCOPED_TRACE("seed 8");
  RandomOutline random(8);
  for (int round = 0; round < 3000; ++round) {
    Outline outline = random.Make(true, 1 + random.Below(2), 9);
    for (Vec2d& p : outline.points) p.Set(odd[random.Below(10)], odd[random.Below(10)]);
    const Vec2d path[] = {{odd[random.Below(10)], odd[random.Below(10)]}, {0.5, 0.5}, {3, 1}};
    Points points;
    Counts counts;
    const GLineClipPolygon polygon = outline.Clipper();
    polygon.Clip(path, 3, points, counts);
    (void)polygon.PointInside(path[1]);
    for (const Vec2d& p : points) EXPECT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
  }
}

TEST(ClipUtil, ClipsListsOfPolylines) {
  const Points points{{-1, 1}, {2, 1}, {20, 1}, {-5, 3}, {-5, 4}, {1, 1}, {1, 3}};
  const Counts counts{3, 2, 0, 2};
  Points out{{7, 7}, {8, 8}};
  Counts outCounts{2};
  GClipPolylinesToRect(points.data(), counts.data(), 4, Box2d(6, 2, 0, 0), out, outCounts);
  EXPECT_EQ(out, Points({{7, 7}, {8, 8}, {0, 1}, {2, 1}, {6, 1}, {1, 1}, {1, 2}}))
      << "a box the wrong way round serves";
  EXPECT_EQ(outCounts, Counts({2, 3, 2}));

  out.clear();
  outCounts.clear();
  const GPolygon step(kStep.points.data(), 6);
  GClipPolylinesToPolygon(points.data(), counts.data(), 4, step, out, outCounts);
  EXPECT_EQ(out, Points({{0, 1}, {2, 1}, {6, 1}, {1, 1}, {1, 3}}));
  EXPECT_EQ(outCounts, Counts({3, 2}));

  // Rectangles take the way of CLineClip, for which what lies along the edge is inside.
  const Points edge{{0, 0}, {9, 0}};
  const unsigned two = 2;
  for (const GPolygon& polygon : {GPolygon(0, 0, 6, 2), GPolygon(step)}) {
    out.clear();
    outCounts.clear();
    GClipPolylinesToPolygon(edge.data(), &two, 1, polygon, out, outCounts);
    EXPECT_EQ(out.empty(), polygon.GetTotalVertexCount() == 6);
    out.clear();
    GClipPolylinesToPolygon(edge.data(), &two, 1, GLineClipPolygon(polygon), out, outCounts);
    EXPECT_EQ(out.empty(), polygon.GetTotalVertexCount() == 6);
  }
}

TEST(ClipUtil, ClipsDashes) {
  const double list[] = {2, 1};
  const Points points{{-1, 1}, {7, 1}};
  const unsigned two = 2;
  const struct {
    GPolygon polygon;
    Points out;
  } rows[] = {
      {GPolygon(0, 0, 6, 2), {{0, 1}, {1, 1}, {2, 1}, {4, 1}, {5, 1}, {6, 1}}},
      // Runs of one segment are turned round in the search for one to go on.
      {GPolygon(kStep.points.data(), 6), {{1, 1}, {0, 1}, {4, 1}, {2, 1}, {5, 1}, {6, 1}}},
  };
  for (const auto& row : rows) {
    GDashLineGenerator generator(list, 2);
    Points out;
    Counts outCounts;
    GClipDashedPolylinesToPolygon(points.data(), &two, 1, generator, row.polygon, out, outCounts);
    EXPECT_EQ(out, row.out);
    EXPECT_EQ(outCounts, Counts({2, 2, 2}));
  }
}

TEST(ClipUtil, RefusesNothingToClip) {
  const Points points{{0, 1}, {9, 1}};
  const unsigned two = 2;
  Points out;
  Counts outCounts;
  GDashLineGenerator generator;
  const GPolygon polygon(0, 0, 6, 2);
  const auto expectRefused = [](const auto& call) {
    try {
      call();
      ADD_FAILURE();
    } catch (const Exception& error) {
      EXPECT_EQ(error.GetErrCode(), ERR_INTERNAL);
      EXPECT_EQ(error.GetSrcFile(), "ClipUtil");
    }
  };
  const struct {
    const Vec2d* points;
    const unsigned* counts;
    unsigned n;
  } rows[] = {{nullptr, &two, 1}, {points.data(), nullptr, 1}, {points.data(), &two, 0}};
  for (const auto& [p, c, n] : rows) {
    expectRefused([&, p = p, c = c, n = n] {
      GClipPolylinesToRect(p, c, n, Box2d(0, 0, 6, 2), out, outCounts);
    });
    expectRefused(
        [&, p = p, c = c, n = n] { GClipPolylinesToPolygon(p, c, n, polygon, out, outCounts); });
    expectRefused([&, p = p, c = c, n = n] {
      GClipDashedPolylinesToPolygon(p, c, n, generator, polygon, out, outCounts);
    });
  }
}

}  // namespace
}  // namespace vlm

#include <velum/geometry/LineClip.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace vlm {
namespace {

using Points = std::vector<Vec2d>;

const double kInfinity = std::numeric_limits<double>::infinity();

// Makes the protected member a test's own.
struct Classifier : CLineClip {
  using CLineClip::Classify;
  using CLineClip::CLineClip;
};

TEST(LineClip, IsEnabledByARectangleWithAnArea) {
  EXPECT_FALSE(CLineClip().IsClipEnabled());
  EXPECT_FALSE(CLineClip(Box2d(0, 0, 0, 5)).IsClipEnabled());
  EXPECT_FALSE(CLineClip(Box2d(5, 0, 0, 5)).IsClipEnabled());
  CLineClip clip(Box2d(0, 0, 9, 9));
  EXPECT_TRUE(clip.IsClipEnabled());
  clip.IntersectClipRect(Box2d(3, -3, 20, 6));
  EXPECT_EQ(clip.GetClipRect(), Box2d(3, 0, 9, 6));
  clip.IntersectClipRect(Box2d(10, 0, 20, 6));
  EXPECT_FALSE(clip.IsClipEnabled());
  clip.IntersectClipRect(Box2d(1, 1, 2, 2));
  EXPECT_EQ(clip.GetClipRect(), Box2d(1, 1, 2, 2)) << "a disabled one takes the box";
  clip.Clear();
  Vec2d a(-5, -5), b(-6, -6);
  EXPECT_TRUE(clip.ClipLine(a, b));
  EXPECT_EQ(a, Vec2d(-5, -5));
  clip.SetClipEnabled(true);
  EXPECT_FALSE(clip.ClipLine(a, b));
}

TEST(LineClip, CodesPointsBeyondItsEdges) {
  const Classifier clip(Box2d(0, 0, 9, 9));
  EXPECT_EQ(clip.Classify(Vec2d(0, 9)), 0u) << "the edge is inside";
  EXPECT_EQ(clip.Classify(Vec2d(-1, 10)), 5u);
  EXPECT_EQ(clip.Classify(Vec2d(10, -1)), 10u);
}

TEST(LineClip, CutsSegmentsAtTheEdges) {
  const CLineClip clip(Box2d(0, 0, 10, 10));
  const struct {
    const char* why;
    Vec2d a, b;
    bool remains;
    Vec2d newA, newB;
  } rows[] = {
      {"inside", {1, 1}, {9, 2}, true, {1, 1}, {9, 2}},
      {"along an edge", {0, 3}, {0, 7}, true, {0, 3}, {0, 7}},
      {"beyond one edge", {-1, 3}, {-2, 30}, false, {}, {}},
      {"left to right", {-10, 5}, {20, 5}, true, {0, 5}, {10, 5}},
      {"bottom to top", {5, -10}, {5, 20}, true, {5, 0}, {5, 10}},
      {"corner to corner", {-5, -5}, {15, 15}, true, {0, 0}, {10, 10}},
      {"past a corner", {-6, 5}, {5, 18}, false, {}, {}},
      {"through two neighbouring edges", {-2, 8}, {2, 12}, true, {0, 10}, {0, 10}},
      {"out at the top", {5, 5}, {9, 15}, true, {5, 5}, {7, 10}},
      {"left over the bottom corner", {-4, 2}, {4, -6}, false, {}, {}},
      {"in from below", {-4, -2}, {12, 6}, true, {0, 0}, {10, 5}},
  };
  for (const auto& row : rows) {
    for (const bool isReversed : {false, true}) {
      Vec2d a = isReversed ? row.b : row.a;
      Vec2d b = isReversed ? row.a : row.b;
      ASSERT_EQ(clip.ClipLine(a, b), row.remains) << row.why;
      if (!row.remains) continue;
      EXPECT_EQ(isReversed ? b : a, row.newA) << row.why;
      EXPECT_EQ(isReversed ? a : b, row.newB) << row.why;
    }
  }
}

TEST(LineClip, RunsEndWhereThePolylineLeaves) {
  const CLineClip clip(Box2d(0, 0, 10, 10));
  const Points path{{-5, 5}, {5, 5}, {5, 8}, {15, 8}, {15, 2}, {5, 2}, {5, 2}};
  Points points{{9, 9}};
  std::vector<unsigned> counts{7};
  clip.ClipPolyline(path.data(), 7, points, counts);
  EXPECT_EQ(points, Points({{0, 5}, {5, 5}, {5, 8}, {10, 8}, {10, 2}, {5, 2}, {5, 2}}));
  EXPECT_EQ(counts, std::vector<unsigned>({4, 3}));

  Points sunk;
  std::vector<unsigned> lengths;
  clip.ClipPolyline(path.data(), 7, [&](const Vec2d* run, unsigned length) {
    sunk.insert(sunk.end(), run, run + length);
    lengths.push_back(length);
  });
  EXPECT_EQ(sunk, points);
  EXPECT_EQ(lengths, counts);
}

TEST(LineClip, TakesPolylinesOfFewPoints) {
  const CLineClip clip(Box2d(0, 0, 10, 10));
  const Vec2d point(10, 10);
  Points points;
  std::vector<unsigned> counts;
  clip.ClipPolyline(&point, 1, points, counts);
  EXPECT_EQ(counts, std::vector<unsigned>({1})) << "the corner is contained";
  for (const CLineClip& each : {clip, CLineClip()}) {
    each.ClipPolyline(&point, 0, points, counts);
    EXPECT_TRUE(points.empty() && counts.empty());
    each.ClipPolyline(nullptr, 5, points, counts);
    EXPECT_TRUE(points.empty() && counts.empty());
  }
  const Points path{{-5, 5}, {25, 5}};
  CLineClip().ClipPolyline(path.data(), 2, points, counts);
  EXPECT_EQ(points, path) << "a disabled clipper lets all pass";
  try {
    clip.ClipPolyline(path.data(), 2, CLineClip::Sink());
    ADD_FAILURE();
  } catch (const boost::bad_function_call& error) {
    EXPECT_STREQ(error.what(), "call to empty boost::function");
  }
}

TEST(LineClip, KeepsWhatIsInsideAndNothingElse) {
  SCOPED_TRACE("seed 11");
  std::mt19937 random(11);
  std::uniform_real_distribution<double> number(-20, 30);
  const Box2d box(0, 0, 10, 10);
  const CLineClip clip(box);
  for (int round = 0; round < 20000; ++round) {
    Vec2d a(number(random), number(random)), b(number(random), number(random));
    if (round % 3 == 0) a.Set(std::floor(a.x), std::floor(a.y));
    Vec2d p = a, q = b;
    const bool remains = clip.ClipLine(p, q);
    // The part inside by the parameters at which the line enters and leaves, axis by axis.
    double enter = 0, leave = 1;
    for (int axis = 0; axis < 2; ++axis) {
      const double d = b[axis] - a[axis];
      enter = std::max(enter, ((d > 0 ? 0 : 10) - a[axis]) / d);
      leave = std::min(leave, ((d > 0 ? 10 : 0) - a[axis]) / d);
    }
    if (std::abs(leave - enter) < 1e-9) continue;
    ASSERT_EQ(remains, enter < leave);
    if (!remains) continue;
    EXPECT_TRUE(p.Equals(a.Lerp(b, enter), 1e-9) && q.Equals(a.Lerp(b, leave), 1e-9));
    EXPECT_TRUE(p.x >= 0 && p.x <= 10 && q.y >= -1e-9 && q.y <= 10 + 1e-9);
  }
}

TEST(LineClip, TakesCoordinatesThatAreNoNumbers) {
  const CLineClip clip(Box2d(0, 0, 10, 10));
  const double odd[] = {std::nan(""), kInfinity, -kInfinity, 1e308, -1e308, 5e-324, 3};
  Points path;
  for (double x : odd) {
    for (double y : odd) path.emplace_back(x, y);
  }
  Points points;
  std::vector<unsigned> counts;
  clip.ClipPolyline(path.data(), static_cast<unsigned>(path.size()), points, counts);
  unsigned total = 0;
  for (unsigned count : counts) total += count;
  EXPECT_EQ(total, points.size());
}

}  // namespace
}  // namespace vlm

#include <velum/geometry/PolyClip.h>

#include <velum/geometry/PolygonMeasures.h>

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

namespace vlm {
namespace {

using Points = std::vector<Vec2d>;

Points Clipped(const CPolyClip& clip, const Points& points) {
  CPodVector<Vec2d, 32> out;
  out.push_back(Vec2d(7, 7));
  const unsigned count = clip.Clip(points.data(), static_cast<unsigned>(points.size()), out);
  EXPECT_EQ(count, out.size() - 1);
  return Points(out.begin() + 1, out.end());
}

TEST(PolyClip, CutsAtOneEdgeAfterTheOther) {
  const CPolyClip clip(Box2d(0, 0, 10, 10));
  const struct {
    const char* why;
    Points points;
    Points clipped;
  } rows[] = {
      {"no points", {}, {}},
      {"inside", {{1, 1}, {2, 1}, {2, 2}}, {{2, 1}, {2, 2}, {1, 1}}},
      {"outside", {{11, 1}, {12, 1}, {12, 2}}, {}},
      {"on an edge", {{0, 1}, {0, 5}, {0, 9}}, {{0, 5}, {0, 9}, {0, 1}}},
      {"a point", {{1, 1}}, {{1, 1}}},
      {"over the left edge", {{-5, 5}, {5, 0}, {5, 10}}, {{0, 2.5}, {5, 0}, {5, 10}, {0, 7.5}}},
      {"all around",
       {{-5, -5}, {15, -5}, {15, 15}, {-5, 15}},
       {{0, 10}, {0, 0}, {10, 0}, {10, 10}}},
      {"two parts joined along the edge",
       {{-2, 1}, {4, 1}, {4, 2}, {-1, 2}, {-1, 3}, {4, 3}, {4, 4}, {-2, 4}},
       {{0, 3}, {4, 3}, {4, 4}, {0, 4}, {0, 1}, {4, 1}, {4, 2}, {0, 2}}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(Clipped(clip, row.points), row.clipped) << row.why;
  }
  CPodVector<Vec2d, 32> out;
  EXPECT_EQ(clip.Clip(nullptr, 4, out), 0u);
}

TEST(PolyClip, TakesBoxesWithTheTopFirst) {
  CPolyClip clip;
  EXPECT_EQ(Clipped(clip, {{1, 1}, {2, 1}, {2, 2}}), Points()) << "an empty box leaves nothing";
  clip.SetClipRectBLT(Box2d(0, 10, 10, 0));
  EXPECT_EQ(Clipped(clip, {{1, 1}, {2, 1}, {2, 2}}).size(), 3u);
  clip.SetClipRect(Box2d(0, 10, 10, 0));
  EXPECT_EQ(Clipped(clip, {{1, 1}, {2, 1}, {2, 2}}), Points());
}

TEST(PolyClip, PartsOfAGridHaveTheAreaOfTheWhole) {
  SCOPED_TRACE("seed 2");
  std::mt19937 random(2);
  std::uniform_real_distribution<double> number(-1, 5);
  for (int round = 0; round < 300; ++round) {
    Points points(3 + random() % 40);
    for (Vec2d& p : points) {
      p.Set(number(random), number(random));
      if (round % 2 == 0) p.Set(std::floor(p.x), std::floor(p.y));
    }
    double sum = 0;
    for (double x = -1; x < 5; ++x) {
      for (double y = -1; y < 5; ++y) {
        const Points part = Clipped(CPolyClip(Box2d(x, y, x + 1, y + 1)), points);
        for (const Vec2d& p : part) {
          EXPECT_TRUE(p.x >= x && p.x <= x + 1 && p.y >= y - 1e-9 && p.y <= y + 1 + 1e-9);
        }
        sum += PolygonArea(part.data(), static_cast<unsigned>(part.size()));
      }
    }
    EXPECT_NEAR(sum, PolygonArea(points.data(), static_cast<unsigned>(points.size())), 1e-9);
  }
}

TEST(PodVector, GrowsFromInsideTheObject) {
  CPodVector<Vec2d, 32> points;
  EXPECT_EQ(points.capacity(), 32u);
  for (int i = 0; i < 32; ++i) points.push_back(Vec2d(i, -i));
  const auto* object = reinterpret_cast<const char*>(&points);
  EXPECT_LT(reinterpret_cast<const char*>(points.data()) - object, 64) << "no allocation yet";
  points.push_back(points[5]);
  EXPECT_EQ(points.capacity(), 64u);
  EXPECT_EQ(points.back(), Vec2d(5, -5));
  EXPECT_EQ(points[31], Vec2d(31, -31));
  points.resize(1000);
  EXPECT_EQ(points.capacity(), 1024u);
  CPodVector<Vec2d, 32> copy(points);
  const auto& same = copy;
  copy = same;
  copy[31].x = 0;
  EXPECT_EQ(points[31].x, 31);
  points.clear();
  points = copy;
  EXPECT_EQ(points.size(), 1000u);
  EXPECT_TRUE((CPodVector<int, 1>().empty()));
}

TEST(PodVector, RefusesWhatNoMemoryHolds) {
  CPodVector<Vec2d, 32> points;
  points.push_back(Vec2d(1, 2));
  for (std::size_t count :
       {std::numeric_limits<std::size_t>::max(), std::numeric_limits<std::size_t>::max() / 20}) {
    try {
      points.reserve(count);
      ADD_FAILURE();
    } catch (const std::bad_alloc& error) {
      EXPECT_STREQ(error.what(), "bad allocation");
    }
  }
  EXPECT_EQ(points.back(), Vec2d(1, 2));
}

}  // namespace
}  // namespace vlm

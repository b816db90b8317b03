#include <velum/geometry/detail/LineClipContour.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>

namespace vlm::detail {
namespace {

using Points = std::vector<Vec2d>;

// The index may pass over edges, but must find all that looking at each finds.
TEST(LineClipContour, IndexFindsWhatThePlainWalkFinds) {
  SCOPED_TRACE("seed 9");
  std::mt19937 random(9);
  const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
  std::uniform_real_distribution<double> number(-5, 5);
  std::size_t crossings = 0;
  for (int round = 0; round < 2000; ++round) {
    const bool isOnGrid = round % 2 == 0;
    const auto point = [&] {
      return isOnGrid ? Vec2d(below(9), below(9)) : Vec2d(number(random), number(random));
    };
    Points points;
    std::vector<unsigned> counts(1 + below(30));
    for (unsigned& count : counts) {
      count = below(below(10) == 0 ? 1000 : 12);
      Vec2d p = point();
      for (unsigned i = 0; i < count; ++i) {
        // Small steps, so that blocks of edges are small, too.
        p += (point() - point()) * (isOnGrid ? 1 : 0.05);
        points.push_back(p);
      }
    }
    const LineClipContour contour(points, points, counts);
    LineClipContour::Crossings found, plain;
    for (int i = 0; i < 20; ++i) {
      Vec2d a = point() * 4 - 12;
      Vec2d b = point() * 4 - 12;
      if (!points.empty() && i % 2 == 0) {
        a = points[below(static_cast<unsigned>(points.size()))];
        b = points[below(static_cast<unsigned>(points.size()))];
      }
      if (b < a) std::swap(a, b);
      contour.FindCrossings(a, b, found);
      contour.FindCrossingsPlainly(a, b, plain);
      std::sort(found.list.begin(), found.list.end());
      std::sort(plain.list.begin(), plain.list.end());
      const auto areEqual = [](const auto& x, const auto& y) {
        return x.point == y.point && x.key == y.key && x.isToggle == y.isToggle;
      };
      ASSERT_EQ(found.beginsInside, plain.beginsInside) << round;
      ASSERT_TRUE(std::equal(found.list.begin(), found.list.end(), plain.list.begin(),
                             plain.list.end(), areEqual));
      ASSERT_EQ(found.stretches.size(), plain.stretches.size());
      crossings += found.list.size();
    }
  }
  EXPECT_GT(crossings, 100000u);
}

TEST(LineClipContour, LeavesOutWhatHasNoArea) {
  const Points spike{{0, 0}, {4, 0}, {9, 0}, {2, 0}, {2, 0}};
  const LineClipContour contour(spike, spike, {5});
  LineClipContour::Crossings found;
  contour.FindCrossings(Vec2d(3, -1), Vec2d(3, 1), found);
  EXPECT_TRUE(found.list.empty());
  EXPECT_FALSE(LineClipContour(spike, spike, {5}).GetPath().empty()) << "the path keeps it";
}

}  // namespace
}  // namespace vlm::detail

#include <velum/geometry/Box.h>

#include <velum/geometry/Constants.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace vlm {
namespace {

constexpr double kMost = std::numeric_limits<double>::max();

TEST(Box, IsStoredAsMinimumAndMaximum) {
  const Box2d box(1, 2, 3, 4);
  double flat[4];
  std::memcpy(flat, &box, sizeof flat);
  EXPECT_EQ(Box2d(Vec2d(flat), Vec2d(flat + 2)), Box2d(Vec2d(1, 2), Vec2d(3, 4)));
  Box3f space(1, 2, 3, 4, 5, 6);
  space.zMin() = -3;
  space.xMax() = 7;
  EXPECT_EQ(space, Box3f(Vec3f(1, 2, -3), Vec3f(7, 5, 6)));
  EXPECT_EQ(space.Size(), Vec3f(6, 3, 9));
  EXPECT_EQ(Vec3f(space.xMid(), space.yMid(), space.zMid()), Vec3f(4, 3.5, 1.5));
  EXPECT_EQ(Box3d(Vec3d(1, 2, 3)), Box3d(1, 2, 3, 1, 2, 3));
}

TEST(Box, TellsItsShape) {
  struct Row {
    const char* why;
    Box2d box;
    bool isDegenerate;
    bool isEmpty;
    double area;
    double diagonal;
  };
  const Row rows[] = {
      {"the empty box", Box2d(), true, true, 0, 0},
      {"plain", Box2d(1, 1, 4, 5), false, false, 12, 5},
      {"zero width", Box2d(0, 0, 0, 5), false, true, 0, 5},
      {"a point", Box2d(2, 3, 2, 3), false, true, 0, 0},
      {"inverted in y", Box2d(0, 5, 4, 2), true, true, 0, 0},
      {"inverted in both", Box2d(4, 5, 1, 1), true, true, 0, 0},
      {"all there is", Box2d::UNIVERSE, false, false, INFINITY, INFINITY},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(row.box.IsDegenerate(), row.isDegenerate);
    EXPECT_EQ(row.box.IsEmpty(), row.isEmpty);
    EXPECT_EQ(row.box.HasArea(), !row.isEmpty);
    EXPECT_EQ(row.box.GetArea(), row.area);
    EXPECT_EQ(row.box.Diagonal(), row.diagonal);
    const Box3d space(Vec3d(row.box.xMin(), row.box.yMin(), 0),
                      Vec3d(row.box.xMax(), row.box.yMax(), 2));
    EXPECT_EQ(space.HasVolume(), !row.isEmpty);
    EXPECT_EQ(space.GetVolume(), row.area * 2);
  }
  EXPECT_TRUE(Box3d(0, 0, 2, 1, 1, 1).IsDegenerate());
  EXPECT_TRUE(Box3f(0, 0, 1, 1, 1, 1).IsEmpty());
  EXPECT_EQ(Box3d(0, 0, 0, 2, 3, 6).Diagonal(), 7);
}

TEST(Box, ContainsItsBoundary) {
  const Box2d box(0, 0, 2, 4);
  for (const Vec2d p : {Vec2d(0, 0), Vec2d(2, 4), Vec2d(0, 4), Vec2d(1, 2)}) {
    EXPECT_TRUE(box.Contains(p)) << p.x << ' ' << p.y;
    EXPECT_FALSE(Box2d().Contains(p));
  }
  for (const Vec2d p :
       {Vec2d(-1e-300, 1), Vec2d(2.5, 1), Vec2d(1, -1), Vec2d(1, 5), Vec2d(NAN, 1)}) {
    EXPECT_FALSE(box.Contains(p)) << p.x << ' ' << p.y;
  }
  EXPECT_FALSE(Box2d(2, 4, 0, 0).Contains(Vec2d(1, 1))) << "inverted";
  EXPECT_TRUE(box.Contains(box));
  EXPECT_FALSE(box.Contains(Box2d(1, 1, 2, 4.5)));
  EXPECT_FALSE(box.Contains(Box2d(-1, 1, 2, 4)));
  EXPECT_FALSE(Box3f(0, 0, 0, 1, 1, 1).Contains(Vec3f(0, 0, 2)));
}

TEST(Box, IntersectsWhatItTouches) {
  struct Row {
    const char* why;
    Box2d other;
    bool intersects;
    Box2d common;
  };
  const Box2d box(0, 0, 2, 4);
  const Row rows[] = {
      {"overlap", Box2d(1, 1, 5, 5), true, Box2d(1, 1, 2, 4)},
      {"a common edge", Box2d(2, 0, 3, 4), true, Box2d(2, 0, 2, 4)},
      {"a common corner", Box2d(2, 4, 3, 5), true, Box2d(2, 4, 2, 4)},
      {"inside", Box2d(1, 1, 1.5, 2), true, Box2d(1, 1, 1.5, 2)},
      {"beside", Box2d(3, 0, 5, 4), false, Box2d(3, 0, 2, 4)},
      {"below", Box2d(0, 5, 2, 6), false, Box2d(0, 5, 2, 4)},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(box.Intersects(row.other), row.intersects);
    EXPECT_EQ(row.other.Intersects(box), row.intersects);
    Box2d common = box;
    common.Intersect(row.other);
    EXPECT_EQ(common, row.common);
  }
  EXPECT_FALSE(Box3d(0, 0, 0, 1, 1, 1).Intersects(Box3d(0, 0, 2, 1, 1, 3)));
}

TEST(Box, GrowsFromNothing) {
  Box2d box;
  box.ExtendBy(Vec2d(3, -1));
  EXPECT_EQ(box, Box2d(3, -1, 3, -1));
  EXPECT_TRUE(box.IsEmpty());
  EXPECT_FALSE(box.IsDegenerate());
  box.ExtendBy(Box2d());
  EXPECT_EQ(box, Box2d(3, -1, 3, -1)) << "the empty box adds nothing";
  box.ExtendBy(Box2d(0, 0, 4, 1));
  EXPECT_EQ(box, Box2d(0, -1, 4, 1));
}

// The comparisons as they are stated, on the numbers in their order.
template <class Vec, class Box>
Box ExtendedByOneAfterTheOther(const std::vector<Vec>& points) {
  using T = typename Vec::Scalar;
  Vec low = Vec() + std::numeric_limits<T>::max();
  Vec high = Vec() - std::numeric_limits<T>::max();
  for (const Vec& p : points) {
    for (std::size_t i = 0; i < Vec::kDimension; ++i) {
      if (p[i] < low[i]) {
        low[i] = p[i];
      }
      if (p[i] > high[i]) {
        high[i] = p[i];
      }
    }
  }
  return Box(low, high);
}

template <class Vec, class Box>
void CompareBounds() {
  using T = typename Vec::Scalar;
  constexpr unsigned kSeed = 77;
  SCOPED_TRACE(kSeed);
  std::mt19937 random(kSeed);
  const double special[] = {NAN, INFINITY, -INFINITY, 0.0, -0.0, 1, -1, kMost};
  for (unsigned count = 0; count < 200; ++count) {
    std::vector<Vec> points(count);
    for (Vec& p : points) {
      for (std::size_t i = 0; i < Vec::kDimension; ++i) {
        const double uniform = std::uniform_real_distribution<double>(-10, 10)(random);
        p[i] = static_cast<T>(random() % 3 == 0 ? special[random() % std::size(special)] : uniform);
      }
    }
    Box box(Vec::ONE, Vec::ONE);
    box.BoundPoints(points.data(), count);
    const Box expected = ExtendedByOneAfterTheOther<Vec, Box>(points);
    EXPECT_EQ(std::memcmp(&box, &expected, sizeof box), 0) << count << " points, to the bit";
  }
}

TEST(Box, BoundsPointsAsIfOneAfterTheOther) {
  CompareBounds<Vec2d, Box2d>();
  CompareBounds<Vec2f, Box2f>();
  CompareBounds<Vec3d, Box3d>();
  CompareBounds<Vec3f, Box3f>();
}

TEST(Box, NormalizesEachAxisByItself) {
  Box3d box(1, 5, 3, 2, 4, 3);
  box.Normalize();
  EXPECT_EQ(box, Box3d(1, 4, 3, 2, 5, 3));
  Box2f empty;
  empty.Normalize();
  EXPECT_EQ(empty, Box2f::UNIVERSE);
}

TEST(Box, MapsASubBoxInTheStatedOrder) {
  const Box2d frame(1, 2, 4, 9);
  const Box2d destination(-1, 0.1, 0.7, 0.3);
  const Box2d sub(1.1, 2.7, 3.3, 8.8);
  const double sx = (0.7 - -1) / (4.0 - 1);
  const double sy = (0.3 - 0.1) / (9.0 - 2);
  const double x = (1.1 - 1) * sx + -1;
  const double y = (2.7 - 2) * sy + 0.1;
  EXPECT_EQ(frame.MapSubBoxToDestSubBox(sub, destination),
            Box2d(x, y, sx * (3.3 - 1.1) + x, sy * (8.8 - 2.7) + y));
  EXPECT_EQ(frame.MapSubBoxToDestSubBox(frame, Box2d(0, 0, 30, 70)), Box2d(0, 0, 30, 70));
  EXPECT_FALSE(std::isfinite(Box2d(1, 1, 1, 1).MapSubBoxToDestSubBox(sub, destination).xMin()));
}

TEST(Box, AppliesArithmeticToBothCorners) {
  const Box2d box(1, 2, 3, 4);
  EXPECT_EQ(box * 2, Box2d(2, 4, 6, 8)) << "about the origin";
  EXPECT_EQ(box / 2, Box2d(0.5, 1, 1.5, 2));
  EXPECT_EQ(box + 1 - Vec2d(1, 2), Box2d(1, 1, 3, 3));
  EXPECT_EQ((box + Vec2d(1, 0)) * Vec2d(2, 3), Box2d(4, 6, 8, 12));
  EXPECT_EQ((box - 1) / Vec2d(1, 2), Box2d(0, 0.5, 2, 1.5));
  Box3f space(0, 0, 0, 1, 1, 1);
  space.Offset(Vec3f(1, 2, 3));
  EXPECT_EQ(space, Box3f(1, 2, 3, 2, 3, 4));
  space.Inflate(1, 0.5f, -1);
  EXPECT_EQ(space, Box3f(0, 1.5f, 4, 3, 3.5f, 3)) << "negative distances may invert";
}

TEST(Box, TakesCornersOfItsOwn) {
  Box2d box(1, 2, 4, 6);
  box -= box.MinCorner();
  EXPECT_EQ(box, Box2d(0, 0, 3, 4));
  box += box.MaxCorner();
  EXPECT_EQ(box, Box2d(3, 4, 6, 8));
  box *= box.MinCorner();
  EXPECT_EQ(box, Box2d(9, 16, 18, 32));
  box /= box.MinCorner();
  EXPECT_EQ(box, Box2d(1, 1, 2, 2));
  box.Set(box.MaxCorner(), box.MinCorner());
  EXPECT_EQ(box, Box2d(2, 2, 1, 1));
}

TEST(Box, ListsItsCorners) {
  Vec2d plane[4];
  Box2d(1, 2, 3, 4).GetCorners(plane);
  const Vec2d expected[] = {{1, 2}, {3, 2}, {3, 4}, {1, 4}};
  Vec3d space[8];
  Box3d(1, 2, 5, 3, 4, 6).GetCorners(space);
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(plane[i], expected[i]) << i;
    EXPECT_EQ(space[i], Vec3d(expected[i].x, expected[i].y, 5)) << i;
    EXPECT_EQ(space[i + 4], Vec3d(expected[i].x, expected[i].y, 6)) << i;
  }
}

}  // namespace
}  // namespace vlm

#include <velum/geometry/Line3d.h>

#include <velum/geometry/Box3.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <random>

namespace vlm {
namespace {

class Random {
 public:
  double Number() { return number_(random_); }
  Vec3d Vector() { return Vec3d(Number(), Number(), Number()); }

 private:
  std::mt19937 random_{12};
  std::uniform_real_distribution<double> number_{-1, 1};
};

const Line3d kAlongX(Vec3d::ZERO, Vec3d(5, 0, 0));

TEST(Line3d, HasAUnitDirection) {
  EXPECT_EQ(kAlongX.GetPosition(), Vec3d::ZERO);
  EXPECT_EQ(kAlongX.GetDirection(), Vec3d::UNIT_X);
  EXPECT_EQ(Line3d().GetDirection(), Vec3d::ZERO);
  EXPECT_TRUE(std::isnan(Line3d(Vec3d::ONE, Vec3d::ONE).GetDirection().x));
}

TEST(Line3d, MayGoOnFromItsOwnPosition) {
  Line3d line = kAlongX;
  line.SetValue(Vec3d(0, 3, 0), line.GetPosition());
  EXPECT_EQ(line.GetPosition(), Vec3d(0, 3, 0));
  EXPECT_EQ(line.GetDirection(), Vec3d(0, -1, 0));
}

TEST(Line3d, ClosestPointsLieAcross) {
  SCOPED_TRACE("seed 12");
  Random random;
  for (int i = 0; i < 200; ++i) {
    const Line3d a(random.Vector(), random.Vector());
    const Line3d b(random.Vector(), random.Vector());
    const Vec3d p = random.Vector();
    EXPECT_NEAR((a.GetClosestPoint(p) - p).Dot(a.GetDirection()), 0, 1e-14);
    Vec3d onA;
    Vec3d onB;
    ASSERT_TRUE(a.GetClosestPoints(b, onA, onB));
    const Vec3d across = a.GetDirection().Cross(b.GetDirection());
    const double distance = (b.GetPosition() - a.GetPosition()).Dot(across) / across.Length();
    // Nearly parallel lines lose digits.
    EXPECT_NEAR(onA.Distance(onB), std::abs(distance), 1e-12 / across.LengthSquared());
    EXPECT_TRUE(a.GetClosestPoint(onA).Equals(onA, 1e-12));
    EXPECT_TRUE(b.GetClosestPoint(onB).Equals(onB, 1e-12));
  }
  Vec3d untouched(7, 7, 7);
  EXPECT_FALSE(
      kAlongX.GetClosestPoints(Line3d(Vec3d(0, 1, 0), Vec3d(-1, 1, 0)), untouched, untouched));
  EXPECT_EQ(untouched, Vec3d(7, 7, 7));
}

TEST(Line3d, MeetsTriangles) {
  struct Row {
    const char* why;
    Vec3d from;
    Vec3d to;
    bool isHit;
    bool front;
    Vec3d barycentric;
  };
  // Corners (0,0,0), (4,0,0) and (0,4,0).
  const Row rows[] = {
      {"inside, upwards", Vec3d(1, 1, -1), Vec3d(1, 1, 0), true, true, Vec3d(0.5, 0.25, 0.25)},
      {"inside, downwards", Vec3d(1, 2, 9), Vec3d(1, 2, 0), true, false, Vec3d(0.25, 0.25, 0.5)},
      {"behind the position", Vec3d(1, 1, 1), Vec3d(1, 1, 2), true, true, Vec3d(0.5, 0.25, 0.25)},
      {"corner", Vec3d(4, 0, -1), Vec3d(4, 0, 0), true, true, Vec3d(0, 1, 0)},
      {"edge", Vec3d(2, 2, -1), Vec3d(2, 2, 0), true, true, Vec3d(0, 0.5, 0.5)},
      {"beyond the long edge", Vec3d(2.1, 2, -1), Vec3d(2.1, 2, 0), false, false, Vec3d()},
      {"beyond a short edge", Vec3d(-0.1, 2, -1), Vec3d(-0.1, 2, 0), false, false, Vec3d()},
      {"parallel", Vec3d(0, 0, 0), Vec3d(1, 1, 0), false, false, Vec3d()},
  };
  // The same in each plane of two axes: coordinates move round.
  for (std::size_t turn = 0; turn < 3; ++turn) {
    const auto turned = [turn](const Vec3d& v) {
      return Vec3d(v[(3 - turn) % 3], v[(4 - turn) % 3], v[(5 - turn) % 3]);
    };
    for (const Row& row : rows) {
      SCOPED_TRACE(row.why);
      const Line3d line(turned(row.from), turned(row.to));
      Vec3d point(7, 7, 7);
      Vec3d barycentric(7, 7, 7);
      bool front = !row.front;
      EXPECT_EQ(line.Intersect(turned(Vec3d()), turned(Vec3d(4, 0, 0)), turned(Vec3d(0, 4, 0)),
                               point, barycentric, front),
                row.isHit);
      EXPECT_EQ(front, row.isHit == row.front);
      EXPECT_EQ(barycentric, row.isHit ? row.barycentric : Vec3d(7, 7, 7));
      EXPECT_EQ(point, row.isHit ? turned(Vec3d(row.from.x, row.from.y, 0)) : Vec3d(7, 7, 7));
    }
  }
  Vec3d out;
  bool front = false;
  EXPECT_FALSE(
      Line3d(Vec3d::ZERO, Vec3d::UNIT_Z)
          .Intersect(Vec3d(0, 0, 0), Vec3d(1e-8, 0, 0), Vec3d(0, 1e-8, 0), out, out, front))
      << "too small a triangle";
}

TEST(Line3d, MeetsAnyTriangleWhereItsWeightsSay) {
  SCOPED_TRACE("seed 12");
  Random random;
  for (int i = 0; i < 500; ++i) {
    const Vec3d v0 = random.Vector();
    const Vec3d v1 = random.Vector();
    const Vec3d v2 = random.Vector();
    const double beta = random.Number();
    const double gamma = random.Number();
    const bool isInside = beta >= 0 && gamma >= 0 && beta + gamma <= 1;
    const Vec3d target = v0 + (v1 - v0) * beta + (v2 - v0) * gamma;
    Vec3d point;
    Vec3d barycentric;
    bool front = false;
    ASSERT_EQ(Line3d(random.Vector(), target).Intersect(v0, v1, v2, point, barycentric, front),
              isInside);
    if (isInside) {
      // Thin triangles and grazing lines lose digits.
      EXPECT_TRUE(point.Equals(target, 1e-10));
      EXPECT_TRUE(barycentric.Equals(Vec3d(1 - beta - gamma, beta, gamma), 1e-9));
    }
  }
}

// The interval of a line inside a box, axis by axis.
bool MeetsSlabs(const Line3d& line, const Box3d& box, double& enter, double& exit) {
  enter = -1e300;
  exit = 1e300;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    const double p = line.GetPosition()[axis];
    const double d = line.GetDirection()[axis];
    const double a = (box.MinCorner()[axis] - p) / d;
    const double b = (box.MaxCorner()[axis] - p) / d;
    enter = std::max(enter, std::min(a, b));
    exit = std::min(exit, std::max(a, b));
  }
  return enter <= exit;
}

TEST(Line3d, MeetsBoxesAsSlabsDo) {
  SCOPED_TRACE("seed 12");
  Random random;
  int hits = 0;
  for (int i = 0; i < 5000; ++i) {
    const Line3d line(random.Vector() * 3, random.Vector() * 3);
    Box3d box(random.Vector(), random.Vector());
    box.Normalize();
    double from = 0;
    double to = 0;
    const bool expected = MeetsSlabs(line, box, from, to);
    Vec3d enter(7, 7, 7);
    Vec3d exit(7, 7, 7);
    ASSERT_EQ(line.Intersect(box, enter, exit), expected);
    hits += expected;
    if (expected) {
      EXPECT_TRUE(enter.Equals(line.GetPosition() + line.GetDirection() * from, 1e-10));
      EXPECT_TRUE(exit.Equals(line.GetPosition() + line.GetDirection() * to, 1e-10));
    } else {
      EXPECT_EQ(enter, Vec3d(7, 7, 7));
    }
  }
  EXPECT_GT(hits, 200);
  Vec3d out;
  EXPECT_FALSE(kAlongX.Intersect(Box3d(), out, out)) << "degenerate";
  EXPECT_TRUE(kAlongX.Intersect(Box3d(1, -1, -1, 2, 1, 1), out, out)) << "through a diagonal";
}

TEST(Line3d, PicksWithARadiusOrACone) {
  struct Row {
    const char* why;
    double pickAngle;
    Vec3d point;
    bool isHit;
  };
  const Row rows[] = {
      {"inside the radius", -2, Vec3d(10, 1.5, 0), true},
      {"on the radius", -2, Vec3d(10, 2, 0), false},
      {"behind", -2, Vec3d(-1, 0, 0), false},
      {"at the position", -2, Vec3d(0, 1, 0), false},
      {"inside the cone", 0.25, Vec3d(10, 2, 0), true},
      {"on the cone", 0.25, Vec3d(8, 2, 0), false},
      {"on the line", 1e-9, Vec3d(0.1, 0, 0), true},
      {"no tolerance", 0, Vec3d(1, 0, 0), false},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.why);
    EXPECT_EQ(kAlongX.Intersect(row.pickAngle, row.point), row.isHit);
  }
}

TEST(Line3d, PicksSegmentsAtTheirNearestPoint) {
  Vec3d out;
  EXPECT_TRUE(kAlongX.Intersect(-2, Vec3d(4, -3, 1), Vec3d(4, 3, 1), out));
  EXPECT_EQ(out, Vec3d(4, 0, 1));
  EXPECT_TRUE(kAlongX.Intersect(0.5, Vec3d(4, -3, 1), Vec3d(4, 3, 1), out)) << "1 off at 4 along";
  EXPECT_FALSE(kAlongX.Intersect(0.25, Vec3d(4, -3, 1), Vec3d(4, 3, 1), out)) << "on the cone";
  EXPECT_TRUE(kAlongX.Intersect(-2, Vec3d(4, 1, 0), Vec3d(4, 3, 0), out));
  EXPECT_EQ(out, Vec3d(4, 1, 0)) << "limited to the nearer end";
  EXPECT_FALSE(kAlongX.Intersect(-2, Vec3d(4, 5, 0), Vec3d(4, 3, 0), out));
  EXPECT_EQ(out, Vec3d(4, 3, 0)) << "limited to the other end";
  out = Vec3d(7, 7, 7);
  EXPECT_FALSE(kAlongX.Intersect(-2, Vec3d(1, 1, 0), Vec3d(2, 1, 0), out)) << "parallel";
  EXPECT_FALSE(kAlongX.Intersect(-2, Vec3d(1, 1, 0), Vec3d(1, 1, 0), out)) << "a point";
  EXPECT_EQ(out, Vec3d(7, 7, 7));
}

TEST(Line3d, PicksBoxesThatAreWidened) {
  const Box3d box(5, 1, -1, 6, 2, 1);
  EXPECT_FALSE(kAlongX.Intersect(-0.9, box));
  EXPECT_TRUE(kAlongX.Intersect(-1.1, box));
  // The farthest corner is the root of 41 away: 6.4.
  EXPECT_TRUE(kAlongX.Intersect(std::atan(1.1 / std::sqrt(41)), box));
  EXPECT_FALSE(kAlongX.Intersect(std::atan(0.9 / std::sqrt(41)), box));
  EXPECT_FALSE(kAlongX.Intersect(-9, Box3d(5, 1, 0, 6, -1, 0)))
      << "degenerate before it is widened";
}

}  // namespace
}  // namespace vlm

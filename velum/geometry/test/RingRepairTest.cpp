#include <velum/geometry/detail/RingRepair.h>

#include <velum/geometry/detail/Orientation.h>
#include <velum/geometry/detail/RingOverlay.h>

#include <boost/geometry/algorithms/detail/has_self_intersections.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <random>
#include <vector>

namespace vlm {
namespace {

using Invalid = boost::geometry::overlay_invalid_input_exception;
using Points = std::vector<Vec2d>;

Points Square(double x, double y, double size) {
  return {{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}};
}

RingPolygon2d Polygon(const Points& outer, const std::vector<Points>& inners = {}) {
  RingPolygon2d polygon;
  InitRing(outer.data(), static_cast<unsigned int>(outer.size()), polygon.outer());
  for (const Points& points : inners) {
    Ring2d& ring = polygon.inners().emplace_back();
    InitRing(points.data(), static_cast<unsigned int>(points.size()), ring);
    std::reverse(ring.begin(), ring.end());
  }
  return polygon;
}

MultiPolygon2d Polygons(std::vector<RingPolygon2d> polygons) {
  MultiPolygon2d result;
  for (RingPolygon2d& polygon : polygons) result.push_back(polygon);
  return result;
}

double AreaOf(const MultiPolygon2d& polygons) {
  double area = 0;
  const auto add = [&area](const Ring2d& ring) {
    for (std::size_t i = 1; i < ring.size(); ++i) {
      const Vec2d p = ring[i - 1] - ring[0];
      const Vec2d q = ring[i] - ring[0];
      area += (p.y * q.x - q.y * p.x) / 2;
    }
  };
  for (const RingPolygon2d& polygon : polygons) {
    add(polygon.outer());
    for (const Ring2d& ring : polygon.inners()) add(ring);
  }
  return area;
}

struct Row {
  const char* what;
  MultiPolygon2d rings;
  std::size_t polygons;
  std::size_t holes;
  double area;
};

std::vector<Row> TouchingRows() {
  return {
      {"nothing", {}, 0, 0, 0},
      {"two that share an edge", Polygons({Polygon(Square(0, 0, 4)), Polygon(Square(4, 0, 4))}), 1,
       0, 32},
      {"two that share part of an edge",
       Polygons({Polygon(Square(0, 0, 4)), Polygon(Square(4, 1, 2))}), 1, 0, 20},
      {"two that share a vertex", Polygons({Polygon(Square(0, 0, 4)), Polygon(Square(4, 4, 4))}), 2,
       0, 32},
      {"four about a vertex",
       Polygons({Polygon(Square(0, 0, 4)), Polygon(Square(4, 0, 4)), Polygon(Square(0, 4, 4)),
                 Polygon(Square(4, 4, 4))}),
       1, 0, 64},
      {"a vertex on an edge",
       Polygons({Polygon(Square(0, 0, 8)), Polygon({{8, 4}, {9, 2}, {9, 6}})}), 2, 0, 66},
      {"lobes of one ring that share a vertex",
       Polygons({Polygon({{0, 0}, {4, 4}, {8, 0}, {8, 8}, {4, 4}, {0, 8}})}), 2, 0, 32},
      {"a ring that encloses a pocket",
       Polygons(
           {Polygon({{0, 0}, {8, 0}, {8, 8}, {0, 8}, {0, 4}, {4, 6}, {6, 4}, {4, 2}, {0, 4}})}),
       1, 1, 52},
      {"a hole that touches the outer ring",
       Polygons({Polygon(Square(0, 0, 8), {{{4, 0}, {6, 4}, {2, 4}}})}), 1, 1, 56},
      {"a hole along the outer ring", Polygons({Polygon(Square(0, 0, 8), {Square(2, 0, 3)})}), 1, 0,
       55},
      {"a hole from side to side",
       Polygons({Polygon(Square(0, 0, 8), {{{0, 4}, {4, 3}, {8, 4}, {4, 5}}})}), 2, 0, 56},
      {"two holes that share a vertex",
       Polygons({Polygon(Square(0, 0, 8), {Square(2, 2, 2), Square(4, 4, 2)})}), 1, 2, 56},
      {"two holes that share an edge",
       Polygons({Polygon(Square(0, 0, 8), {Square(2, 2, 2), Square(4, 2, 2)})}), 1, 1, 56},
      {"an island that fills its hole",
       Polygons({Polygon(Square(0, 0, 8), {Square(1, 1, 6)}), Polygon(Square(1, 1, 6))}), 1, 0, 64},
      {"an island that touches its hole",
       Polygons({Polygon(Square(0, 0, 8), {Square(1, 1, 6)}), Polygon({{1, 4}, {4, 3}, {4, 5}})}),
       2, 1, 31},
      {"a spike", Polygons({Polygon({{0, 0}, {6, 0}, {6, 3}, {8, 3}, {6, 3}, {6, 6}, {0, 6}})}), 1,
       0, 36},
      {"a bridge to a hole",
       Polygons({Polygon({{0, 0},
                          {8, 0},
                          {8, 4},
                          {6, 4},
                          {4, 2},
                          {2, 4},
                          {4, 6},
                          {6, 4},
                          {8, 4},
                          {8, 8},
                          {0, 8}})}),
       1, 1, 56},
      {"a path from one square to the next",
       Polygons({Polygon(
           {{0, 0}, {3, 0}, {3, 3}, {0, 3}, {0, 0}, {5, 5}, {8, 5}, {8, 8}, {5, 8}, {5, 5}})}),
       2, 0, 18},
      {"twice the same", Polygons({Polygon(Square(0, 0, 8)), Polygon(Square(0, 0, 8))}), 1, 0, 64},
      {"one in the other", Polygons({Polygon(Square(0, 0, 8)), Polygon(Square(2, 2, 4))}), 1, 0,
       64},
      {"one in the other along an edge",
       Polygons({Polygon(Square(0, 0, 8)), Polygon(Square(0, 2, 4))}), 1, 0, 64},
      {"a hole as large as its ring", Polygons({Polygon(Square(0, 0, 8), {Square(0, 0, 8)})}), 0, 0,
       0},
      {"no area", Polygons({Polygon({{0, 0}, {8, 0}, {4, 0}}), Polygon({{1, 1}}), RingPolygon2d()}),
       0, 0, 0},
      {"a sliver far away",
       Polygons({Polygon({{1e9, 1e9}, {1e9 + 1, 1e9}, {1e9, 1e9 + 1e-6}}),
                 Polygon({{1e9, 1e9}, {1e9 + 1, 1e9}, {1e9, 1e9 - 1}})}),
       1, 0, 0.5},
  };
}

MultiPolygon2d Prepared(const MultiPolygon2d& rings) {
  MultiPolygon2d repaired;
  return detail::PrepareRings(rings, repaired);
}

TEST(RingRepair, TouchingRingsKeepTheirArea) {
  for (const Row& row : TouchingRows()) {
    for (const bool reversed : {false, true}) {
      MultiPolygon2d rings = row.rings;
      if (reversed) {
        // As a file may hold them.
        for (RingPolygon2d& polygon : rings) {
          std::reverse(polygon.outer().begin(), polygon.outer().end());
        }
      }
      const MultiPolygon2d prepared = Prepared(rings);
      std::size_t holes = 0;
      for (const RingPolygon2d& polygon : prepared) holes += polygon.inners().size();
      EXPECT_EQ(prepared.size(), row.polygons) << row.what;
      EXPECT_EQ(holes, row.holes) << row.what;
      EXPECT_NEAR(AreaOf(prepared), row.area, 1e-5) << row.what;
    }
  }
}

TEST(RingRepair, RingsThatMeetNowhereAreTakenAsTheyAre) {
  const MultiPolygon2d rings =
      Polygons({Polygon(Square(0, 0, 8), {Square(1, 1, 3)}), Polygon(Square(2, 2, 1))});
  MultiPolygon2d repaired;
  EXPECT_EQ(&detail::PrepareRings(rings, repaired), &rings);
}

TEST(RingRepair, OverlayIsRightAfterwards) {
  constexpr unsigned int kSeed = 8;
  SCOPED_TRACE(kSeed);
  std::mt19937 random(kSeed);
  int refused = 0;
  int done = 0;
  for (const Row& row : TouchingRows()) {
    if (row.area == 0 || row.rings[0].outer()[0].x > 100) continue;
    for (int round = 0; round < 40; ++round) {
      // Cut in two by a line through grid points, which meets many vertices.
      const double left = static_cast<double>(random() % 9);
      const double right = static_cast<double>(random() % 9);
      const MultiPolygon2d below =
          Polygons({Polygon({{left, -1}, {right, 9}, {-20, 9}, {-20, -1}})});
      const MultiPolygon2d a =
          detail::Overlay(detail::RingOperation::kIntersection, row.rings, below);
      const MultiPolygon2d b =
          detail::Overlay(detail::RingOperation::kDifference, row.rings, below);
      EXPECT_NEAR(AreaOf(a) + AreaOf(b), row.area, 1e-5) << row.what;
      ++done;
      try {
        const MultiPolygon2d whole = detail::Overlay(detail::RingOperation::kUnion, a, b);
        EXPECT_NEAR(AreaOf(whole), row.area, 1e-5) << row.what;
      } catch (const Invalid&) {
        ++refused;  // A rounded point of the cut lies a hair beyond an edge that it was on.
      }
    }
  }
  EXPECT_GT(done, 500);
  EXPECT_LT(refused, 10);
}

TEST(RingRepair, CrossingRingsAreRefused) {
  const struct {
    const char* what;
    MultiPolygon2d rings;
  } rows[] = {
      {"an eight", Polygons({Polygon({{0, 0}, {8, 8}, {8, 0}, {0, 9}})})},
      {"an eight with equal lobes", Polygons({Polygon({{0, 0}, {8, 8}, {8, 0}, {0, 8}})})},
      {"an eight through a vertex",
       Polygons({Polygon({{0, 0}, {4, 4}, {8, 8}, {8, 0}, {4, 4}, {0, 8}})})},
      {"an eight along an edge",
       Polygons({Polygon({{0, 0}, {4, 3}, {4, 5}, {8, 8}, {8, 0}, {4, 3}, {4, 5}, {0, 8}})})},
      {"two squares", Polygons({Polygon(Square(0, 0, 5)), Polygon(Square(3, 3, 5))})},
      {"two squares through vertices",
       Polygons({Polygon({{0, 0}, {4, 0}, {4, 2}, {4, 4}, {2, 4}, {0, 4}}),
                 Polygon({{2, 2}, {4, 2}, {6, 2}, {6, 6}, {2, 6}, {2, 4}})})},
      {"a hole across the outer ring", Polygons({Polygon(Square(0, 0, 8), {Square(6, 2, 4)})})},
      {"a hole outside", Polygons({Polygon(Square(0, 0, 4), {Square(5, 2, 3)})})},
      {"two edges that cross inside a third",
       Polygons({Polygon({{-1, -1}, {1, 1}, {9, 0}}), Polygon({{-1, 1}, {1, -1}, {0, -9}}),
                 Polygon({{-1, 0}, {1, 0}, {0, 9}})})},
      {"no number", Polygons({Polygon({{0, 0}, {NAN, 1}, {1, 0}})})},
  };
  for (const auto& row : rows) EXPECT_THROW(Prepared(row.rings), Invalid) << row.what;
}

// All pairs of edges: true if two cross between their ends.
bool HasCrossing(const MultiPolygon2d& polygons) {
  std::vector<std::pair<Vec2d, Vec2d>> edges;
  for (const RingPolygon2d& polygon : polygons) {
    const Ring2d& ring = polygon.outer();
    for (std::size_t i = 1; i < ring.size(); ++i) edges.emplace_back(ring[i - 1], ring[i]);
  }
  for (const auto& [a, b] : edges) {
    for (const auto& [c, d] : edges) {
      if (detail::Orientation(a, b, c) * detail::Orientation(a, b, d) < 0 &&
          detail::Orientation(c, d, a) * detail::Orientation(c, d, b) < 0) {
        return true;
      }
    }
  }
  return false;
}

TEST(RingRepair, FindsACrossingWhereAllPairsDo) {
  constexpr unsigned int kSeed = 9;
  SCOPED_TRACE(kSeed);
  std::mt19937 random(kSeed);
  int crossing = 0;
  int passed = 0;
  for (int round = 0; round < 20000; ++round) {
    const unsigned int size = round % 2 ? 5 : 40;
    MultiPolygon2d rings;
    for (auto count = 1 + random() % 3; count > 0; --count) {
      Points points(3 + random() % 4);
      for (Vec2d& p : points) {
        p.x = static_cast<double>(random() % size);
        p.y = static_cast<double>(random() % size);
      }
      rings.push_back(Polygon(points));
    }
    const bool crosses = HasCrossing(rings);
    crossing += crosses;
    try {
      const MultiPolygon2d prepared = Prepared(rings);
      EXPECT_FALSE(crosses) << round;
      EXPECT_FALSE(HasCrossing(prepared)) << round;
      EXPECT_EQ(AreaOf(Prepared(prepared)), AreaOf(prepared)) << round;
      ++passed;
    } catch (const Invalid&) {
      // Ways that cross in a point are refused as well.
    }
  }
  EXPECT_GT(crossing, 1000);
  EXPECT_GT(passed, 1000);
}

TEST(RingRepair, LargeInputTakesBoundedTime) {
  const auto start = std::chrono::steady_clock::now();
  constexpr int kCount = 50000;
  MultiPolygon2d nested;
  for (int i = 0; i < kCount; ++i) nested.push_back(Polygon(Square(-i, -i, 2 * i + 1)));
  EXPECT_EQ(Prepared(nested).size(), 1u);

  // Edges that all lie on one line, and triangles that all meet in one point.
  Points line;
  MultiPolygon2d fan;
  for (int i = 0; i < kCount; ++i) {
    line.emplace_back((i * 7919) % kCount, ((i * 7919) % kCount) * 2.0);
    fan.push_back(Polygon({{0, 0}, {1e6, 2.0 * i}, {1e6, 2.0 * i + 1}}));
  }
  EXPECT_EQ(Prepared(Polygons({Polygon(line)})).size(), 0u);
  EXPECT_EQ(Prepared(fan).size(), static_cast<std::size_t>(kCount));
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  EXPECT_LT(taken.count(), 60) << "a quadratic step takes minutes";
}

}  // namespace
}  // namespace vlm

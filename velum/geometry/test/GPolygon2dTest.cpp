#include <velum/geometry/GPolygon2d.h>

#include <velum/core/Exception.h>
#include <velum/files/BufferedFile.h>
#include <velum/geometry/GPolygon.h>
#include <velum/geometry/PolygonMeasures.h>
#include <velum/geometry/test/reference/EvenOddArea.h>
#include <testing/Sanitized.h>

#include <boost/geometry/algorithms/detail/has_self_intersections.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace vlm {
namespace {

using ::testing::ElementsAre;
using vlm::testing::Rounds;
using Invalid = boost::geometry::overlay_invalid_input_exception;

const Vec2d kEight[] = {{0, 0}, {8, 8}, {8, 0}, {0, 9}};

MultiPolygon2d RingsOf(const GPolygon2d& polygon) {
  MultiPolygon2d rings;
  polygon.GetMultiPolygon(rings);
  return rings;
}

double AreaOf(const GPolygon2d& polygon) {
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  polygon.GetPolyPolygon(points, counts, true);
  return -PolygonArea(points.data(), counts.data(), static_cast<unsigned int>(counts.size()));
}

int CodeOf(const auto& action) {
  try {
    action();
  } catch (const Exception& error) {
    return error.GetErrCode();
  }
  return -1;
}

TEST(GPolygon2d, RingsAreClosedAndClockwise) {
  const Vec2d anticlockwise[] = {{0, 0}, {4, 0}, {4, 3}};
  const GPolygon2d polygon(anticlockwise, 3);
  const MultiPolygon2d rings = RingsOf(polygon);
  ASSERT_EQ(rings.size(), 1u);
  EXPECT_THAT(rings[0].outer(), ElementsAre(Vec2d(0, 0), Vec2d(4, 3), Vec2d(4, 0), Vec2d(0, 0)));
  EXPECT_TRUE(IsValidMultiPolygon(rings));
  EXPECT_EQ(polygon.GetTotalVertexCount(), 3u);
  EXPECT_EQ(GPolygon2d(rings[0].outer().data(), 4).GetContourVertexCount(0), 3u);
  EXPECT_EQ(polygon.GetPolygon(nullptr), 4u);

  unsigned int untouched = 77;
  EXPECT_EQ(polygon.GetPolyPolygon(nullptr, &untouched, true), 4u);
  EXPECT_EQ(untouched, 77u);
  // A ring of two points is not closed; one far from the origin still comes out clockwise.
  EXPECT_EQ(GPolygon2d(anticlockwise, 2).GetPolyPolygon(nullptr, nullptr, true), 2u);
  const Vec2d far[] = {{1e9, 1e9}, {1e9 + 1e-6, 1e9}, {1e9 + 1e-6, 1e9 + 1e-6}};
  EXPECT_TRUE(IsValidMultiPolygon(RingsOf(GPolygon2d(far, 3))));
}

TEST(GPolygon2d, KeepsHoles) {
  GPolygon2d ring(0, 0, 10, 10);
  ring.Difference(GPolygon2d(2, 2, 5, 5));
  EXPECT_EQ(ring.GetNumContours(), 2u);
  EXPECT_EQ(AreaOf(ring), 91);
  EXPECT_EQ(ring.GetContourVertexCount(1), 4u);
  EXPECT_EQ(CodeOf([&] { (void)ring.GetContourVertexCount(2); }), ERR_INTERNAL);
  EXPECT_EQ(ring.GetPolygon(nullptr), 11u);
  EXPECT_EQ(GPolygon2d(ring).GetNumContours(), 2u);
  EXPECT_EQ(GPolygon2d(GPolygon(ring)).GetNumContours(), 1u);
  for (const auto& [point, inside] : {std::pair{Vec2d(1, 1), true},
                                      {Vec2d(3, 3), false},
                                      {Vec2d(2, 3), false},
                                      {Vec2d(0, 0), false},
                                      {Vec2d(0, 5), false},
                                      {Vec2d(11, 5), false}}) {
    EXPECT_EQ(ring.PointInside(point), inside) << point.x << ", " << point.y;
  }
  ring.Intersection(Box2d(-5, -5, 3, 3));
  EXPECT_EQ(AreaOf(ring), 8);
  EXPECT_EQ(ring.GetBBox(), Box2d(0, 0, 3, 3));
}

TEST(GPolygon2d, KnowsRectangles) {
  Box2d box;
  EXPECT_TRUE(GPolygon2d(10, 0, 0, 5).IsRectangle(&box));
  EXPECT_EQ(box, Box2d(0, 0, 10, 5));
  const Vec2d kite[] = {{0, 0}, {2, 1}, {0, 2}, {-1, 1}};
  EXPECT_FALSE(GPolygon2d(kite, 4).IsRectangle());
}

TEST(GPolygon2d, CrossingRingsThrowAndChangeNothing) {
  const GPolygon2d eight(kEight, 4);
  GPolygon2d square(2, 2, 6, 6);
  GPolygon2d result(1, 1, 2, 2);
  EXPECT_THROW(square.Union(eight), Invalid);
  EXPECT_THROW(square.Intersection(eight), Invalid);
  EXPECT_THROW(square.Difference(eight), Invalid);
  EXPECT_THROW(square.XOR(eight), boost::geometry::exception);
  EXPECT_EQ(AreaOf(square), 16);
  EXPECT_THROW(eight.Union(square, result), Invalid);
  EXPECT_EQ(result.GetNumContours(), 0u);
  try {
    square.Union(eight);
  } catch (const std::exception& error) {
    EXPECT_STREQ(error.what(), "Boost.Geometry Overlay invalid input exception");
  }
  square.AddContours(GPolygon2d(4, 4, 9, 9));
  EXPECT_THROW(square.Union(GPolygon2d()), Invalid) << "two rings of one operand";
  const Vec2d infinite[] = {{0, 0}, {INFINITY, 0}, {0, 1}};
  EXPECT_THROW(result.Union(GPolygon2d(infinite, 3)), Invalid);
  EXPECT_THROW(result.Union(GPolygon2d(0, 0, std::nan(""), 1)), Invalid);
  EXPECT_THROW(result.Intersection(Box2d(0, 0, INFINITY, 1)), Invalid);
}

TEST(GPolygon2d, ExclusiveOrAppendsTheDifferences) {
  GPolygon2d left(0, 0, 4, 4);
  GPolygon2d result;
  left.XOR(GPolygon2d(4, 0, 8, 4), result);
  EXPECT_EQ(result.GetNumContours(), 2u) << "neighbours are not merged";
  result.Union(GPolygon2d(8, 0, 9, 4));
  EXPECT_EQ(result.GetNumContours(), 1u) << "and yet are a good operand";
  EXPECT_EQ(AreaOf(result), 36);
  left.Intersection(left, left);
  left.Union(left);
  EXPECT_EQ(AreaOf(left), 16);
  left.XOR(left);
  EXPECT_EQ(left.GetNumContours(), 0u);
}

TEST(GPolygon2d, DropsPathsOfNoWidth) {
  const Vec2d joined[] = {{0, 0}, {3, 0}, {3, 3}, {0, 3}, {0, 0},
                          {5, 5}, {8, 5}, {8, 8}, {5, 8}, {5, 5}};
  GPolygon2d polygon(joined, 10);
  polygon.RemoveZeroWidthReturnPaths();
  EXPECT_EQ(polygon.GetNumContours(), 2u);
  EXPECT_EQ(AreaOf(polygon), 18);
  GPolygon2d empty;
  empty.RemoveZeroWidthReturnPaths();
  EXPECT_EQ(empty.GetBBox(), Box2d());
}

reference::PlainPolygon Plain(const GPolygon2d& polygon) {
  reference::PlainPolygon plain;
  for (const RingPolygon2d& p : RingsOf(polygon)) {
    const auto add = [&plain](const Ring2d& ring) {
      for (plain.emplace_back(); const Vec2d& v : ring) plain.back().vertices.push_back({v.x, v.y});
    };
    add(p.outer());
    for (const Ring2d& ring : p.inners()) add(ring);
  }
  return plain;
}

// A star about a centre, its coordinates on a grid if `grid` is not 0.
GPolygon2d Star(std::mt19937& random, double grid) {
  const auto unit = [&random] { return static_cast<double>(random()) / 4294967296.0; };
  const Vec2d centre(4 * unit(), 4 * unit());
  std::vector<Vec2d> points(3 + random() % 10);
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double angle =
        6.283185307179586 * static_cast<double>(i) / static_cast<double>(points.size());
    points[i] = centre + Vec2d(std::cos(angle), std::sin(angle)) * (1 + 4 * unit());
    if (grid != 0)
      points[i].Set(std::round(points[i].x / grid) * grid, std::round(points[i].y / grid) * grid);
  }
  return GPolygon2d(points.data(), static_cast<unsigned int>(points.size()));
}

TEST(GPolygon2d, AreasAgreeWithTheClipperAndWithEachOther) {
  constexpr unsigned int kSeed = 5;
  SCOPED_TRACE(kSeed);
  std::mt19937 random(kSeed);
  int done = 0;
  for (int round = 0; round < 600; ++round) {
    const double grid = round % 2 ? 0.5 : 0;
    GPolygon2d a = Star(random, grid);
    GPolygon2d b = Star(random, grid);
    GPolygon2d both, either, aOnly, bOnly, one;
    try {
      a.Difference(Star(random, grid));  // Rings that have been through an operation, with holes.
      a.Intersection(b, both);
    } catch (const Invalid&) {
      continue;  // On a grid a star may cross itself.
    }
    ++done;
    a.Union(b, either);
    a.Difference(b, aOnly);
    b.Difference(a, bOnly);
    a.XOR(b, one);
    const double near = 1e-9;
    EXPECT_NEAR(AreaOf(both), EvenOddArea(reference::kIntersection, Plain(a), Plain(b)), near);
    EXPECT_NEAR(AreaOf(either) + AreaOf(both), AreaOf(a) + AreaOf(b), near) << round;
    EXPECT_NEAR(AreaOf(aOnly) + AreaOf(both), AreaOf(a), near) << round;
    EXPECT_NEAR(AreaOf(one), AreaOf(aOnly) + AreaOf(bOnly), near) << round;

    // The clipper counts all rings by parity, so that it takes those of `a` as they are.
    std::vector<Vec2d> points;
    std::vector<unsigned int> counts;
    a.GetPolyPolygon(points, counts, false);
    GPolygon clipped(points.data(), counts.data(), static_cast<unsigned int>(counts.size()));
    clipped.Union(GPolygon(b));
    double area = 0;
    clipped.Decompose(
        [](const Vec2d* p, unsigned int count, void* sum) {
          for (unsigned int i = 2; i < count; ++i) {
            *static_cast<double*>(sum) += std::abs(PolygonArea(p + i - 2, 3));
          }
          return true;
        },
        &area);
    EXPECT_NEAR(area, AreaOf(either), near) << round;
    one.Union(both);
    EXPECT_NEAR(AreaOf(one), AreaOf(either), near) << "what an operation gives is a good operand";
  }
  EXPECT_GT(done, 400);
}

// What costs an overlay that compares each edge with each other one minutes.
TEST(GPolygon2d, ManyRingsThatMeetTakeNoLongerThanOthers) {
  constexpr int kCount = 20'000;
  std::vector<Vec2d> points;
  for (int i = 0; i < kCount; ++i) {
    const double x = 10 * i - 10.0 * kCount / 2;
    points.insert(points.end(), {{0, 0}, {x, 1e6}, {x + 5, 1e6}});
  }
  const std::vector<unsigned int> counts(kCount, 3);
  GPolygon2d fan(points.data(), counts.data(), kCount);
  const double area = 2.5e6 * kCount;
  fan.Difference(GPolygon2d(-2e6, 5e5, 2e6, 2e6));
  EXPECT_NEAR(AreaOf(fan), area / 4, 1e-9 * area);

  points.clear();
  for (int i = 0; i < kCount; ++i)
    points.insert(points.end(), {{i * 1., 0}, {i + 1., 0}, {i + .5, 1e6}});
  GPolygon2d slivers(points.data(), counts.data(), kCount);
  slivers.XOR(GPolygon2d(-1, -1, kCount + 1, 1));
  EXPECT_NEAR(AreaOf(slivers), 5e5 * kCount + 2.0 * kCount + 4 - 2 * (kCount - 5e-7 * kCount),
              1e-6 * kCount);
}

TEST(GPolygon2d, WhatItGivesIsAGoodOperand) {
  std::mt19937 random(9);
  int done = 0;
  for (int round = 0; round < Rounds(2000); ++round) {
    const double grid = round % 2 ? 0.5 : 1.0 / 3;
    GPolygon2d a = Star(random, grid);
    try {
      a.XOR(Star(random, grid));
    } catch (const Invalid&) {
      continue;  // On a grid a star may cross itself.
    }
    const GPolygon2d b = Star(random, 0);
    ++done;
    EXPECT_NO_THROW(a.XOR(b)) << round;
    EXPECT_NO_THROW(a.XOR(b)) << round;
    EXPECT_NO_THROW(a.Union(b)) << round;
  }
  EXPECT_GT(done, Rounds(1500));
}

TEST(GPolygon2d, WorksInAnySize) {
  for (const double size : {5e-310, 1e-150, 1e-15, 1e7, 1e12, 1e150, 1.7e308}) {
    GPolygon2d polygon(-size, -size, size, size);
    polygon.Difference(GPolygon2d(-size, 0, 0, size));
    EXPECT_EQ(polygon.GetBBox(), Box2d(-size, -size, size, size));
    EXPECT_EQ(polygon.GetTotalVertexCount(), 6u) << size;
    EXPECT_FALSE(polygon.PointInside(Vec2d(-size / 2, size / 2)));
    EXPECT_TRUE(polygon.PointInside(Vec2d(size / 2, size / 2)));
  }
}

// A file in memory that holds a text.
struct TextFile : CBufferedFile {
  explicit TextFile(std::string text) : text_(std::move(text)) {
    Open(text_.data(), static_cast<unsigned int>(text_.size()));
  }
  std::string text_;
};

TEST(GPolygon2d, ComesBackFromItsFiles) {
  ASSERT_NE(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"), nullptr);
  GPolygon2d ring(0, 0, 10.25, 10);
  ring.Difference(GPolygon2d(2, 2, 5, 1.0 / 3));
  ring.AddContours(GPolygon2d(20, 20, 21, 1e-300));
  for (const bool text : {true, false}) {
    CBufferedFile file;
    file.Open();
    text ? ring.DumpToTextFile(file) : ring.DumpToBinaryFile(file);
    file.SeekToBegin();
    GPolygon2d loaded;
    text ? loaded.LoadFromTextFile(file) : loaded.LoadFromBinaryFile(file);
    EXPECT_EQ(loaded.GetBBox(), ring.GetBBox());
    const MultiPolygon2d rings = RingsOf(loaded);
    ASSERT_EQ(rings.size(), 2u);
    ASSERT_EQ(rings[0].inners().size(), 1u);
    EXPECT_EQ(rings[0].outer(), RingsOf(ring)[0].outer());
    if (!text) {
      EXPECT_EQ(rings[0].inners()[0], RingsOf(ring)[0].inners()[0]);
    }
  }
  CBufferedFile file;
  file.Open();
  const Vec2d triangle[] = {{0, 0}, {1.0 / 3, 2}, {1e20, 0}};
  GPolygon2d(triangle, 3).DumpToTextFile(file);
  const std::string dumped(reinterpret_cast<char*>(file.GetBuffer()),
                           static_cast<std::size_t>(file.GetLength()));
  EXPECT_EQ(dumped,
            ";MultiPolygon.size()\n1\n;Polygon[0].outer().size()\n4\n0, 0\n"
            "0.3333333333333333, 2\n1e+20, 0\n0, 0\n;Polygon[0].inners().size()\n0\n");
  std::setlocale(LC_NUMERIC, "C");
}

TEST(GPolygon2d, DamagedFilesAreRefusedAndChangeNothing) {
  struct Row {
    const char* why;
    const char* text;
  };
  const Row rows[] = {{"nothing", ""},
                      {"a count that is no number", "x\n"},
                      {"text behind a count", "1 2\n"},
                      {"two signs", "+-1\n"},
                      {"a count beyond 64 bits", "99999999999999999999\n"},
                      {"a file cut behind a count", "1\n"},
                      {"huge counts", "2147483647\n2147483647\n0, 0\n"},
                      {"no comma", "1\n1\n0 0\n0\n"},
                      {"no second number", "1\n1\n0,\n0\n"},
                      {"text behind a number", "1\n1\n0, 0 0\n0\n"},
                      {"no count of inner rings", "1\n1\n0, 0\n"}};
  GPolygon2d polygon(0, 0, 1, 1);
  for (const Row& row : rows) {
    TextFile file(row.text);
    EXPECT_EQ(CodeOf([&] { polygon.LoadFromTextFile(file); }), ERR_READ) << row.why;
    EXPECT_EQ(AreaOf(polygon), 1) << row.why;
  }
  TextFile odd("\n;comment\n+4294967297\r\n\n-3\n;\n 1 \n1\n +1.5 ,-2e1\n");
  polygon.LoadFromTextFile(odd);
  const MultiPolygon2d rings = RingsOf(polygon);
  ASSERT_EQ(rings.size(), 1u) << "the low 32 bits";
  EXPECT_TRUE(rings[0].outer().empty()) << "a count below 0";
  EXPECT_THAT(rings[0].inners()[0], ElementsAre(Vec2d(1.5, -20)));

  // Each prefix of a binary file, and one whose counts promise far more than there is.
  CBufferedFile whole;
  whole.Open();
  polygon.DumpToBinaryFile(whole);
  const std::string bytes(reinterpret_cast<char*>(whole.GetBuffer()),
                          static_cast<std::size_t>(whole.GetLength()));
  ASSERT_EQ(bytes.size(), 48u);
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    TextFile file(bytes.substr(0, size));
    EXPECT_EQ(CodeOf([&] { polygon.LoadFromBinaryFile(file); }), ERR_END_OF_FILE) << size;
  }
  TextFile huge(std::string(64, '\xFF'));
  EXPECT_EQ(CodeOf([&] { polygon.LoadFromBinaryFile(huge); }), ERR_END_OF_FILE);
  CBufferedFile closed;
  EXPECT_EQ(CodeOf([&] { polygon.DumpToTextFile(closed); }), ERR_WRITE);
  EXPECT_EQ(CodeOf([&] { polygon.LoadFromTextFile(closed); }), ERR_READ);
  EXPECT_EQ(CodeOf([&] { polygon.LoadFromBinaryFile(closed); }), ERR_READ);
}

TEST(PolygonRings, GiveAndTakeArrays) {
  const Vec2d points[] = {{0, 0}, {0, 4}, {4, 0}, {9, 9}, {9, 10}, {10, 9}};
  const unsigned int counts[] = {3, 3};
  MultiPolygon2d rings;
  InitMultiPolygonUINTCounts(points, counts, 2, rings);
  Ring2d hole;
  InitRing(std::vector<POINT>{{1, 1}, {1, 2}, {2, 1}}.data(), 3, hole);
  EXPECT_TRUE(IsValidRing(hole));
  rings[0].inners().push_back(hole);
  EXPECT_TRUE(IsValidPolygon(rings[0])) << "inner rings are tested as outer ones";
  std::reverse(rings[0].inners()[0].begin(), rings[0].inners()[0].end());
  EXPECT_FALSE(IsValidMultiPolygon(rings));
  EXPECT_TRUE(IsValidMultiPolygon(MultiPolygon2d()));

  unsigned int sizes[3] = {};
  EXPECT_EQ(GetLegacyMultiPolygonUINTCounts(sizes, rings, false), 3u);
  EXPECT_THAT(sizes, ElementsAre(3u, 3u, 3u));
  Vec2d out[14];
  EXPECT_EQ(GetLegacyMultiPolygonPoints(out, rings, false), 9u);
  EXPECT_EQ(out[3], Vec2d(1, 1));
  EXPECT_EQ(GetLegacyMultiPolygonPoints(nullptr, rings, true), 12u);
  ASSERT_EQ(GetLegacyMultiPolygonAsSinglePolygon(out, rings), 14u);
  EXPECT_EQ(out[11], Vec2d(9, 9));
  EXPECT_EQ(out[12], Vec2d(1, 1));
  EXPECT_EQ(out[13], Vec2d(0, 0));
  EXPECT_EQ(GetLegacyRingPoints(nullptr, Ring2d(), false), 0u);
}

}  // namespace
}  // namespace vlm

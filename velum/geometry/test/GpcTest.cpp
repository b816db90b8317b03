#include <velum/geometry/Gpc.h>

#include <velum/core/Exception.h>
#include <velum/geometry/test/GpcPolygons.h>
#include <velum/geometry/test/reference/EvenOddArea.h>
#include <velum/geometry/test/reference/PlainClipper.h>
#include <testing/Sanitized.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <type_traits>

namespace vlm {
namespace {

using namespace test;
using reference::AreaOfContours;
using reference::AreaOfStrips;
using reference::EvenOddArea;
using reference::kDifference;
using reference::kIntersection;
using reference::kUnion;
using reference::kXor;
using reference::PlainClip;
using reference::PlainStripClip;
using vlm::testing::Rounds;

static_assert(std::is_same_v<vlm::gpc_polygon, ::gpc_polygon>);

constexpr PlainOperation kOperations[] = {kDifference, kIntersection, kXor, kUnion};
constexpr double kInfinity = std::numeric_limits<double>::infinity();

PlainVertices Square(double x, double y, double size) {
  return {{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}};
}

// Holds the library against the plain sweep, contours and strips.
void ExpectLikePlain(PlainOperation operation, const PlainPolygon& subject,
                     const PlainPolygon& clip) {
  const auto contours = PlainOutcome([&] { return PlainClip(operation, subject, clip); });
  const auto strips = PlainOutcome([&] { return PlainStripClip(operation, subject, clip); });
  const auto contours2 = Clip(operation, subject, clip);
  const auto strips2 = StripClip(operation, subject, clip);
  EXPECT_TRUE(contours2 == contours) << "contours of operation " << operation << ", codes "
                                     << contours2.code << " and " << contours.code << "\n"
                                     << ToText(subject) << "\n"
                                     << ToText(clip);
  EXPECT_TRUE(strips2 == strips) << "strips of operation " << operation << ", codes "
                                 << strips2.code << " and " << strips.code << "\n"
                                 << ToText(subject) << "\n"
                                 << ToText(clip);
}

struct RandomCases {
  int cases;
  int contours;
  int vertices;
};

TEST(Gpc, IsThePlainSweepVertexForVertex) {
  // For each of the 9 kinds: 100,000 cases of contours and of strips in all.
  constexpr RandomCases kRows[] = {{6300, 1, 7}, {4000, 2, 8}, {800, 3, 20}, {100, 2, 80}};
  for (const RandomPolygons::Kind kind : RandomPolygons::kKinds) {
    for (const RandomCases& row : kRows) {
      RandomPolygons polygons(kind, 1, row.contours, row.vertices);
      for (int i = 0; i < Rounds(row.cases); ++i) {
        const PlainPolygon subject = polygons.Next();
        const PlainPolygon clip = polygons.Next();
        ExpectLikePlain(polygons.Operation(), subject, clip);
        ASSERT_FALSE(HasFailure()) << "kind " << kind << ", seed 1, case " << i << " of those with "
                                   << row.vertices << " vertices";
      }
    }
  }
}

TEST(Gpc, AreasAreExact) {
  for (const RandomPolygons::Kind kind : RandomPolygons::kKinds) {
    RandomPolygons polygons(kind, 2, 3, 9);
    for (int i = 0; i < Rounds(400); ++i) {
      const PlainPolygon subject = polygons.Next();
      const PlainPolygon clip = polygons.Next();
      const PlainOperation operation = polygons.Operation();
      const double area = EvenOddArea(operation, subject, clip);
      const double tolerance = 1e-10 * (1 + area);  // crossings are rounded
      const PlainPolygon contours = Clip(operation, subject, clip).result;
      ASSERT_NEAR(AreaOfContours(contours), area, tolerance)
          << operation << ToText(subject) << ToText(clip);
      ASSERT_NEAR(EvenOddArea(kUnion, contours, {}), area, tolerance)
          << "contours do not overlap, and flags tell holes" << ToText(subject) << ToText(clip);
      ASSERT_NEAR(AreaOfStrips(StripClip(operation, subject, clip).result), area, tolerance)
          << operation << ToText(subject) << ToText(clip);
    }
  }
}

struct KnownArea {
  const char* reason;
  PlainOperation operation;
  PlainPolygon subject;
  PlainPolygon clip;
  double area;
  std::size_t contours;
  std::size_t holes;
};

TEST(Gpc, KnownAreas) {
  const PlainPolygon unit{{Square(0, 0, 1)}};
  const KnownArea rows[] = {
      {"disjoint", kUnion, unit, {{Square(3, 0, 1)}}, 2, 2, 0},
      {"disjoint", kIntersection, unit, {{Square(3, 0, 1)}}, 0, 0, 0},
      {"a hole", kDifference, {{Square(0, 0, 3)}}, {{Square(1, 1, 1)}}, 8, 2, 1},
      {"nothing taken away", kDifference, unit, {}, 1, 1, 0},
      {"taken from nothing", kDifference, {}, unit, 0, 0, 0},
      {"nothing to meet", kIntersection, unit, {}, 0, 0, 0},
      {"nothing to differ from", kXor, {}, unit, 1, 1, 0},
      {"a shared side", kUnion, unit, {{Square(1, 0, 1)}}, 2, 1, 0},
      {"the same twice", kUnion, unit, unit, 1, 1, 0},
      {"the same twice", kIntersection, unit, unit, 1, 1, 0},
      {"the same twice", kDifference, unit, unit, 0, 0, 0},
      {"the same twice", kXor, unit, unit, 0, 0, 0},
      {"one contour twice", kUnion, {{Square(0, 0, 1)}, {Square(0, 0, 1)}}, {}, 0, 0, 0},
      {"a contour may touch itself", kUnion, {{{{0, 0}, {2, 2}, {2, 0}, {0, 2}}}}, {}, 2, 1, 0},
      {"a point", kUnion, {{{{1, 1}}}}, unit, 1, 1, 0},
      {"no vertices", kUnion, {PlainContour()}, unit, 1, 1, 0},
      {"two vertices", kUnion, {{{{0, 0}, {1, 1}}}}, {}, 0, 0, 0},
      {"one height", kUnion, {{{{0, 1}, {5, 1}, {3, 1}, {9, 1}}}}, {}, 0, 0, 0},
      {"one x", kUnion, {{{{1, 0}, {1, 5}, {1, 3}, {1, 9}}}}, {}, 0, 0, 0},
      {"one slant", kXor, {{{{0, 0}, {4, 4}, {2, 2}, {7, 7}}}}, unit, 1, 1, 0},
      {"a horizontal run", kUnion, {{{{0, 0}, {1, 0}, {2, 0}, {2, 2}, {0, 2}}}}, {}, 4, 1, 0},
      {"three edges through one point",
       kDifference,
       {{{{3, 1}, {0, 3}, {3, 0}, {1, 3}, {0, 0}, {3, 3}}}},
       {},
       3.2045454545454546,
       1,
       0},
      {"a tip below the current edge",
       kUnion,
       {{{{0, 1}, {0, 0}, {2, 1}}}},
       {{{{0, 2}, {1, 2}, {2, 1}}}},
       1.5,
       1,
       0},
  };
  for (const KnownArea& row : rows) {
    SCOPED_TRACE(row.reason);
    const PlainPolygon contours = Clip(row.operation, row.subject, row.clip).result;
    EXPECT_NEAR(AreaOfContours(contours), row.area, 1e-14);
    EXPECT_EQ(contours.size(), row.contours);
    EXPECT_EQ(std::count_if(contours.begin(), contours.end(), [](auto& c) { return c.hole; }),
              static_cast<std::ptrdiff_t>(row.holes));
    EXPECT_NEAR(AreaOfStrips(StripClip(row.operation, row.subject, row.clip).result), row.area,
                1e-14);
    EXPECT_NEAR(EvenOddArea(row.operation, row.subject, row.clip), row.area, 1e-14);
  }
}

TEST(Gpc, VerticesComeInTheOrderOfTheSweep) {
  const PlainVertices square{{1, 0}, {0, 0}, {0, 1}, {1, 1}};
  EXPECT_EQ(Clip(kUnion, {{Square(0, 0, 1)}}, {}).result, PlainPolygon{{square}});
  EXPECT_EQ(Clip(kUnion, {{Square(0, 0, 1)}}, {{Square(0, 5, 1)}}).result.back().vertices, square)
      << "what is begun later stands further to the front";
  EXPECT_EQ(StripClip(kUnion, {{Square(0, 0, 1)}}, {}).result,
            (PlainStrips{{{0, 0}, {1, 0}, {0, 1}, {1, 1}}}));
}

TEST(Gpc, InputsStayAsTheyWere) {
  const PlainPolygon far{{Square(0, 0, 1)}, {Square(50, 50, 1), true}, PlainContour()};
  const PlainPolygon near{{Square(9, 9, 1)}, {Square(50.5, 50.5, 1)}};
  for (const PlainOperation operation : kOperations) {
    OwnedPolygon subject(far), clip(near), result;
    gpc_polygon_clip(static_cast<gpc_op>(operation), subject, clip, result);
    EXPECT_EQ(ToPlain(*subject), far) << operation;
    EXPECT_EQ(ToPlain(*clip), near) << operation;
  }
}

TEST(Gpc, AnEmptyResultHasNoArrays) {
  OwnedPolygon subject({{Square(0, 0, 1)}}), clip({{Square(5, 5, 1)}});
  gpc_polygon result{7, nullptr, nullptr};
  gpc_polygon_clip(GPC_INT, subject, clip, &result);
  EXPECT_EQ(result.num_contours, 0);
  EXPECT_EQ(result.hole, nullptr);
  EXPECT_EQ(result.contour, nullptr);
  gpc_tristrip strips{7, nullptr};
  gpc_tristrip_clip(GPC_INT, subject, clip, &strips);
  EXPECT_EQ(strips.num_strips, 0);
  EXPECT_EQ(strips.strip, nullptr);
}

TEST(Gpc, AnInputMayBeTheResult) {
  const PlainPolygon a{{Square(0, 0, 3)}}, b{{Square(1, 1, 1)}};
  for (const PlainOperation operation : kOperations) {
    const PlainPolygon expected = Clip(operation, a, b).result;
    const auto op = static_cast<gpc_op>(operation);
    OwnedPolygon subject(a), clip(b), both(a);
    gpc_polygon_clip(op, subject, clip, subject);
    EXPECT_EQ(ToPlain(*subject), expected);
    OwnedPolygon subject2(a);
    gpc_polygon_clip(op, subject2, clip, clip);
    EXPECT_EQ(ToPlain(*clip), expected);
    gpc_polygon_clip(op, both, both, both);
    EXPECT_EQ(ToPlain(*both), Clip(operation, a, a).result);
  }
  OwnedPolygon subject(a), nothing;
  gpc_polygon_clip(GPC_INT, subject, nothing, subject);
  EXPECT_EQ(subject->num_contours, 0) << "a result known without a sweep";
}

TEST(Gpc, PolygonToTriStripCoversThePolygon) {
  OwnedPolygon polygon({{Square(0, 0, 3)}, {Square(1, 1, 1)}});
  gpc_tristrip strips{};
  gpc_polygon_to_tristrip(polygon, &strips);
  EXPECT_EQ(AreaOfStrips(ToPlain(strips)), 8);
  gpc_free_tristrip(&strips);
  gpc_free_tristrip(&strips);
  EXPECT_EQ(strips.strip, nullptr);
}

TEST(Gpc, MisuseIsRefusedBeforeAnythingIsTouched) {
  const double values[] = {std::nan(""), kInfinity, -kInfinity};
  for (const double value : values) {
    for (const bool isX : {true, false}) {
      PlainPolygon bad{{Square(0, 0, 1)}, {Square(40, 0, 1)}};
      (isX ? bad[1].vertices[2].x : bad[1].vertices[2].y) = value;
      const PlainPolygon good{{Square(9, 9, 1)}};
      EXPECT_EQ(Clip(kIntersection, bad, good).code, ERR_INTERNAL);
      EXPECT_EQ(Clip(kIntersection, good, bad).code, ERR_INTERNAL);
      EXPECT_EQ(Clip(kIntersection, bad, {}).code, ERR_INTERNAL);
      EXPECT_EQ(StripClip(kUnion, bad, good).code, ERR_INTERNAL);
      OwnedPolygon a(good), b(bad);
      EXPECT_THROW(gpc_polygon_clip(GPC_INT, a, b, a), Exception);
      EXPECT_EQ(ToPlain(*a), good);
      EXPECT_EQ(b->contour[0].num_vertices, 4);
    }
  }
  OwnedPolygon polygon({{Square(0, 0, 1)}}), result;
  gpc_tristrip strips{};
  EXPECT_THROW(gpc_polygon_clip(GPC_INT, nullptr, polygon, result), Exception);
  EXPECT_THROW(gpc_polygon_clip(GPC_INT, polygon, nullptr, result), Exception);
  EXPECT_THROW(gpc_polygon_clip(GPC_INT, polygon, polygon, nullptr), Exception);
  EXPECT_THROW(gpc_tristrip_clip(GPC_INT, polygon, nullptr, &strips), Exception);
  EXPECT_THROW(gpc_polygon_to_tristrip(nullptr, &strips), Exception);
  for (const int number : {-1, 4}) {
    const auto op = static_cast<gpc_op>(number);
    EXPECT_THROW(gpc_polygon_clip(op, polygon, polygon, result), Exception);
    EXPECT_THROW(gpc_tristrip_clip(op, polygon, polygon, &strips), Exception);
  }
}

TEST(Gpc, ExtremeCoordinatesGiveAnAnswerOrAnError) {
  constexpr double kTiny = std::numeric_limits<double>::denorm_min();
  constexpr double kHuge = std::numeric_limits<double>::max();
  const double values[] = {0,     -0.0,   kTiny, -kTiny, 1e-300, 1e-15,  2e-15, 1,
                           1e308, -1e308, kHuge, -kHuge, 1e154,  -1e160, 3e-16, -1};
  RandomPolygons random(RandomPolygons::kReal, 3, 2, 3);
  const auto next = [&] {
    PlainPolygon polygon(static_cast<std::size_t>(random.Below(3)));
    for (PlainContour& contour : polygon) {
      contour.vertices.resize(static_cast<std::size_t>(random.Below(7)));
      for (PlainVertex& v : contour.vertices) {
        v = {values[random.Below(16)], values[random.Below(16)]};
      }
    }
    return polygon;
  };
  for (int i = 0; i < 5000; ++i) {
    const PlainPolygon subject = next();
    const PlainPolygon clip = next();
    const PlainOperation operation = random.Operation();
    for (const int code :
         {Clip(operation, subject, clip).code, StripClip(operation, subject, clip).code}) {
      ASSERT_TRUE(code == 0 || code == ERR_INTERNAL || code == ERR_POLYGON_CLIPPING)
          << code << " seed 3, case " << i << ToText(subject) << ToText(clip);
    }
  }
}

TEST(Gpc, AMillionVerticesInOneRun) {
  constexpr int kCount = Rounds(1'000'000);
  PlainVertices saw{{0, 0}};
  for (int i = 0; i < kCount; ++i) saw.push_back({10.0 + i % 2, static_cast<double>(i)});
  saw.push_back({0, kCount - 1.0});
  const PlainPolygon whole{{saw}};
  constexpr double kArea = 10.5 * (kCount - 1);
  EXPECT_NEAR(AreaOfContours(Clip(kUnion, whole, {}).result), kArea, 1e-3);
  EXPECT_NEAR(AreaOfStrips(StripClip(kUnion, whole, {}).result), kArea, 1e-3);
  EXPECT_NEAR(AreaOfContours(Clip(kIntersection, whole, {{Square(5, 10, 1000)}}).result), 5500,
              1e-6);
}

TEST(Gpc, NestedSquares) {
  constexpr int kCount = 100'000;
  PlainPolygon nest;
  double area = 0;
  for (int i = 0; i < kCount; ++i) {
    nest.push_back({Square(i, i, 2.0 * (kCount - i))});
    area += (i % 2 ? -1 : 1) * 4.0 * (kCount - i) * (kCount - i);
  }
  const PlainPolygon result = Clip(kUnion, nest, {}).result;
  EXPECT_EQ(result.size(), nest.size());
  EXPECT_EQ(AreaOfContours(result), area);
  EXPECT_EQ(AreaOfStrips(StripClip(kUnion, nest, {}).result), area);
}

TEST(Gpc, ManyEdgesThroughOnePoint) {
  // All diagonals of a star meet near the origin, where rounding orders their crossings at will.
  PlainVertices star;
  constexpr int kCount = 101;
  for (int i = 0; i < kCount; ++i) {
    const double angle = 3.141592653589793 * (kCount - 1) * i / kCount;
    star.push_back({std::cos(angle), std::sin(angle)});
  }
  PlainVertices shaken = star;
  for (PlainVertex& v : star) v = {std::round(v.x * 64), std::round(v.y * 64)};
  ExpectLikePlain(kUnion, {{star}}, {});
  ExpectLikePlain(kXor, {{star}}, {{shaken}});
}

// Polygons with very many edges on few lines.
struct Lines {
  const char* reason;
  PlainVertex (*vertex)(int i, double t, bool isLate);  // t at random; late in the second half
  int vertices;                                         // of a contour
};

constexpr Lines kLines[] = {
    {"a slant",
     [](int, double t, bool) {
       return PlainVertex{t, t};
     },
     1 << 20},
    {"upright",
     [](int, double t, bool) {
       return PlainVertex{3, t / 1024};
     },
     1 << 20},
    {"a slope of few digits",
     [](int, double t, bool) {
       return PlainVertex{t * 3, t * 4};
     },
     1 << 20},
    {"two that cross",
     [](int, double t, bool isLate) {
       return PlainVertex{isLate ? t : 9e5 - t, t};
     },
     1 << 20},
    {"squares on each other",
     [](int i, double, bool) {
       return PlainVertex{i / 2 % 2 * 9.0, (i + 1) / 2 % 2 * 9.0};
     },
     4},
    {"boxes that share a side",
     [](int i, double, bool) {
       return PlainVertex{(i + 1) / 2 % 2 * 9.0, i / 2 % 2 * (1.0 + i / 4 % 997 * 7919 % 99991)};
     },
     4},
};

PlainPolygon OnLines(const Lines& lines, int count) {
  std::mt19937 random(5);
  PlainPolygon polygon;
  for (int i = 0; i < count; ++i) {
    if (i % lines.vertices == 0) polygon.emplace_back();
    const auto t = static_cast<double>(random() % 900'000);
    polygon.back().vertices.push_back(lines.vertex(i, t, i >= count / 2));
  }
  return polygon;
}

TEST(Gpc, LongBundlesAreThoseOfThePlainSweep) {
  for (const Lines& row : kLines) {
    SCOPED_TRACE(row.reason);
    const PlainPolygon whole = OnLines(row, 240);
    ExpectLikePlain(kUnion, whole, {});
    ExpectLikePlain(kXor, whole, OnLines(kLines[3], 40));
    ExpectLikePlain(kDifference, {{Square(-9, -9, 5e5)}}, whole);
  }
}

TEST(Gpc, AHundredThousandVerticesOnALineTakeNoLongerThanOthers) {
  for (const Lines& row : kLines) {
    SCOPED_TRACE(row.reason);
    const PlainPolygon whole = OnLines(row, Rounds(100'000));
    const auto begin = std::chrono::steady_clock::now();
    const double area = AreaOfContours(Clip(kUnion, whole, {}).result);
    EXPECT_NEAR(AreaOfStrips(StripClip(kUnion, whole, {}).result), area, 1e-9 * area);
    // A sweep that goes through all edges of a line for each vertex takes many times as long, even
    // beside one in a build for sanitizers.
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
  }
}

TEST(Gpc, NumbersAtTheEndsOfTheirRangeAreSortedAsQuicklyAsOthers) {
  struct Zigzag {
    const char* reason;
    double width, height;
  };
  constexpr Zigzag kRows[] = {
      {"large", 4e303, 1.7e308}, {"flat", 1, 1e-310}, {"as wide as may be", 4.2e303, 1}};
  for (const Zigzag& row : kRows) {
    SCOPED_TRACE(row.reason);
    const auto saw = [&](int count) {
      PlainVertices vertices{{0, -row.height / 100}};
      for (int i = 0; i < count; ++i) {
        vertices.push_back({i * row.width, i % 3 % 2 * row.height});
      }
      return PlainPolygon{{vertices}};
    };
    ExpectLikePlain(kUnion, saw(200), {});
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(Clip(kUnion, saw(40'000), {}).code, 0);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  }
}

PlainPolygon ReadOutline(std::istream& lines) {
  PlainPolygon outline;
  std::string line;
  while (std::getline(lines, line) && !line.starts_with("outline")) {
    if (line.starts_with("#") || line.empty()) continue;
    if (line.starts_with("contour")) {
      outline.emplace_back();
    } else if (!outline.empty()) {
      PlainVertex v{};
      std::istringstream(line) >> v.x >> v.y;
      outline.back().vertices.push_back(v);
    }
  }
  return outline;
}

// What holds whatever the polygons are. Strips may overlap where edges coincide but for rounding,
// as those of a result that is clipped again do: there contours alone are looked at.
void ExpectSetAlgebra(const PlainPolygon& a, const PlainPolygon& b, bool looksAtStrips) {
  const auto areaOf = [](PlainOperation operation, const PlainPolygon& s, const PlainPolygon& c) {
    return AreaOfContours(Clip(operation, s, c).result);
  };
  const auto area = [&](PlainOperation operation, const PlainPolygon& s, const PlainPolygon& c) {
    const double contours = areaOf(operation, s, c);
    if (!looksAtStrips) return contours;
    EXPECT_NEAR(AreaOfStrips(StripClip(operation, s, c).result), contours, 1e-9 * (1 + contours));
    return contours;
  };
  const double areaA = area(kUnion, a, {});
  const double areaB = area(kUnion, b, {});
  const double both = area(kIntersection, a, b);
  const double either = area(kUnion, a, b);
  const double tolerance = 1e-9 * (areaA + areaB);
  EXPECT_NEAR(either + both, areaA + areaB, tolerance);
  EXPECT_NEAR(area(kDifference, a, b) + both, areaA, tolerance);
  EXPECT_NEAR(area(kDifference, b, a) + both, areaB, tolerance);
  EXPECT_NEAR(area(kXor, a, b), either - both, tolerance);
  const PlainPolygon rest = Clip(kDifference, a, b).result;
  EXPECT_NEAR(areaOf(kIntersection, rest, b), 0, tolerance);
  EXPECT_NEAR(areaOf(kUnion, rest, b), either, tolerance);
  EXPECT_NEAR(areaOf(kXor, Clip(kXor, a, b).result, b), areaA, tolerance);
}

TEST(Gpc, SetAlgebraHolds) {
  for (const RandomPolygons::Kind kind : RandomPolygons::kKinds) {
    RandomPolygons polygons(kind, 4, 4, 150);
    for (int i = 0; i < Rounds(10); ++i) {
      const PlainPolygon a = polygons.Next();
      const PlainPolygon b = polygons.Next();
      ExpectSetAlgebra(a, b, kind != RandomPolygons::kSlivers);
      ASSERT_FALSE(HasFailure()) << "kind " << kind << ", seed 4, pair " << i;
    }
  }
}

TEST(Gpc, RealOutlines) {
  std::ifstream lines(VELUM_OUTLINES);
  ReadOutline(lines);
  const PlainPolygon a = ReadOutline(lines);
  const PlainPolygon b = ReadOutline(lines);
  ASSERT_FALSE(a.empty() || b.empty()) << VELUM_OUTLINES;
  ExpectSetAlgebra(a, b, true);
  for (const PlainOperation operation : kOperations) ExpectLikePlain(operation, a, b);
}

TEST(Gpc, AContourIsAppendedAsACopy) {
  gpc_vertex vertices[] = {{0, 0}, {1, 0}, {0, 1}};
  gpc_vertex_list triangle{3, vertices};
  gpc_vertex_list none{0, nullptr};
  OwnedPolygon polygon;
  gpc_add_contour(polygon, &triangle, 0);
  gpc_add_contour(polygon, &none, 5);
  gpc_add_contour(polygon, &polygon->contour[0], 1);
  vertices[0].x = 9;
  const PlainVertices copy{{0, 0}, {1, 0}, {0, 1}};
  EXPECT_EQ(ToPlain(*polygon), (PlainPolygon{{copy}, {{}, true}, {copy, true}}));
  EXPECT_EQ(polygon->hole[1], 5);
  gpc_vertex_list negative{-1, vertices};
  gpc_vertex_list missing{1, nullptr};
  EXPECT_THROW(gpc_add_contour(polygon, &negative, 0), Exception);
  EXPECT_THROW(gpc_add_contour(polygon, &missing, 0), Exception);
  EXPECT_THROW(gpc_add_contour(polygon, nullptr, 0), Exception);
  EXPECT_THROW(gpc_add_contour(nullptr, &triangle, 0), Exception);
  EXPECT_EQ(polygon->num_contours, 3);
  gpc_free_polygon(polygon);
  gpc_free_polygon(polygon);
  vlm::gpc_free_polygon(nullptr);
  EXPECT_EQ(polygon->contour, nullptr);
  EXPECT_EQ(polygon->hole, nullptr);
}

}  // namespace
}  // namespace vlm

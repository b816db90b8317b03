#include <velum/geometry/GPolygon.h>

#include <velum/core/Exception.h>
#include <velum/files/BufferedFile.h>
#include <velum/geometry/GPolygon2d.h>
#include <velum/geometry/PolygonMeasures.h>

#include <testing/TemporaryFolder.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <random>
#include <utility>
#include <vector>

namespace vlm {
namespace {

using ::testing::ElementsAre;

const Vec2d kSquare[] = {{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}};
const Vec2d kTwoTriangles[] = {{0, 0}, {2, 0}, {0, 2}, {5, 5}, {7, 5}, {5, 7}};
const unsigned int kTwoCounts[] = {3, 3};

// The protected members, as a derived class has them.
struct Open : GPolygon {
  using GPolygon::CalcBBox;
  using GPolygon::Combine;
  using GPolygon::Construct;
  using GPolygon::ConstructFromFloats;
  using GPolygon::GPolygon;
  using GPolygon::MoveTo;
};

std::vector<Vec2d> Points(const GPolygon& polygon, bool close = false) {
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  polygon.GetPolyPolygon(points, counts, close);
  return points;
}

int CodeOf(const auto& action) {
  try {
    action();
  } catch (const Exception& error) {
    return error.GetErrCode();
  }
  return -1;
}

bool AddArea(const Vec2d* p, unsigned int count, void* sum) {
  for (unsigned int i = 2; i < count; ++i) {
    *static_cast<double*>(sum) += std::abs(PolygonArea(p + i - 2, 3));
  }
  return true;
}

double AreaOf(const GPolygon& polygon) {
  double area = 0;
  EXPECT_TRUE(polygon.Decompose(AddArea, &area));
  return area;
}

TEST(GPolygon, KeepsContoursOpen) {
  const GPolygon closed(kSquare, 5);
  EXPECT_EQ(closed.GetContourVertexCount(0), 4u);
  EXPECT_EQ(Points(closed, true), std::vector<Vec2d>(std::begin(kSquare), std::end(kSquare)));
  EXPECT_EQ(closed.GetBBox(), Box2d(0, 0, 4, 4));

  // The place behind a contour that was closed is the next contour's.
  const Vec2d points[] = {{0, 0}, {1, 0}, {1, 1}, {0, 0}, {5, 5}};
  const unsigned int counts[] = {4, 1, 0};
  GPolygon several(points, counts, 3);
  EXPECT_THAT(Points(several), ElementsAre(Vec2d(0, 0), Vec2d(1, 0), Vec2d(1, 1), Vec2d(5, 5)));
  several.AddContours(several);
  several.AddContours(points, counts, 1);
  EXPECT_EQ(several.GetNumContours(), 7u);
  EXPECT_EQ(several.GetTotalVertexCount(), 11u);
  EXPECT_EQ(several.GetContourVertexCount(6), 3u);
  EXPECT_EQ(CodeOf([&] { (void)several.GetContourVertexCount(7); }), ERR_INTERNAL);
  EXPECT_EQ(CodeOf([&] { GPolygon(points, nullptr, 1); }), ERR_INTERNAL);
  EXPECT_EQ(CodeOf([&] { several.AddContours(static_cast<Vec2d*>(nullptr), counts, 1); }),
            ERR_INTERNAL);
  EXPECT_EQ(several.GetTotalVertexCount(), 11u);

  GPolygon moved(std::move(several));
  EXPECT_EQ(several.GetNumContours(), 0u);
  EXPECT_EQ(several.GetBBox(), Box2d());
  EXPECT_EQ(moved.GetBBox(), Box2d(0, 0, 5, 5));
}

TEST(GPolygon, GivesIntegersRoundedAndLimited) {
  const Vec2d corners[] = {{0.5, -0.5}, {1e10, 0.49}, {3, std::nan("")}};
  POINT points[4];
  unsigned int count = 0;
  ASSERT_EQ(GPolygon(corners, 3).GetPolyPolygon(points, &count, true), 4u);
  EXPECT_EQ(count, 4u);
  const POINT expected[] = {{1, -1}, {2147483647, 0}, {3, 0}, {1, -1}};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(points[i].x, expected[i].x) << i;
    EXPECT_EQ(points[i].y, expected[i].y) << i;
  }
  EXPECT_THAT(Points(GPolygon(points, 3)),
              ElementsAre(Vec2d(1, -1), Vec2d(2147483647, 0), Vec2d(3, 0)));
  EXPECT_TRUE(GPolygon(RECT{1, 2, 3, 4}).PointInside(POINT{3, 4}));
}

TEST(GPolygon, JoinsAllContoursToOnePath) {
  const GPolygon two(kTwoTriangles, kTwoCounts, 2);
  std::vector<Vec2d> path;
  two.GetPolygon(path);
  ASSERT_EQ(path.size(), 9u);
  EXPECT_EQ(path[3], path[0]);
  EXPECT_EQ(path[7], path[4]);
  EXPECT_EQ(path[8], path[0]);
  EXPECT_EQ(GPolygon(kSquare, 4).GetPolygon(nullptr), 5u);
  EXPECT_EQ(GPolygon().GetPolygon(nullptr), 0u);
  EXPECT_EQ(GPolygon(kSquare, 0u).GetPolygon(nullptr), 0u);

  const unsigned int counts[] = {3, 0, 3};
  GPolygon(kTwoTriangles, counts, 3).GetPolygon(path);
  EXPECT_EQ(path.size(), 9u) << "a contour without vertices has none to return to";
}

TEST(GPolygon, KnowsRectanglesWhoseFirstEdgeIsHorizontal) {
  Box2d box;
  EXPECT_TRUE(GPolygon(0, 0, 10, 10).IsRectangle(&box));
  EXPECT_EQ(box, Box2d(0, 10, 10, 0));
  const Vec2d upright[] = {{0, 0}, {0, 1}, {1, 1}, {1, 0}};
  EXPECT_FALSE(GPolygon(upright, 4).IsRectangle());
  EXPECT_FALSE(GPolygon(kTwoTriangles, 3).IsRectangle());
}

TEST(GPolygon, OperationsWithItselfNeedNoClip) {
  for (const auto& [operation, contours] : {std::pair{GPolygon::SET_INTERSECTION, 1u},
                                            {GPolygon::SET_UNION, 1u},
                                            {GPolygon::SET_DIFFERENCE, 0u},
                                            {GPolygon::SET_XOR, 0u}}) {
    Open polygon(kSquare, 4);
    polygon.Combine(polygon, operation);
    EXPECT_EQ(polygon.GetNumContours(), contours) << operation;
  }
  Open polygon(kSquare, 4);
  for (const int none : {-1, 4}) {
    EXPECT_EQ(CodeOf([&] { polygon.Combine(polygon, static_cast<GPolygon::SET_OPERATION>(none)); }),
              ERR_INTERNAL);
  }
}

TEST(GPolygon, OperationsKeepHolesAndTheBox) {
  Open ring(0, 0, 10, 10);
  ring.Difference(GPolygon(2, 2, 5, 5));
  EXPECT_EQ(ring.GetNumContours(), 2u);
  EXPECT_EQ(AreaOf(ring), 91);
  EXPECT_FALSE(ring.PointInside(Vec2d(3, 3)));
  EXPECT_TRUE(ring.PointInside(Vec2d(6, 3)));
  ring.Intersection(GPolygon(-5, -5, 3, 3));
  EXPECT_EQ(ring.GetBBox(), Box2d(0, 0, 3, 3));
  EXPECT_EQ(AreaOf(ring), 8);
  GPolygon eight(kSquare, 4);
  const Vec2d crossing[] = {{0, 0}, {4, 4}, {4, 0}, {0, 4}};
  eight.Intersection(GPolygon(crossing, 4));
  EXPECT_EQ(AreaOf(eight), 8) << "a contour that crosses itself";

  Open rest;
  ring.MoveTo(rest);
  EXPECT_EQ(ring.GetNumContours(), 0u);
  rest.MoveTo(rest);
  EXPECT_EQ(AreaOf(rest), 8);
  const GPolygon before(rest);
  const Vec2d infinite[] = {{0, 0}, {INFINITY, 0}, {0, 1}};
  EXPECT_EQ(CodeOf([&] { rest.Union(GPolygon(infinite, 3)); }), ERR_INTERNAL);
  EXPECT_EQ(Points(rest), Points(before));
}

TEST(GPolygon, DropsPathsOfNoWidth) {
  const Vec2d joined[] = {{0, 0}, {3, 0}, {3, 3}, {0, 3}, {0, 0},
                          {5, 5}, {8, 5}, {8, 8}, {5, 8}, {5, 5}};
  GPolygon polygon(joined, 10);
  EXPECT_EQ(polygon.GetNumContours(), 1u);
  polygon.RemoveZeroWidthReturnPaths();
  EXPECT_EQ(polygon.GetNumContours(), 2u);
  EXPECT_EQ(AreaOf(polygon), 18);
  GPolygon empty;
  empty.RemoveZeroWidthReturnPaths();
  EXPECT_EQ(empty.GetNumContours(), 0u);
}

TEST(GPolygon, DecomposeStopsWhenToldTo) {
  int calls = 0;
  const auto stop = [](const Vec2d*, unsigned int, void* count) {
    return ++*static_cast<int*>(count) < 2;
  };
  EXPECT_FALSE(GPolygon(kTwoTriangles, kTwoCounts, 2).Decompose(stop, &calls));
  EXPECT_EQ(calls, 2);
  EXPECT_EQ(CodeOf([] { (void)GPolygon().Decompose(nullptr, nullptr); }), ERR_INTERNAL);
}

// Counts the crossings to the right in integers.
bool HoldsByIntegers(const std::vector<Vec2d>& p, Vec2d q) {
  bool inside = false;
  for (std::size_t i = 0, j = p.size() - 1; i < p.size(); j = i++) {
    const Vec2d& a = p[i].y < p[j].y ? p[i] : p[j];
    const Vec2d& b = p[i].y < p[j].y ? p[j] : p[i];
    if (a.y > q.y || b.y <= q.y) continue;
    const auto cross =
        static_cast<long>((b.x - a.x) * (q.y - a.y)) - static_cast<long>((b.y - a.y) * (q.x - a.x));
    inside ^= cross > 0;
  }
  return inside;
}

Vec2d GridPoint(std::mt19937& random) {
  const auto x = static_cast<double>(random() % 16);
  return Vec2d(x, static_cast<double>(random() % 16));
}

TEST(GPolygon, TellsPointsInsideByParity) {
  constexpr unsigned int kSeed = 11;
  SCOPED_TRACE(kSeed);
  std::mt19937 random(kSeed);
  for (int round = 0; round < 400; ++round) {
    std::vector<Vec2d> contour(3 + random() % 40);
    for (Vec2d& v : contour) v = GridPoint(random);
    const GPolygon polygon(contour.data(), static_cast<unsigned int>(contour.size()));
    if (polygon.IsRectangle()) continue;
    for (int i = 0; i < 50; ++i) {
      const Vec2d point = GridPoint(random);
      EXPECT_EQ(polygon.PointInside(point), HoldsByIntegers(Points(polygon), point));
    }
  }
  // A hair beside a long edge, where a product of differences is rounded.
  const Vec2d sliver[] = {{0, 0}, {3e15, 1e15 + 1}, {-1e15, 2e15}};
  EXPECT_FALSE(GPolygon(sliver, 3).PointInside(Vec2d(3, 1)));
  EXPECT_TRUE(GPolygon(sliver, 3).PointInside(Vec2d(2999999999999997, 1e15)));
}

TEST(GPolygon, TakesRingsAndFloats) {
  GPolygon2d rings(0, 0, 10, 10);
  rings.Difference(GPolygon2d(2, 2, 5, 5));
  const GPolygon outer(rings);
  EXPECT_EQ(outer.GetNumContours(), 1u);
  EXPECT_EQ(AreaOf(outer), 100) << "holes are not carried over";

  Open single(0.1, 0, 1, 1);
  single.ConstructFromFloats(single);
  EXPECT_EQ(Points(single)[0].x, static_cast<double>(0.1f));
  EXPECT_EQ(single.GetBBox().xMin(), static_cast<double>(0.1f));
  gpc_vertex vertices[] = {{0, 0}, {1, 0}, {0, 1}};
  gpc_vertex_list contour{3, vertices};
  std::int32_t hole = 1;
  single.Construct(GPolygon::tagGCONTOURLIST{1, &hole, &contour});
  EXPECT_EQ(single.GetTotalVertexCount(), 3u);
}

TEST(GPolygon, ComesBackFromItsFiles) {
  const testing::TemporaryFolder folder;
  ASSERT_NE(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"), nullptr);
  GPolygon polygon(0, 0, 10.25, 10);
  polygon.Difference(GPolygon(2, 2, 5, 5.5));
  for (const bool text : {true, false}) {
    const GString path(folder.Path(text ? "text" : "binary"));
    CBufferedFile file(path, "w+", CBufferedFile::ShareDenyNone, false);
    text ? polygon.DumpToTextFile(file) : polygon.DumpToBinaryFile(file);
    file.SeekToBegin();
    GPolygon loaded(kSquare, 4);
    text ? loaded.LoadFromTextFile(file) : loaded.LoadFromBinaryFile(file);
    EXPECT_EQ(Points(loaded), Points(polygon));
    EXPECT_EQ(loaded.GetBBox(), polygon.GetBBox());

    // What is read once more is the end of the file.
    const int code =
        CodeOf([&] { text ? loaded.LoadFromTextFile(file) : loaded.LoadFromBinaryFile(file); });
    EXPECT_EQ(code, ERR_READ);
    EXPECT_EQ(loaded.GetNumContours(), 0u);
    EXPECT_EQ(loaded.GetBBox(), Box2d());
  }
  std::setlocale(LC_NUMERIC, "C");
  CBufferedFile memory;
  memory.Open();
  EXPECT_EQ(CodeOf([&] { polygon.DumpToTextFile(memory); }), ERR_WRITE);
}

}  // namespace
}  // namespace vlm

#include <velum/geometry/GDashLineGenerator.h>

#include <velum/core/Exception.h>
#include <velum/geometry/GPolyline.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <stdexcept>
#include <utility>

namespace vlm {
namespace {

using Points = std::vector<Vec2d>;
using Pieces = std::vector<std::pair<Vec2d, Vec2d>>;

Pieces Dashed(GDashLineGenerator& generator, const Points& path) {
  Pieces pieces;
  generator.Decompose(
      path.data(), static_cast<unsigned>(path.size()),
      [](Vec2d a, Vec2d b, void* out) { static_cast<Pieces*>(out)->emplace_back(a, b); }, &pieces);
  return pieces;
}

Pieces Level(std::initializer_list<std::pair<double, double>> ranges) {
  Pieces pieces;
  for (const auto& [a, b] : ranges) pieces.emplace_back(Vec2d(a, 0), Vec2d(b, 0));
  return pieces;
}

TEST(DashLineGenerator, DrawsEveryOtherEntry) {
  const struct {
    const char* why;
    std::vector<double> list;
    double length;
    Pieces pieces;
  } rows[] = {
      {"a dash and a gap", {10, 5}, 30, Level({{0, 10}, {15, 25}})},
      {"an odd list changes over", {10}, 35, Level({{0, 10}, {20, 30}})},
      {"four entries", {4, 1, 2, 1}, 10, Level({{0, 4}, {5, 7}, {8, 10}})},
      {"an open end", {10, 5}, 18, Level({{0, 10}, {15, 18}})},
      {"a dot", {0, 5}, 11, Level({{0, 0}, {5, 5}, {10, 10}})},
      {"one endless gap", {4, std::numeric_limits<double>::infinity()}, 99, Level({{0, 4}})},
      {"no list", {}, 30, Level({{0, 30}})},
      {"a sum of nothing", {0, 0}, 30, Level({{0, 30}})},
      {"an entry below 0", {10, -5}, 30, Level({{0, 30}})},
      {"an entry that is no number", {10, std::nan("")}, 30, Level({{0, 30}})},
      {"far too fine", {1e-300, 1e-300}, 30, Level({{0, 30}})},
  };
  for (const auto& row : rows) {
    GDashLineGenerator generator(row.list.data(), static_cast<unsigned>(row.list.size()));
    EXPECT_EQ(Dashed(generator, {{0, 0}, {row.length, 0}}), row.pieces) << row.why;
  }
}

TEST(DashLineGenerator, GoesRoundCornersAndOnFromCallToCall) {
  const double list[] = {10, 5};
  GDashLineGenerator generator(list, 2);
  const Pieces around{{{0, 0}, {6, 0}}, {{6, 0}, {6, 4}}, {{6, 9}, {6, 12}}};
  EXPECT_EQ(Dashed(generator, {{0, 0}, {6, 0}, {6, 12}}), around);
  EXPECT_EQ(Dashed(generator, {{6, 12}, {6, 22}}), Pieces({{{6, 12}, {6, 19}}})) << "it goes on";
  GDashLineGenerator copy(generator);
  EXPECT_EQ(Dashed(copy, {{6, 22}, {6, 32}}), Pieces({{{6, 24}, {6, 32}}}));
  EXPECT_EQ(Dashed(generator, {{6, 23}, {6, 32}}), Pieces({{{6, 23}, {6, 32}}}))
      << "it starts anew";
  EXPECT_EQ(Dashed(generator, {{6, 32}}), Pieces()) << "a point starts it anew";
  EXPECT_EQ(Dashed(generator, {{6, 32}, {6, 40}}), Pieces({{{6, 32}, {6, 40}}}));
  const auto& same = copy;
  copy = same;
  generator = copy;
  EXPECT_EQ(Dashed(generator, {{6, 32}, {6, 40}}),
            Pieces({{{6, 32}, {6, 34}}, {{6, 39}, {6, 40}}}));
  generator.SetDashes(list + 1, 1);
  EXPECT_EQ(Dashed(generator, {{6, 40}, {6, 50}}), Pieces({{{6, 40}, {6, 45}}}));
}

TEST(DashLineGenerator, HalvesGiveTheDashesOfTheWhole) {
  SCOPED_TRACE("seed 4");
  std::mt19937 random(4);
  std::uniform_real_distribution<double> number(0, 9);
  for (int round = 0; round < 300; ++round) {
    double list[3];
    for (double& entry : list) entry = number(random);
    GDashLineGenerator whole(list, static_cast<unsigned>(1 + random() % 3));
    GDashLineGenerator halves(whole);
    Points path(20);
    for (Vec2d& p : path) p.Set(number(random), number(random));
    Pieces expected = Dashed(whole, path);
    Pieces pieces;
    for (unsigned i = 1; i < 20; i += 4) {
      const unsigned end = std::min(i + 4, 20U);
      const Pieces part = Dashed(halves, Points(path.begin() + i - 1, path.begin() + end));
      pieces.insert(pieces.end(), part.begin(), part.end());
    }
    EXPECT_EQ(pieces, expected) << round;
    // The dashes and gaps in order lie along the path.
    double drawn = 0;
    for (const auto& piece : pieces) drawn += piece.first.Distance(piece.second);
    double length = 0;
    for (unsigned i = 1; i < 20; ++i) length += path[i - 1].Distance(path[i]);
    EXPECT_LE(drawn, length * (1 + 1e-12));
  }
}

TEST(DashLineGenerator, DrawsWhatHasNoFiniteLengthWhole) {
  const double list[] = {10, 5};
  GDashLineGenerator generator(list, 2);
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Dashed(generator, {{0, 0}, {infinity, 0}}).size(), 1u);
  EXPECT_EQ(Dashed(generator, {{0, 0}, {1e300, 0}}), Level({{0, 1e300}}));
  EXPECT_EQ(Dashed(generator, {{0, 0}, {std::nan(""), 0}, {2, 0}}).size(), 2u);
  EXPECT_EQ(Dashed(generator, {{0, 0}, {4, 0}, {1e300, 0}, {4, 0}, {0, 0}, {4, 0}}),
            Level({{0, 4}, {4, 1e300}, {1e300, 4}, {4, 0}, {0, 2}}))
      << "the place in the pattern stays";
}

TEST(DashLineGenerator, DrawsAsManyDashesAsAreAskedFor) {
  const double pattern[] = {1, 1};
  GDashLineGenerator generator(pattern, 2);
  const Vec2d path[] = {{0, 0}, {1e8, 0}};
  const auto add = [](Vec2d begin, Vec2d end, void* sum) {
    static_cast<Vec2d*>(sum)->x += end.x - begin.x;
    static_cast<Vec2d*>(sum)->y += 1;
  };
  Vec2d sum;
  generator.Decompose(path, 2, add, &sum);
  EXPECT_EQ(sum, Vec2d(5e7, 5e7));
}

TEST(DashLineGenerator, ReportsMisuseAndStaysAsItWas) {
  const double list[] = {10, 5};
  GDashLineGenerator generator(list, 2);
  Dashed(generator, {{0, 0}, {6, 0}});
  try {
    generator.SetDashes(nullptr, 2);
    ADD_FAILURE();
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetErrCode(), ERR_INTERNAL);
    EXPECT_EQ(error.GetSrcFile(), "GDashLineGenerator");
  }
  const auto fail = [](Vec2d, Vec2d, void*) { throw std::runtime_error("full"); };
  const Points path{{6, 0}, {16, 0}};
  EXPECT_THROW(generator.Decompose(path.data(), 2, fail, nullptr), std::runtime_error);
  EXPECT_EQ(Dashed(generator, path), Level({{6, 10}, {15, 16}}));
  generator.Decompose(nullptr, 2, fail, nullptr);
  EXPECT_EQ(Dashed(generator, {{16, 0}, {20, 0}}), Level({{16, 20}})) << "no points start it anew";
}

TEST(DashLineGenerator, DrawsPathsWholeOnceItsListIsFreed) {
  struct Open : GDashLineGenerator {
    using GDashLineGenerator::FreeAll;
    using GDashLineGenerator::GDashLineGenerator;
  };
  const double list[] = {10, 5};
  Open generator(list, 2);
  Dashed(generator, {{0, 0}, {12, 0}});
  generator.FreeAll();
  EXPECT_EQ(Dashed(generator, {{12, 0}, {30, 0}, {60, 0}}), Level({{12, 30}, {30, 60}}));
  EXPECT_EQ(Dashed(generator, {{0, 0}, {30, 0}}), Level({{0, 30}}));
}

TEST(DashLineGenerator, TakesPolylines) {
  const double list[] = {10, 5};
  const Points path{{0, 0}, {12, 0}};
  GDashLineGenerator generator(list, 2);
  std::vector<GLine2> dashes;
  generator.Decompose(GPolyline(path.data(), 2), dashes);
  generator.Decompose(GPolyline(), dashes);
  EXPECT_EQ(Dashed(generator, {{12, 0}, {18, 0}}), Level({{15, 18}})) << "an empty one is nothing";
  ASSERT_EQ(dashes.size(), 1u);
  EXPECT_EQ(dashes[0].GetEnd(), Vec2d(10, 0));
}

TEST(DashLine3Generator, MeasuresInSpace) {
  const double list[] = {3};
  GDashLine3Generator generator(list, 1);
  const Vec3d path[] = {{0, 0, 0}, {3, 6, 6}};
  std::vector<GLine3> dashes;
  generator.Decompose(path, 2, dashes);
  ASSERT_EQ(dashes.size(), 2u);
  EXPECT_EQ(dashes[0].GetEnd(), Vec3d(1, 2, 2));
  EXPECT_EQ(dashes[1].GetBegin(), Vec3d(2, 4, 4));
  EXPECT_EQ(dashes[1].GetEnd(), Vec3d(3, 6, 6));
}

}  // namespace
}  // namespace vlm

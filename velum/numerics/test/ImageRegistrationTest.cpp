#include <velum/numerics/ImageRegistration.h>

#include <velum/numerics/test/ControlPoints.h>
#include <testing/FailingAllocations.h>

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <random>
#include <vector>

namespace vlm {
namespace {

using vlm::testing::Bent;
using vlm::testing::Distance;
using vlm::testing::ImagesOf;
using vlm::testing::ScatteredPoints;

RPoints Scattered(std::size_t count) {
  std::mt19937 random(8);
  return ScatteredPoints(count, random);
}

// The images of `count` control points, as some function moves them.
RPoints Moved(const RPoints& from) { return ImagesOf(from, Bent); }

constexpr WarpingMethod kNoMethod = static_cast<WarpingMethod>(13);

TEST(ImageRegistration, TakesTheFirstMethodThatFits) {
  const RPoints eight = Scattered(8);
  const RPoints line({{0, 0}, {1, 1}, {2, 2}, {5, 5}, {7, 7}, {9, 9}});
  const RPoints upright({{3, 0}, {3, 1}, {3, 2}, {3, 5}, {3, 7}, {3, 9}});
  const RPoints stack({{4, 4}, {4, 4}, {4, 4}, {4, 4}, {4, 4}, {4, 4}});
  RPoints broken = eight;
  broken.Points()[2].X(std::numeric_limits<double>::quiet_NaN());
  const struct {
    const char* why;
    RPoints from;
    WarpingMethod asked;
    WarpingMethod expected;
  } kRows[] = {
      {"no points", RPoints(), ThinPlateSpline, IdentityMap},
      {"no points", RPoints(), IdentityMap, IdentityMap},
      {"no points, no method", RPoints(), kNoMethod, IdentityMap},
      {"one point", Scattered(1), ThinPlateSpline, Translate},
      {"one point", Scattered(1), UniformScale, Translate},
      {"one point", Scattered(1), IdentityMap, IdentityMap},
      {"one point, no method", Scattered(1), kNoMethod, Translate},
      {"two points, a spline", Scattered(2), ThinPlateSpline, LinearConformal},
      {"two points", Scattered(2), MixedScale, MixedScale},
      {"two points", Scattered(2), UniformScale, UniformScale},
      {"three points", Scattered(3), QuadraticPolynomial, LinearConformal},
      {"three points", Scattered(3), InverseDistanceSquared, LinearConformal},
      {"five points", Scattered(5), QuadraticPolynomial, GeneralLinear},
      {"five points", Scattered(5), ThinPlateSpline, ThinPlateSpline},
      {"eight points", eight, NaturalCubicSpline, NaturalCubicSpline},
      {"eight points", eight, MarcovSpline, MarcovSpline},
      {"eight points", eight, ExponentialSpline, ExponentialSpline},
      {"eight points", eight, RationalQuadraticSpline, RationalQuadraticSpline},
      {"eight points", eight, InverseDistanceSquared, InverseDistanceSquared},
      {"eight points", eight, QuadraticPolynomial, QuadraticPolynomial},
      {"eight points", eight, GeneralLinear, GeneralLinear},
      {"eight points", eight, LinearConformal, LinearConformal},
      {"eight points", eight, Translate, Translate},
      {"eight points", eight, IdentityMap, IdentityMap},
      {"a line has no affine map", line, InverseDistanceSquared, LinearConformal},
      {"a line has no quadratic", line, QuadraticPolynomial, LinearConformal},
      {"a line has two scales", line, MixedScale, MixedScale},
      {"an upright line has not", upright, MixedScale, UniformScale},
      {"a line has a spline", line, ThinPlateSpline, ThinPlateSpline},
      {"points at one place have one", stack, ThinPlateSpline, ThinPlateSpline},
      {"points at one place", stack, LinearConformal, Translate},
      {"points at one place", stack, MixedScale, Translate},
      {"a NaN", broken, ThinPlateSpline, IdentityMap},
      {"a NaN", broken, Translate, IdentityMap},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(::testing::Message() << row.why << ", method " << row.asked);
    CImageRegistration map;
    EXPECT_EQ(map.Calibrate(row.from, Moved(row.from), row.asked), row.expected);
  }
}

TEST(ImageRegistration, ListsOfDifferentLengthsGiveTheIdentity) {
  const RPoints eight = Scattered(8);
  for (int method = ThinPlateSpline; method <= IdentityMap; ++method) {
    for (const std::size_t count : {0u, 1u, 7u, 9u}) {
      CImageRegistration map;
      EXPECT_EQ(map.Calibrate(eight, Scattered(count), static_cast<WarpingMethod>(method)),
                IdentityMap);
      EXPECT_EQ(map.Transform({3, 4}), RPoint(3, 4));
    }
  }
}

TEST(ImageRegistration, OnePointIsAShift) {
  CImageRegistration map;
  EXPECT_EQ(map.Calibrate(RPoints({{10, 20}}), RPoints({{13, 16}}), ThinPlateSpline), Translate);
  EXPECT_EQ(map.Transform({0, 0}), RPoint(3, -4));
}

TEST(ImageRegistration, WhatIsNoMethodLeavesTheWarp) {
  const RPoints from = Scattered(8);
  CImageRegistration map;
  ASSERT_EQ(map.Calibrate(from, Moved(from), ThinPlateSpline), ThinPlateSpline);
  const RPoint before = map.Transform({300, 200});
  EXPECT_EQ(map.Calibrate(from, from, kNoMethod), kNoMethod);
  const auto negative = static_cast<WarpingMethod>(-1);
  EXPECT_EQ(map.Calibrate(from, from, negative), negative);
  EXPECT_EQ(map.Transform({300, 200}), before);
}

TEST(ImageRegistration, CopiesAreOnTheirOwn) {
  const RPoints from = Scattered(8);
  CImageRegistration map;
  EXPECT_EQ(map.Transform({1, 2}), RPoint(1, 2)) << "the identity at first";
  map.Calibrate(from, Moved(from), ThinPlateSpline);
  const RPoint expected = map.Transform({300, 200});
  const CImageRegistration copy(map);
  CImageRegistration assigned;
  assigned = map;
  CImageRegistration& same = assigned;
  assigned = same;
  map.Calibrate(from, from, Translate);
  EXPECT_EQ(copy.Transform({300, 200}), expected);
  EXPECT_EQ(assigned.Transform({300, 200}), expected);
  EXPECT_EQ(map.Transform({300, 200}), RPoint(300, 200));
}

TEST(ImageRegistration, ManyPointsGetTheBitsOfSingleOnes) {
  const RPoints from = Scattered(12);
  CImageRegistration map;
  for (const WarpingMethod method : {ExponentialSpline, LinearConformal}) {
    ASSERT_EQ(map.Calibrate(from, Moved(from), method), method);
    std::vector<RPoint> points = Scattered(70).Points();
    const std::vector<RPoint> source = points;
    map.TransformPoints(points.data(), points.data(), points.size());
    for (std::size_t i = 0; i < points.size(); ++i) EXPECT_EQ(points[i], map.Transform(source[i]));
  }
}

TEST(ImageRegistration, KeepsItsWarpWhenMemoryRunsOut) {
  if (!vlm::testing::kAllocationsCanFail) GTEST_SKIP();
  const RPoints from = Scattered(8);
  const RPoints to = Moved(from);
  CImageRegistration map;
  map.Calibrate(from, to, GeneralLinear);
  CImageRegistration other;
  other.Calibrate(from, to, Translate);
  const RPoint before = map.Transform({300, 200});
  for (std::size_t succeeding = 0; succeeding < 5; ++succeeding) {
    {
      const vlm::testing::FailingAllocations exhausted(succeeding);
      EXPECT_THROW(map.Calibrate(from, to, ThinPlateSpline), std::bad_alloc);
    }
    EXPECT_EQ(map.Transform({300, 200}), before);
  }
  const vlm::testing::FailingAllocations exhausted;
  EXPECT_THROW(map = other, std::bad_alloc);
  EXPECT_EQ(map.Transform({300, 200}), before);
}

// Points that leave systems singular: whatever method answers, nothing goes wild.
TEST(ImageRegistration, DoubledAndCollinearControlPointsStayTame) {
  const RPoints scattered = Scattered(12);
  RPoints doubled = scattered;
  doubled.Points().push_back(scattered.Points()[3]);
  RPoints contradiction = Moved(doubled);
  contradiction.Points().back().X(contradiction.Points().back().X() + 5);
  const RPoints line =
      ImagesOf(scattered, [](const RPoint& p) { return RPoint(p.X(), 100 + p.X() / 2); });
  const struct {
    const char* why;
    RPoints from;
    RPoints to;
  } kRows[] = {
      {"a point that is there twice", doubled, Moved(doubled)},
      {"two images of one point", doubled, contradiction},
      {"points on a line", line, Moved(line)},
  };
  for (const auto& row : kRows) {
    for (int method = ThinPlateSpline; method <= UniformScale; ++method) {
      CImageRegistration map;
      const WarpingMethod inForce =
          map.Calibrate(row.from, row.to, static_cast<WarpingMethod>(method));
      SCOPED_TRACE(::testing::Message() << row.why << ", method " << method << ", " << inForce);
      for (const RPoint& p : scattered.Points()) {
        EXPECT_LT(Distance(map.Transform(p), Bent(p)), 500);
      }
      if (inForce > InverseDistanceSquared) continue;
      for (std::size_t i = 0; i < row.from.Points().size(); ++i) {
        EXPECT_LT(Distance(map.Transform(row.from.Points()[i]), row.to.Points()[i]), 8);
      }
    }
  }
}

}  // namespace
}  // namespace vlm

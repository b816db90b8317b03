#include <velum/numerics/ImageWarp.h>

#include <velum/numerics/InverseDistanceSquared.h>
#include <velum/numerics/PlainWarps.h>
#include <velum/numerics/PolynomialWarps.h>
#include <velum/numerics/RadialBasisFunctions.h>
#include <velum/numerics/test/ControlPoints.h>
#include <testing/FailingAllocations.h>
#include <testing/Sanitized.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <random>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

namespace vlm {
namespace {

using vlm::testing::Bent;
using vlm::testing::Distance;
using vlm::testing::FailingAllocations;
using vlm::testing::ImagesOf;
using vlm::testing::Rounds;
using vlm::testing::ScatteredPoints;

template <class Warp>
std::unique_ptr<CImageWarp> Make() {
  return std::make_unique<Warp>();
}

struct Kind {
  const char* name;
  std::unique_ptr<CImageWarp> (*make)();
  std::size_t leastPoints;
  bool isAffine;  // reproduces affine maps
  bool isExact;   // passes through control points
};

const Kind kKinds[] = {
    {"thin plate", Make<CThinPlateSpline>, 4, true, true},
    {"natural cubic", Make<CNaturalCubicSpline>, 4, true, true},
    {"Marcov", Make<CMarcovSpline>, 4, true, true},
    {"exponential", Make<CExponentialSpline>, 4, true, true},
    {"rational quadratic", Make<CRationalQuadraticSpline>, 4, true, true},
    {"inverse distance", Make<CInverseDistanceSquared>, 4, true, true},
    {"quadratic", Make<CQuadraticPolynomial>, 6, true, false},
    {"general linear", Make<CGeneralLinear>, 4, true, false},
    {"conformal", Make<CLinearConformal>, 2, false, false},
    {"mixed scale", Make<CMixedScale>, 2, false, false},
    {"uniform scale", Make<CUniformScale>, 2, false, false},
    {"translate", Make<CTranslate>, 1, false, false},
    {"identity", Make<CIdentityMap>, 0, false, false},
};

bool IsSame(const RPoint& p, const RPoint& q) {
  return p == q || (std::isnan(p.X()) && std::isnan(q.X()));
}

// The first points of a random list.
RPoints Scattered(std::size_t count) {
  std::mt19937 random(7);
  return ScatteredPoints(count, random);
}

// The length of all coordinates, taken as one vector.
double NormOf(const RPoints& points) {
  double norm = 0;
  for (const RPoint& p : points.Points()) norm = std::hypot(norm, p.X(), p.Y());
  return norm;
}

// The largest distance that is left at a control point.
double LargestLeft(const CImageWarp& warp, const RPoints& from, const RPoints& to) {
  double largest = 0;
  for (std::size_t i = 0; i < from.Points().size(); ++i) {
    const double left = Distance(warp.Transform(from.Points()[i]), to.Points()[i]);
    largest = left > largest || std::isnan(left) ? left : largest;
  }
  return largest;
}

TEST(ImageWarp, AffineMapsAreReproduced) {
  const auto affine = [](const RPoint& p) {
    return RPoint(431000 + 2.5 * p.X() - 0.7 * p.Y(), 5200 + 0.3 * p.X() + 1.9 * p.Y());
  };
  constexpr double kRange = 2.5 * 600 + 0.7 * 400;
  for (const Kind& kind : kKinds) {
    if (!kind.isAffine) continue;
    for (const std::size_t count : {kind.leastPoints, std::size_t{30}, std::size_t{300}}) {
      SCOPED_TRACE(::testing::Message() << kind.name << ", " << count << " control points");
      const RPoints from = Scattered(count);
      const auto warp = kind.make();
      ASSERT_TRUE(warp->Calibrate(from, ImagesOf(from, affine)));
      double worst = 0;
      for (double x = 200; x <= 800; x += 37) {
        for (double y = 100; y <= 500; y += 37) {
          worst = std::max(worst, Distance(warp->Transform({x, y}), affine({x, y})));
        }
      }
      EXPECT_LE(worst, (kind.isExact ? 2.5e-13 : 1e-12) * kRange);
    }
  }
}

TEST(ImageWarp, SplinesPassThroughTheirControlPoints) {
  for (const Kind& kind : kKinds) {
    if (!kind.isExact) continue;
    for (const std::size_t count : {4u, 10u, 40u}) {
      SCOPED_TRACE(::testing::Message() << kind.name << ", " << count << " control points");
      const RPoints from = Scattered(count);
      const RPoints to = ImagesOf(from, Bent);
      const auto warp = kind.make();
      ASSERT_TRUE(warp->Calibrate(from, to));
      EXPECT_LE(LargestLeft(*warp, from, to), 1e-9 * NormOf(to));
    }
  }
}

RPoint GentlyBent(const RPoint& p) {
  return {1000 * p.X() + 20 * std::sin(3 * p.Y()), 1000 * p.Y() + 20 * std::cos(3 * p.X())};
}

RPoint StronglyBent(const RPoint& p) {
  return {500 * std::sin(5 * p.X()) * std::cos(4 * p.Y()),
          500 * std::cos(4 * p.X()) * std::sin(5 * p.Y())};
}

// Their systems are too hard for conjugate gradients: what is left is what the fallback drops, and
// that depends on what the map asks of the spline.
TEST(ImageWarp, TheFallbackPassesNearTheControlPoints) {
  const struct {
    std::unique_ptr<CImageWarp> (*make)();
    std::size_t count;
    int seeds;
    double gentle;  // limits of what is left, of the length of all images
    double strong;
  } kRows[] = {
      {Make<CRationalQuadraticSpline>, 60, 8, 2e-7, 3.5e-5},
      {Make<CRationalQuadraticSpline>, 100, 8, 3e-7, 1e-4},
      {Make<CRationalQuadraticSpline>, 200, 4, 4e-7, 7e-5},
      {Make<CNaturalCubicSpline>, 100, 4, 2e-14, 6e-12},
      {Make<CNaturalCubicSpline>, 350, 2, 1.5e-8, 1.5e-6},
  };
  for (const auto& row : kRows) {
    for (int seed = 100; seed < 100 + Rounds(row.seeds); ++seed) {
      std::mt19937 random(static_cast<unsigned>(seed));
      const RPoints from = ImagesOf(ScatteredPoints(row.count, random), [](const RPoint& p) {
        return RPoint((p.X() - 500) / 300, (p.Y() - 300) / 200);  // from -1 to 1
      });
      const auto left = [&](RPoint (*map)(const RPoint&)) {
        const RPoints to = ImagesOf(from, map);
        const auto spline = row.make();
        return spline->Calibrate(from, to) ? LargestLeft(*spline, from, to) / NormOf(to) : NAN;
      };
      SCOPED_TRACE(::testing::Message() << row.count << " points, seed " << seed);
      EXPECT_LE(left(GentlyBent), row.gentle);
      EXPECT_LE(left(StronglyBent), row.strong);
    }
  }
}

// Rounding is by the size of the images, and by how well the control points settle the map.
TEST(ImageWarp, AffineMapsFarFromTheOriginCostDigits) {
  const auto affine = [](const RPoint& p) {
    return RPoint(1e6 + 1.2 * p.X() - 0.4 * p.Y(), 1e6 + 0.3 * p.X() + 1.1 * p.Y());
  };
  constexpr double kRange = 1.2 * 600 + 0.4 * 400;
  double least = 0;  // with as few control points as can be
  double many = 0;
  for (unsigned seed = 200; seed < 250; ++seed) {
    std::mt19937 random(seed);
    for (const Kind& kind : kKinds) {
      if (!kind.isAffine) continue;
      for (double* const largest : {&least, &many}) {
        const std::size_t count = largest == &least ? kind.leastPoints : 30;
        const RPoints from = ScatteredPoints(count, random);
        const auto warp = kind.make();
        ASSERT_TRUE(warp->Calibrate(from, ImagesOf(from, affine)));
        for (double x = 200; x <= 800; x += 37) {
          for (double y = 100; y <= 500; y += 37) {
            const double error = Distance(warp->Transform({x, y}), affine({x, y})) / kRange;
            *largest = std::max(*largest, error);
          }
        }
      }
    }
  }
  EXPECT_LE(least, 6e-10);
  EXPECT_LE(many, 4e-12);
}

TEST(ImageWarp, TwoThousandControlPointsCalibrate) {
  const RPoints from = Scattered(2000);
  const RPoints to = ImagesOf(from, Bent);
  CMarcovSpline spline;
  ASSERT_TRUE(spline.Calibrate(from, to));
  EXPECT_LE(LargestLeft(spline, from, to), 1e-9 * NormOf(to));
}

// The sums as they are written down, with libm's functions.
TEST(ImageWarp, SplinesAreTheSumsTheyAreSaidToBe) {
  const struct {
    std::shared_ptr<CRadialBasisFunction> spline;
    std::function<double(double)> phi;  // of the square of the distance
  } kRows[] = {
      {std::make_shared<CThinPlateSpline>(),
       [](double square) { return square > 0 ? 0.5 * square * std::log(square) : 0; }},
      {std::make_shared<CNaturalCubicSpline>(),
       [](double square) { return std::sqrt(square) * square; }},
      {std::make_shared<CMarcovSpline>(), [](double square) { return -std::sqrt(square); }},
      {std::make_shared<CExponentialSpline>(),
       [](double square) { return std::exp(-std::sqrt(square)); }},
      {std::make_shared<CRationalQuadraticSpline>(),
       [](double square) { return -square / (1 + square); }},
  };
  const RPoints from = Scattered(70);
  for (const auto& [spline, phi] : kRows) {
    const CRadialBasisFunction& fitted = *spline;
    SCOPED_TRACE(typeid(fitted).name());
    ASSERT_TRUE(spline->Calibrate(from, ImagesOf(from, Bent)));
    for (double px = 0; px < 1000; px += 91) {
      const double x = (px - spline->CenterX) / spline->Scale;
      const double y = (250 - spline->CenterY) / spline->Scale;
      double sums[2];
      double size = 0;
      for (unsigned k = 0; k < 2; ++k) {
        sums[k] = spline->Affine(0, k) + spline->Affine(1, k) * x + spline->Affine(2, k) * y;
        for (unsigned i = 0; i < 70; ++i) {
          const double dx = x - spline->ScaledX(i);
          const double dy = y - spline->ScaledY(i);
          const double term = phi(dx * dx + dy * dy) * spline->Weights(i, k);
          sums[k] += term;
          size += std::abs(term);
        }
      }
      EXPECT_LE(Distance(spline->Transform({px, 250}), {sums[0], sums[1]}), 1e-15 * size + 1e-11);
    }
  }
}

TEST(ImageWarp, ScaledControlPointsFillASquare) {
  CMarcovSpline spline;
  const RPoints from({{10, 20}, {50, 20}, {50, 40}, {10, 40}, {30, 25}});
  ASSERT_TRUE(spline.Calibrate(from, from));
  EXPECT_EQ(spline.CenterX, 30);
  EXPECT_EQ(spline.CenterY, 30);
  EXPECT_EQ(spline.Scale, 20);
  EXPECT_EQ(spline.ScaledX(0), -1);
  EXPECT_EQ(spline.ScaledY(2), 0.5);
  EXPECT_EQ(spline.Weights.nRows(), 5u);
  EXPECT_EQ(spline.Affine.nRows(), 3u);
}

TEST(ImageWarp, PolynomialsFindTheirCoefficients) {
  const RPoints from({{-1, -1}, {3, -1}, {3, 3}, {-1, 3}, {0, 1}, {2, 0}, {1, 2.5}});
  // Scaled coordinates are (p - 1) / 2.
  const auto isMapped = [&](CImageWarp& warp, const std::function<RPoint(double, double)>& map) {
    const RPoints to =
        ImagesOf(from, [&](const RPoint& p) { return map((p.X() - 1) / 2, (p.Y() - 1) / 2); });
    if (!warp.Calibrate(from, to) || !warp.ScaledX.empty() || !warp.ScaledY.empty()) return false;
    return Distance(warp.Transform({6, -4}), map(2.5, -2.5)) < 1e-13;
  };
  CQuadraticPolynomial quadratic;
  EXPECT_TRUE(isMapped(quadratic, [](double x, double y) {
    return RPoint(1 + 2 * x + 3 * y + 4 * x * y + 5 * x * x + 6 * y * y, x * y - y * y);
  }));
  for (unsigned i = 0; i < 6; ++i) EXPECT_NEAR(quadratic.Coefficients(i, 0), i + 1, 1e-13);
  EXPECT_NEAR(quadratic.Coefficients(3, 1), 1, 1e-13);
  EXPECT_NEAR(quadratic.Coefficients(5, 1), -1, 1e-13);

  CGeneralLinear linear;
  EXPECT_TRUE(isMapped(
      linear, [](double x, double y) { return RPoint(1 + 2 * x + 3 * y, 4 + 5 * x + 6 * y); }));
  EXPECT_NEAR(linear.Coefficients(1, 1), 5, 1e-13);

  CLinearConformal conformal;
  EXPECT_TRUE(isMapped(
      conformal, [](double x, double y) { return RPoint(1 + 3 * x + 4 * y, 2 + 3 * y - 4 * x); }));
  for (unsigned i = 0; i < 4; ++i) EXPECT_NEAR(conformal.Coefficients(i), i + 1, 1e-13);

  CMixedScale mixed;
  EXPECT_TRUE(isMapped(mixed, [](double x, double y) { return RPoint(1 + 2 * x, 3 - 4 * y); }));
  EXPECT_NEAR(mixed.Coefficients(0, 1), 3, 1e-13);
  EXPECT_NEAR(mixed.Coefficients(1, 1), -4, 1e-13);

  CUniformScale uniform;
  EXPECT_TRUE(isMapped(uniform, [](double x, double y) { return RPoint(1 + 3 * x, 2 + 3 * y); }));
  for (unsigned i = 0; i < 3; ++i) EXPECT_NEAR(uniform.Coefficients(i), i + 1, 1e-13);
}

TEST(ImageWarp, InverseDistanceAddsTheMeanOfWhatIsLeft) {
  CInverseDistanceSquared warp;
  const RPoints from({{0, 0}, {2, 0}, {2, 2}, {0, 2}});
  const RPoints to({{0, 0}, {2, 0}, {2, 6}, {0, 2}});
  ASSERT_TRUE(warp.Calibrate(from, to));
  EXPECT_NEAR(warp.ResidualY(2), 1, 1e-14);
  EXPECT_NEAR(warp.ResidualY(1), -1, 1e-14);
  EXPECT_NEAR(warp.Transform({1, 1}).Y(), 2, 1e-14) << "all four are as far";
  EXPECT_NEAR(warp.Transform({0.5, 0.5}).Y(), 0.5 + 8.0 / 17, 1e-14) << "by hand";
  EXPECT_NEAR(warp.Transform({2, 2}).Y(), 6, 1e-14);
  EXPECT_FALSE(std::isnan(warp.Transform({1e154, 0}).Y()));
  EXPECT_TRUE(std::isnan(warp.Transform({1e155, 0}).Y())) << "no point has any weight";
}

TEST(ImageWarp, WhatCannotBeFittedLeavesTheWarpUncalibrated) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  const RPoints good = Scattered(8);
  const auto with = [&](double x) {
    RPoints points = good;
    points.Points()[5].Y(x);
    return points;
  };
  RPoints shorter = good;
  shorter.Points().pop_back();
  const RPoints huge = ImagesOf(
      good, [](const RPoint& p) { return RPoint((p.X() > 500 ? 1.7e308 : -1.7e308), p.Y()); });
  const struct {
    const char* why;
    RPoints from;
    RPoints to;
    bool isShift = false;  // something that can be shifted
  } kRows[] = {
      {"a longer list of images", shorter, good},
      {"a shorter list of images", good, shorter},
      {"no images", good, RPoints()},
      {"NaN among the points", with(kNaN), good},
      {"NaN among the images", good, with(kNaN)},
      {"an infinity among the points", with(kInfinity), good},
      {"an infinity among the images", good, with(-kInfinity)},
      {"no points", RPoints(), RPoints()},
      {"a range beyond all numbers", huge, good, true},
      {"shifts beyond all numbers", huge,
       ImagesOf(huge, [](const RPoint& p) { return RPoint(-p.X(), p.Y()); })},
  };
  for (const Kind& kind : kKinds) {
    for (const auto& row : kRows) {
      SCOPED_TRACE(::testing::Message() << kind.name << ", " << row.why);
      const auto warp = kind.make();
      if (kind.leastPoints == 0) {
        EXPECT_TRUE(warp->Calibrate(row.from, row.to));
        continue;
      }
      if (kind.leastPoints == 1 && row.isShift) continue;
      ASSERT_TRUE(warp->Calibrate(good, good));
      EXPECT_FALSE(warp->Calibrate(row.from, row.to));
      EXPECT_TRUE(IsSame(warp->Transform({1, 2}), kind.make()->Transform({1, 2})));
    }
  }
}

TEST(ImageWarp, TooFewPointsAreNoFit) {
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    const RPoints least = Scattered(kind.leastPoints);
    EXPECT_TRUE(kind.make()->Calibrate(least, least));
    if (kind.leastPoints == 0) continue;
    const RPoints fewer = Scattered(kind.leastPoints - 1);
    EXPECT_FALSE(kind.make()->Calibrate(fewer, fewer));
  }
}

TEST(ImageWarp, ManyPointsGetTheBitsOfSingleOnes) {
  const RPoints from = Scattered(37);
  const RPoints to = ImagesOf(from, Bent);
  const RPoints source = Scattered(200);
  for (const Kind& kind : kKinds) {
    const auto warp = kind.make();
    for (const bool isCalibrated : {false, true}) {
      for (const std::size_t count : {0u, 1u, 3u, 64u, 65u, 200u}) {
        SCOPED_TRACE(::testing::Message() << kind.name << ", " << count << " points");
        std::vector<RPoint> target(count + 1, RPoint(-7, -7));
        warp->TransformPoints(source.Points().data(), target.data(), count);
        std::vector<RPoint> inPlace(source.Points().begin(),
                                    source.Points().begin() + static_cast<std::ptrdiff_t>(count));
        warp->TransformPoints(inPlace.data(), inPlace.data(), count);
        for (std::size_t i = 0; i < count; ++i) {
          ASSERT_TRUE(IsSame(target[i], warp->Transform(source.Points()[i])));
          ASSERT_TRUE(IsSame(target[i], inPlace[i]));
        }
        EXPECT_EQ(target[count], RPoint(-7, -7));
      }
      ASSERT_TRUE(isCalibrated || warp->Calibrate(from, to));
    }
  }
}

TEST(ImageWarp, ACloneIsOnItsOwn) {
  const RPoints from = Scattered(20);
  for (const Kind& kind : kKinds) {
    SCOPED_TRACE(kind.name);
    const auto warp = kind.make();
    ASSERT_TRUE(warp->Calibrate(from, ImagesOf(from, Bent)));
    const RPoint before = warp->Transform({300, 300});
    const std::unique_ptr<CImageWarp> clone(warp->Clone());
    EXPECT_EQ(clone->Transform({300, 300}), before);
    const CImageWarp& original = *warp;
    const CImageWarp& copied = *clone;
    EXPECT_EQ(typeid(copied), typeid(original));
    ASSERT_TRUE(warp->Calibrate(from, from));
    EXPECT_EQ(clone->Transform({300, 300}), before);
  }
}

TEST(ImageWarp, AMoveTakesTheFit) {
  static_assert(std::is_nothrow_move_constructible_v<CThinPlateSpline> &&
                std::is_nothrow_move_assignable_v<CThinPlateSpline>);
  const RPoints from = Scattered(20);
  CThinPlateSpline fitted;
  ASSERT_TRUE(fitted.Calibrate(from, ImagesOf(from, Bent)));
  const RPoint before = fitted.Transform({300, 300});
  const double* const weights = fitted.Weights.Base();
  CThinPlateSpline taken(std::move(fitted));
  CThinPlateSpline assigned;
  assigned = std::move(taken);
  EXPECT_EQ(assigned.Weights.Base(), weights) << "not copied";
  EXPECT_EQ(assigned.Transform({300, 300}), before);
  EXPECT_TRUE(std::isnan(taken.Transform({300, 300}).X()));  // NOLINT: told of those moved from
}

TEST(ImageWarp, TransformingAsksForNoMemory) {
  if (!vlm::testing::kAllocationsCanFail) GTEST_SKIP();
  const RPoints from = Scattered(100);
  const RPoints to = ImagesOf(from, Bent);
  RPoint points[3] = {{1, 2}, {3, 4}, {5, 6}};
  for (const Kind& kind : kKinds) {
    const auto warp = kind.make();
    ASSERT_TRUE(warp->Calibrate(from, to));
    const FailingAllocations exhausted;
    points[0] = warp->Transform(points[0]);
    warp->TransformPoints(points, points, 3);
    EXPECT_FALSE(exhausted.HaveFailed()) << kind.name;
  }
}

TEST(ImageWarp, CalibratingWithoutMemoryLeavesItUncalibrated) {
  if (!vlm::testing::kAllocationsCanFail) GTEST_SKIP();
  const RPoints from = Scattered(8);
  for (const Kind& kind : kKinds) {
    bool hasFailed = true;
    for (std::size_t succeeding = 0; hasFailed; ++succeeding) {
      SCOPED_TRACE(::testing::Message() << kind.name << ", " << succeeding << " allocations");
      const auto warp = kind.make();
      ASSERT_TRUE(warp->Calibrate(from, from));
      try {
        const FailingAllocations exhausted(succeeding);
        hasFailed = false;
        EXPECT_TRUE(warp->Calibrate(from, from));
      } catch (const std::bad_alloc&) {
        hasFailed = true;
        EXPECT_TRUE(IsSame(warp->Transform({1, 2}), kind.make()->Transform({1, 2})));
      }
    }
  }
}

// What is derived has its own function in every way to transform, even from a spline of the
// library.
class Cone : public CRadialBasisFunction {
 public:
  [[nodiscard]] CImageWarp* Clone() const override { return new Cone(*this); }

 protected:
  [[nodiscard]] double Phi(double dx, double dy) const override { return -std::hypot(dx, dy); }
};

class ConeAfterAll : public CThinPlateSpline {
 protected:
  [[nodiscard]] double Phi(double dx, double dy) const override { return -std::hypot(dx, dy); }
};

TEST(ImageWarp, DerivedSplinesHaveAFunctionOfTheirOwn) {
  const RPoints from = Scattered(30);
  const RPoints to = ImagesOf(from, Bent);
  CMarcovSpline expected;
  ASSERT_TRUE(expected.Calibrate(from, to));
  Cone cone;
  ConeAfterAll other;
  for (CRadialBasisFunction* const spline :
       {static_cast<CRadialBasisFunction*>(&cone), static_cast<CRadialBasisFunction*>(&other)}) {
    ASSERT_TRUE(spline->Calibrate(from, to));
    RPoint p(411, 222);
    EXPECT_LT(Distance(spline->Transform(p), expected.Transform(p)), 1e-6);
    spline->TransformPoints(&p, &p, 1);
    EXPECT_EQ(p, spline->Transform({411, 222}));
  }
}

}  // namespace
}  // namespace vlm

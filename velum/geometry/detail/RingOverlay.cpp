#include <velum/geometry/Gpc.h>
#include <velum/geometry/PolygonMeasures.h>
#include <velum/geometry/detail/ClippedRings.h>
#include <velum/geometry/detail/ForEachRing.h>
#include <velum/geometry/detail/RingOverlay.h>
#include <velum/geometry/detail/RingRepair.h>

#include <boost/geometry/algorithms/detail/has_self_intersections.hpp>
#include <boost/geometry/algorithms/difference.hpp>
#include <boost/geometry/algorithms/equals.hpp>
#include <boost/geometry/algorithms/intersection.hpp>
#include <boost/geometry/algorithms/union.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/strategies/strategies.hpp>
#include <boost/numeric/conversion/cast.hpp>
#include <boost/throw_exception.hpp>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace vlm::detail {

namespace {

using Invalid = boost::geometry::overlay_invalid_input_exception;

// The power of two that brings polygons to a usual size: the clipper's epsilon is absolute, and so
// is the least step of Boost's grid.
int UsualExponent(const MultiPolygon2d& a, const MultiPolygon2d& b) {
  Box2d box;
  for (const MultiPolygon2d* polygons : {&a, &b}) {
    for (const RingPolygon2d& polygon : *polygons) {
      for (const Vec2d& p : polygon.outer()) box.ExtendBy(p);
    }
  }
  if (box.IsDegenerate()) return 0;
  const Vec2d half = box.MaxCorner() * 0.5 - box.MinCorner() * 0.5;
  const double size = std::max(half.x, half.y);
  return size == 0 || (size > 1e-4 && size < 1e6) ? 0 : -std::ilogb(size);
}

void Scale(MultiPolygon2d& polygons, int exponent) {
  ForEachRing(polygons, [exponent](Ring2d& ring) {
    for (Vec2d& p : ring) p.Set(std::ldexp(p.x, exponent), std::ldexp(p.y, exponent));
  });
}

bool IsGoodOperand(const MultiPolygon2d& rings) {
  try {
    MultiPolygon2d repaired;
    static_cast<void>(PrepareRings(rings, repaired));
    return true;
  } catch (const Invalid&) {
    return false;
  }
}

// Puts all points on a grid of so many bits across the largest coordinate; none for 0.
void Round(MultiPolygon2d& rings, int bits) {
  double size = 0;
  ForEachRing(rings, [&size](const Ring2d& ring) {
    for (const Vec2d& p : ring) size = std::max({size, std::abs(p.x), std::abs(p.y)});
  });
  if (bits == 0 || size == 0) return;
  const double step = std::ldexp(1.0, std::ilogb(size) - bits);
  ForEachRing(rings, [step](Ring2d& ring) {
    for (Vec2d& p : ring) p.Set(std::round(p.x / step) * step, std::round(p.y / step) * step);
  });
}

// Rounded points can make rings cross by a hair. Rebuilds them: as they are, with such crossings
// made points by the clipper, or with all points on a grid of more and more width as well, on which
// most of them fall together.
std::optional<MultiPolygon2d> Settled(const MultiPolygon2d& rings) {
  constexpr int kTries = 3;
  for (const int bits : {0, 40, 36, 32, 28, 24, 20}) {
    MultiPolygon2d tried(rings);
    for (int i = 0; i < kTries; ++i) {
      Round(tried, bits);
      try {
        return RebuildRings(tried);
      } catch (const Invalid&) {
        const ClippedRings parted(GPC_UNION, tried, MultiPolygon2d());
        if (!parted.HasResult()) break;
        tried = parted.LooseRings();
      }
    }
  }
  return std::nullopt;
}

// The clipper's result as rings that the next operation takes.
MultiPolygon2d ByClipper(gpc_op operation, const MultiPolygon2d& a, const MultiPolygon2d& b) {
  const ClippedRings clipped(operation, a, b);
  std::optional<MultiPolygon2d> settled;
  if (clipped.HasResult()) settled = Settled(clipped.LooseRings());
  if (!settled) ThrowInvalidInput();
  return *std::move(settled);
}

// Version 1.74 of Boost's overlay takes seconds where hundreds of rings meet in a point, and for
// thousands of slivers.
bool SuitsBoost(const MultiPolygon2d& a, const MultiPolygon2d& b) {
  constexpr std::size_t kMostPoints = 2000;
  constexpr std::size_t kMostAtOnePlace = 8;
  std::vector<Vec2d> points;
  for (const MultiPolygon2d* polygons : {&a, &b}) {
    ForEachRing(*polygons,
                [&](const Ring2d& ring) { points.insert(points.end(), ring.begin(), ring.end()); });
  }
  if (points.size() > kMostPoints) return false;
  std::sort(points.begin(), points.end());
  for (std::size_t i = kMostAtOnePlace; i < points.size(); ++i) {
    if (points[i] == points[i - kMostAtOnePlace]) return false;
  }
  return true;
}

std::optional<MultiPolygon2d> ByBoost(gpc_op operation, const MultiPolygon2d& a,
                                      const MultiPolygon2d& b) {
  MultiPolygon2d result;
  try {
    if (operation == GPC_INT) boost::geometry::intersection(a, b, result);
    if (operation == GPC_UNION) boost::geometry::union_(a, b, result);
    if (operation == GPC_DIFF) boost::geometry::difference(a, b, result);
  } catch (const boost::numeric::bad_numeric_cast&) {
    return std::nullopt;  // its grid ends before the largest numbers
  }
  return result;
}

double AreaOf(const MultiPolygon2d& polygons) noexcept {
  const auto areaOfRing = [](const Ring2d& ring) {
    return std::abs(PolygonArea(ring.data(), static_cast<unsigned int>(ring.size())));
  };
  double area = 0;
  for (const RingPolygon2d& polygon : polygons) {
    area += areaOfRing(polygon.outer());
    for (const Ring2d& ring : polygon.inners()) area -= areaOfRing(ring);
  }
  return area;
}

// Runs an operation of Boost's, which decides on a grid of 1e7 steps: now and then it loses a ring
// where many edges meet, or gives rings that cross by a hair. Where the clipper finds another area,
// its result is taken.
MultiPolygon2d Run(gpc_op operation, const MultiPolygon2d& a, const MultiPolygon2d& b) {
  constexpr double kTolerance = 1e-12;
  MultiPolygon2d clipped = ByClipper(operation, a, b);
  if (!SuitsBoost(a, b)) return clipped;
  std::optional<MultiPolygon2d> result = ByBoost(operation, a, b);
  const bool isRight =
      result && std::abs(AreaOf(*result) - AreaOf(clipped)) <= kTolerance * (AreaOf(a) + AreaOf(b));
  return isRight && IsGoodOperand(*result) ? *std::move(result) : clipped;
}

// Where two edges cross, the differences meet in a point that each has rounded for itself. Puts the
// points of `tail` that lie next to one of `head` there, so that the two do not cross by a hair.
void Join(const MultiPolygon2d& head, MultiPolygon2d& tail) {
  constexpr double kNear = 1e-14;
  std::vector<Vec2d> points;
  ForEachRing(head,
              [&](const Ring2d& ring) { points.insert(points.end(), ring.begin(), ring.end()); });
  std::sort(points.begin(), points.end());
  double size = 0;
  for (const Vec2d& p : points) size = std::max({size, std::abs(p.x), std::abs(p.y)});
  const double reach = kNear * size;
  ForEachRing(tail, [&](Ring2d& ring) {
    for (Vec2d& p : ring) {
      const Vec2d least(p.x - reach, -std::numeric_limits<double>::max());
      auto found = std::lower_bound(points.begin(), points.end(), least);
      while (found != points.end() && found->x <= p.x + reach && std::abs(found->y - p.y) > reach) {
        ++found;
      }
      if (found != points.end() && found->x <= p.x + reach) p = *found;
    }
  });
}

MultiPolygon2d ExclusiveOr(const MultiPolygon2d& a, const MultiPolygon2d& b) {
  MultiPolygon2d result = Run(GPC_DIFF, a, b);
  MultiPolygon2d tail = Run(GPC_DIFF, b, a);
  Join(result, tail);
  for (RingPolygon2d& polygon : tail) result.push_back(std::move(polygon));
  return IsGoodOperand(result) ? result : ByClipper(GPC_XOR, a, b);
}

MultiPolygon2d Combine(RingOperation operation, const MultiPolygon2d& a, const MultiPolygon2d& b) {
  switch (operation) {
    case RingOperation::kIntersection:
      return Run(GPC_INT, a, b);
    case RingOperation::kUnion:
      return Run(GPC_UNION, a, b);
    case RingOperation::kDifference:
      return Run(GPC_DIFF, a, b);
    case RingOperation::kXor:
      break;
  }
  return ExclusiveOr(a, b);
}

}  // namespace

MultiPolygon2d Overlay(RingOperation operation, const MultiPolygon2d& left,
                       const MultiPolygon2d& right) {
  MultiPolygon2d repairedLeft;
  MultiPolygon2d repairedRight;
  const MultiPolygon2d& a = PrepareRings(left, repairedLeft);
  const MultiPolygon2d& b = &left == &right ? a : PrepareRings(right, repairedRight);
  const int exponent = UsualExponent(a, b);
  if (exponent == 0) return Combine(operation, a, b);
  MultiPolygon2d scaledLeft(a);
  MultiPolygon2d scaledRight(b);
  Scale(scaledLeft, exponent);
  Scale(scaledRight, exponent);
  MultiPolygon2d result = Combine(operation, scaledLeft, scaledRight);
  Scale(result, -exponent);
  return result;
}

bool EqualsBox(const Ring2d& ring, const Box2d& box) {
  const boost::geometry::model::box<Vec2d> bounds(box.MinCorner(), box.MaxCorner());
  return boost::geometry::equals(ring, bounds);
}

void ThrowInvalidInput() {
  boost::throw_exception(boost::geometry::overlay_invalid_input_exception());
}

}  // namespace vlm::detail

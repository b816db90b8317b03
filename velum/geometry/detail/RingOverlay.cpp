#include <velum/geometry/detail/ClippedRings.h>
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
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace vlm::detail {

namespace {

using Invalid = boost::geometry::overlay_invalid_input_exception;

template <class Polygons, class Action>
void ForEachRing(Polygons& polygons, Action action) {
  for (auto& polygon : polygons) {
    action(polygon.outer());
    for (auto& ring : polygon.inners()) action(ring);
  }
}

// The power of two that brings polygons to a usual size: Boost's grid has at least a step of 1, and
// 64 bits for products of its coordinates, and the clipper's epsilon is absolute.
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

// Rounded points can make rings cross by a hair. Rebuilds them, if need be with all points on a
// grid of more and more width, on which most such crossings become common points; the widest is
// about Boost's.
std::optional<MultiPolygon2d> Settled(const MultiPolygon2d& rings) {
  for (const int bits : {0, 40, 36, 32, 28, 24}) {
    MultiPolygon2d rounded(rings);
    if (bits > 0) {
      double size = 0;
      ForEachRing(rings, [&](const Ring2d& ring) {
        for (const Vec2d& p : ring) size = std::max({size, std::abs(p.x), std::abs(p.y)});
      });
      const double step = std::ldexp(1.0, std::ilogb(size) - bits);
      ForEachRing(rounded, [step](Ring2d& ring) {
        for (Vec2d& p : ring) p.Set(std::round(p.x / step) * step, std::round(p.y / step) * step);
      });
    }
    try {
      return RebuildRings(rounded);
    } catch (const Invalid&) {
      // On to the next grid.
    }
  }
  return std::nullopt;
}

// Runs an operation of Boost's. Version 1.74 rounds points to a grid of 1e7 steps for its
// decisions. Now and then it loses a ring where many edges meet, gives rings that cross by a hair,
// which the next operation would refuse, or gives up on coordinates near the largest number. Its
// result is kept where the clipper finds the same area, up to that rounding; otherwise the
// clipper's is taken.
template <class Operation>
MultiPolygon2d Run(Operation operate, gpc_op operation, const MultiPolygon2d& a,
                   const MultiPolygon2d& b) {
  constexpr double kTolerance = 1e-6;
  MultiPolygon2d result;
  bool isRight = true;
  try {
    operate(a, b, result);
  } catch (const boost::numeric::bad_numeric_cast&) {
    isRight = false;
  }
  const ClippedRings clipped(operation, a, b);
  if (clipped.HasResult()) {
    const double difference = std::abs(clipped.Area() - AreaOfRings(result));
    isRight = isRight && difference <= kTolerance * (AreaOfRings(a) + AreaOfRings(b));
  }
  if (isRight && IsGoodOperand(result)) return result;
  std::optional<MultiPolygon2d> settled;
  if (isRight) settled = Settled(result);
  if (!settled && clipped.HasResult()) settled = Settled(clipped.LooseRings());
  if (settled) return *std::move(settled);
  if (!isRight) ThrowInvalidInput();
  return result;
}

MultiPolygon2d Intersection(const MultiPolygon2d& a, const MultiPolygon2d& b) {
  const auto operate = [](const auto& p, const auto& q, auto& result) {
    boost::geometry::intersection(p, q, result);
  };
  return Run(operate, GPC_INT, a, b);
}

MultiPolygon2d Union(const MultiPolygon2d& a, const MultiPolygon2d& b) {
  const auto operate = [](const auto& p, const auto& q, auto& result) {
    boost::geometry::union_(p, q, result);
  };
  return Run(operate, GPC_UNION, a, b);
}

MultiPolygon2d Difference(const MultiPolygon2d& a, const MultiPolygon2d& b) {
  const auto operate = [](const auto& p, const auto& q, auto& result) {
    boost::geometry::difference(p, q, result);
  };
  return Run(operate, GPC_DIFF, a, b);
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
  MultiPolygon2d result = Difference(a, b);
  MultiPolygon2d tail = Difference(b, a);
  Join(result, tail);
  for (RingPolygon2d& polygon : tail) result.push_back(std::move(polygon));
  if (IsGoodOperand(result)) return result;
  std::optional<MultiPolygon2d> settled = Settled(result);
  if (!settled) settled = Settled(ClippedRings(GPC_XOR, a, b).LooseRings());
  return settled ? *std::move(settled) : result;
}

MultiPolygon2d Combine(RingOperation operation, const MultiPolygon2d& a, const MultiPolygon2d& b) {
  switch (operation) {
    case RingOperation::kIntersection:
      return Intersection(a, b);
    case RingOperation::kUnion:
      return Union(a, b);
    case RingOperation::kDifference:
      return Difference(a, b);
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

#include <velum/geometry/PolygonRings.h>

#include <velum/core/Exception.h>
#include <velum/geometry/Constants.h>
#include <velum/geometry/PolygonMeasures.h>
#include <velum/geometry/detail/Finite.h>
#include <velum/geometry/detail/ForEachRing.h>
#include <velum/geometry/detail/Orientation.h>
#include <velum/geometry/detail/RoundedPoint.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace vlm {

namespace {

void RequireArray(const void* array, unsigned int count) {
  if (!array && count > 0) ThrowErrorImpl(__FILE_NAME__, __LINE__, ERR_INTERNAL);
}

bool IsClosingPoint(const Vec2d& first, const Vec2d& last) {
  // Equal infinities close a ring as well; their difference is no number.
  return last == first || (std::abs(first.x - last.x) <= std::abs(first.x) * EPSILON &&
                           std::abs(first.y - last.y) <= std::abs(first.y) * EPSILON);
}

bool IsFinite(const Ring2d& ring) {
  return std::all_of(ring.begin(), ring.end(), detail::IsFinite<double>);
}

template <class Point>
Ring2d MakeRing(const Point* points, unsigned int count) {
  RequireArray(points, count);
  Ring2d ring;
  ring.reserve(std::size_t{count} + 1);
  for (unsigned int i = 0; i < count; ++i) ring.push_back(Vec2d(points[i]));
  if (ring.size() > 2 && !IsClosingPoint(ring.front(), ring.back())) ring.push_back(ring.front());
  // The sign of the area is taken exactly, so that a small ring far from the origin comes out
  // right.
  if (ring.size() >= 4 && IsFinite(ring) && detail::RingOrientation(ring.data(), ring.size()) > 0) {
    std::reverse(ring.begin(), ring.end());
  }
  return ring;
}

template <class Point>
MultiPolygon2d MakeMultiPolygon(const Point* points, const unsigned int* counts,
                                unsigned int contourCount) {
  RequireArray(counts, contourCount);
  MultiPolygon2d polygons;
  polygons.resize(contourCount);
  for (unsigned int i = 0; i < contourCount; ++i) {
    RequireArray(points, counts[i]);
    polygons[i].outer() = MakeRing(points, counts[i]);
    points += counts[i];
  }
  return polygons;
}

template <class Point>
unsigned int PutRing(Point* out, const Ring2d& ring, bool close) {
  const std::size_t count = ring.size() - (close || ring.empty() ? 0 : 1);
  if (out) {
    for (std::size_t i = 0; i < count; ++i) detail::PutPoint(ring[i], out[i]);
  }
  return static_cast<unsigned int>(count);
}

template <class Point>
unsigned int PutRings(Point* out, const MultiPolygon2d& polygons, bool close) {
  unsigned int total = 0;
  detail::ForEachRing(polygons, [&](const Ring2d& ring) {
    total += PutRing(out ? out + total : out, ring, close);
  });
  return total;
}

template <class Point>
unsigned int PutSinglePath(Point* out, const MultiPolygon2d& polygons) {
  unsigned int total = 0;
  std::vector<Vec2d> starts;
  detail::ForEachRing(polygons, [&](const Ring2d& ring) {
    if (ring.empty()) return;
    total += PutRing(out ? out + total : out, ring, true);
    starts.push_back(ring.front());
  });
  for (std::size_t i = starts.size(); i-- > 1; ++total) {
    if (out) detail::PutPoint(starts[i - 1], out[total]);
  }
  return total;
}

}  // namespace

void InitRing(const Vec2d* points, unsigned int count, Ring2d& ring) {
  ring = MakeRing(points, count);
}

void InitRing(const POINT* points, unsigned int count, Ring2d& ring) {
  ring = MakeRing(points, count);
}

void InitMultiPolygon(const Vec2d* points, const unsigned int* counts, unsigned int contourCount,
                      MultiPolygon2d& multiPolygon) {
  multiPolygon = MakeMultiPolygon(points, counts, contourCount);
}

void InitMultiPolygon(const POINT* points, const unsigned int* counts, unsigned int contourCount,
                      MultiPolygon2d& multiPolygon) {
  multiPolygon = MakeMultiPolygon(points, counts, contourCount);
}

void InitMultiPolygonUINTCounts(const Vec2d* points, const unsigned int* counts,
                                unsigned int contourCount, MultiPolygon2d& multiPolygon) {
  InitMultiPolygon(points, counts, contourCount, multiPolygon);
}

void InitMultiPolygonUINTCounts(const POINT* points, const unsigned int* counts,
                                unsigned int contourCount, MultiPolygon2d& multiPolygon) {
  InitMultiPolygon(points, counts, contourCount, multiPolygon);
}

unsigned int GetLegacyRingPoints(Vec2d* out, const Ring2d& ring, bool close) {
  return PutRing(out, ring, close);
}

unsigned int GetLegacyRingPoints(POINT* out, const Ring2d& ring, bool close) {
  return PutRing(out, ring, close);
}

unsigned int GetLegacyRingPoints(std::nullptr_t, const Ring2d& ring, bool close) {
  return PutRing<Vec2d>(nullptr, ring, close);
}

unsigned int GetLegacyMultiPolygonPoints(Vec2d* out, const MultiPolygon2d& multiPolygon,
                                         bool close) {
  return PutRings(out, multiPolygon, close);
}

unsigned int GetLegacyMultiPolygonPoints(POINT* out, const MultiPolygon2d& multiPolygon,
                                         bool close) {
  return PutRings(out, multiPolygon, close);
}

unsigned int GetLegacyMultiPolygonPoints(std::nullptr_t, const MultiPolygon2d& multiPolygon,
                                         bool close) {
  return PutRings<Vec2d>(nullptr, multiPolygon, close);
}

unsigned int GetLegacyMultiPolygonCounts(unsigned int* out, const MultiPolygon2d& multiPolygon,
                                         bool close) {
  unsigned int rings = 0;
  detail::ForEachRing(multiPolygon, [&](const Ring2d& ring) {
    if (out) out[rings] = PutRing<Vec2d>(nullptr, ring, close);
    ++rings;
  });
  return rings;
}

unsigned int GetLegacyMultiPolygonUINTCounts(unsigned int* out, const MultiPolygon2d& multiPolygon,
                                             bool close) {
  return GetLegacyMultiPolygonCounts(out, multiPolygon, close);
}

unsigned int GetLegacyMultiPolygonAsSinglePolygon(Vec2d* out, const MultiPolygon2d& multiPolygon) {
  return PutSinglePath(out, multiPolygon);
}

unsigned int GetLegacyMultiPolygonAsSinglePolygon(POINT* out, const MultiPolygon2d& multiPolygon) {
  return PutSinglePath(out, multiPolygon);
}

unsigned int GetLegacyMultiPolygonAsSinglePolygon(std::nullptr_t,
                                                  const MultiPolygon2d& multiPolygon) {
  return PutSinglePath<Vec2d>(nullptr, multiPolygon);
}

bool IsValidRing(const Ring2d& ring) {
  return ring.size() >= 2 && ring.back() == ring.front() &&
         PolygonArea(ring.data(), static_cast<unsigned int>(ring.size())) < 0;
}

bool IsValidPolygon(const RingPolygon2d& polygon) {
  return IsValidRing(polygon.outer()) &&
         std::all_of(polygon.inners().begin(), polygon.inners().end(), IsValidRing);
}

bool IsValidMultiPolygon(const MultiPolygon2d& multiPolygon) {
  return std::all_of(multiPolygon.begin(), multiPolygon.end(), IsValidPolygon);
}

}  // namespace vlm

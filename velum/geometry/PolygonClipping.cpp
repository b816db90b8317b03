#include <velum/geometry/PolygonClipping.h>

#include <velum/geometry/GPolygon.h>
#include <velum/geometry/GPolygon2d.h>
#include <velum/geometry/PodVector.h>
#include <velum/geometry/PolyClip.h>

#include <utility>

namespace vlm {

namespace {

template <class Polygon>
void PutResult(const Polygon& result, std::vector<Vec2d>& points, std::vector<unsigned int>& counts,
               bool close) {
  if (result.GetNumContours() > 0) result.GetPolyPolygon(points, counts, close);
}

template <class Polygon>
void ClipToRect(const Polygon& polygon, const Box2d& box, std::vector<Vec2d>& points,
                std::vector<unsigned int>& counts, bool close) {
  Polygon result;
  GClipGPolygonToRect(polygon, box, result);
  PutResult(result, points, counts, close);
}

template <class Polygon>
void ClipToPolygon(const Polygon& subject, const Polygon& clip, Polygon& result) {
  Box2d box;
  if (clip.IsRectangle(&box)) {
    GClipGPolygonToRect(subject, box, result);
    return;
  }
  Polygon clipped(subject);
  clipped.Intersection(clip);
  result = std::move(clipped);
}

template <class Polygon>
void ClipToPolygon(const Polygon& subject, const Polygon& clip, std::vector<Vec2d>& points,
                   std::vector<unsigned int>& counts, bool close) {
  Polygon result;
  ClipToPolygon(subject, clip, result);
  PutResult(result, points, counts, close);
}

// All rings as contours: an odd number of them holds what is inside.
GPolygon AllRings(const GPolygon2d& polygon) {
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  polygon.GetPolyPolygon(points, counts, false);
  return GPolygon(points.data(), counts.data(), static_cast<unsigned int>(counts.size()));
}

template <class Polygon>
bool Contains(const Polygon& container, const Polygon& polygon) {
  Box2d outer;
  if (container.IsRectangle(&outer)) {
    Box2d inner = polygon.GetBBox();
    outer.Normalize();
    inner.Normalize();
    return outer.Contains(inner);
  }
  Polygon rest(polygon);
  rest.Difference(container);
  return rest.GetNumContours() == 0;
}

}  // namespace

void GClipGPolygonToRect(const GPolygon& polygon, const Box2d& box, GPolygon& result) {
  Box2d window = box;
  window.Normalize();
  const CPolyClip clip(window);
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  polygon.GetPolyPolygon(points, counts, false);
  std::vector<Vec2d> kept;
  std::vector<unsigned int> keptCounts;
  CPodVector<Vec2d, 32> clipped;
  const Vec2d* contour = points.data();
  for (const unsigned int count : counts) {
    clipped.clear();
    const unsigned int size = clip.Clip(contour, count, clipped);
    contour += count;
    if (size < 2) continue;
    kept.insert(kept.end(), clipped.begin(), clipped.end());
    keptCounts.push_back(size);
  }
  result = GPolygon(kept.data(), keptCounts.data(), static_cast<unsigned int>(keptCounts.size()));
}

void GClipGPolygonToRect(const GPolygon& polygon, const Box2d& box, std::vector<Vec2d>& points,
                         std::vector<unsigned int>& counts, bool close) {
  ClipToRect(polygon, box, points, counts, close);
}

void GClipGPolygonToRect(const GPolygon2d& polygon, const Box2d& box, GPolygon2d& result) {
  polygon.Intersection(box, result);
}

void GClipGPolygonToRect(const GPolygon2d& polygon, const Box2d& box, std::vector<Vec2d>& points,
                         std::vector<unsigned int>& counts, bool close) {
  ClipToRect(polygon, box, points, counts, close);
}

void GClipPolyPolygonToRect(const Vec2d* points, const unsigned int* counts,
                            unsigned int contourCount, const Box2d& box,
                            std::vector<Vec2d>& outPoints, std::vector<unsigned int>& outCounts,
                            bool close) {
  ClipToRect(GPolygon(points, counts, contourCount), box, outPoints, outCounts, close);
}

void GClipPolyPolygonToRectUsingGPolygon2d(const Vec2d* points, const unsigned int* counts,
                                           unsigned int contourCount, const Box2d& box,
                                           std::vector<Vec2d>& outPoints,
                                           std::vector<unsigned int>& outCounts, bool close) {
  ClipToRect(GPolygon2d(points, counts, contourCount), box, outPoints, outCounts, close);
}

void GClipGPolygonToGPolygon(const GPolygon& subject, const GPolygon& clip, GPolygon& result) {
  ClipToPolygon(subject, clip, result);
}

void GClipGPolygonToGPolygon(const GPolygon& subject, const GPolygon& clip,
                             std::vector<Vec2d>& points, std::vector<unsigned int>& counts,
                             bool close) {
  ClipToPolygon(subject, clip, points, counts, close);
}

void GClipGPolygonToGPolygon(const GPolygon2d& subject, const GPolygon2d& clip,
                             GPolygon2d& result) {
  ClipToPolygon(subject, clip, result);
}

void GClipGPolygonToGPolygon(const GPolygon2d& subject, const GPolygon2d& clip,
                             std::vector<Vec2d>& points, std::vector<unsigned int>& counts,
                             bool close) {
  ClipToPolygon(subject, clip, points, counts, close);
}

void GClipPolyPolygonToGPolygon(const Vec2d* points, const unsigned int* counts,
                                unsigned int contourCount, const GPolygon& clip,
                                std::vector<Vec2d>& outPoints, std::vector<unsigned int>& outCounts,
                                bool close) {
  ClipToPolygon(GPolygon(points, counts, contourCount), clip, outPoints, outCounts, close);
}

void GClipPolyPolygonToGPolygon(const Vec2d* points, const unsigned int* counts,
                                unsigned int contourCount, const GPolygon2d& clip,
                                std::vector<Vec2d>& outPoints, std::vector<unsigned int>& outCounts,
                                bool close) {
  ClipToPolygon(GPolygon2d(points, counts, contourCount), clip, outPoints, outCounts, close);
}

bool GPolygonContains(const GPolygon& container, const GPolygon& polygon) {
  return Contains(container, polygon);
}

bool GPolygonContains(const GPolygon& container, const Vec2d* points, const unsigned int* counts,
                      unsigned int contourCount) {
  return Contains(container, GPolygon(points, counts, contourCount));
}

bool GPolygonContains(const GPolygon2d& container, const GPolygon2d& polygon) {
  return Contains(container, polygon);
}

bool GPolygonContains(const GPolygon2d& container, const Vec2d* points, const unsigned int* counts,
                      unsigned int contourCount) {
  return Contains(container, GPolygon2d(points, counts, contourCount));
}

bool GPolygonContains(const GPolygon& container, const GPolygon2d& polygon) {
  return Contains(container, AllRings(polygon));
}

bool GPolygonContains(const GPolygon2d& container, const GPolygon& polygon) {
  return Contains(AllRings(container), polygon);
}

}  // namespace vlm

#pragma once

/// \file
/// The area of a set operation, by parity, of any polygons: cut at every height where edges end or
/// cross into slices of trapezoids. Cubic in the edges, and exact to a few units of long double for
/// coordinates of like size. Nothing of the library is used here.

#include <velum/geometry/test/reference/PlainClipper.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace vlm::reference {

namespace detail {

struct AreaEdge {
  long double x0, y0, x1, y1;  // y0 < y1
  bool isClip;
  long double XAt(long double y) const { return x0 + (x1 - x0) * ((y - y0) / (y1 - y0)); }
};

inline void AddEdges(const PlainPolygon& polygon, bool isClip, std::vector<AreaEdge>& edges) {
  for (const PlainContour& contour : polygon) {
    const PlainVertices& v = contour.vertices;
    for (std::size_t i = 0; i < v.size(); ++i) {
      PlainVertex a = v[i];
      PlainVertex b = v[(i + 1) % v.size()];
      if (a.y == b.y) continue;
      if (a.y > b.y) std::swap(a, b);
      edges.push_back({a.x, a.y, b.x, b.y, isClip});
    }
  }
}

inline void AddCrossing(const AreaEdge& a, const AreaEdge& b, std::vector<long double>& heights) {
  const long double ax = a.x1 - a.x0, ay = a.y1 - a.y0, bx = b.x1 - b.x0, by = b.y1 - b.y0;
  const long double det = ax * by - ay * bx;
  if (det == 0) return;
  const long double t = ((b.x0 - a.x0) * by - (b.y0 - a.y0) * bx) / det;
  const long double u = ((b.x0 - a.x0) * ay - (b.y0 - a.y0) * ax) / det;
  if (t > 0 && t < 1 && u > 0 && u < 1) heights.push_back(a.y0 + t * ay);
}

inline bool IsInside(PlainOperation operation, bool clip, bool subject) {
  switch (operation) {
    case kDifference:
      return subject && !clip;
    case kIntersection:
      return subject && clip;
    case kXor:
      return subject != clip;
    default:
      return subject || clip;
  }
}

}  // namespace detail

inline double EvenOddArea(PlainOperation operation, const PlainPolygon& subject,
                          const PlainPolygon& clip) {
  std::vector<detail::AreaEdge> edges;
  detail::AddEdges(subject, false, edges);
  detail::AddEdges(clip, true, edges);
  std::vector<long double> heights;
  for (std::size_t i = 0; i < edges.size(); ++i) {
    heights.push_back(edges[i].y0);
    heights.push_back(edges[i].y1);
    for (std::size_t j = 0; j < i; ++j) detail::AddCrossing(edges[i], edges[j], heights);
  }
  std::sort(heights.begin(), heights.end());
  long double area = 0;
  for (std::size_t i = 1; i < heights.size(); ++i) {
    const long double height = heights[i] - heights[i - 1];
    const long double middle = heights[i - 1] + height / 2;
    if (height <= 0) continue;
    std::vector<std::pair<long double, bool>> cuts;
    for (const detail::AreaEdge& edge : edges) {
      if (edge.y0 < middle && edge.y1 > middle) cuts.emplace_back(edge.XAt(middle), edge.isClip);
    }
    std::sort(cuts.begin(), cuts.end());
    bool inside[2] = {};
    for (std::size_t c = 0; c + 1 < cuts.size(); ++c) {
      inside[cuts[c].second] = !inside[cuts[c].second];
      if (detail::IsInside(operation, inside[true], inside[false])) {
        area += height * (cuts[c + 1].first - cuts[c].first);
      }
    }
  }
  return static_cast<double>(area);
}

/// The area of contours that do not cross: holes are taken away.
inline double AreaOfContours(const PlainPolygon& polygon) {
  double area = 0;
  for (const PlainContour& contour : polygon) {
    const PlainVertices& v = contour.vertices;
    double twice = 0;
    for (std::size_t i = 0; i < v.size(); ++i) {
      const PlainVertex& next = v[(i + 1) % v.size()];
      twice += v[i].x * next.y - next.x * v[i].y;
    }
    area += (contour.hole ? -0.5 : 0.5) * std::fabs(twice);
  }
  return area;
}

/// The area of strips that do not overlap.
inline double AreaOfStrips(const PlainStrips& strips) {
  double area = 0;
  for (const PlainVertices& v : strips) {
    for (std::size_t i = 2; i < v.size(); ++i) {
      const PlainVertex &a = v[i - 2], &b = v[i - 1], &c = v[i];
      area += 0.5 * std::fabs((b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y));
    }
  }
  return area;
}

}  // namespace vlm::reference

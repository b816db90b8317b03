#pragma once

/// \file
/// The clipper's records with owners, its outcomes as values, and random polygons of the kinds that
/// trouble a clipper.

#include <velum/core/Exception.h>
#include <velum/geometry/Gpc.h>
#include <velum/geometry/test/reference/PlainClipper.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

namespace vlm::test {

using reference::PlainContour;
using reference::PlainOperation;
using reference::PlainPolygon;
using reference::PlainStrips;
using reference::PlainVertex;
using reference::PlainVertices;

/// A polygon that is released. It may be handed to any of the clipper's functions.
class OwnedPolygon {
 public:
  OwnedPolygon() = default;
  explicit OwnedPolygon(const PlainPolygon& polygon) {
    const std::size_t count = polygon.size();
    if (count == 0) return;
    polygon_.hole = static_cast<std::int32_t*>(std::calloc(count, sizeof(std::int32_t)));
    polygon_.contour = static_cast<gpc_vertex_list*>(std::calloc(count, sizeof(gpc_vertex_list)));
    for (const PlainContour& contour : polygon) {
      const std::size_t size = contour.vertices.size();
      gpc_vertex_list& list = polygon_.contour[polygon_.num_contours];
      polygon_.hole[polygon_.num_contours++] = contour.hole;
      list.num_vertices = static_cast<std::int32_t>(size);
      if (size > 0) list.vertex = static_cast<gpc_vertex*>(std::calloc(size, sizeof(gpc_vertex)));
      for (std::size_t i = 0; i < size; ++i) {
        list.vertex[i] = {contour.vertices[i].x, contour.vertices[i].y};
      }
    }
  }
  OwnedPolygon(const OwnedPolygon&) = delete;
  OwnedPolygon& operator=(const OwnedPolygon&) = delete;
  ~OwnedPolygon() { gpc_free_polygon(&polygon_); }

  operator gpc_polygon*() { return &polygon_; }
  gpc_polygon* operator->() { return &polygon_; }

 private:
  gpc_polygon polygon_{};
};

inline PlainVertices ToPlain(const gpc_vertex_list& list) {
  PlainVertices vertices;
  for (std::int32_t i = 0; i < list.num_vertices; ++i) {
    vertices.push_back({list.vertex[i].x, list.vertex[i].y});
  }
  return vertices;
}

inline PlainPolygon ToPlain(const gpc_polygon& polygon) {
  PlainPolygon plain;
  for (std::int32_t i = 0; i < polygon.num_contours; ++i) {
    plain.push_back({ToPlain(polygon.contour[i]), polygon.hole[i] != 0});
  }
  return plain;
}

inline PlainStrips ToPlain(const gpc_tristrip& strips) {
  PlainStrips plain;
  for (std::int32_t i = 0; i < strips.num_strips; ++i) plain.push_back(ToPlain(strips.strip[i]));
  return plain;
}

/// What a clip gives: a result, or the number of an error.
template <class Result>
struct Outcome {
  int code = 0;
  Result result;
  bool operator==(const Outcome&) const = default;
};

inline Outcome<PlainPolygon> Clip(PlainOperation operation, const PlainPolygon& subject,
                                  const PlainPolygon& clip) {
  OwnedPolygon a(subject), b(clip), result;
  try {
    gpc_polygon_clip(static_cast<gpc_op>(operation), a, b, result);
  } catch (const Exception& error) {
    return {error.GetErrCode(), {}};
  }
  return {0, ToPlain(*result)};
}

inline Outcome<PlainStrips> StripClip(PlainOperation operation, const PlainPolygon& subject,
                                      const PlainPolygon& clip) {
  OwnedPolygon a(subject), b(clip);
  gpc_tristrip strips{};
  try {
    gpc_tristrip_clip(static_cast<gpc_op>(operation), a, b, &strips);
  } catch (const Exception& error) {
    return {error.GetErrCode(), {}};
  }
  Outcome<PlainStrips> outcome{0, ToPlain(strips)};
  gpc_free_tristrip(&strips);
  return outcome;
}

/// What the plain sweep gives.
template <class Work>
auto PlainOutcome(Work work) -> Outcome<decltype(work())> {
  try {
    return {0, work()};
  } catch (const reference::PlainError& error) {
    return {error.code, {}};
  }
}

/// Text that can stand in a test, to repeat what failed.
inline std::string ToText(const PlainPolygon& polygon) {
  std::string text = "{";
  for (const PlainContour& contour : polygon) {
    text += "{{";
    for (const PlainVertex& v : contour.vertices) {
      char vertex[64];
      std::snprintf(vertex, sizeof(vertex), "{%.17g, %.17g}, ", v.x, v.y);
      text += vertex;
    }
    text += contour.hole ? "}, true}, " : "}}, ";
  }
  return text + "}";
}

/// Polygons of one kind, as many as are asked for; a seed gives the same ones again.
class RandomPolygons {
 public:
  enum Kind {
    kReal,           ///< Any coordinates: crossings in general position.
    kGrid,           ///< Few whole coordinates: edges and vertices that coincide.
    kThirds,         ///< A grid whose steps are not exact: edges that almost coincide.
    kLevels,         ///< Few heights: many horizontal edges.
    kRectangles,     ///< Upright rectangles on a grid.
    kTriangulation,  ///< Triangles of one jittered grid: borders that are shared exactly.
    kStars,          ///< Simple contours that cross each other only.
    kSlivers,        ///< Vertices a few units of the last place beside those of a grid.
    kLines,          ///< Vertices on four lines.
  };
  static constexpr Kind kKinds[] = {kReal,          kGrid,  kThirds,  kLevels, kRectangles,
                                    kTriangulation, kStars, kSlivers, kLines};

  RandomPolygons(Kind kind, unsigned seed, int contours, int vertices)
      : kind_(kind), random_(seed), contours_(contours), vertices_(vertices) {}

  PlainPolygon Next() {
    PlainPolygon polygon(static_cast<std::size_t>(Below(contours_ + 1)));
    for (PlainContour& contour : polygon) contour.vertices = NextContour();
    return polygon;
  }
  PlainOperation Operation() { return static_cast<PlainOperation>(Below(4)); }
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

 private:
  double Real() { return static_cast<double>(random_()) / 4294967296.0; }
  PlainVertices NextContour();
  PlainVertex NextVertex();

  static constexpr int kSide = 6;

  Kind kind_;
  std::mt19937 random_;
  int contours_;
  int vertices_;
};

inline PlainVertex RandomPolygons::NextVertex() {
  const int column = Below(kSide);
  const int row = Below(kSide);
  switch (kind_) {
    case kThirds:
      return {column * 0.1 + 1 / 3.0, row * 0.7 - 1 / 7.0};
    case kLevels:
      return {Real(), row * 0.3};
    case kSlivers:
      return {column + Below(3) * 0x1p-50, row + Below(3) * 0x1p-50};
    case kLines: {
      const double t = Below(kSide * kSide);
      const PlainVertex onLine[] = {{t, t}, {3, t}, {t, 3 * t - 5}, {row + 0.1 * t, 7 - 0.3 * t}};
      return onLine[column % 4];
    }
    case kGrid:
      return {static_cast<double>(column), static_cast<double>(row)};
    default:
      return {Real(), Real()};
  }
}

inline PlainVertices RandomPolygons::NextContour() {
  PlainVertices v;
  if (kind_ == kRectangles) {
    const double x0 = Below(kSide), y0 = Below(kSide);
    const double x1 = x0 + 1 + Below(3), y1 = y0 + 1 + Below(3);
    return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
  }
  if (kind_ == kTriangulation) {
    const int column = Below(kSide), row = Below(kSide);
    const bool upper = Below(2) != 0;
    const auto node = [](int c, int r) {
      // The same jitter for a node in every contour and polygon.
      const int jitter = (c * 7 + r * 13) % 11;
      return PlainVertex{c + jitter * 0.03, r + (jitter % 5) * 0.07};
    };
    v = {node(column, row), node(column + 1, row + 1)};
    v.push_back(upper ? node(column, row + 1) : node(column + 1, row));
    return v;
  }
  const int count = 3 + Below(vertices_ - 2);
  if (kind_ == kStars) {
    constexpr double kTurn = 6.283185307179586;
    const double x = Real(), y = Real();
    double angle = Real();
    for (int i = 0; i < count; ++i) {
      const double radius = 0.2 + Real();
      v.push_back({x + radius * std::cos(angle), y + radius * std::sin(angle)});
      angle += kTurn / count;
    }
    return v;
  }
  for (int i = 0; i < count; ++i) v.push_back(NextVertex());
  return v;
}

}  // namespace vlm::test

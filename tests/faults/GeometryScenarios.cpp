#include "Scenarios.h"

#include <velum/core/ErrorCodes.h>
#include <velum/files/BufferedFile.h>
#include <velum/geometry/ClipUtil.h>
#include <velum/geometry/GDashLineGenerator.h>
#include <velum/geometry/GLineClipPolygon.h>
#include <velum/geometry/GPolygon.h>
#include <velum/geometry/GPolygon2d.h>
#include <velum/geometry/GPolyline.h>
#include <velum/geometry/Gpc.h>
#include <velum/geometry/PolyClip.h>
#include <velum/geometry/PolygonClipping.h>
#include <velum/geometry/PolygonRings.h>
#include <velum/geometry/Thinning.h>

#include <cmath>
#include <memory>
#include <sstream>
#include <vector>

namespace vlm::faults {
namespace {

/// A star whose arms cross, about a place.
std::vector<Vec2d> Star(double x, double y) {
  std::vector<Vec2d> points;
  for (int i = 0; i < 7; ++i)
    points.emplace_back(x + 10 * std::cos(2.7 * i), y + 10 * std::sin(2.7 * i));
  return points;
}

/// A ring of many corners that does not cross itself.
std::vector<Vec2d> Flower(double x, double y) {
  std::vector<Vec2d> points;
  for (int i = 0; i < 60; ++i) {
    const double angle = i * 0.1047, radius = 10 + 3 * std::sin(5 * angle);
    points.emplace_back(x + radius * std::cos(angle), y + radius * std::sin(angle));
  }
  return points;
}

std::string Told(const std::vector<Vec2d>& points, const std::vector<unsigned int>& counts) {
  std::ostringstream out;
  out.precision(17);
  for (const unsigned int count : counts) out << count << " ";
  for (const Vec2d& p : points) out << p.x << "," << p.y << " ";
  return out.str();
}

template <class Polygon>
std::string Told(const Polygon& polygon) {
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  polygon.GetPolyPolygon(points, counts, false);
  return Told(points, counts);
}

template <class Polygon>
std::string Combined(const std::vector<Vec2d>& a, const std::vector<Vec2d>& b) {
  const auto count = static_cast<unsigned int>(a.size());
  Polygon polygon(a.data(), count);
  const Polygon other(b.data(), count);
  Polygon cut = polygon;
  cut.Difference(other);
  std::string all = Told(cut);
  polygon.Union(other);
  all += Told(polygon);
  polygon.XOR(Polygon(0, 0, 5, 5));
  return all + Told(polygon);
}

template <class Polygon>
std::string DumpedAndLoaded() {
  const auto ring = Flower(0, 0);
  const Polygon polygon(ring.data(), static_cast<unsigned int>(ring.size()));
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::tmpfile(), &std::fclose);
  CBufferedFile file(stream.get());
  polygon.DumpToBinaryFile(file);
  polygon.DumpToTextFile(file);
  file.SeekToBegin();
  Polygon binary, text;
  binary.LoadFromBinaryFile(file);
  text.LoadFromTextFile(file);
  return Told(binary) + Told(text);
}

const Scenario kScenarios[] = {
    {"AreasThatAreCombined", [] { return Combined<GPolygon>(Star(0, 0), Star(4, 3)); },
     ERR_OUT_OF_MEMORY},
    {"AreasWithHolesThatAreCombined",
     [] { return Combined<GPolygon2d>(Flower(0, 0), Flower(4, 3)); }, ERR_OUT_OF_MEMORY},
    {"RingsThatTouch",
     [] {
       const Vec2d a[] = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
       const Vec2d b[] = {{4, 4}, {8, 4}, {8, 8}, {4, 8}, {0, 0}, {2, 0}, {2, 2}, {0, 2}};
       const unsigned int counts[] = {4, 4};
       GPolygon2d left(a, 4);
       left.Union(GPolygon2d(b, counts, 2));
       GPolygon2d clipped;
       left.Intersection(Box2d(1, 1, 6, 6), clipped);
       clipped.RemoveZeroWidthReturnPaths();
       MultiPolygon2d rings;
       clipped.GetMultiPolygon(rings);
       return Told(left) + Told(clipped) + (IsValidMultiPolygon(rings) ? "valid" : "invalid");
     },
     ERR_OUT_OF_MEMORY},
    {"AnAreaAsStrips",
     [] {
       std::vector<Vec2d> star = Star(0, 0);
       std::vector<gpc_vertex> vertices;
       for (const Vec2d& p : star) vertices.push_back({p.x, p.y});
       gpc_vertex_list contour{7, vertices.data()};
       std::int32_t hole = 0;
       gpc_polygon polygon{1, &hole, &contour};
       gpc_tristrip strips{};
       gpc_polygon_to_tristrip(&polygon, &strips);
       gpc_tristrip both{};
       const std::unique_ptr<gpc_tristrip, void (*)(gpc_tristrip*)> guard(&strips,
                                                                          &gpc_free_tristrip);
       gpc_tristrip_clip(GPC_XOR, &polygon, &polygon, &both);
       gpc_free_tristrip(&both);
       return std::to_string(strips.num_strips) + " " + std::to_string(both.num_strips);
     },
     ERR_OUT_OF_MEMORY},
    {"AnAreaOnAFile", [] { return DumpedAndLoaded<GPolygon>(); }, ERR_OUT_OF_MEMORY},
    {"AnAreaWithHolesOnAFile", [] { return DumpedAndLoaded<GPolygon2d>(); }, ERR_OUT_OF_MEMORY},
    {"AnAreaInPieces",
     [] {
       GPolygon frame(0, 0, 9, 9);
       frame.Difference(GPolygon(3, 3, 6, 6));
       int vertices = 0;
       const auto count = [](const Vec2d*, unsigned int n, void* sum) {
         *static_cast<int*>(sum) += static_cast<int>(n);
         return true;
       };
       frame.Decompose(count, &vertices);
       GPolygon2d(frame).Decompose(count, &vertices);
       GPolygon rounded = frame;
       rounded.RemoveZeroWidthReturnPaths();
       rounded.AddContours(frame);
       return std::to_string(vertices) + Told(rounded);
     },
     ERR_OUT_OF_MEMORY},
    {"AreasThatAreClipped",
     [] {
       const auto flower = Flower(0, 0);
       const GPolygon polygon(flower.data(), 60);
       GPolygon inside;
       GClipGPolygonToRect(polygon, Box2d(-5, -5, 20, 20), inside);
       GPolygon2d rings;
       GClipGPolygonToRect(GPolygon2d(polygon), Box2d(-5, -5, 20, 20), rings);
       CPodVector<Vec2d, 32> ring;
       CPolyClip(Box2d(-9, -9, 9, 9)).Clip(flower.data(), 60, ring);
       const bool contains = GPolygonContains(polygon, GPolygon2d(0, 0, 1, 1));
       return Told(inside) + Told(rings) + std::to_string(ring.size()) + (contains ? "in" : "out");
     },
     ERR_OUT_OF_MEMORY},
    {"LinesThatAreClippedToAnArea",
     [] {
       const auto star = Star(0, 0);
       const GPolygon polygon(star.data(), 7);
       std::vector<Vec2d> points;
       std::vector<unsigned> counts;
       const auto wave = Flower(3, 3);
       const unsigned count = 60;
       GClipPolylinesToPolygon(wave.data(), &count, 1, polygon, points, counts);
       GClipPolylinesToRect(wave.data(), &count, 1, Box2d(0, 0, 9, 9), points, counts);
       const double pattern[] = {1, 0.5};
       GDashLineGenerator dashes(pattern, 2);
       GClipDashedPolylinesToPolygon(wave.data(), &count, 1, dashes, polygon, points, counts);
       const GLineClipPolygon area(polygon);
       const GLineClipPolygon copy = area;
       std::vector<Vec2d> path;
       copy.GetPolygon(path);
       return Told(points, counts) + Told(path, {});
     },
     ERR_OUT_OF_MEMORY},
    {"ALineThatIsThinnedAndDashed",
     [] {
       const auto wave = Flower(0, 0);
       GPolyline line(wave.data(), 60);
       line.Append(Vec2d(0, 0), Vec2d(0, 1), Vec2d(1, 1), Vec2d(1, 0), 6);
       line.ThinByAngularDeviation(0.01);
       GPolyline copy = line;
       copy.ThinToMinimalDetail();
       std::vector<Vec2d> thinned;
       GThinByAngularDeviation(wave.data(), 60, 0.2, thinned);
       GThinToMinimalDetail(wave.data(), 60, thinned);
       const double pattern[] = {0.5, 0.25, 0.1, 0.2};
       GDashLineGenerator generator(pattern, 4);
       std::vector<GLine2> dashes;
       generator.Decompose(copy, dashes);
       std::vector<Vec2d> points;
       std::vector<unsigned> counts;
       GPolylineVectorToPolyPolyline({line, copy}, points, counts);
       return Told(points, counts) + Told(thinned, {}) + std::to_string(dashes.size());
     },
     ERR_OUT_OF_MEMORY},
};

}  // namespace

std::span<const Scenario> GeometryScenarios() { return kScenarios; }

}  // namespace vlm::faults

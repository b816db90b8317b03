// Areas combined: two polygons by all four operations, beside Clipper (integer coordinates),
// Boost.Geometry and GEOS. Each side takes its own form of the same polygons, made before, and
// makes and releases a result of its own. The counters area and contours let the results be
// compared.
//
// Where a peer has no row, it can't do the work: Boost.Geometry and GEOS take no polygons that
// cross themselves, and rows of more than ten seconds are left out.

#include <velum/geometry/Gpc.h>

#include <benchmark/benchmark.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/multi_polygon.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <polyclipping/clipper.hpp>

#include <geos_c.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <numbers>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using Contour = std::vector<gpc_vertex>;
using Outline = std::vector<Contour>;
using Pair = std::pair<Outline, Outline>;

// Coordinates stay within 1000, so that this scale keeps Clipper's in its quick range.
constexpr double kScale = 1e6;

// Vertices that lie by turns on an outer and an inner circle. The centre of the second star is off
// by a part of the distance between two tips, so that crossings grow as vertices do.
Contour Star(int vertices, double turn, double shift) {
  Contour contour;
  for (int i = 0; i < vertices; ++i) {
    const double angle = 2 * std::numbers::pi * (i + turn) / vertices;
    const double radius = i % 2 ? 400 : 950;
    contour.push_back({radius * std::cos(angle) + shift, radius * std::sin(angle) + shift / 3});
  }
  return contour;
}

Pair SpikyStars(int vertices) {
  return {{Star(vertices, 0, 0)}, {Star(vertices, 0.81, 1900.0 / vertices)}};
}

Contour Ring(int vertices, double phase) {
  Contour contour;
  const int waves = vertices / 20;
  for (int i = 0; i < vertices; ++i) {
    const double angle = 2 * std::numbers::pi * (i + phase) / vertices;
    const double radius = 700 + 200 * std::sin(waves * angle + phase);
    contour.push_back({radius * std::cos(angle), radius * std::sin(angle)});
  }
  return contour;
}

Pair WavyRings(int vertices) { return {{Ring(vertices, 0)}, {Ring(vertices, 2.3)}}; }

Outline Grid(int side, double shift) {
  Outline outline;
  const double pitch = 10;
  const double size = 8;
  for (int row = 0; row < side; ++row) {
    for (int column = 0; column < side; ++column) {
      const double x = column * pitch + shift - 500;
      const double y = row * pitch + shift - 500;
      outline.push_back({{x, y}, {x + size, y}, {x + size, y + size}, {x, y + size}});
    }
  }
  return outline;
}

Pair Squares(int side) { return {Grid(side, 0), Grid(side, 5)}; }

Pair Random(int vertices) {
  std::mt19937 random(1);
  std::uniform_real_distribution<double> number(-900, 900);
  Pair pair{{Contour()}, {Contour()}};
  for (int i = 0; i < vertices; ++i) {
    for (Outline* outline : {&pair.first, &pair.second}) {
      const double x = number(random);
      outline->front().push_back({x, number(random)});
    }
  }
  return pair;
}

// A polygon that points into an outline, for calls that do not change it.
class Gpc {
 public:
  explicit Gpc(const Outline& outline) : holes_(outline.size()) {
    for (const Contour& contour : outline) {
      lists_.push_back(
          {static_cast<std::int32_t>(contour.size()), const_cast<gpc_vertex*>(contour.data())});
    }
    polygon_ = {static_cast<std::int32_t>(lists_.size()), holes_.data(), lists_.data()};
  }
  Gpc(const Gpc&) = delete;
  Gpc& operator=(const Gpc&) = delete;
  ~Gpc() = default;

  gpc_polygon* Get() { return &polygon_; }

 private:
  std::vector<std::int32_t> holes_;
  std::vector<gpc_vertex_list> lists_;
  gpc_polygon polygon_;
};

// Two countries of the examples' data. Neighbours share a border there, which valid polygons must
// not: the union takes it away.
Outline CountryFrom(std::istream& lines, std::string& line) {
  Outline outline;
  while (std::getline(lines, line) && !line.starts_with("outline")) {
    if (line.starts_with("#") || line.empty()) continue;
    if (line.starts_with("contour")) {
      outline.emplace_back();
      continue;
    }
    gpc_vertex v{};
    std::istringstream(line) >> v.x >> v.y;
    outline.back().push_back(v);
  }
  gpc_polygon result{};
  gpc_polygon none{};
  gpc_polygon_clip(GPC_UNION, Gpc(outline).Get(), &none, &result);
  outline.clear();
  for (int i = 0; i < result.num_contours; ++i) {
    if (result.hole[i]) throw std::runtime_error("an outline has a hole");
    const gpc_vertex_list& list = result.contour[i];
    outline.emplace_back(list.vertex, list.vertex + list.num_vertices);
  }
  gpc_free_polygon(&result);
  return outline;
}

Pair Borders() {
  std::ifstream lines(VELUM_OUTLINES);
  std::string line;
  while (std::getline(lines, line) && !line.starts_with("outline")) {
  }
  Pair pair;
  pair.first = CountryFrom(lines, line);
  pair.second = CountryFrom(lines, line);
  return pair;
}

void Report(benchmark::State& state, double area, std::size_t contours) {
  state.counters["area"] = area;
  state.counters["contours"] = static_cast<double>(contours);
}

double Area(const gpc_polygon& polygon) {
  double sum = 0;
  for (int i = 0; i < polygon.num_contours; ++i) {
    const gpc_vertex_list& list = polygon.contour[i];
    double twice = 0;
    for (int k = 0; k < list.num_vertices; ++k) {
      const gpc_vertex& a = list.vertex[k];
      const gpc_vertex& b = list.vertex[(k + 1) % list.num_vertices];
      twice += a.x * b.y - b.x * a.y;
    }
    sum += (polygon.hole[i] ? -0.5 : 0.5) * std::fabs(twice);
  }
  return sum;
}

void ClipVelum(benchmark::State& state, const Pair& pair, gpc_op operation) {
  Gpc subject(pair.first);
  Gpc clip(pair.second);
  gpc_polygon result{};
  for (auto _ : state) {
    gpc_free_polygon(&result);
    gpc_polygon_clip(operation, subject.Get(), clip.Get(), &result);
  }
  Report(state, Area(result), static_cast<std::size_t>(result.num_contours));
  gpc_free_polygon(&result);
}

void StripVelum(benchmark::State& state, const Pair& pair, gpc_op operation) {
  Gpc subject(pair.first);
  Gpc clip(pair.second);
  gpc_tristrip result{};
  for (auto _ : state) {
    gpc_free_tristrip(&result);
    gpc_tristrip_clip(operation, subject.Get(), clip.Get(), &result);
  }
  state.counters["strips"] = result.num_strips;
  gpc_free_tristrip(&result);
}

ClipperLib::Paths ClipperPaths(const Outline& outline) {
  ClipperLib::Paths paths;
  for (const Contour& contour : outline) {
    paths.emplace_back();
    for (const gpc_vertex& v : contour) {
      paths.back().emplace_back(std::llround(v.x * kScale), std::llround(v.y * kScale));
    }
  }
  return paths;
}

void ClipClipper(benchmark::State& state, const Pair& pair, gpc_op operation) {
  const ClipperLib::Paths subject = ClipperPaths(pair.first);
  const ClipperLib::Paths clip = ClipperPaths(pair.second);
  const std::map<gpc_op, ClipperLib::ClipType> types{{GPC_DIFF, ClipperLib::ctDifference},
                                                     {GPC_INT, ClipperLib::ctIntersection},
                                                     {GPC_XOR, ClipperLib::ctXor},
                                                     {GPC_UNION, ClipperLib::ctUnion}};
  const ClipperLib::ClipType type = types.at(operation);
  ClipperLib::Paths result;
  for (auto _ : state) {
    result = ClipperLib::Paths();
    ClipperLib::Clipper clipper;
    clipper.AddPaths(subject, ClipperLib::ptSubject, true);
    clipper.AddPaths(clip, ClipperLib::ptClip, true);
    clipper.Execute(type, result, ClipperLib::pftEvenOdd, ClipperLib::pftEvenOdd);
  }
  double area = 0;
  for (const ClipperLib::Path& path : result) area += ClipperLib::Area(path) / kScale / kScale;
  Report(state, area, result.size());
}

using BoostPoint = boost::geometry::model::d2::point_xy<double>;
using BoostPolygon = boost::geometry::model::polygon<BoostPoint>;
using BoostPolygons = boost::geometry::model::multi_polygon<BoostPolygon>;

BoostPolygons BoostOf(const Outline& outline) {
  BoostPolygons polygons;
  for (const Contour& contour : outline) {
    polygons.emplace_back();
    for (const gpc_vertex& v : contour) polygons.back().outer().emplace_back(v.x, v.y);
  }
  boost::geometry::correct(polygons);
  return polygons;
}

void ClipBoost(benchmark::State& state, const Pair& pair, gpc_op operation) {
  const BoostPolygons subject = BoostOf(pair.first);
  const BoostPolygons clip = BoostOf(pair.second);
  BoostPolygons result;
  for (auto _ : state) {
    result = BoostPolygons();
    switch (operation) {
      case GPC_DIFF:
        boost::geometry::difference(subject, clip, result);
        break;
      case GPC_INT:
        boost::geometry::intersection(subject, clip, result);
        break;
      case GPC_XOR:
        boost::geometry::sym_difference(subject, clip, result);
        break;
      case GPC_UNION:
        boost::geometry::union_(subject, clip, result);
        break;
    }
  }
  std::size_t contours = 0;
  for (const BoostPolygon& polygon : result) contours += 1 + polygon.inners().size();
  Report(state, boost::geometry::area(result), contours);
}

// What GEOS works in, and its geometries, released with it.
class GeosContext {
 public:
  GeosContext() : handle_(GEOS_init_r()) {}
  GeosContext(const GeosContext&) = delete;
  GeosContext& operator=(const GeosContext&) = delete;
  ~GeosContext() { GEOS_finish_r(handle_); }

  GEOSContextHandle_t Get() const { return handle_; }

  GEOSGeometry* Polygons(const Outline& outline) const {
    std::vector<GEOSGeometry*> parts;
    for (const Contour& contour : outline) {
      const auto count = static_cast<unsigned>(contour.size());
      GEOSCoordSequence* const points = GEOSCoordSeq_create_r(handle_, count + 1, 2);
      for (unsigned i = 0; i <= count; ++i) {
        GEOSCoordSeq_setXY_r(handle_, points, i, contour[i % count].x, contour[i % count].y);
      }
      GEOSGeometry* const ring = GEOSGeom_createLinearRing_r(handle_, points);
      parts.push_back(GEOSGeom_createPolygon_r(handle_, ring, nullptr, 0));
    }
    return GEOSGeom_createCollection_r(handle_, GEOS_MULTIPOLYGON, parts.data(),
                                       static_cast<unsigned>(parts.size()));
  }

 private:
  GEOSContextHandle_t handle_;
};

void ClipGeos(benchmark::State& state, const Pair& pair, gpc_op operation) {
  const GeosContext context;
  const GEOSContextHandle_t handle = context.Get();
  GEOSGeometry* const subject = context.Polygons(pair.first);
  GEOSGeometry* const clip = context.Polygons(pair.second);
  const std::map<gpc_op, decltype(&GEOSUnion_r)> functions{{GPC_DIFF, &GEOSDifference_r},
                                                           {GPC_INT, &GEOSIntersection_r},
                                                           {GPC_XOR, &GEOSSymDifference_r},
                                                           {GPC_UNION, &GEOSUnion_r}};
  const auto function = functions.at(operation);
  GEOSGeometry* result = nullptr;
  for (auto _ : state) {
    if (result) GEOSGeom_destroy_r(handle, result);
    result = function(handle, subject, clip);
    if (!result) {
      state.SkipWithError("GEOS has thrown");
      break;
    }
  }
  if (result) {
    double area = 0;
    GEOSArea_r(handle, result, &area);
    std::size_t contours = 0;
    for (int i = 0; i < GEOSGetNumGeometries_r(handle, result); ++i) {
      const GEOSGeometry* const part = GEOSGetGeometryN_r(handle, result, i);
      contours += 1 + static_cast<std::size_t>(GEOSGetNumInteriorRings_r(handle, part));
    }
    Report(state, area, contours);
    GEOSGeom_destroy_r(handle, result);
  }
  GEOSGeom_destroy_r(handle, subject);
  GEOSGeom_destroy_r(handle, clip);
}

using Clip = void (*)(benchmark::State& state, const Pair& pair, gpc_op operation);

struct Peer {
  const char* name;
  Clip clip;
};

constexpr Peer kVelum{"velum", ClipVelum};
constexpr Peer kClipper{"Clipper", ClipClipper};
constexpr Peer kBoost{"Boost.Geometry", ClipBoost};
constexpr Peer kGeos{"GEOS", ClipGeos};

void Rows(const std::string& input, const std::vector<Peer>& peers, Pair (*make)()) {
  const std::map<gpc_op, const char*> operations{
      {GPC_INT, "Intersection"}, {GPC_UNION, "Union"}, {GPC_DIFF, "Difference"}, {GPC_XOR, "Xor"}};
  // Made once, when the first of its rows runs.
  const auto pair = std::make_shared<Pair>();
  const auto add = [=](const std::string& name, Clip clip, gpc_op operation) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
      if (pair->first.empty()) *pair = make();
      clip(state, *pair, operation);
    })->Unit(benchmark::kMillisecond);
  };
  for (const auto& [operation, name] : operations) {
    for (const Peer& peer : peers) {
      // 22 s, and an area that is off by 0.05 %.
      if (peer.clip == ClipBoost && operation == GPC_XOR && input == "spiky_stars_1e4") continue;
      add(std::string(name) + "/" + peer.name + "/" + input, peer.clip, operation);
    }
  }
  add("Strips/velum/" + input, StripVelum, GPC_UNION);
}

const bool registered = [] {
  const std::vector<Peer> alone{kVelum};
  const std::vector<Peer> two{kVelum, kClipper};
  const std::vector<Peer> three{kVelum, kClipper, kGeos};
  const std::vector<Peer> all{kVelum, kClipper, kBoost, kGeos};
  Rows("random_1e2", two, [] { return Random(100); });
  Rows("random_1e3", two, [] { return Random(1000); });
  Rows("spiky_stars_1e3", all, [] { return SpikyStars(1000); });
  Rows("spiky_stars_1e4", all, [] { return SpikyStars(10000); });
  Rows("spiky_stars_1e5", alone, [] { return SpikyStars(100000); });
  Rows("wavy_rings_1e3", all, [] { return WavyRings(1000); });
  Rows("wavy_rings_1e4", all, [] { return WavyRings(10000); });
  Rows("wavy_rings_1e5", alone, [] { return WavyRings(100000); });
  Rows("squares_30", all, [] { return Squares(30); });
  Rows("squares_100", three, [] { return Squares(100); });
  Rows("borders", all, Borders);
  return true;
}();

}  // namespace

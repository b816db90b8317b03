// Points, polylines and dashes over a million vertices, beside GEOS, Boost.Geometry and a loop that
// only reads the points.

#include <velum/geometry/GDashLineGenerator.h>
#include <velum/geometry/GLine.h>
#include <velum/geometry/GLineClipPolygon.h>
#include <velum/geometry/GPolygon.h>
#include <velum/geometry/LineClip.h>
#include <velum/geometry/PointInPolygon.h>
#include <velum/geometry/PolyClip.h>
#include <velum/geometry/Thinning.h>
#include <velum/geometry/Vec.h>

#include <benchmark/benchmark.h>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/linestring.hpp>
#include <boost/geometry/geometries/point_xy.hpp>
#include <boost/geometry/geometries/polygon.hpp>
#include <geos_c.h>

#include <cmath>
#include <cstdarg>
#include <cstdlib>
#include <random>
#include <vector>

namespace {

using vlm::Box2d;
using vlm::Vec2d;
using Points = std::vector<Vec2d>;
using BoostPoint = boost::geometry::model::d2::point_xy<double>;
using BoostLine = boost::geometry::model::linestring<BoostPoint>;
using BoostPolygon = boost::geometry::model::polygon<BoostPoint>;

constexpr unsigned kCount = 1000000;
// Most of the paths is inside, as on a map, and some runs leave it.
const Box2d kWindow(-60, -60, 60, 60);

void SetItems(benchmark::State& state) {
  state.SetItemsProcessed(static_cast<std::int64_t>(kCount) * state.iterations());
}

// A coastline: a circle of radius 80 with waves of many lengths, counter-clockwise.
const Points& Coast() {
  static const Points coast = [] {
    Points points(kCount);
    for (unsigned i = 0; i < kCount; ++i) {
      const double t = 2 * 3.141592653589793 * i / kCount;
      double radius = 80;
      for (int wave = 3; wave < 300000; wave *= 3)
        radius += 30.0 / wave * std::sin(wave * t + wave);
      points[i].Set(radius * std::cos(t), radius * std::sin(t));
    }
    return points;
  }();
  return coast;
}

// A track: a walk whose direction drifts, within a field of 100 about the origin.
const Points& Track() {
  static const Points track = [] {
    std::mt19937 random(1);
    std::normal_distribution<double> drift(0, 0.3);
    Points points(kCount);
    Vec2d p;
    double direction = 0;
    for (Vec2d& point : points) {
      direction += drift(random);
      if (p.LengthSquared() > 10000) direction = std::atan2(-p.y, -p.x);
      p += Vec2d(std::cos(direction), std::sin(direction)) * 0.5;
      point = p;
    }
    return points;
  }();
  return track;
}

const Points& Named(const char* name) { return name[0] == 'c' ? Coast() : Track(); }

template <class Target>
Target ToBoost(const Points& points) {
  Target target;
  for (const Vec2d& p : points) boost::geometry::append(target, BoostPoint(p.x, p.y));
  return target;
}

class Geos {
 public:
  Geos() : handle_(GEOS_init_r()) {}
  ~Geos() { GEOS_finish_r(handle_); }

  GEOSGeometry* Line(const Points& points) {
    return GEOSGeom_createLineString_r(handle_, Sequence(points));
  }
  GEOSGeometry* Polygon(Points points) {
    points.push_back(points.front());
    return GEOSGeom_createPolygon_r(handle_, GEOSGeom_createLinearRing_r(handle_, Sequence(points)),
                                    nullptr, 0);
  }
  GEOSContextHandle_t Handle() { return handle_; }

 private:
  GEOSCoordSequence* Sequence(const Points& points) {
    return GEOSCoordSeq_copyFromBuffer_r(handle_, &points[0].x,
                                         static_cast<unsigned>(points.size()), 0, 0);
  }

  GEOSContextHandle_t handle_;
};

void ReadPlain(benchmark::State& state, const Points& points) {
  for (auto _ : state) {
    double sum = 0;
    for (const Vec2d& p : points) sum += p.x + p.y;
    benchmark::DoNotOptimize(sum);
  }
  SetItems(state);
}

void InsideVelum(benchmark::State& state, const Points& points) {
  for (auto _ : state)
    benchmark::DoNotOptimize(vlm::PointInPolygon(Vec2d(1, 2), points.data(), kCount));
  SetItems(state);
}

// The textbook loop, as short as it gets.
void InsidePlain(benchmark::State& state, const Points& points) {
  const Vec2d p(1, 2);
  for (auto _ : state) {
    bool isInside = false;
    for (unsigned i = 0, j = kCount - 1; i < kCount; j = i++) {
      const Vec2d& a = points[i];
      const Vec2d& b = points[j];
      if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
        isInside = !isInside;
    }
    benchmark::DoNotOptimize(isInside);
  }
  SetItems(state);
}

void InsideBoost(benchmark::State& state, const Points& points) {
  auto polygon = ToBoost<BoostPolygon>(points);
  boost::geometry::correct(polygon);
  for (auto _ : state) benchmark::DoNotOptimize(boost::geometry::within(BoostPoint(1, 2), polygon));
  SetItems(state);
}

void InsidePolygonVelum(benchmark::State& state, const Points& points) {
  const vlm::GPolygon polygon(points.data(), kCount);
  for (auto _ : state) benchmark::DoNotOptimize(polygon.PointInside(Vec2d(1, 2)));
  SetItems(state);
}

void ClipLineVelum(benchmark::State& state, const Points& points) {
  const vlm::CLineClip clip(kWindow);
  for (auto _ : state) {
    Points out;
    std::vector<unsigned> counts;
    clip.ClipPolyline(points.data(), kCount, out, counts);
    benchmark::DoNotOptimize(out.data());
  }
  SetItems(state);
}

void ClipLineGeos(benchmark::State& state, const Points& points) {
  Geos geos;
  GEOSGeometry* const line = geos.Line(points);
  for (auto _ : state) {
    GEOSGeometry* const out = GEOSClipByRect_r(geos.Handle(), line, kWindow.xMin(), kWindow.yMin(),
                                               kWindow.xMax(), kWindow.yMax());
    if (!out) state.SkipWithError("refused");
    GEOSGeom_destroy_r(geos.Handle(), out);
  }
  GEOSGeom_destroy_r(geos.Handle(), line);
  SetItems(state);
}

void ClipAreaVelum(benchmark::State& state, const Points& points) {
  const vlm::CPolyClip clip(kWindow);
  for (auto _ : state) {
    vlm::CPodVector<Vec2d, 32> out;
    benchmark::DoNotOptimize(clip.Clip(points.data(), kCount, out));
  }
  SetItems(state);
}

void ClipAreaGeos(benchmark::State& state, const Points& points) {
  Geos geos;
  GEOSGeometry* const polygon = geos.Polygon(points);
  for (auto _ : state) {
    GEOSGeometry* const out = GEOSClipByRect_r(geos.Handle(), polygon, kWindow.xMin(),
                                               kWindow.yMin(), kWindow.xMax(), kWindow.yMax());
    if (!out) state.SkipWithError("refused");
    GEOSGeom_destroy_r(geos.Handle(), out);
  }
  GEOSGeom_destroy_r(geos.Handle(), polygon);
  SetItems(state);
}

void ThinAngleVelum(benchmark::State& state, const Points& points) {
  for (auto _ : state) {
    Points out;
    vlm::GThinByAngularDeviation(points.data(), kCount, 0.3, out);
    benchmark::DoNotOptimize(out.data());
  }
  SetItems(state);
}

void ThinDetailVelum(benchmark::State& state, const Points& points) {
  for (auto _ : state) {
    Points out;
    vlm::GThinToMinimalDetail(points.data(), kCount, out);
    benchmark::DoNotOptimize(out.data());
  }
  SetItems(state);
}

void ThinBoost(benchmark::State& state, const Points& points) {
  const auto line = ToBoost<BoostLine>(points);
  for (auto _ : state) {
    BoostLine out;
    boost::geometry::simplify(line, out, 0.05);
    benchmark::DoNotOptimize(out.data());
  }
  SetItems(state);
}

void DashVelum(benchmark::State& state, const Points& points) {
  const double pattern[] = {3, 1, 0.5, 1};
  vlm::GDashLineGenerator generator(pattern, 4);
  std::vector<vlm::GLine2> out;
  for (auto _ : state) {
    out.clear();
    generator.Decompose(points.data(), kCount, out);
    benchmark::DoNotOptimize(out.data());
  }
  SetItems(state);
}

// A track of 10,000 segments on a coast of 100,000 edges.
void ClipToPolygonVelum(benchmark::State& state) {
  Points coast;
  for (unsigned i = 0; i < kCount; i += 10) coast.push_back(Coast()[i]);
  const auto count = static_cast<unsigned>(coast.size());
  const vlm::GLineClipPolygon polygon(coast.data(), &count, 1);
  for (auto _ : state) {
    Points out;
    std::vector<unsigned> counts;
    polygon.Clip(Track().data(), 10001, out, counts);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(10000 * state.iterations());
}

void ClipToPolygonGeos(benchmark::State& state) {
  Points coast;
  for (unsigned i = 0; i < kCount; i += 10) coast.push_back(Coast()[i]);
  Geos geos;
  GEOSGeometry* const polygon = geos.Polygon(coast);
  GEOSGeometry* const line = geos.Line(Points(Track().begin(), Track().begin() + 10001));
  for (auto _ : state) {
    GEOSGeometry* const out = GEOSIntersection_r(geos.Handle(), polygon, line);
    if (!out) state.SkipWithError("refused");
    GEOSGeom_destroy_r(geos.Handle(), out);
  }
  GEOSGeom_destroy_r(geos.Handle(), line);
  GEOSGeom_destroy_r(geos.Handle(), polygon);
  state.SetItemsProcessed(10000 * state.iterations());
}

template <class Row>
void Register(const std::string& name, Row row) {
  for (const char* data : {"coast", "track"}) {
    benchmark::RegisterBenchmark((name + data).c_str(), [=](benchmark::State& state) {
      row(state, Named(data));
    })->Unit(benchmark::kMillisecond);
  }
}

const bool kRegistered = [] {
  Register("PointInPolygon/velum/", InsideVelum);
  Register("PointInPolygon/plain/", InsidePlain);
  Register("PointInPolygon/read/", ReadPlain);
  Register("PointInPolygon/boost/", InsideBoost);
  Register("GPolygonPointInside/velum/", InsidePolygonVelum);
  Register("GPolygonPointInside/boost/", InsideBoost);
  Register("ClipPolyline/velum/", ClipLineVelum);
  Register("ClipPolyline/geos/", ClipLineGeos);
  Register("ClipPolyline/read/", ReadPlain);
  Register("PolyClip/velum/", ClipAreaVelum);
  Register("PolyClip/geos/", ClipAreaGeos);
  Register("ThinByAngularDeviation/velum/", ThinAngleVelum);
  Register("ThinByAngularDeviation/boost/", ThinBoost);
  Register("ThinToMinimalDetail/velum/", ThinDetailVelum);
  Register("ThinToMinimalDetail/boost/", ThinBoost);
  Register("Dash/velum/", DashVelum);
  Register("Dash/read/", ReadPlain);
  return true;
}();

BENCHMARK(ClipToPolygonVelum)
    ->Name("ClipToPolygon/velum/track on coast")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(ClipToPolygonGeos)
    ->Name("ClipToPolygon/geos/track on coast")
    ->Unit(benchmark::kMillisecond);

}  // namespace

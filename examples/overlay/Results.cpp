#include <examples/overlay/Results.h>

#include <velum/core/GString.h>
#include <velum/geometry/PolygonMeasures.h>
#include <velum/geometry/Vec2.h>

#include <chrono>
#include <cmath>
#include <utility>

namespace vlm::overlay {
namespace {

// Adds up the triangles of a strip.
bool AddStrip(const Vec2d* points, unsigned int count, void* userData) {
  auto& result = *static_cast<Result*>(userData);
  ++result.strips;
  for (unsigned int i = 2; i < count; ++i) result.area += std::abs(PolygonArea(points + i - 2, 3));
  return true;
}

// Contours of a result go round clockwise where y grows upwards, holes the other way.
unsigned int HolesOf(const GPolygon& shape) {
  std::vector<Vec2d> points;
  std::vector<unsigned int> counts;
  shape.GetPolyPolygon(points, counts, false);
  unsigned int holes = 0;
  const Vec2d* contour = points.data();
  for (const unsigned int count : counts) {
    holes += PolygonArea(contour, count) > 0;
    contour += count;
  }
  return holes;
}

Result Measured(std::string name, GPolygon shape) {
  Result result;
  result.name = std::move(name);
  result.shape = std::move(shape);
  result.shape.Decompose(AddStrip, &result);
  return result;
}

Result Combined(const char* name, const GPolygon& first, const GPolygon& second,
                void (GPolygon::*operation)(const GPolygon&)) {
  GPolygon shape = first;
  const auto start = std::chrono::steady_clock::now();
  (shape.*operation)(second);
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
  Result result = Measured(name, std::move(shape));
  result.holes = HolesOf(result.shape);
  result.milliseconds = taken.count();
  return result;
}

}  // namespace

Results::Results(const GPolygon& first, const GPolygon& second) {
  results_.push_back(Measured("first outline", first));
  results_.push_back(Measured("second outline", second));
  results_.push_back(Combined("intersection", first, second, &GPolygon::Intersection));
  results_.push_back(Combined("union", first, second, &GPolygon::Union));
  results_.push_back(Combined("difference", first, second, &GPolygon::Difference));
  results_.push_back(Combined("exclusive-or", first, second, &GPolygon::XOR));
}

std::string Results::Table() const {
  GString table;
  table.FormatString("%-15s %13s %9s %6s %9s %7s %9s\n", "", "area (km2)", "contours", "holes",
                     "vertices", "strips", "time (ms)");
  for (const Result& result : results_) {
    table.AppendFormatString("%-15s %13.1f %9u %6u %9u %7u", result.name.c_str(), result.area,
                             result.shape.GetNumContours(), result.holes,
                             result.shape.GetTotalVertexCount(), result.strips);
    if (result.milliseconds > 0) table.AppendFormatString(" %9.2f", result.milliseconds);
    table += "\n";
  }
  return table;
}

}  // namespace vlm::overlay

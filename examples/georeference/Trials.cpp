#include <examples/georeference/Trials.h>

#include <velum/core/GString.h>
#include <examples/georeference/MapSheet.h>
#include <examples/georeference/Methods.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <random>

namespace vlm::georeference {
namespace {

Distances DistancesOf(const CImageRegistration& toMap, const ControlPoints& points) {
  Distances distances;
  double sum = 0;
  for (std::size_t i = 0; i < points.sheet.Points().size(); ++i) {
    const RPoint image = toMap.Transform(points.sheet.Points()[i]);
    const RPoint& place = points.map.Points()[i];
    const double distance = std::hypot(image.X() - place.X(), image.Y() - place.Y());
    sum += distance * distance;
    distances.worst = std::max(distances.worst, distance);
  }
  distances.rms = std::sqrt(sum / static_cast<double>(points.sheet.Points().size()));
  return distances;
}

// 1000 places among the control points, with where they are on the sheet.
ControlPoints OtherPoints(const ControlPoints& points) {
  Box2d box;
  for (const RPoint& p : points.map.Points()) box.ExtendBy(Vec2d(p.X(), p.Y()));
  std::mt19937 random(1);
  const auto between = [&random](double low, double high) {
    return low + (high - low) * (static_cast<double>(random()) / double{std::mt19937::max()});
  };
  ControlPoints others;
  for (int i = 0; i < 1000; ++i) {
    const double x = between(box.xMin(), box.xMax());
    const RPoint place(x, between(box.yMin(), box.yMax()));
    others.map.Points().push_back(place);
    others.sheet.Points().push_back(PlaceOnSheet(place));
  }
  return others;
}

}  // namespace

std::vector<Trial> TryAllMethods(const ControlPoints& points) {
  const ControlPoints others = OtherPoints(points);
  std::vector<Trial> trials;
  for (int i = 0; i < kMethods; ++i) {
    Trial trial{};
    trial.method = static_cast<WarpingMethod>(i);
    const auto start = std::chrono::steady_clock::now();
    trial.inForce = trial.toMap.Calibrate(points.sheet, points.map, trial.method);
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    trial.milliseconds = taken.count();
    trial.toSheet.Calibrate(points.map, points.sheet, trial.method);
    trial.atControlPoints = DistancesOf(trial.toMap, points);
    trial.elsewhere = DistancesOf(trial.toMap, others);
    trials.push_back(std::move(trial));
  }
  return trials;
}

std::string TableOf(const std::vector<Trial>& trials) {
  GString table;
  table.FormatString("%-27s %21s   %21s   %s\n", "", "left at control points", "error elsewhere",
                     "fitted in");
  table.AppendFormatString("%-27s %10s %10s   %10s %10s   %9s\n", "method", "rms (km)", "worst",
                           "rms (km)", "worst", "ms");
  for (const Trial& trial : trials) {
    table.AppendFormatString("%-27s %10.3g %10.3g   %10.4f %10.4f   %9.3g", NameOf(trial.method),
                             trial.atControlPoints.rms, trial.atControlPoints.worst,
                             trial.elsewhere.rms, trial.elsewhere.worst, trial.milliseconds);
    if (trial.inForce != trial.method) {
      table.AppendFormatString("  in force: %s", NameOf(trial.inForce));
    }
    table += "\n";
  }
  return table;
}

}  // namespace vlm::georeference

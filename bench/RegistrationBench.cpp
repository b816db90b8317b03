// Registration: splines fitted to control points and applied to a million points, beside the same
// in Eigen: one dense system by its LU factors, and sums as array expressions; and beside SciPy.

#include <velum/numerics/ImageRegistration.h>
#include <velum/numerics/RadialBasisFunctions.h>

#include <testing/TemporaryFolder.h>

#include <benchmark/benchmark.h>

#include <Eigen/Core>
#include <Eigen/LU>

#include <cmath>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <random>
#include <string>
#include <vector>

namespace {

using vlm::RPoint;
using vlm::RPoints;

constexpr std::size_t kPoints = 1000000;

std::vector<RPoint> RandomPoints(std::size_t count, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> coordinate(-1, 1);
  std::vector<RPoint> points;
  for (std::size_t i = 0; i < count; ++i) {
    const double x = coordinate(random);
    points.emplace_back(x, coordinate(random));
  }
  return points;
}

struct ControlPoints {
  explicit ControlPoints(std::size_t count) : from(RandomPoints(count, 1)) {
    for (const RPoint& p : from.Points()) {
      to.Points().emplace_back(500 + 400 * p.X() + 20 * std::sin(3 * p.Y()),
                               300 - 380 * p.Y() + 15 * std::cos(4 * p.X()));
    }
  }
  RPoints from;
  RPoints to;
};

// A thin-plate spline in Eigen.
class EigenSpline {
 public:
  explicit EigenSpline(const ControlPoints& points) {
    const auto n = static_cast<Eigen::Index>(points.from.Points().size());
    xs_.resize(n);
    ys_.resize(n);
    Eigen::MatrixXd targets = Eigen::MatrixXd::Zero(n + 3, 2);
    for (Eigen::Index i = 0; i < n; ++i) {
      const auto k = static_cast<std::size_t>(i);
      xs_(i) = points.from.Points()[k].X();
      ys_(i) = points.from.Points()[k].Y();
      targets.row(i) << points.to.Points()[k].X(), points.to.Points()[k].Y();
    }
    Eigen::MatrixXd system = Eigen::MatrixXd::Zero(n + 3, n + 3);
    for (Eigen::Index i = 0; i < n; ++i) {
      system.col(i).head(n) = Phi(xs_(i), ys_(i));
      system.col(i).tail(3) << 1, xs_(i), ys_(i);
    }
    system.rightCols(3).topRows(n) = system.bottomRows(3).leftCols(n).transpose();
    weights_ = system.partialPivLu().solve(targets);
  }

  [[nodiscard]] RPoint Transform(const RPoint& p) const {
    const Eigen::Index n = xs_.size();
    const Eigen::ArrayXd phi = Phi(p.X(), p.Y());
    const auto image = [&](Eigen::Index k) {
      return (phi * weights_.col(k).head(n).array()).sum() + weights_(n, k) +
             weights_(n + 1, k) * p.X() + weights_(n + 2, k) * p.Y();
    };
    return {image(0), image(1)};
  }

 private:
  [[nodiscard]] Eigen::ArrayXd Phi(double x, double y) const {
    const Eigen::ArrayXd square = ((xs_ - x).square() + (ys_ - y).square()).max(1e-300);
    return 0.5 * square * square.log();
  }

  Eigen::ArrayXd xs_;
  Eigen::ArrayXd ys_;
  Eigen::MatrixXd weights_;
};

const char* const kNames[] = {"thinPlate",   "naturalCubic",      "marcov",
                              "exponential", "rationalQuadratic", "inverseDistance"};

void Calibrate(benchmark::State& state, vlm::WarpingMethod method, std::size_t count) {
  const ControlPoints points(count);
  vlm::CImageRegistration map;
  for (auto _ : state) {
    if (map.Calibrate(points.from, points.to, method) != method) state.SkipWithError("no fit");
  }
}

void CalibrateInEigen(benchmark::State& state, std::size_t count) {
  const ControlPoints points(count);
  for (auto _ : state) benchmark::DoNotOptimize(EigenSpline(points));
}

void TransformArray(benchmark::State& state, vlm::WarpingMethod method) {
  const ControlPoints points(100);
  vlm::CImageRegistration map;
  map.Calibrate(points.from, points.to, method);
  const std::vector<RPoint> source = RandomPoints(kPoints, 2);
  std::vector<RPoint> target(kPoints);
  for (auto _ : state) {
    map.TransformPoints(source.data(), target.data(), kPoints);
    benchmark::ClobberMemory();
  }
}

template <class Map>
void TransformEach(benchmark::State& state, const Map& map) {
  const std::vector<RPoint> source = RandomPoints(kPoints, 2);
  std::vector<RPoint> target(kPoints);
  for (auto _ : state) {
    for (std::size_t i = 0; i < kPoints; ++i) target[i] = map.Transform(source[i]);
    benchmark::ClobberMemory();
  }
}

// SciPy runs in a process of its own with one thread, reads the points from a file and tells the
// processor time of the million.
void TransformInScipy(benchmark::State& state) {
  const vlm::testing::TemporaryFolder folder;
  const std::string file = folder.Path("points");
  const ControlPoints controls(100);
  {
    std::ofstream out(file, std::ios::binary);
    const auto write = [&out](const std::vector<RPoint>& points) {
      for (const RPoint& p : points) {
        const double pair[] = {p.X(), p.Y()};
        out.write(reinterpret_cast<const char*>(pair), sizeof pair);
      }
    };
    write(controls.from.Points());
    write(controls.to.Points());
    write(RandomPoints(kPoints, 2));
  }
  const std::string command =
      "OPENBLAS_NUM_THREADS=1 " VELUM_SYSTEM_PYTHON " " VELUM_SCIPY_SCRIPT " " + file + " 100";
  for (auto _ : state) {
    double seconds = 0;
    std::FILE* const child = ::popen(command.c_str(), "r");
    const bool told = child != nullptr && std::fscanf(child, "%lf", &seconds) == 1;
    if (child != nullptr) ::pclose(child);
    if (!told) return state.SkipWithError("SciPy says nothing");
    state.SetIterationTime(seconds);
  }
}

const bool isRegistered = [] {
  const auto milliseconds = benchmark::kMillisecond;
  for (const std::size_t count : {100u, 500u, 2000u}) {
    const std::string size = "/" + std::to_string(count);
    const auto add = [&](const std::string& name, auto... work) {
      auto* const row = benchmark::RegisterBenchmark((name + size).c_str(), work...);
      row->Unit(milliseconds);
      // Half a minute: once is enough.
      if (count == 2000) row->Iterations(1)->Repetitions(1);
    };
    add("Calibrate/velum/thinPlate", Calibrate, vlm::ThinPlateSpline, count);
    add("Calibrate/eigen/thinPlate", CalibrateInEigen, count);
    // By the fallback, for which there is no peer; of 2000 points it takes a minute.
    if (count < 2000) {
      add("Calibrate/velum/rationalQuadratic", Calibrate, vlm::RationalQuadraticSpline, count);
    }
  }
  for (int method = vlm::ThinPlateSpline; method <= vlm::InverseDistanceSquared; ++method) {
    benchmark::RegisterBenchmark(
        (std::string("TransformMillion/velum/") + kNames[method] + "/100").c_str(), TransformArray,
        static_cast<vlm::WarpingMethod>(method))
        ->Unit(milliseconds);
  }
  benchmark::RegisterBenchmark("TransformMillion/velum/thinPlateSingly/100",
                               [](benchmark::State& state) {
                                 const ControlPoints points(100);
                                 vlm::CImageRegistration map;
                                 map.Calibrate(points.from, points.to, vlm::ThinPlateSpline);
                                 TransformEach(state, map);
                               })
      ->Unit(milliseconds);
  for (const char* row : {"thinPlate", "thinPlateSingly"}) {
    const std::string input = std::string("/") + row + "/100";
    benchmark::RegisterBenchmark(("TransformMillion/eigen" + input).c_str(),
                                 [](benchmark::State& state) {
                                   const ControlPoints points(100);
                                   TransformEach(state, EigenSpline(points));
                                 })
        ->Unit(milliseconds);
    benchmark::RegisterBenchmark(("TransformMillion/scipy" + input).c_str(), TransformInScipy)
        ->UseManualTime()
        ->Iterations(1)
        ->Unit(milliseconds);
  }
  return true;
}();

}  // namespace

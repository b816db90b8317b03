// Statistics beside what a user would write with the standard library, and nearest neighbours
// beside nanoflann. Each turn of a loop works on a fresh copy of its data; making it is part of
// every row.

#include <velum/dates/AxisIntervals.h>
#include <velum/numerics/SpatialStatistics.h>
#include <velum/numerics/UnivariateStatistics.h>
#include <velum/numerics/detail/RankPartition.h>

#include <benchmark/benchmark.h>
#include <tbb/global_control.h>

#include <nanoflann.hpp>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

namespace {

using Sample = std::vector<double>;
using Point = boost::tuple<double, double, double>;
using Points = std::vector<Point>;

Sample NormalSample(std::size_t n) {
  std::mt19937_64 random(1);
  std::normal_distribution<double> normal(100, 10);
  Sample sample(n);
  for (double& x : sample) x = normal(random);
  return sample;
}

void Load(benchmark::State& state, std::size_t n) {
  const Sample sample = NormalSample(n);
  vlm::CUnivariateStatistics stats;
  for (auto _ : state) {
    Sample copy = sample;
    vlm::Load(stats, copy.begin(), copy.end());
    benchmark::DoNotOptimize(stats.Kurtosis);
  }
}

// Ten thousand samples of a hundred values, all different.
void LoadSmall(benchmark::State& state) {
  constexpr std::size_t kSize = 100;
  const Sample samples = NormalSample(1000000);
  vlm::CUnivariateStatistics stats;
  for (auto _ : state) {
    Sample copy = samples;
    for (auto first = copy.begin(); first != copy.end(); first += kSize) {
      vlm::Load(stats, first, first + kSize);
      benchmark::DoNotOptimize(stats.Kurtosis);
    }
  }
}

void SortSmall(benchmark::State& state) {
  constexpr std::size_t kSize = 100;
  const Sample samples = NormalSample(1000000);
  for (auto _ : state) {
    Sample copy = samples;
    for (auto first = copy.begin(); first != copy.end(); first += kSize) {
      std::sort(first, first + kSize);
    }
    benchmark::DoNotOptimize(copy.data());
  }
}

void SortAndPass(benchmark::State& state, std::size_t n) {
  const Sample sample = NormalSample(n);
  for (auto _ : state) {
    Sample copy = sample;
    std::sort(copy.begin(), copy.end());
    double sum = 0;
    double squares = 0;
    for (const double x : copy) {
      sum += x;
      squares += x * x;
    }
    benchmark::DoNotOptimize(sum + squares);
  }
}

// The ranks that Load asks for, by themselves.
void Percentiles(benchmark::State& state, std::size_t n) {
  const Sample sample = NormalSample(n);
  const std::size_t last = n - 1;
  const std::size_t ranks[] = {last / 100,     last / 20,      last / 10,    last / 4,
                               last / 2,       last / 2 + 1,   3 * last / 4, 9 * last / 10,
                               19 * last / 20, 99 * last / 100};
  for (auto _ : state) {
    Sample copy = sample;
    vlm::detail::PartitionAtRanks(copy, ranks);
    benchmark::DoNotOptimize(copy.data());
  }
}

// The nine percentiles alone, each within the part that the one before left.
void SelectionChain(benchmark::State& state, std::size_t n) {
  const Sample sample = NormalSample(n);
  for (auto _ : state) {
    Sample copy = sample;
    const std::size_t last = n - 1;
    const auto select = [&](std::size_t from, std::size_t rank, std::size_t to) {
      const auto at = [&](std::size_t i) { return copy.begin() + static_cast<std::ptrdiff_t>(i); };
      std::nth_element(at(from), at(rank), at(to));
    };
    select(0, last / 2, n);
    select(0, last / 4, last / 2);
    select(last / 2, 3 * last / 4, n);
    select(0, last / 10, last / 4);
    select(3 * last / 4, 9 * last / 10, n);
    select(0, last / 20, last / 10);
    select(9 * last / 10, 19 * last / 20, n);
    select(0, last / 100, last / 20);
    select(19 * last / 20, 99 * last / 100, n);
    benchmark::DoNotOptimize(copy.data());
  }
}

void PairLoop(benchmark::State& state, std::size_t n) {
  const Sample sample = NormalSample(n);
  for (auto _ : state) {
    double sum = 0;
    for (std::size_t i = 0; i < n; ++i) {
      for (std::size_t j = i + 1; j < n; ++j) sum += std::abs(sample[i] - sample[j]);
    }
    benchmark::DoNotOptimize(sum);
  }
}

Points MakePoints(const std::string& kind, std::size_t n) {
  std::mt19937_64 random(2);
  std::uniform_real_distribution<double> unit;
  std::normal_distribution<double> near(0, 1e-4);
  std::vector<std::pair<double, double>> centres(50);
  for (auto& centre : centres) centre = {unit(random), unit(random)};
  Points points;
  for (std::size_t i = 0; i < n; ++i) {
    double x = unit(random);
    double y = unit(random);
    if (kind == "clustered" && i % 10 != 0) {
      const auto& centre = centres[random() % centres.size()];
      x = centre.first + near(random);
      y = centre.second + near(random);
    }
    if (kind == "equal_x") x = 3;
    if (kind == "nearly_equal_x") x = 3 + 1e-9 * x;
    points.emplace_back(x, y, unit(random));
  }
  return points;
}

void Neighbours(benchmark::State& state, const std::string& kind, std::size_t n, int threads) {
  const tbb::global_control control(tbb::global_control::max_allowed_parallelism,
                                    static_cast<std::size_t>(threads));
  const Points points = MakePoints(kind, n);
  vlm::CSpatialStatistics stats;
  for (auto _ : state) {
    Points copy = points;
    vlm::Load(stats, copy.begin(), copy.end());
    benchmark::DoNotOptimize(stats.ClarkEvansRatio);
  }
}

struct Cloud {
  const Points& points;

  [[nodiscard]] std::size_t kdtree_get_point_count() const { return points.size(); }
  [[nodiscard]] double kdtree_get_pt(std::size_t i, std::size_t axis) const {
    return axis == 0 ? boost::get<0>(points[i]) : boost::get<1>(points[i]);
  }
  template <class Box>
  bool kdtree_get_bbox(Box& /*box*/) const {
    return false;
  }
};

void Nanoflann(benchmark::State& state, const std::string& kind, std::size_t n) {
  using Tree =
      nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Cloud>, Cloud, 2>;
  const Points points = MakePoints(kind, n);
  const Cloud cloud{points};
  for (auto _ : state) {
    Tree tree(2, cloud, nanoflann::KDTreeSingleIndexAdaptorParams(10));
    tree.buildIndex();
    double sum = 0;
    for (const Point& point : points) {
      std::size_t indices[2];
      double squares[2];
      nanoflann::KNNResultSet<double> nearest(2);
      nearest.init(indices, squares);
      const double at[] = {boost::get<0>(point), boost::get<1>(point)};
      tree.findNeighbors(nearest, at, nanoflann::SearchParams(10));
      sum += std::sqrt(squares[1]);
    }
    benchmark::DoNotOptimize(sum);
  }
}

void AxisIntervals(benchmark::State& state) {
  double first = 0;
  double last = 0;
  double hi = 97;
  for (auto _ : state) {
    hi = hi < 1e6 ? hi * 1.01 : 97;
    benchmark::DoNotOptimize(vlm::CalcAxisIntervals(0, hi, 5, &first, &last));
  }
}

template <class Function, class... Arguments>
void Add(const std::string& name, Function function, Arguments... arguments) {
  benchmark::RegisterBenchmark(name.c_str(), function, arguments...)
      ->Unit(benchmark::kMillisecond)
      ->MeasureProcessCPUTime()
      ->UseRealTime();
}

const bool g_added = [] {
  for (const std::size_t n : {25000u, 1000000u}) {
    const std::string size = "/" + std::to_string(n);
    Add("Load/velum" + size, Load, n);
    Add("Load/sort_and_pass" + size, SortAndPass, n);
  }
  Add("Percentiles/velum/1000000", Percentiles, std::size_t{1000000});
  Add("Percentiles/selection_chain/1000000", SelectionChain, std::size_t{1000000});
  Add("Load/pair_loop/25000", PairLoop, std::size_t{25000});
  Add("LoadSmall/velum/10000x100", LoadSmall);
  Add("LoadSmall/sort/10000x100", SortSmall);
  for (const std::size_t n : {10000u, 100000u, 1000000u}) {
    for (const char* kind : {"uniform", "clustered", "equal_x", "nearly_equal_x"}) {
      const std::string row = std::string("/") + kind + "/" + std::to_string(n);
      Add("Nearest/velum" + row, Neighbours, std::string(kind), n, 1);
      Add("Nearest/velum_two_threads" + row, Neighbours, std::string(kind), n, 2);
      Add("Nearest/nanoflann" + row, Nanoflann, std::string(kind), n);
    }
  }
  benchmark::RegisterBenchmark("CalcAxisIntervals/velum", AxisIntervals);
  return true;
}();

}  // namespace

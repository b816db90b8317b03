#include <velum/numerics/detail/NearestNeighbours.h>

#include <velum/numerics/test/reference/PlainNearest.h>

#include <boost/tuple/tuple_comparison.hpp>
#include <gtest/gtest.h>
#include <tbb/global_control.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

namespace vlm {
namespace {

using Point = boost::tuple<double, double, double>;
using Random = std::mt19937_64;

double Unit(Random& random) { return static_cast<double>(random() >> 11) * 0x1p-53; }

std::vector<std::uint64_t> BitsOf(const std::vector<double>& values) {
  std::vector<std::uint64_t> bits;
  for (const double value : values) bits.push_back(std::bit_cast<std::uint64_t>(value));
  return bits;
}

TEST(NearestNeighbours, AreThoseOfTheScan) {
  const struct {
    const char* name;
    Point (*next)(Random&);
  } kinds[] = {
      {"uniform", [](Random& r) { return Point(Unit(r), Unit(r), Unit(r)); }},
      {"a small grid, most points together",
       [](Random& r) { return Point(double(r() % 7), double(r() % 7), Unit(r)); }},
      {"a grid with ties",
       [](Random& r) { return Point(double(r() % 99), double(r() % 99), Unit(r)); }},
      {"one vertical line",
       [](Random& r) { return Point(3, std::floor(Unit(r) * 2000), Unit(r)); }},
      {"one horizontal line", [](Random& r) { return Point(Unit(r), -1, Unit(r)); }},
      {"one place", [](Random& r) { return Point(1, 2, std::floor(Unit(r) * 50)); }},
      {"two clusters far apart",
       [](Random& r) { return Point(1e6 * double(r() % 2) + 1e-6 * Unit(r), 1e-6 * Unit(r), 0); }},
      {"scales of all sizes",
       [](Random& r) { return Point(std::exp(40 * Unit(r)), std::exp(40 * Unit(r)), Unit(r)); }},
      {"nearly on a vertical line",
       [](Random& r) { return Point(5 + 1e-9 * Unit(r), Unit(r), Unit(r)); }},
      {"nearly on a slanted line",
       [](Random& r) {
         const double x = Unit(r);
         return Point(x, x + 1e-9 * Unit(r), Unit(r));
       }},
      {"columns farther apart than the largest number",
       [](Random& r) {
         return Point(r() % 2 == 0 ? -1.7e308 : 1.7e308, double(r() % 500), Unit(r));
       }},
      {"both zeros for a height",
       [](Random& r) { return Point(double(r() % 3), 1, r() % 2 == 0 ? 0.0 : -0.0); }},
      {"squares that overflow",
       [](Random& r) { return Point(1e200 * Unit(r), 1e200 * Unit(r), std::floor(9 * Unit(r))); }},
      {"some squares that overflow",
       [](Random& r) { return Point(std::pow(10, 300 * Unit(r)), Unit(r), Unit(r)); }},
      {"squares that vanish",
       [](Random& r) { return Point(1e-170 * double(r() % 30), 1e-170 * Unit(r), Unit(r)); }},
      {"a circle",
       [](Random& r) {
         const double angle = 6.28 * Unit(r);
         return r() % 9 == 0 ? Point(0, 0, Unit(r)) : Point(std::cos(angle), std::sin(angle), 1);
       }},
  };
  for (const auto& kind : kinds) {
    for (const std::size_t n : {1u, 2u, 3u, 8u, 9u, 64u, 65u, 500u, 3000u}) {
      Random random(n);
      std::vector<Point> points(n);
      std::generate(points.begin(), points.end(), [&] { return kind.next(random); });
      std::sort(points.begin(), points.end());
      const auto found = detail::FindNearestNeighbours(points);
      const testing::PlainNearest expected(points);
      ASSERT_EQ(BitsOf(found.distances), BitsOf(expected.distances)) << kind.name << ' ' << n;
      ASSERT_EQ(BitsOf(found.separations), BitsOf(expected.separations)) << kind.name << ' ' << n;
    }
  }
}

TEST(NearestNeighbours, AreTheSameOnAnyNumberOfThreads) {
  Random random(8);
  std::vector<Point> points(100000);
  std::generate(points.begin(), points.end(),
                [&] { return Point(Unit(random), std::floor(1000 * Unit(random)), Unit(random)); });
  std::sort(points.begin(), points.end());
  detail::NearestNeighbours alone;
  for (const std::size_t threads : {1u, 2u, 8u}) {
    const tbb::global_control control(tbb::global_control::max_allowed_parallelism, threads);
    detail::NearestNeighbours found = detail::FindNearestNeighbours(points);
    if (threads == 1) {
      alone = std::move(found);
      continue;
    }
    ASSERT_EQ(BitsOf(found.distances), BitsOf(alone.distances)) << threads;
    ASSERT_EQ(BitsOf(found.separations), BitsOf(alone.separations)) << threads;
  }
}

}  // namespace
}  // namespace vlm

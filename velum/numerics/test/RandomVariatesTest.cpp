#include <velum/numerics/NormalDistribution.h>
#include <velum/numerics/RandomVariates.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <thread>
#include <vector>

namespace vlm {
namespace {

TEST(RandomVariates, NumbersAreTheSameAtEachStart) {
  // The first numbers of the generator that the header names, from another implementation.
  const double expected[] = {28944, 14140, 866, 31813, 3484, 10725};
  SeedRV(0);
  for (const double number : expected) {
    EXPECT_EQ(UniformRV(0, 32767), number);
  }
  SeedRV(1);
  const double other = UniformRV(0, 32767);
  SeedRV(0);
  EXPECT_NE(UniformRV(0, 32767), other);
}

// The largest distance between the share of values below x and the probability of it.
template <class Probability>
double DistanceFrom(std::vector<double> values, Probability probability) {
  std::sort(values.begin(), values.end());
  double worst = 0;
  const auto n = static_cast<double>(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double p = probability(values[i]);
    worst = std::max({worst, std::abs(p - static_cast<double>(i) / n),
                      std::abs(p - static_cast<double>(i + 1) / n)});
  }
  return worst;
}

TEST(RandomVariates, FollowTheirDistributions) {
  constexpr int kCount = 100000;
  // What 1 in 10,000 random samples exceeds.
  const double critical = 2.22 / std::sqrt(double{kCount});
  SeedRV(2);
  std::vector<double> uniform, normal, lognormal;
  for (int i = 0; i < kCount; ++i) {
    uniform.push_back(UniformRV(-2, 3));
    normal.push_back(NormalRV(170, 10));
    lognormal.push_back(LogNormalRV(5, 2));
  }
  EXPECT_LT(DistanceFrom(uniform, [](double x) { return (x + 2) / 5; }), critical);
  EXPECT_LT(DistanceFrom(normal, [](double x) { return GaussianCDF(x, 170, 10); }), critical);
  const double s2 = std::log(0.4 * 0.4 + 1);
  EXPECT_LT(DistanceFrom(lognormal,
                         [&](double x) {
                           return GaussianCDF(std::log(x), std::log(5) - s2 / 2, std::sqrt(s2));
                         }),
            critical);
  const auto [low, high] = std::minmax_element(uniform.begin(), uniform.end());
  EXPECT_GE(*low, -2);
  EXPECT_LE(*high, 3);
}

TEST(RandomVariates, ThreadsDrawEachNumberOnce) {
  constexpr int kCount = 20000;
  SeedRV(3);
  std::multiset<double> alone;
  for (int i = 0; i < 4 * kCount; ++i) {
    alone.insert(UniformRV(0, 32767));
  }
  SeedRV(3);
  std::vector<std::vector<double>> drawn(4);
  std::vector<std::thread> threads;
  for (auto& numbers : drawn) {
    threads.emplace_back([&] {
      for (int i = 0; i < kCount; ++i) {
        numbers.push_back(UniformRV(0, 32767));
      }
    });
  }
  for (auto& thread : threads) {
    thread.join();
  }
  std::multiset<double> together;
  for (const auto& numbers : drawn) {
    together.insert(numbers.begin(), numbers.end());
  }
  EXPECT_EQ(together, alone);
}

}  // namespace
}  // namespace vlm

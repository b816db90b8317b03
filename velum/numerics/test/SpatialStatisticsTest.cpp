#include <velum/numerics/SpatialStatistics.h>

#include <testing/FailingAllocations.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace vlm {
namespace {

using Points = std::vector<boost::tuple<double, double, double>>;

CSpatialStatistics StatisticsOf(Points points) {
  CSpatialStatistics stats;
  Load(stats, points.begin(), points.end());
  return stats;
}

TEST(SpatialStatistics, OfASquareGrid) {
  Points points;
  for (int x = 0; x < 10; ++x) {
    for (int y = 0; y < 10; ++y) {
      points.emplace_back(2 * x, 2 * y, x + 10 * y);
    }
  }
  std::shuffle(points.begin(), points.end(), std::mt19937(5));
  const CSpatialStatistics stats = StatisticsOf(points);
  EXPECT_EQ(stats.Count, 100u);
  EXPECT_EQ(stats.NearestDistance.Minimum, 2);
  EXPECT_EQ(stats.NearestDistance.Maximum, 2);
  EXPECT_EQ(stats.NearestSeparation.Mean, 1) << "of neighbours as near, the one least apart in z";
  EXPECT_DOUBLE_EQ(stats.Density, 100 / 324.0);
  EXPECT_DOUBLE_EQ(stats.ClarkEvansRatio, 2 * std::sqrt(100 / 324.0) * 2);
  EXPECT_DOUBLE_EQ(stats.SkellamStatistic, 2 * M_PI * 100 / 324 * 100 * 4);
}

TEST(SpatialStatistics, TellClustersFromRandomPoints) {
  std::mt19937_64 random(6);
  std::uniform_real_distribution<double> unit;
  std::normal_distribution<double> normal(0, 1e-3);
  Points uniform, clustered;
  for (int i = 0; i < 20000; ++i) {
    uniform.emplace_back(unit(random), unit(random), 0);
    clustered.emplace_back(i % 20 / 20.0 + normal(random), i % 20 * 7 % 20 + normal(random), 0);
  }
  // The ratio of random points is normal about 1 with a deviation of 0.26136 / (0.5 sqrt(n)).
  EXPECT_NEAR(StatisticsOf(uniform).ClarkEvansRatio, 1, 4 * 0.52272 / std::sqrt(20000));
  EXPECT_LT(StatisticsOf(clustered).ClarkEvansRatio, 0.1);
}

TEST(SpatialStatistics, WhatCannotBeToldIsNaN) {
  const CSpatialStatistics one = StatisticsOf({{1, 2, 3}});
  EXPECT_EQ(one.NearestDistance.Mean, INFINITY);
  EXPECT_EQ(one.NearestSeparation.Mean, INFINITY);
  EXPECT_TRUE(std::isnan(one.Density));

  Points line;
  for (int i = 0; i < 20; ++i) {
    line.emplace_back(i * i, 4, 0);
  }
  const CSpatialStatistics flat = StatisticsOf(line);
  EXPECT_EQ(flat.NearestDistance.Count, 20u);
  EXPECT_TRUE(std::isnan(flat.Density) && std::isnan(flat.ClarkEvansRatio) &&
              std::isnan(flat.SkellamStatistic));

  line.push_back({NAN, 0, 0});
  const CSpatialStatistics bad = StatisticsOf(line);
  EXPECT_EQ(bad.Count, 21u);
  EXPECT_EQ(bad.NearestDistance.Count, 0u);

  Points far(30);
  for (int i = 0; i < 30; ++i) {
    far[static_cast<std::size_t>(i)] = Points::value_type(1e200 * i, 1e200 * (i * 7 % 30), i);
  }
  EXPECT_EQ(StatisticsOf(far).NearestDistance.Minimum, INFINITY);

  CSpatialStatistics cleared = StatisticsOf({{0, 0, 0}, {1, 1, 1}});
  Points none;
  Load(cleared, none.begin(), none.end());
  EXPECT_EQ(cleared.Count, 0u);
  EXPECT_TRUE(std::isnan(cleared.Density));
}

TEST(SpatialStatistics, AFailedAllocationIsNotTheEnd) {
  if (!testing::kAllocationsCanFail) {
    GTEST_SKIP() << "the sanitizer keeps operator new to itself";
  }
  std::mt19937_64 random(9);
  std::uniform_real_distribution<double> unit;
  Points points;
  for (int i = 0; i < 5000; ++i) points.emplace_back(unit(random), unit(random), unit(random));
  int failures = 0;
  CSpatialStatistics stats;
  double mean = 0;
  for (std::size_t succeeding = 0; succeeding < 60; ++succeeding) {
    try {
      const testing::FailingAllocations failing(succeeding, 1);
      Load(stats, points.begin(), points.end());
    } catch (const std::bad_alloc&) {
      ++failures;
    }
    Load(stats, points.begin(), points.end());
    ASSERT_TRUE(mean == 0 || stats.NearestDistance.Mean == mean) << succeeding;
    mean = stats.NearestDistance.Mean;
  }
  EXPECT_GT(failures, 5);
}

}  // namespace
}  // namespace vlm

#include <velum/numerics/UnivariateStatistics.h>

#include <velum/numerics/test/reference/SampleFigures.h>
#include <testing/FailingAllocations.h>

#include <boost/numeric/conversion/cast.hpp>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <map>
#include <new>
#include <numeric>
#include <random>
#include <sstream>
#include <string>

namespace vlm {
namespace {

using Sample = std::vector<double>;

CUnivariateStatistics StatisticsOf(Sample sample) {
  CUnivariateStatistics stats;
  Load(stats, sample.begin(), sample.end());
  return stats;
}

// The figures of the report after Count, by name.
std::vector<std::pair<std::string, double>> FiguresOf(const CUnivariateStatistics& stats) {
  std::ostringstream report;
  report.precision(17);
  report << stats;
  std::istringstream lines(report.str());
  std::string name, value;
  std::vector<std::pair<std::string, double>> figures;
  while (lines >> name >> value) {
    figures.emplace_back(name, std::stod(value));
  }
  figures.erase(figures.begin());
  return figures;
}

// n numbers between 0 and 1 from a linear congruential generator, passed through `form`.
template <class Form>
Sample Generated(std::size_t n, Form form) {
  Sample sample(n);
  std::uint64_t state = 12345;
  for (double& x : sample) {
    state = (state * 1103515245 + 12345) % (std::uint64_t{1} << 31);
    x = form((static_cast<double>(state) + 0.5) / 0x1p31);
  }
  return sample;
}

Sample SampleNamed(const std::string& name) {
  const std::map<std::string, std::function<Sample()>> samples = {
      {"small",
       [] { return Sample{3, 1, 4, 1, 5, 9, 2, 6, 5, 3, 5, 8, 9, 7, 9, 3, 2, 3, 8, 4, 6}; }},
      {"even", [] { return Sample{2.5, -1, 7, 0.5, -3, 12, 4, 4}; }},
      {"uniform", [] { return Generated(1000000, [](double u) { return u * 10 + 5; }); }},
      {"cauchy",
       [] { return Generated(20001, [](double u) { return std::tan(M_PI * (u - 0.5)); }); }},
      {"huge", [] { return Generated(1000, [](double u) { return (u - 0.25) * 1e150; }); }},
      {"tiny", [] { return Generated(1000, [](double u) { return u * 1e-15 + 1e-16; }); }},
      {"constant", [] { return Sample(30, 7.5); }},
      {"far", [] { return Generated(5000, [](double u) { return u + 1e9; }); }},
  };
  return samples.at(name)();
}

TEST(UnivariateStatistics, AgreeWithAnIndependentPackage) {
  for (const auto& row : testing::kSampleFigures) {
    const auto figures = FiguresOf(StatisticsOf(SampleNamed(row.name)));
    ASSERT_EQ(figures.size(), std::size(row.figures));
    for (std::size_t i = 0; i < figures.size(); ++i) {
      const auto& [name, value] = figures[i];
      const double expected = row.figures[i];
      EXPECT_EQ(std::isnan(value), std::isnan(expected)) << row.name << ' ' << name;
      if (!std::isnan(expected)) {
        const double size = name == "Skewness" ? 1 : std::abs(expected);
        EXPECT_NEAR(value, expected, size * row.tolerance) << row.name << ' ' << name;
      }
    }
  }
}

TEST(UnivariateStatistics, ReportOfAnEmptySampleIsShort) {
  CUnivariateStatistics stats = StatisticsOf({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
  EXPECT_FALSE(stats.Histogram.empty());
  Sample none;
  Load(stats, none.begin(), none.end());
  std::ostringstream report;
  report.width(30);
  report << stats;
  EXPECT_EQ(report.str(),
            "Count               0\nMinimum             nan\nMaximum             nan\n"
            "Mean                nan\nVariance            nan\nStdDev              nan\n");
  EXPECT_TRUE(stats.Histogram.empty());
  EXPECT_TRUE(std::isnan(stats.MeanSquare));
}

TEST(UnivariateStatistics, WhatCannotBeToldIsNaN) {
  using Stats = CUnivariateStatistics;
  const struct {
    Sample sample;
    std::vector<double Stats::*> known;
    std::vector<double Stats::*> unknown;
    const char* reason;
  } rows[] = {
      {{5},
       {&Stats::MedianAbsDev, &Stats::WinsorizedMean, &Stats::TriMean, &Stats::AvgAbsDev},
       {&Stats::Variance, &Stats::StdDev, &Stats::MeanDiff, &Stats::StdError, &Stats::TrimMean,
        &Stats::Skewness, &Stats::Kurtosis},
       "one value"},
      {Sample(5, 0.0),
       {&Stats::Variance, &Stats::MeanSquare, &Stats::MeanDiff},
       {&Stats::RootMeanSquare, &Stats::RelativeMeanDiff, &Stats::GeometricMean},
       "zeros"},
      {{0, 1},
       {&Stats::RelativeMeanDiff, &Stats::CoefVariation},
       {&Stats::GeometricMean, &Stats::HarmonicMean, &Stats::QuartileCoefDisp},
       "a zero minimum"},
      {{-1, 5},
       {&Stats::MeanDiff},
       {&Stats::RelativeMeanDiff, &Stats::CoefVariation},
       "a negative one"},
      {Sample(19, 1.0), {}, {&Stats::TrimMean}, "19 values"},
      {Sample(20, 1.0), {&Stats::TrimMean}, {}, "20 values"},
      {Sample(25000, 1.0), {&Stats::MeanDiff, &Stats::RelativeMeanDiff}, {}, "25,000 values"},
      {Sample(25001, 1.0), {}, {&Stats::MeanDiff, &Stats::RelativeMeanDiff}, "25,001 values"},
      {{1, NAN, 3}, {}, {&Stats::Sum, &Stats::Minimum, &Stats::Median}, "a NaN"},
      {{-INFINITY, 0, INFINITY},
       {&Stats::Median, &Stats::Minimum},
       {&Stats::Sum, &Stats::Mean},
       "infinities"},
      {{1.5e308, 1.6e308},
       {&Stats::MedianAbsDev, &Stats::AvgAbsDev},
       {},
       "a median that overflows"},
      {{1, 2, INFINITY, INFINITY}, {&Stats::Sum}, {&Stats::MedianAbsDev}, "an infinite median"},
  };
  for (const auto& row : rows) {
    const Stats stats = StatisticsOf(row.sample);
    EXPECT_EQ(stats.Count, row.sample.size());
    for (const auto member : row.known) {
      EXPECT_FALSE(std::isnan(stats.*member)) << row.reason;
    }
    for (const auto member : row.unknown) {
      EXPECT_TRUE(std::isnan(stats.*member)) << row.reason;
    }
  }
}

TEST(UnivariateStatistics, HistogramCountsEveryValueOnce) {
  const struct {
    std::size_t values, bins;
  } rows[] = {{10, 0}, {11, 20}, {524, 20}, {525, 21}, {2500, 100}, {30000, 100}};
  for (const auto& row : rows) {
    for (const double scale : {1.0, 1e-30, 1e308}) {
      const auto stats =
          StatisticsOf(Generated(row.values, [&](double u) { return (2 * u - 1) * scale; }));
      EXPECT_EQ(stats.Histogram.size(), row.bins);
      const auto sum =
          std::accumulate(stats.Histogram.begin(), stats.Histogram.end(), std::size_t{0});
      EXPECT_EQ(sum, row.bins == 0 ? 0 : row.values);
    }
  }
  Sample twelve(12, 0.0);
  twelve[3] = 1;
  std::vector<unsigned int> bins(20, 0);
  bins.front() = 11;
  bins.back() = 1;
  EXPECT_EQ(StatisticsOf(twelve).Histogram, bins);
  twelve[3] = 1e-40;
  EXPECT_TRUE(StatisticsOf(twelve).Histogram.empty());
}

TEST(UnivariateStatistics, InfiniteValueHasNoBin) {
  Sample sample(12, 1.0);
  sample[7] = INFINITY;
  CUnivariateStatistics stats;
  try {
    Load(stats, sample.begin(), sample.end());
    ADD_FAILURE();
  } catch (const boost::numeric::bad_numeric_cast& error) {
    EXPECT_STREQ(error.what(), "bad numeric conversion: positive overflow");
  }
  EXPECT_EQ(stats.Maximum, INFINITY);
  EXPECT_EQ(stats.Median, 1);
}

// The value of each rank, by a sort.
void ExpectOrderStatistics(const Sample& sample) {
  Sample ordered = sample;
  CUnivariateStatistics stats;
  try {
    Load(stats, ordered.begin(), ordered.end());
  } catch (const boost::numeric::positive_overflow&) {
    ASSERT_TRUE(std::isinf(stats.Minimum)) << "only infinite values have no bins";
  }
  Sample sorted = sample;
  std::sort(sorted.begin(), sorted.end());
  const std::size_t n = sample.size();
  const std::size_t ranks[] = {
      0,           (n - 1) / 100,   (n - 1) / 20,     (n - 1) / 10,      (n - 1) / 4,
      (n - 1) / 2, 3 * (n - 1) / 4, 9 * (n - 1) / 10, 19 * (n - 1) / 20, 99 * (n - 1) / 100,
      n - 1};
  const double found[] = {stats.Minimum,       stats.Percentile_01, stats.Percentile_05,
                          stats.Percentile_10, stats.Percentile_25, stats.Percentile_50,
                          stats.Percentile_75, stats.Percentile_90, stats.Percentile_95,
                          stats.Percentile_99, stats.Maximum};
  for (std::size_t i = 0; i < std::size(ranks); ++i) {
    ASSERT_EQ(found[i], sorted[ranks[i]]) << n << " values, rank " << ranks[i];
    if (i > 0 && i + 1 < std::size(ranks)) {
      const auto place = ordered.begin() + static_cast<std::ptrdiff_t>(ranks[i]);
      ASSERT_EQ(*place, sorted[ranks[i]]);
      ASSERT_LE(*std::max_element(ordered.begin(), place + 1), *place);
      ASSERT_GE(*std::min_element(place, ordered.end()), *place);
    }
  }
  const double median = (sorted[(n - 1) / 2] + sorted[n / 2]) * 0.5;
  ASSERT_EQ(stats.Median, median);
  Sample distances = sorted;
  std::transform(sorted.begin(), sorted.end(), distances.begin(),
                 [&](double x) { return std::abs(x - median); });
  std::sort(distances.begin(), distances.end());
  ASSERT_EQ(stats.MedianAbsDev, (distances[(n - 1) / 2] + distances[n / 2]) * 0.5);
  std::sort(ordered.begin(), ordered.end());
  ASSERT_EQ(ordered, sorted) << "the same values";
}

TEST(UnivariateStatistics, OrderStatisticsAreThoseOfASort) {
  std::mt19937_64 random(4);
  std::normal_distribution<double> normal;
  for (const std::size_t n : {1u, 2u, 3u, 99u, 100u, 2047u, 2048u, 25001u, 30000u, 100001u}) {
    ExpectOrderStatistics(Generated(n, [](double u) { return u; }));
    ExpectOrderStatistics(Generated(n, [](double u) { return std::floor(u * 5); }));
    ExpectOrderStatistics(Generated(n, [](double u) { return u < 0.999 ? 1 : u; }));
    ExpectOrderStatistics(Generated(n, [](double u) { return u < 0.5 ? u : 1e300 * u; }));
    ExpectOrderStatistics(Generated(n, [](double u) { return u < 0.1 ? -INFINITY : u - 0.5; }));
    ExpectOrderStatistics(Generated(n, [&](double) { return std::exp(60 * normal(random)); }));
    ExpectOrderStatistics(Generated(n, [i = 0.0](double) mutable { return ++i; }));
  }
}

TEST(UnivariateStatistics, MeanDifferenceIsThatOfAllPairs) {
  for (const double offset : {0.0, 1e6}) {
    const Sample sample = Generated(2000, [&](double u) { return offset + std::exp(8 * u); });
    long double sum = 0;
    for (std::size_t i = 0; i < sample.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        sum += std::abs(sample[i] - sample[j]);
      }
    }
    const auto expected = static_cast<double>(2 * sum / (2000.0L * 1999));
    EXPECT_NEAR(StatisticsOf(sample).MeanDiff, expected, expected * 1e-12);
  }
}

TEST(UnivariateStatistics, DoNotDependOnTheOrderOfTheSample) {
  for (const std::size_t n : {1000u, 40000u}) {
    Sample sample = Generated(n, [](double u) { return std::exp(3 * u); });
    const CUnivariateStatistics first = StatisticsOf(sample);
    std::shuffle(sample.begin(), sample.end(), std::mt19937(n));
    const CUnivariateStatistics other = StatisticsOf(sample);
    EXPECT_EQ(other.Histogram, first.Histogram);
    const auto before = FiguresOf(first);
    const auto after = FiguresOf(other);
    for (std::size_t i = 0; i < before.size(); ++i) {
      const bool ordered =
          i < 11 || before[i].first == "Median" || before[i].first == "MedianAbsDev";
      const double error = ordered ? 0 : 1e-12 * std::abs(before[i].second);
      if (!std::isnan(before[i].second)) {
        EXPECT_NEAR(after[i].second, before[i].second, error) << before[i].first;
      }
    }
  }
}

TEST(UnivariateStatistics, WithoutMemoryTheSampleKeepsItsValues) {
  if (!testing::kAllocationsCanFail) GTEST_SKIP();
  for (const std::size_t n : {5000u, 40000u}) {
    const Sample generated = Generated(n, [](double u) { return u; });
    Sample sorted = generated;
    std::sort(sorted.begin(), sorted.end());
    bool hasFailed = true;
    for (std::size_t succeeding = 0; hasFailed; ++succeeding) {
      ASSERT_LT(succeeding, 100u);
      Sample sample = generated;
      CUnivariateStatistics stats;
      try {
        const testing::FailingAllocations exhausted(succeeding);
        hasFailed = false;
        Load(stats, sample.begin(), sample.end());
      } catch (const std::bad_alloc&) {
        hasFailed = true;
      }
      std::sort(sample.begin(), sample.end());
      EXPECT_EQ(sample, sorted) << n << " values, " << succeeding << " allocations";
    }
  }
}

TEST(UnivariateStatistics, FollowShiftsAndScales) {
  const auto plain = FiguresOf(StatisticsOf(Generated(40000, [](double u) { return u * u + 1; })));
  const auto scaled =
      FiguresOf(StatisticsOf(Generated(40000, [](double u) { return 8 * (u * u + 1); })));
  const std::map<std::string, double> powers = {
      {"Variance", 2},      {"SumSquare", 2}, {"QuartileCoefDisp", 0}, {"RelativeMeanDiff", 0},
      {"CoefVariation", 0}, {"Skewness", 0},  {"Kurtosis", 0}};
  for (std::size_t i = 0; i < plain.size(); ++i) {
    const auto power = powers.find(plain[i].first);
    const double expected =
        plain[i].second * std::pow(8, power == powers.end() ? 1 : power->second);
    if (plain[i].first != "MeanDiff" && plain[i].first != "RelativeMeanDiff") {
      EXPECT_NEAR(scaled[i].second, expected, std::abs(expected) * 1e-12) << plain[i].first;
    }
  }
  const auto base = StatisticsOf(Generated(40000, [](double u) { return std::floor(u * 1024); }));
  const auto shifted =
      StatisticsOf(Generated(40000, [](double u) { return std::floor(u * 1024) + 4096; }));
  EXPECT_EQ(shifted.Median, base.Median + 4096);
  EXPECT_EQ(shifted.Mean, base.Mean + 4096);
  EXPECT_EQ(shifted.MedianAbsDev, base.MedianAbsDev);
  EXPECT_EQ(shifted.Histogram, base.Histogram);
  EXPECT_NEAR(shifted.Variance, base.Variance, base.Variance * 1e-12);
}

}  // namespace
}  // namespace vlm

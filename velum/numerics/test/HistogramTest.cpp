#include <velum/numerics/Histogram.h>

#include <velum/core/Exception.h>

#include <testing/FailingAllocations.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace vlm {
namespace {

using ::testing::ElementsAre;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::vector<unsigned int> CountsOf(const CHistogram& histogram) {
  const unsigned int* const counts = histogram.GetCounts();
  return {counts, counts + histogram.GetBinCount()};
}

TEST(Histogram, AddCountsFromLimitToLimit) {
  const struct {
    double x;
    int bin;  // -1 where it isn't counted
    const char* reason;
  } rows[] = {
      {10, 0, "the lower limit"},
      {std::nextafter(10.0, 0.0), -1, "just below it"},
      {12.5, 1, "a bound belongs to the bin above"},
      {std::nextafter(12.5, 0.0), 0, "just below a bound"},
      {20, 3, "the upper limit is in the last bin"},
      {std::nextafter(20.0, 30.0), -1, "just above it"},
      {std::nan(""), -1, "NaN is beside all bins"},
      {kInfinity, -1, "beyond all limits"},
  };
  for (const auto& row : rows) {
    CHistogram histogram(10, 20, 4);
    EXPECT_EQ(histogram.Add(row.x), row.bin >= 0) << row.reason;
    EXPECT_EQ(histogram.GetTotalCount(), row.bin >= 0 ? 1u : 0u) << row.reason;
    std::vector<unsigned int> counts(4);
    if (row.bin >= 0) counts[static_cast<unsigned int>(row.bin)] = 1;
    EXPECT_EQ(CountsOf(histogram), counts) << row.reason;
  }
}

TEST(Histogram, LimitsWithoutAWidthTouchNothingBesideTheBins) {
  const struct {
    double min, max, x;
    bool counted;
  } rows[] = {
      {5, 5, 5, true},          {5, 1, 3, false},          {0, std::nan(""), 0, false},
      {0, kInfinity, 3, true},  {-kInfinity, 0, -3, true}, {-1.7e308, 1.7e308, 1.7e308, true},
      {0, 5e-324, 5e-324, true}};
  for (const auto& row : rows) {
    CHistogram histogram(row.min, row.max, 3);
    EXPECT_EQ(histogram.Add(row.x), row.counted) << row.min << " to " << row.max;
    EXPECT_EQ(histogram[0] + histogram[1] + histogram[2], row.counted ? 1u : 0u) << row.min;
  }
}

TEST(Histogram, WithoutBinsCountsNothing) {
  CHistogram histogram(3, 4, 0);
  EXPECT_FALSE(histogram.Add(0.5));
  EXPECT_FALSE(histogram.Add(3.5));
  histogram.Reset();
  EXPECT_EQ(histogram.GetCounts(), nullptr);
  EXPECT_EQ(histogram.GetTotalCount(), 0u);
}

TEST(Histogram, CopiesShareTheirCountsUntilOneIsChanged) {
  CHistogram first(0, 2, 2);
  first.Add(0);
  CHistogram second(first);
  CHistogram third;
  third = second;
  EXPECT_EQ(third.GetCounts(), first.GetCounts());
  first.Add(1);
  third.Reset();
  EXPECT_THAT(CountsOf(first), ElementsAre(1, 1));
  EXPECT_THAT(CountsOf(second), ElementsAre(1, 0));
  EXPECT_THAT(CountsOf(third), ElementsAre(0, 0));
  EXPECT_EQ(second.GetTotalCount(), 1u);
  const unsigned int* const own = second.GetCounts();
  second = *&second;
  second.Add(2);
  EXPECT_EQ(second.GetCounts(), own) << "an only owner needs no copy";
}

TEST(Histogram, TakesCountsAsTheyAreGiven) {
  const unsigned int counts[] = {3, 0, 5};
  CHistogram histogram;
  EXPECT_TRUE(std::isnan(CHistogram(0, 1, 1).GetProbability(0)));
  histogram.Init(0, 3, 3, counts);
  EXPECT_EQ(histogram.GetTotalCount(), 8u);
  EXPECT_EQ(histogram.GetProbability(2), 0.625);
  histogram.Init(0, 30, 2, histogram.GetCounts() + 1);  // its own
  EXPECT_THAT(CountsOf(histogram), ElementsAre(0, 5));
  EXPECT_TRUE(histogram.Add(29));
  EXPECT_EQ(histogram.GetTotalCount(), 6u);
  EXPECT_THROW(histogram.Init(0, 1, 1, nullptr), Exception);
  EXPECT_THAT(CountsOf(histogram), ElementsAre(0, 6));
}

TEST(Histogram, WithoutMemoryStaysWhatItIs) {
  if (!testing::kAllocationsCanFail) GTEST_SKIP();
  CHistogram histogram(0, 2, 2);
  histogram.Add(0);
  const CHistogram copy(histogram);
  const auto fails = [&](auto change) {
    try {
      const testing::FailingAllocations exhausted(0, 1);
      change();
    } catch (const Exception& error) {
      return error.GetErrCode() == ERR_OUT_OF_MEMORY && error.GetSrcFile() == "Histogram";
    }
    return false;
  };
  EXPECT_TRUE(fails([&] { histogram.Add(1); }));
  EXPECT_TRUE(fails([&] { histogram.Reset(); }));
  EXPECT_TRUE(fails([&] { histogram.Init(0, 1, 7); }));
  EXPECT_TRUE(fails([&] { histogram.Init(0, 1, 0xFFFFFFFF); })) << "its block is 16 GB, not 0";
  EXPECT_EQ(histogram.GetCounts(), copy.GetCounts());
  EXPECT_THAT(CountsOf(histogram), ElementsAre(1, 0));
  EXPECT_EQ(histogram.GetTotalCount(), 1u);
}

}  // namespace
}  // namespace vlm

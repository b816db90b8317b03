#include <velum/numerics/UnivariateStatistics.h>

#include <velum/geometry/Constants.h>
#include <velum/numerics/detail/RankPartition.h>
#include <velum/numerics/detail/SortValues.h>
#include <velum/numerics/detail/Statistics.h>

#include <boost/numeric/conversion/cast.hpp>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <ostream>
#include <span>
#include <utility>

namespace vlm {
namespace {

using Stats = CUnivariateStatistics;
using detail::kUnknown;

constexpr std::size_t kMostPairwise = 25000;

// In the order of the report.
constexpr struct {
  double Stats::*member;
  const char* label;
} kFields[] = {
    {&Stats::Percentile_01, "Percentile_01       "},
    {&Stats::Percentile_05, "Percentile_05       "},
    {&Stats::Percentile_10, "Percentile_10       "},
    {&Stats::Percentile_25, "Percentile_25       "},
    {&Stats::Percentile_50, "Percentile_50       "},
    {&Stats::Percentile_75, "Percentile_75       "},
    {&Stats::Percentile_90, "Percentile_90       "},
    {&Stats::Percentile_95, "Percentile_95       "},
    {&Stats::Percentile_99, "Percentile_99       "},
    {&Stats::Minimum, "Minimum             "},
    {&Stats::Maximum, "Maximum             "},
    {&Stats::Mean, "Mean                "},
    {&Stats::Median, "Median              "},
    {&Stats::GeometricMean, "GeometricMean       "},
    {&Stats::HarmonicMean, "HarmonicMean        "},
    {&Stats::RootMeanSquare, "RootMeanSquare      "},
    {&Stats::TrimMean, "TrimMean            "},
    {&Stats::InterQuartileMean, "InterQuartileMean   "},
    {&Stats::Midrange, "Midrange            "},
    {&Stats::WinsorizedMean, "WinsorizedMean      "},
    {&Stats::TriMean, "TriMean             "},
    {&Stats::Variance, "Variance            "},
    {&Stats::StdDev, "StdDev              "},
    {&Stats::InterQuartileRange, "InterQuartileRange  "},
    {&Stats::Range, "Range               "},
    {&Stats::MeanDiff, "MeanDiff            "},
    {&Stats::MedianAbsDev, "MedianAbsDev        "},
    {&Stats::AvgAbsDev, "AvgAbsDev           "},
    {&Stats::QuartileCoefDisp, "QuartileCoefDisp    "},
    {&Stats::RelativeMeanDiff, "RelativeMeanDiff    "},
    {&Stats::StdError, "StdError            "},
    {&Stats::CoefVariation, "CoefVariation       "},
    {&Stats::Skewness, "Skewness            "},
    {&Stats::Kurtosis, "Kurtosis            "},
    {&Stats::Sum, "Sum                 "},
    {&Stats::SumAbs, "SumAbs              "},
    {&Stats::SumSquare, "SumSquare           "},
};

// Where each percentile stands in ascending order.
struct Ranks {
  explicit Ranks(std::size_t n) noexcept
      : p01((n - 1) / 100),
        p05((n - 1) / 20),
        p10((n - 1) / 10),
        p25((n - 1) / 4),
        p50((n - 1) / 2),
        p75(3 * (n - 1) / 4),
        p90(9 * (n - 1) / 10),
        p95(19 * (n - 1) / 20),
        p99(99 * (n - 1) / 100) {}

  std::size_t p01, p05, p10, p25, p50, p75, p90, p95, p99;
};

using Values = std::span<const double>;

// Three sums side by side, each from left to right: one alone would wait for each of its additions.
std::array<double, 3> SumsOf(const std::array<Values, 3>& parts) noexcept {
  std::array<double, 3> sums{};
  const std::size_t common = std::min({parts[0].size(), parts[1].size(), parts[2].size()});
  for (std::size_t i = 0; i < common; ++i) {
    for (std::size_t k = 0; k < sums.size(); ++k) sums[k] += parts[k][i];
  }
  for (std::size_t k = 0; k < sums.size(); ++k) {
    for (const double x : parts[k].subspan(common)) sums[k] += x;
  }
  return sums;
}

// The values from one rank to another, both included.
Values Between(Values values, std::size_t from, std::size_t to) {
  return values.subspan(from, to - from + 1);
}

void OrderAtRanks(std::span<double> values, const Ranks& at) {
  if (values.size() <= kMostPairwise) {
    detail::SortValues(values);  // the mean difference needs it in any case
    return;
  }
  const std::size_t ranks[] = {at.p01,     at.p05, at.p10, at.p25, at.p50,
                               at.p50 + 1, at.p75, at.p90, at.p95, at.p99};
  detail::PartitionAtRanks(values, ranks);
}

void LoadOrderStatistics(Stats& stats, Values values, const Ranks& at) {
  stats.Percentile_01 = values[at.p01];
  stats.Percentile_05 = values[at.p05];
  stats.Percentile_10 = values[at.p10];
  stats.Percentile_25 = values[at.p25];
  stats.Percentile_50 = values[at.p50];
  stats.Percentile_75 = values[at.p75];
  stats.Percentile_90 = values[at.p90];
  stats.Percentile_95 = values[at.p95];
  stats.Percentile_99 = values[at.p99];
  const auto lowest = values.first(at.p01 + 1);
  const auto highest = values.subspan(at.p99);
  stats.Minimum = *std::min_element(lowest.begin(), lowest.end());
  stats.Maximum = *std::max_element(highest.begin(), highest.end());

  const bool even = values.size() % 2 == 0;
  stats.Median = even ? (values[at.p50] + values[at.p50 + 1]) * 0.5 : values[at.p50];
  if (std::isfinite(stats.Median)) {
    stats.MedianAbsDev =
        detail::MeanDistanceAtRanks(values, stats.Median, at.p50, even ? at.p50 + 1 : at.p50);
  } else if (std::isfinite(stats.Minimum) && std::isfinite(stats.Maximum)) {
    stats.MedianAbsDev = std::abs(stats.Median);  // the mean of two large ones is beyond double
  }
}

void LoadSums(Stats& stats, Values values) {
  double sum = 0;
  double sumSquare = 0;
  double sumAbs = 0;
  for (const double x : values) {
    sum += x;
    sumSquare += x * x;
    sumAbs += std::abs(x);
  }
  stats.Sum = sum;
  stats.SumSquare = sumSquare;
  stats.SumAbs = sumAbs;
}

void LoadMeans(Stats& stats, Values values, const Ranks& at) {
  const auto n = static_cast<double>(values.size());
  stats.Mean = stats.Sum / n;
  if (stats.Minimum > SUKOSHI) {
    double logarithms = 0;
    double reciprocals = 0;
    for (const double x : values) {
      logarithms += std::log(x);
      reciprocals += 1 / x;
    }
    stats.GeometricMean = std::exp(logarithms / n);
    stats.HarmonicMean = n / reciprocals;
  }
  stats.MeanSquare = stats.SumSquare / n;
  if (stats.MeanSquare > 0) {
    stats.RootMeanSquare = std::sqrt(stats.MeanSquare);
  }
  const Values trimmed = Between(values, at.p05, at.p95);
  const Values middle = Between(values, at.p25, at.p75);
  const auto [trimmedSum, middleSum, inner] =
      SumsOf({trimmed, middle, values.subspan(at.p10, at.p90 - at.p10)});
  if (values.size() >= 20) {
    stats.TrimMean = trimmedSum / static_cast<double>(trimmed.size());
  }
  stats.InterQuartileMean = middleSum / static_cast<double>(middle.size());
  stats.Midrange = (stats.Minimum + stats.Maximum) * 0.5;
  const auto below = static_cast<double>(at.p10);
  const auto above = static_cast<double>(values.size() - at.p90);
  stats.WinsorizedMean = (below * stats.Percentile_10 + inner + above * stats.Percentile_90) / n;
  stats.TriMean = (stats.Percentile_25 + 2 * stats.Percentile_50 + stats.Percentile_75) * 0.25;
}

// The mean absolute difference of all pairs of a sorted sample. The gap between two neighbours is
// part of as many differences as there are pairs about it; no term is negative, and none cancels.
double MeanDifference(Values sorted) noexcept {
  const auto n = static_cast<double>(sorted.size());
  double sum = 0;
  for (std::size_t i = 1; i < sorted.size(); ++i) {
    const auto below = static_cast<double>(i);
    sum += (sorted[i] - sorted[i - 1]) * (below * (n - below));
  }
  return 2 * sum / (n * (n - 1));
}

// Sums of powers of what the values differ from their mean and median by.
struct Deviations {
  double squares = 0;
  double cubes = 0;
  double fourths = 0;
  double absolute = 0;
};

Deviations DeviationsOf(Values values, double mean, double median) noexcept {
  Deviations sums;
  for (const double x : values) {
    const double d = x - mean;
    const double square = d * d;
    sums.squares += square;
    sums.cubes += d * square;
    sums.fourths += square * square;
    sums.absolute += std::abs(x - median);
  }
  return sums;
}

void LoadDispersion(Stats& stats, Values values) {
  const auto n = static_cast<double>(values.size());
  const Deviations sums = DeviationsOf(values, stats.Mean, stats.Median);
  if (values.size() >= 2) {
    stats.Variance = sums.squares / (n - 1);
  }
  if (stats.Variance > 0) {
    stats.StdDev = std::sqrt(stats.Variance);
  }
  stats.InterQuartileRange = stats.Percentile_75 - stats.Percentile_25;
  stats.Range = stats.Maximum - stats.Minimum;
  if (values.size() >= 2 && values.size() <= kMostPairwise) {
    stats.MeanDiff = MeanDifference(values);
  }
  stats.AvgAbsDev = sums.absolute / n;
  if (stats.Minimum > SUKOSHI) {
    stats.QuartileCoefDisp = stats.InterQuartileRange / (stats.Percentile_75 + stats.Percentile_25);
  }
  const bool relative = stats.Minimum >= 0 && stats.Mean > SUKOSHI;
  if (relative) {
    stats.RelativeMeanDiff = stats.MeanDiff / stats.Mean;
    stats.CoefVariation = stats.StdDev / stats.Mean;
  }
  stats.StdError = stats.StdDev / std::sqrt(n);
  if (n * stats.StdDev * stats.Variance > SUKOSHI) {
    stats.Skewness = sums.cubes / (n * stats.Variance * stats.StdDev);
  }
  const double squared = stats.Variance * stats.Variance;
  if (n * squared > SUKOSHI) {
    stats.Kurtosis = sums.fourths / (n * squared);
  }
}

void LoadHistogram(Stats& stats, Values values) {
  constexpr std::size_t kFewest = 11;
  if (values.size() < kFewest || !(stats.Range > SUKOSHI)) {
    return;
  }
  if (std::isinf(stats.Minimum) || std::isinf(stats.Maximum)) {
    throw boost::numeric::positive_overflow();
  }
  const std::size_t bins = std::clamp<std::size_t>(values.size() / 25, 20, 100);
  std::vector<unsigned int> histogram(bins);
  // Near the largest doubles the range, or its product with the bins, is beyond them.
  const double scale = std::isinf(stats.Range * 128) ? 0x1p-10 : 1;
  const double minimum = stats.Minimum * scale;
  const double range = stats.Maximum * scale - minimum;
  const auto count = static_cast<double>(bins);
  for (const double x : values) {
    const auto bin = static_cast<std::size_t>((x * scale - minimum) * count / range);
    ++histogram[std::min(bin, bins - 1)];
  }
  stats.Histogram = std::move(histogram);
}

void WriteLine(std::ostream& stream, const char* label, double value) {
  stream << label << value << std::endl;
}

}  // namespace

CUnivariateStatistics::CUnivariateStatistics() noexcept { Clear(); }
CUnivariateStatistics::CUnivariateStatistics(const CUnivariateStatistics& other) = default;
CUnivariateStatistics& CUnivariateStatistics::operator=(const CUnivariateStatistics& other) =
    default;
CUnivariateStatistics::~CUnivariateStatistics() = default;

void CUnivariateStatistics::Clear() noexcept {
  Count = 0;
  for (const auto& field : kFields) {
    this->*field.member = kUnknown;
  }
  MeanSquare = kUnknown;
  Histogram.clear();
}

void Load(CUnivariateStatistics& stats, std::vector<double>::iterator first,
          std::vector<double>::iterator last) {
  stats.Clear();
  const std::span<double> values(first, last);
  stats.Count = static_cast<unsigned int>(values.size());
  const auto isNaN = [](double x) { return std::isnan(x); };
  if (values.empty() || std::any_of(values.begin(), values.end(), isNaN)) {
    return;
  }
  const Ranks ranks(values.size());
  OrderAtRanks(values, ranks);
  LoadOrderStatistics(stats, values, ranks);
  LoadSums(stats, values);
  LoadMeans(stats, values, ranks);
  LoadDispersion(stats, values);
  LoadHistogram(stats, values);
}

std::ostream& operator<<(std::ostream& stream, const CUnivariateStatistics& stats) {
  stream << std::setw(0) << "Count               " << stats.Count << std::endl;
  if (std::isnan(stats.Sum)) {
    WriteLine(stream, "Minimum             ", stats.Minimum);
    WriteLine(stream, "Maximum             ", stats.Maximum);
    WriteLine(stream, "Mean                ", stats.Mean);
    WriteLine(stream, "Variance            ", stats.Variance);
    WriteLine(stream, "StdDev              ", stats.StdDev);
    return stream;
  }
  for (const auto& field : kFields) {
    WriteLine(stream, field.label, stats.*field.member);
  }
  return stream;
}

}  // namespace vlm

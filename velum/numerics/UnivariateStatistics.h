#pragma once

/// \file
/// Descriptive statistics of one sample.
///
///     std::vector<double> sample = {3, 1, 4, 1, 5, 9, 2, 6};
///     vlm::CUnivariateStatistics stats;
///     vlm::Load(stats, sample.begin(), sample.end());
///     double spread = stats.InterQuartileRange;  // 4
///     std::cout << stats;                        // the whole report

#include <velum/core/Api.h>

#include <iosfwd>
#include <vector>

namespace vlm {

/// Thirty-eight statistics of one sample, with a histogram.
///
/// A value. What can't be told of a sample is NaN, and so is all that needs it. "Positive" below
/// means above `SUKOSHI`, 2^-126. Percentiles are values of the sample, without interpolation: the
/// one at the whole part of a fraction of n - 1, counted from 0 in ascending order.
class VELUM_API CUnivariateStatistics {
 public:
  /// Makes an empty record: Count 0, no histogram, everything else NaN.
  CUnivariateStatistics() noexcept;
  /// Copies all members.
  CUnivariateStatistics(const CUnivariateStatistics& other);
  /// Copies all members.
  CUnivariateStatistics& operator=(const CUnivariateStatistics& other);
  /// Releases the histogram.
  ~CUnivariateStatistics();

  /// Makes the record empty.
  void Clear() noexcept;

  unsigned int Count = 0;  ///< How many values there are.

  double Percentile_01;   ///< At (n - 1) / 100.
  double Percentile_05;   ///< At (n - 1) / 20.
  double Percentile_10;   ///< At (n - 1) / 10.
  double Percentile_25;   ///< At (n - 1) / 4.
  double Percentile_50;   ///< At (n - 1) / 2: the lower of two middle values.
  double Percentile_75;   ///< At 3 (n - 1) / 4.
  double Percentile_90;   ///< At 9 (n - 1) / 10.
  double Percentile_95;   ///< At 19 (n - 1) / 20.
  double Percentile_99;   ///< At 99 (n - 1) / 100.
  double Minimum;         ///< The smallest value.
  double Maximum;         ///< The largest value.
  double Mean;            ///< The sum divided by n.
  double Median;          ///< The middle value, or the mean of the two middle ones.
  double GeometricMean;   ///< Of positive values.
  double HarmonicMean;    ///< Of positive values.
  double RootMeanSquare;  ///< The root of MeanSquare, if that is above 0.
  /// The mean of the values from the 5th to the 95th percentile, both included; from 20 values on.
  double TrimMean;
  double InterQuartileMean;  ///< The mean of the values from quartile to quartile, both included.
  double Midrange;           ///< The mean of the smallest and the largest value.
  /// The mean, with the outer tenths moved to the 10th and 90th percentile.
  double WinsorizedMean;
  double TriMean;   ///< A quarter of the sum of the quartiles and twice the 50th percentile.
  double Variance;  ///< The sample's, with divisor n - 1; from 2 values on.
  double StdDev;    ///< The root of Variance, if that is above 0.
  double InterQuartileRange;  ///< The upper quartile less the lower one.
  double Range;               ///< The largest value less the smallest.
  double MeanDiff;            ///< The mean absolute difference of all pairs; of 2 to 25,000 values.
  double MedianAbsDev;        ///< The median of the absolute deviations from Median.
  double AvgAbsDev;           ///< The mean of the absolute deviations from Median.
  double QuartileCoefDisp;  ///< InterQuartileRange by the sum of the quartiles; of positive values.
  double RelativeMeanDiff;  ///< MeanDiff / Mean; of no negative value and a positive mean.
  double StdError;          ///< The standard error of the mean: StdDev / sqrt(n).
  double CoefVariation;     ///< StdDev / Mean; of no negative value and a positive mean.
  double Skewness;          ///< The mean third power of the deviations from Mean, by StdDev cubed.
  double Kurtosis;          ///< The mean fourth power, by Variance squared; about 3 if normal.
  double Sum;               ///< The sum of the values.
  double SumAbs;            ///< The sum of the absolute values.
  double SumSquare;         ///< The sum of the squares.
  double MeanSquare;        ///< SumSquare / n; not in the report.
  /// The counts of n / 25 bins, at least 20 and at most 100, between the extremes; empty for fewer
  /// than 11 values, and where Range isn't positive.
  std::vector<unsigned int> Histogram;
};

/// Computes all statistics of the values from `first` up to `last`, and puts these in another
/// order.
///
/// Sums run through the values in their new order, in which all that stand before a percentile are
/// at most as large as it.
///
/// - No values: an empty record.
/// - A NaN among the values: all but Count stays NaN, and the values keep their order.
/// - An infinity makes those statistics infinite or NaN whose formulas do so.
///
/// *Errors:* `boost::numeric::positive_overflow`, "bad numeric conversion: positive overflow", for
/// 11 values or more, an infinite one among them, which have no bins; all statistics stand by then.
/// `std::bad_alloc` without memory for two copies of the sample, which keeps its values.
///
/// *Cost:* up to 25,000 values are sorted, as MeanDiff needs it; more take O(n), some 10 passes.
VELUM_API void Load(CUnivariateStatistics& stats, std::vector<double>::iterator first,
                    std::vector<double>::iterator last);

/// Writes the report: for each statistic but MeanSquare a line, the name padded to 20 characters
/// before the value, which has the format of the stream. Where Sum is NaN there are only Count,
/// Minimum, Maximum, Mean, Variance and StdDev. A field width is set to 0 first.
VELUM_API std::ostream& operator<<(std::ostream& stream, const CUnivariateStatistics& stats);

}  // namespace vlm

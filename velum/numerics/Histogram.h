#pragma once

/// \file
/// Counts real numbers in bins of equal width.
///
///     vlm::CHistogram magnitudes(0, 8, 16);
///     magnitudes.Add(4.3);
///     double share = magnitudes.GetProbability(8);  // 1: all that are from 4 to 4.5
///     vlm::CHistogram copy = magnitudes;            // the counts are shared until one is changed

#include <velum/core/Api.h>

namespace vlm {

/// Counts of values in bins of equal width between two limits.
///
/// A value. Copies share their counts until one of them is changed; the count of owners is a plain
/// integer, so that an object and all its copies belong to one thread.
class VELUM_API CHistogram {
 public:
  /// A histogram without bins, from 0 to 1.
  CHistogram() noexcept = default;
  /// A histogram with `bins` empty bins from `min` to `max`; with none it goes from 0 to 1.
  ///
  /// *Errors*: those of `Init`.
  CHistogram(double min, double max, unsigned int bins);
  /// Shares the counts of `other`.
  CHistogram(const CHistogram& other) noexcept;
  /// Shares the counts of `other` and gives up its own.
  CHistogram& operator=(const CHistogram& other) noexcept;
  ~CHistogram();

  /// The counts of the bins, one after the other; null where there are none.
  ///
  /// *Lifetime*: until this histogram or its last copy is changed or goes.
  [[nodiscard]] const unsigned int* GetCounts() const noexcept;
  /// The count of bin `i`, which must be one of the bins.
  ///
  /// *Lifetime*: as `GetCounts`.
  [[nodiscard]] const unsigned int& operator[](unsigned int i) const noexcept;
  /// The count of bin `i` by the count of all values; NaN before the first value.
  [[nodiscard]] double GetProbability(unsigned int i) const noexcept;
  /// The number of bins.
  [[nodiscard]] unsigned int GetBinCount() const noexcept { return binCount_; }
  /// The number of values that were counted, modulo 2^32.
  [[nodiscard]] unsigned int GetTotalCount() const noexcept { return totalCount_; }

  /// Begins anew with `bins` empty bins from `min` to `max`.
  ///
  /// *Errors*: `Exception` with `ERR_OUT_OF_MEMORY` from "Histogram"; the histogram stays as it
  /// was.
  void Init(double min, double max, unsigned int bins);
  /// Begins anew with the counts at `counts`, one for each of `bins` bins.
  ///
  /// *Errors*: those of the other `Init`; `ERR_INTERNAL` if `counts` is null, unless `bins` is 0.
  void Init(double min, double max, unsigned int bins, const unsigned int* counts);
  /// Counts `x` in its bin, the lower limit of which belongs to it; the upper limit of all belongs
  /// to the last bin.
  ///
  /// - No bins, outside the limits, NaN: false, and nothing is counted.
  ///
  /// *Errors*: those of `CopyOnWrite`.
  bool Add(double x);
  /// Sets all counts to 0.
  ///
  /// *Errors*: those of `CopyOnWrite`.
  void Reset();

 protected:
  /// Counts one more owner of the block, if there is one.
  void AddRef() noexcept;
  /// Gives the block up, and frees it if this was its last owner.
  void DecRef() noexcept;
  /// Makes the block this object's own.
  ///
  /// *Errors*: `Exception` with `ERR_OUT_OF_MEMORY` from "Histogram"; the block stays shared.
  void CopyOnWrite();

 private:
  double min_ = 0;
  double max_ = 1;
  double binWidth_ = 0;
  unsigned int binCount_ = 0;
  unsigned int totalCount_ = 0;
  unsigned int* block_ = nullptr;  // the count of its owners, then that of each bin
};

}  // namespace vlm

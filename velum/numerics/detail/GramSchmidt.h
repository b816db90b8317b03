#pragma once

/// \file
/// The modified method of Gram and Schmidt, sixteen columns at a time.
///
///     const bool isSolved = GramSchmidt(a).Solve({x.Base(), 1, 1}, {b.Base(), 1, 1});

#include <velum/numerics/RMatrix.h>
#include <velum/numerics/detail/SolverKernels.h>

#include <cstddef>
#include <vector>

namespace vlm::detail {

/// Columns of doubles that lie side by side.
struct Columns {
  double* first;       ///< The first element of the first one.
  unsigned count;      ///< The number of columns.
  std::size_t stride;  ///< From an element of a column to the next one.
};

/// Makes the columns of a matrix orthonormal. Columns are copied into strips, whose rows lie side
/// by side; what is orthonormal already is taken from a strip column by column, so that the strip
/// stays in the cache. Each column meets the ones before it in their order, as if one at a time
/// were taken from all that follow.
class GramSchmidt {
 public:
  /// Makes the columns of `a`, which has elements, orthonormal, as far as they don't depend on each
  /// other.
  ///
  /// *Errors:* `std::bad_alloc`.
  explicit GramSchmidt(RMatrix& a);

  /// Writes the coefficients of `b`, and leaves the residual there. False if the columns depend on
  /// each other.
  ///
  /// *Errors:* `std::bad_alloc`.
  [[nodiscard]] bool Solve(const Columns& x, const Columns& b);

 private:
  void Take(const double* from, std::size_t stride, std::size_t count) noexcept;
  void Give(double* to, std::size_t stride, std::size_t count) const noexcept;
  void Subtract(std::size_t count, double* products, std::size_t stride) noexcept;
  [[nodiscard]] bool Orthogonalize(std::size_t left, std::size_t count) noexcept;
  [[nodiscard]] bool Substitute(const Columns& x) const noexcept;

  const SolverKernelSet* kernels_;
  std::size_t rows_;
  std::size_t cols_;
  std::size_t done_;             // the columns that are orthonormal: all, or those before a failure
  bool isWhole_ = true;          // no column has failed yet
  std::vector<double> columns_;  // those, one after the other
  std::vector<double> triangle_;  // the dot products, by columns of the result
  std::vector<double> strip_;
};

}  // namespace vlm::detail

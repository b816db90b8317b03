#pragma once

/// \file
/// Sums of products, each in the order of the indices and in one accumulator that begins with 0.
///
///     double rowTimesColumn = Dot(n, a.Base(i, 0), b.Base(0, j), b.nCols());
///
/// A stride is the distance of an element to the next one. Unrolling would not make them faster:
/// each addition waits for the one before it.

#include <cstddef>

namespace vlm::detail {

/// Returns the sum of the products of two runs with strides.
[[nodiscard]] inline double Dot(std::size_t count, const double* a, std::size_t strideA,
                                const double* b, std::size_t strideB) noexcept {
  double sum = 0;
  for (std::size_t i = 0; i < count; ++i) sum += a[i * strideA] * b[i * strideB];
  return sum;
}

/// Returns the sum of the products of a run and a run with a stride, such as a column.
[[nodiscard]] inline double Dot(std::size_t count, const double* a, const double* b,
                                std::size_t strideB) noexcept {
  return Dot(count, a, 1, b, strideB);
}

/// Returns the sum of the products of two runs.
[[nodiscard]] inline double Dot(std::size_t count, const double* a, const double* b) noexcept {
  return Dot(count, a, 1, b, 1);
}

/// Returns the sum of the squares of a run, which may have a stride.
[[nodiscard]] inline double SumOfSquares(std::size_t count, const double* a,
                                         std::size_t stride = 1) noexcept {
  return Dot(count, a, stride, a, stride);
}

}  // namespace vlm::detail

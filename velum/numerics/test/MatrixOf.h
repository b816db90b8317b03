#pragma once

/// \file
/// Matrices for tests, written down in a line.
///
///     EXPECT_TRUE(SameBits(MatrixOf("2,1;4,3"), product));

#include <velum/numerics/MatrixFill.h>
#include <velum/numerics/RMatrix.h>
#include <velum/numerics/RVector.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace vlm::testing {

inline RVector VectorOf(const std::string& text) {
  RVector v;
  Initialize(v, text);
  return v;
}

inline RMatrix MatrixOf(const std::string& text) {
  RMatrix a;
  Initialize(a, text);
  return a;
}

/// Tells whether two runs have the same elements bit for bit, all NaNs being one.
inline ::testing::AssertionResult SameBits(const double* expected, const double* actual,
                                           std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const bool same =
        std::bit_cast<std::uint64_t>(expected[i]) == std::bit_cast<std::uint64_t>(actual[i]) ||
        (std::isnan(expected[i]) && std::isnan(actual[i]));
    if (!same) {
      return ::testing::AssertionFailure()
             << "element " << i << ": expected " << expected[i] << ", got " << actual[i];
    }
  }
  return ::testing::AssertionSuccess();
}

/// Tells whether two vectors have the same length and elements.
inline ::testing::AssertionResult SameBits(const RVector& expected, const RVector& actual) {
  if (expected.Length() != actual.Length()) {
    return ::testing::AssertionFailure() << "a length of " << actual.Length();
  }
  return SameBits(expected.Base(), actual.Base(), expected.Length());
}

/// Tells whether two matrices have the same size and elements.
inline ::testing::AssertionResult SameBits(const RMatrix& expected, const RMatrix& actual) {
  if (expected.nRows() != actual.nRows() || expected.nCols() != actual.nCols()) {
    return ::testing::AssertionFailure()
           << "a size of " << actual.nRows() << " by " << actual.nCols();
  }
  return SameBits(expected.Base(), actual.Base(), std::size_t{expected.nRows()} * expected.nCols());
}

/// Fills a vector or matrix with numbers of all magnitudes from 1e-6 to 1e6, so that sums in
/// another order have other bits; now and then 0, -0 or, with `special`, an infinity or NaN.
template <class Run>
Run RandomOf(Run run, std::mt19937& random, bool special = false) {
  std::uniform_real_distribution<double> exponent(-6, 6);
  constexpr double kSpecial[] = {0.0, -0.0, INFINITY, -INFINITY, NAN, 5e-324};
  for (double& x : run) {
    x = std::pow(10, exponent(random)) * (random() % 2 ? 1 : -1);
    if (random() % 16 == 0) x = kSpecial[random() % (special ? 6 : 2)];
  }
  return run;
}

}  // namespace vlm::testing

#pragma once

/// \file
/// The normal distribution: probability, density and quantile.
///
///     double p = vlm::GaussianCDF(1.96);   // 0.975
///     double x = vlm::GaussianInv(0.975);  // 1.96

#include <velum/core/Api.h>

namespace vlm {

/// Returns the probability that a standard normal variate is at most `x`.
///
/// - Above 37: 1. Below -37: 0. NaN: NaN.
///
/// The relative error is below 1e-14 from -1 on, 5e-11 from -5 on and 9e-9 from -37 on.
/// *Source:* J. F. Hart et al., Computer Approximations (1968), algorithm 5666, as given by G.
/// West, Better Approximations to Cumulative Normal Functions, Wilmott Magazine (2005).
[[nodiscard]] VELUM_API double GaussianCDF(double x) noexcept;
/// Returns the probability that a normal variate of that mean and standard deviation is at most
/// `x`.
[[nodiscard]] VELUM_API double GaussianCDF(double x, double mean, double stddev) noexcept;

/// Returns the density of the standard normal distribution at `x`.
[[nodiscard]] VELUM_API double GaussianPDF(double x) noexcept;
/// Returns the density of the normal distribution of that mean and standard deviation at `x`.
[[nodiscard]] VELUM_API double GaussianPDF(double x, double mean, double stddev) noexcept;

/// Returns the value that a standard normal variate is below with probability `p`.
///
/// - 0: -infinity. 1: infinity. NaN, and outside of 0 to 1: NaN.
///
/// A rational estimate is refined once by Halley's method; not for probabilities of less than
/// 5.7e-300, where GaussianCDF is 0 and says nothing. The relative error is below 2e-10, 2e-9 in
/// that last case; near a half, where the value goes to 0, the absolute one is about 1e-15.
/// *Source:* P. J. Acklam, An algorithm for computing the inverse normal cumulative distribution
/// function (2003).
[[nodiscard]] VELUM_API double GaussianInv(double p) noexcept;

}  // namespace vlm

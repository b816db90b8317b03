#pragma once

/// \file
/// Random variates from one generator of the library.
///
///     vlm::SeedRV(7);                          // the same numbers at each run, as without it
///     double dice = vlm::UniformRV(0, 6);      // 0 to 6
///     double height = vlm::NormalRV(170, 10);  // mean 170, standard deviation 10
///
/// The generator gives whole numbers from 0 to 32767. It begins with the same one whenever a
/// program starts. Threads may draw from it at once: each number goes to one of them, in an order
/// that then depends on the threads.
///
/// *Source:* G. L. Steele, D. Lea and C. H. Flood, Fast Splittable Pseudorandom Number Generators,
/// OOPSLA 2014, whose numbers of 64 bits it takes the upper 15 bits of.

#include <velum/core/Api.h>

#include <cstdint>

namespace vlm {

/// Begins the sequence of numbers that belongs to `seed`; a program starts with that of 0.
VELUM_API void SeedRV(std::uint64_t seed) noexcept;

/// Returns a variate of the uniform distribution from `a` to `b`, both included, of 32768 values.
VELUM_API double UniformRV(double a, double b) noexcept;
/// Returns a variate of the standard normal distribution, at most 4.561 away from 0.
///
/// *Source:* G. E. P. Box and M. E. Muller, A Note on the Generation of Random Normal Deviates,
/// Annals of Mathematical Statistics 29 (1958). *Cost:* two numbers of the generator.
VELUM_API double NormalRV() noexcept;
/// Returns a variate of the normal distribution of that mean and standard deviation.
VELUM_API double NormalRV(double mean, double stddev) noexcept;
/// Returns a variate whose logarithm is normal; `mean` and `stddev` are those of the variate
/// itself.
///
/// - `mean` not above 0: NaN.
VELUM_API double LogNormalRV(double mean, double stddev) noexcept;

}  // namespace vlm

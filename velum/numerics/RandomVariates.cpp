#include <velum/numerics/RandomVariates.h>

#include <velum/geometry/Constants.h>

#include <atomic>
#include <cmath>

namespace vlm {
namespace {

constinit std::atomic<std::uint64_t> g_place{0};

// The next number, from 0 to 32767: the upper bits of a scrambled counter. The counter alone is
// shared, so that threads never wait.
int NextNumber() noexcept {
  constexpr std::uint64_t kStep = 0x9E3779B97F4A7C15u;
  std::uint64_t bits = g_place.fetch_add(kStep, std::memory_order_relaxed) + kStep;
  bits = (bits ^ bits >> 30) * 0xBF58476D1CE4E5B9u;
  bits = (bits ^ bits >> 27) * 0x94D049BB133111EBu;
  return static_cast<int>((bits ^ bits >> 31) >> 49);
}

}  // namespace

void SeedRV(std::uint64_t seed) noexcept { g_place.store(seed, std::memory_order_relaxed); }

double UniformRV(double a, double b) noexcept { return a + (b - a) * NextNumber() / 32767.0; }

double NormalRV() noexcept {
  const double u1 = (NextNumber() + 1) / 32769.0;
  const double u2 = (NextNumber() + 1) / 32769.0;
  return std::sqrt(-2 * std::log(u1)) * std::cos(u2 * TWO_PI);
}

double NormalRV(double mean, double stddev) noexcept { return NormalRV() * stddev + mean; }

double LogNormalRV(double mean, double stddev) noexcept {
  const double ratio = stddev / mean;
  const double s = std::sqrt(std::log(ratio * ratio + 1));
  return std::exp(std::log(mean) - s * s / 2 + NormalRV() * s);
}

}  // namespace vlm

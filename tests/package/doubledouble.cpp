// The inlined double-double operations in a user's program, whatever its flags: prints a digest of
// their bits over 100,000 pairs of numbers, which the check compares between builds with and
// without fused products, and fails where the product of two doubles is not exact.
#include <velum/numerics/DoubleDouble.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>

namespace {

using vlm::doubledouble;

std::uint64_t state = 1;
std::uint64_t digest = 14695981039346656037u;

// Steele, Lea and Flood's generator, so that the numbers are the same under every library.
std::uint64_t Random() {
  std::uint64_t z = state += 0x9E3779B97F4A7C15u;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
  return z ^ (z >> 31);
}

// A number from 2 to -20 up to 2 to 20 with a random sign.
doubledouble Number() {
  const auto exponent = static_cast<int>(Random() % 40) - 20;
  const double hi = std::ldexp(1 + static_cast<double>(Random() >> 12) * 0x1p-52, exponent);
  const double lo = std::ldexp(static_cast<double>(Random() >> 12) * 0x1p-52 - 0.5, exponent - 53);
  return Random() % 2 != 0 ? doubledouble(hi, lo) : -doubledouble(hi, lo);
}

void Note(const doubledouble& x) {
  for (const double field : {x.hi, x.lo}) {
    digest = (digest ^ std::bit_cast<std::uint64_t>(field)) * 1099511628211u;
  }
}

}  // namespace

int main() {
  int inexact = 0;
  for (int i = 0; i < 100000; ++i) {
    const doubledouble a = Number();
    const doubledouble b = Number();
    Note(a + b);
    Note(a - b);
    Note(a * b);
    Note(a / b);
    Note(a + b.hi);
    Note(a * b.hi);
    Note(a.hi * b);
    Note(a / b.hi);
    Note(a.hi / b);
    Note(sqr(a));
    Note(recip(a));
    Note(sqrt(fabs(a)));
    Note(floor(a));
    const doubledouble product = vlm::Multiply(a.hi, b.hi);
    inexact += std::fma(a.hi, b.hi, -product.hi) != product.lo;
  }
  if (inexact > 0) std::printf("FAILED: %d products are not exact\n", inexact);
  std::printf("double-double bits: %016llx\n", static_cast<unsigned long long>(digest));
  return inexact == 0 ? 0 : 1;
}

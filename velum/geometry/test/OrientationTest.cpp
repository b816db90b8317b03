#include <velum/geometry/detail/Orientation.h>

#include <boost/multiprecision/cpp_int.hpp>
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace vlm {
namespace {

using Integer = boost::multiprecision::cpp_int;

// A double as a multiple of the smallest one.
Integer Exact(double value) {
  int exponent = 0;
  Integer whole = static_cast<std::int64_t>(std::ldexp(std::frexp(value, &exponent), 53));
  const int shift = exponent - 53 + 1140;
  shift >= 0 ? whole <<= shift : whole >>= -shift;
  return whole;
}

int ExactOrientation(const std::vector<Vec2d>& ring) {
  Integer sum = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Vec2d& p = ring[i];
    const Vec2d& q = ring[(i + 1) % ring.size()];
    sum += Exact(p.x) * Exact(q.y) - Exact(p.y) * Exact(q.x);
  }
  return sum.sign();
}

class Numbers {
 public:
  explicit Numbers(unsigned int seed) : random_(seed) {}

  // Of one of several kinds, of which each finds other faults of rounding.
  double Next(int kind) {
    const auto small = static_cast<int>(random_() % 7) - 3;
    switch (kind) {
      case 0:
        return small;
      case 1:
        return static_cast<double>(random_() % 1000) / 10;
      case 2: {
        const double any = std::bit_cast<double>(random_());
        return std::isfinite(any) ? any : 0;
      }
      case 3:
        return std::ldexp(small, static_cast<int>(random_() % 2000) - 1000);
      case 4:
        return 5e-324 * small;
      case 5:
        return 1e308 * (small % 2) + 1e292 * small;
      case 6:
        return 1e16 + 2 * small;
      default:
        return 0.5 + std::ldexp(small, -53);
    }
  }
  Vec2d Point(int kind) {
    const double x = Next(kind);
    return Vec2d(x, Next(kind));
  }

 private:
  std::mt19937_64 random_;
};

TEST(Orientation, IsThatOfWholeNumbers) {
  constexpr unsigned int kSeed = 3;
  SCOPED_TRACE(kSeed);
  Numbers numbers(kSeed);
  int straight = 0;
  for (int round = 0; round < 20000; ++round) {
    const int kind = round % 8;
    std::vector<Vec2d> ring = {numbers.Point(kind), numbers.Point(kind), numbers.Point(kind)};
    const Vec2d between = ring[0] + (ring[1] - ring[0]) * 0.3;
    if (round % 3 == 0 && std::isfinite(between.x) && std::isfinite(between.y)) ring[2] = between;
    const int expected = ExactOrientation(ring);
    straight += expected == 0;
    ASSERT_EQ(detail::Orientation(ring[0], ring[1], ring[2]), expected) << round;
    for (int i = 0; i < 3; ++i) ring.push_back(numbers.Point(kind));
    ASSERT_EQ(detail::RingOrientation(ring.data(), ring.size()), ExactOrientation(ring)) << round;
  }
  EXPECT_GT(straight, 1000);
}

TEST(Orientation, LongRingsThatEncloseAlmostNothingAreTold) {
  constexpr unsigned int kSeed = 4;
  SCOPED_TRACE(kSeed);
  Numbers numbers(kSeed);
  for (int round = 0; round < 16; ++round) {
    // There and back the same way, apart from one point.
    std::vector<Vec2d> ring;
    for (int i = 0; i < 300; ++i) ring.push_back(numbers.Point(round % 8));
    for (int i = 299; i-- > 1;) ring.push_back(ring[static_cast<std::size_t>(i)]);
    EXPECT_EQ(detail::RingOrientation(ring.data(), ring.size()), 0);
    ring[100].x = std::nextafter(ring[100].x, 1.0);
    EXPECT_EQ(detail::RingOrientation(ring.data(), ring.size()), ExactOrientation(ring)) << round;
  }
}

}  // namespace
}  // namespace vlm

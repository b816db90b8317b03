#include <velum/geometry/detail/EdgeParity.h>

#include <velum/platform/detail/VectorUnit.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace vlm::detail {
namespace {

TEST(EdgeParity, IsTheSameWithWideInstructions) {
  if (!platform::HasFourWide()) GTEST_SKIP() << "the processor has no AVX2";
  SCOPED_TRACE("seed 8");
  std::mt19937 random(8);
  const double odd[] = {0,      -0.0,         1,
                        2,      5e-324,       1e308,
                        -1e308, std::nan(""), std::numeric_limits<double>::infinity(),
                        1e-200};
  std::uniform_real_distribution<double> number(-1, 1);
  int inside = 0;
  for (int round = 0; round < 60000; ++round) {
    const auto coordinate = [&]() -> double {
      if (round % 3 == 0) return number(random);
      return round % 3 == 1 ? static_cast<double>(random() % 4) : odd[random() % 10];
    };
    std::vector<Vec2d> points(1 + random() % 80);
    // Every other path keeps to a height for a while, so that few of its edges pass.
    const unsigned steps = round % 2 == 0 ? 1 : 9;
    for (std::size_t i = 0; i < points.size(); ++i) {
      points[i].Set(coordinate(), i % steps == 0 ? coordinate() : points[i - 1].y);
    }
    const Vec2d p(coordinate(), coordinate());
    const auto count = static_cast<unsigned>(points.size());
    const bool plain = OddNumberOnPath(p, points.data(), count);
    ASSERT_EQ(OddNumberOnPathFourWide(p, points.data(), count), plain) << round;
    inside += plain;
  }
  EXPECT_GT(inside, 10000) << "both answers come up";
}

}  // namespace
}  // namespace vlm::detail

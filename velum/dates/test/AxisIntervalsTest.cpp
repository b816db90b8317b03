#include <velum/dates/AxisIntervals.h>

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <random>

namespace vlm {
namespace {

TEST(AxisIntervals, RoundStepsForRanges) {
  const struct {
    double lo, hi;
    int count;
    double step, first, last;
    int intervals;
    double otherStep;  // of CalcAxisIntervals
    const char* reason;
  } rows[] = {
      {0, 10, 5, 2, 0, 10, 5, 2, "twice the power of ten"},
      {0, 100, 3, 50, 0, 100, 2, 50, "five times"},
      {0, 97, 5, 20, 0, 80, 4, 20, "the last tick stays inside"},
      {-3.2, 4.1, 7, 2, -2, 4, 3, 2, "both ticks inside"},
      {0, 1, 1, 1, 0, 1, 1, 1, "the power of ten fits exactly"},
      {0, 0.9, 1, 0.5, 0, 0.5, 9, 0.1, "no candidate below the range is wide enough"},
      {1e-6, 10, 5, 2, 0, 10, 5, 2, "a hair above a tick keeps it"},
      {0, 9.99999, 5, 2, 0, 10, 5, 2, "a hair below a tick keeps it"},
      {3e-5, 10, 5, 2, 2, 10, 4, 2, "more than a hair above does not"},
      {0, 10, 0, 10, 0, 10, 1, 10, "no intervals wanted counts as one"},
      {-DBL_MAX, DBL_MAX, 4, 5e307, -1.5e308, 1.5e308, 6, 5e307, "the width overflows"},
      {0, 1e-323, 5, 5e-324, 0, 1e-323, 2, 5e-324, "no power of ten is as small"},
  };
  for (const auto& row : rows) {
    double first = NAN;
    double last = NAN;
    EXPECT_EQ(CalcAutoInc(row.lo, row.hi, row.count, &first, &last), row.step) << row.reason;
    EXPECT_EQ(CalcAutoInc(row.lo, row.hi, row.count, nullptr, nullptr), row.step) << row.reason;
    EXPECT_DOUBLE_EQ(first, row.first) << row.reason;
    EXPECT_DOUBLE_EQ(last, row.last) << row.reason;
    const int intervals = CalcAxisIntervals(row.lo, row.hi, row.count, &first, &last);
    EXPECT_EQ(intervals, row.intervals) << row.reason;
    EXPECT_EQ(CalcAxisIntervals(row.lo, row.hi, row.count, nullptr, nullptr), intervals);
    EXPECT_NEAR(last / row.otherStep - first / row.otherStep, intervals, 1e-9) << row.reason;
  }
}

TEST(AxisIntervals, UnusableRanges) {
  const struct {
    double lo, hi, step, first, last;
  } rows[] = {
      {5, 5, 1, 4, 6},
      {3, 2, 1, 2, 4},
      {NAN, 1, NAN, NAN, 1},
      {0, NAN, NAN, 0, NAN},
      {0, INFINITY, NAN, 0, INFINITY},
      {-INFINITY, 0, NAN, -INFINITY, 0},
  };
  const auto same = [](double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); };
  for (const auto& row : rows) {
    double first = 77;
    double last = 77;
    EXPECT_TRUE(same(CalcAutoInc(row.lo, row.hi, 10, &first, &last), row.step)) << row.lo;
    EXPECT_TRUE(same(first, row.first) && same(last, row.last)) << row.lo << ' ' << row.hi;
    EXPECT_EQ(CalcAxisIntervals(row.lo, row.hi, 10, &first, &last), 0);
    EXPECT_TRUE(same(first, row.lo) && same(last, row.hi)) << row.lo << ' ' << row.hi;
  }
  EXPECT_GT(CalcAxisIntervals(0, 1, INT_MAX, nullptr, nullptr), 1000000000);
}

double RandomOfAnyMagnitude(std::mt19937_64& random) {
  const double mantissa = 1 + static_cast<double>(random() >> 12) * 0x1p-52;
  const double value = std::ldexp(mantissa, static_cast<int>(random() % 2098) - 1074);
  return (random() & 1) != 0 ? -value : value;
}

TEST(AxisIntervals, TicksNeverLieAStepOutsideTheRange) {
  std::mt19937_64 random(2);
  for (int i = 0; i < 1000000; ++i) {
    double lo = RandomOfAnyMagnitude(random);
    double hi = RandomOfAnyMagnitude(random);
    if (i % 3 == 0) {  // a few places of the last digit wide
      hi = lo;
      for (auto steps = random() % 40 + 1; steps > 0; --steps) {
        hi = std::nextafter(hi, INFINITY);
      }
    } else if (i % 3 == 1) {
      hi = lo + std::abs(lo) * std::ldexp(1.0, -static_cast<int>(random() % 60));
    }
    if (lo > hi) {
      std::swap(lo, hi);
    }
    if (lo == hi || std::isinf(hi)) {
      continue;
    }
    const int count = static_cast<int>(random() % 30) + 1;
    double first = NAN;
    double last = NAN;
    const double step = CalcAutoInc(lo, hi, count, &first, &last);
    ASSERT_TRUE(step > 0 && lo - first < step && first <= last && last - hi < step)
        << lo << ' ' << hi << ' ' << count;
    // Its step is the same one, or the power of ten below it.
    const int intervals = CalcAxisIntervals(lo, hi, count, &first, &last);
    ASSERT_TRUE(lo - first < step && first <= last && last - hi < step && intervals >= 0)
        << lo << ' ' << hi << ' ' << count;
  }
}

TEST(AxisIntervals, ValuesSnapToMultiples) {
  const struct {
    double value, step, up, down;
  } rows[] = {
      {7, 5, 10, 5},
      {10, 5, 10, 10},
      {-7, 5, -5, -10},
      {0, 5, 0, 0},
      {0.3, 0.1, 0.30000000000000004, 0.2},
      {7, 0, 7, 7},
      {7, -5, 7, 7},
      {7, NAN, 7, 7},
      {7, INFINITY, 7, 7},
      {6.518706086665276e16, 0.7, 6.518706086665276e16, 6.518706086665276e16},
      {1e300, 1e-300, 1e300, 1e300},
      {INFINITY, 5, INFINITY, INFINITY},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(SyncUpInterval(row.value, row.step), row.up) << row.value << ' ' << row.step;
    EXPECT_EQ(SyncDownInterval(row.value, row.step), row.down) << row.value << ' ' << row.step;
  }
  EXPECT_TRUE(std::isnan(SyncUpInterval(NAN, 5)));
  std::mt19937_64 random(3);
  for (int i = 0; i < 200000; ++i) {
    const double value = RandomOfAnyMagnitude(random);
    const double step = std::abs(value) * std::ldexp(1.3, 3 - static_cast<int>(random() % 60));
    const double up = SyncUpInterval(value, step);
    const double down = SyncDownInterval(value, step);
    ASSERT_TRUE(up >= value && up <= value + step) << value << ' ' << step;
    ASSERT_TRUE(down <= value && down >= value - step) << value << ' ' << step;
  }
}

}  // namespace
}  // namespace vlm

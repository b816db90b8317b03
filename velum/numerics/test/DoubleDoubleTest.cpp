#include <velum/numerics/DoubleDouble.h>

#include <velum/numerics/test/reference/PlainDoubleDouble.h>
#include <testing/Sanitized.h>

#include <boost/multiprecision/cpp_bin_float.hpp>

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <tuple>

namespace vlm {
namespace {

// So wide that its own rounding does not show beside errors of 2 to the power -106.
using vlm::testing::Rounds;
using Exact = boost::multiprecision::number<
    boost::multiprecision::cpp_bin_float<224, boost::multiprecision::digit_base_2>,
    boost::multiprecision::et_off>;

constexpr int kPairs = Rounds(100'000);
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kMax = std::numeric_limits<double>::max();

Exact ExactOf(const doubledouble& x) { return Exact(x.hi) + Exact(x.lo); }

bool SameBits(const doubledouble& x, double hi, double lo) {
  const auto bits = [](double v) { return std::bit_cast<std::uint64_t>(v); };
  const bool bothNan = std::isnan(x.hi) && std::isnan(hi);
  return bothNan || (bits(x.hi) == bits(hi) && bits(x.lo) == bits(lo));
}

bool SameBits(const doubledouble& x, const doubledouble& y) { return SameBits(x, y.hi, y.lo); }

bool IsNormalized(const doubledouble& x) { return x.hi + x.lo == x.hi; }

// Pairs of numbers with exponents up to `range`; every other pair of like size, so that sums
// cancel; `lo` is full, short, or 0.
class Pairs {
 public:
  Pairs(unsigned seed, int range) : random_(seed), exponents_(-range, range) {}

  std::pair<doubledouble, doubledouble> Next() {
    const doubledouble a = Number(exponents_(random_));
    const bool isNear = (++made_ % 2) == 0;
    const int exponent = isNear ? std::ilogb(a.hi) + near_(random_) : exponents_(random_);
    return {a, Number(exponent)};
  }

 private:
  doubledouble Number(int exponent) {
    const double hi = std::ldexp(1 + unit_(random_), exponent) * (random_() % 2 != 0 ? 1 : -1);
    const double lo = std::ldexp(2 * unit_(random_) - 1, exponent - 53);
    const unsigned kind = random_() % 8;
    return doubledouble(hi, kind == 0 ? 0 : kind < 3 ? std::ldexp(lo, -20) : lo);
  }

  std::mt19937 random_;
  std::uniform_int_distribution<int> exponents_;
  std::uniform_int_distribution<int> near_{-2, 2};
  std::uniform_real_distribution<double> unit_{0, 1};
  int made_ = 0;
};

// The largest error of an operation, as a share of the exact result in units of 2 to the power
// -106.
class WorstError {
 public:
  void Add(const doubledouble& result, const Exact& exact) {
    EXPECT_TRUE(IsNormalized(result)) << result.hi << ' ' << result.lo;
    const Exact error = abs(ExactOf(result) - exact);
    if (error != 0) {
      worst_ = std::max(worst_, static_cast<double>(error / abs(exact) * Exact(0x1p106)));
    }
  }
  double Get() const { return worst_; }

 private:
  double worst_ = 0;
};

TEST(DoubleDouble, IsAsExactAsTheBoundsSay) {
  SCOPED_TRACE("seed 11");
  Pairs pairs(11, 30);
  WorstError sum, sumWithDouble, product, productWithDouble, quotient, quotientByDouble;
  WorstError doubleByNumber, exactProduct, square, reciprocal, root, hypotenuse, power, whole;
  for (int i = 0; i < kPairs; ++i) {
    const auto [a, b] = pairs.Next();
    const Exact x = ExactOf(a);
    const Exact y = ExactOf(b);
    sum.Add(a + b, x + y);
    sum.Add(a - b, x - y);
    sumWithDouble.Add(a + b.hi, x + b.hi);
    sumWithDouble.Add(a.hi - b, a.hi - y);
    product.Add(a * b, x * y);
    productWithDouble.Add(a * b.hi, x * b.hi);
    quotient.Add(a / b, x / y);
    quotientByDouble.Add(a / b.hi, x / b.hi);
    doubleByNumber.Add(a.hi / b, a.hi / y);
    exactProduct.Add(Multiply(a.hi, b.hi), Exact(a.hi) * b.hi);
    square.Add(sqr(a), x * x);
    reciprocal.Add(recip(a), 1 / x);
    root.Add(sqrt(fabs(a)), sqrt(abs(x)));
    whole.Add(floor(a), floor(x));
    whole.Add(ceil(b), ceil(y));
    hypotenuse.Add(hypot(a, b), sqrt(x * x + y * y));
    const int n = i % 41 - 20;
    power.Add(pow(a, n), pow(x, n));
  }
  const std::tuple<const char*, double, double> rows[] = {
      // operation, largest error, bound
      {"sum, difference", sum.Get(), 2.25},
      {"with a double", sumWithDouble.Get(), 2},
      {"product", product.Get(), 3.5},
      {"by a double", productWithDouble.Get(), 3},
      {"quotient", quotient.Get(), 5.5},
      {"by a double", quotientByDouble.Get(), 3},
      {"double by number", doubleByNumber.Get(), 5},
      {"product of doubles", exactProduct.Get(), 0},
      {"square", square.Get(), 4},
      {"reciprocal", reciprocal.Get(), 4},
      {"square root", root.Get(), 3},
      {"hypotenuse", hypotenuse.Get(), 4},
      {"powers from -20 to 20", power.Get(), 48},
      {"floor and ceil", whole.Get(), 0},
  };
  for (const auto& [name, error, bound] : rows) {
    EXPECT_LE(error, bound) << name;
    EXPECT_GE(error, bound / 2) << name << ": the bound is far off";
  }
}

TEST(DoubleDouble, GivesTheBitsOfThePlainSteps) {
  SCOPED_TRACE("seed 12");
  const auto same = [](const doubledouble& x, test::Plain y) { return SameBits(x, y.hi, y.lo); };
  const auto plain = [](const doubledouble& x) { return test::Plain{x.hi, x.lo}; };
  for (const int range : {3, 100, 480, 1000}) {
    Pairs pairs(12, range);
    for (int i = 0; i < kPairs; ++i) {
      const auto [a, b] = pairs.Next();
      const test::Plain x = plain(a);
      const test::Plain y = plain(b);
      ASSERT_TRUE(same(a + b, test::Add(x, y)) && same(a - b, test::Subtract(x, y)) &&
                  same(a * b, test::Multiply(x, y)) && same(a / b, test::Divide(x, y)) &&
                  same(sqr(a), test::Square(x)) && same(recip(a), test::Recip(x)) &&
                  same(sqrt(a), test::Sqrt(x)) && same(floor(a), test::Floor(x)) &&
                  same(ceil(a), test::Negate(test::Floor(test::Negate(x)))) &&
                  same(Multiply(a.hi, b.hi), test::MultiplyDoubles(a.hi, b.hi)) &&
                  same(normalize(a), test::Normalize(x)))
          << "range " << range << ", pair " << i;
      if (i % 10 == 0) {
        const int n = i % 61 - 30;
        ASSERT_TRUE(same(pow(a, n), test::Pow(x, n))) << "power " << n << ", pair " << i;
        ASSERT_TRUE(range > 480 || same(hypot(a, b), test::Hypot(x, y))) << "pair " << i;
      }
      // A plain operand counts as a number with a lo of 0.
      const double d = b.hi;
      const int n = static_cast<int>(std::fmod(d, 1e9));
      ASSERT_TRUE(SameBits(a + d, a + doubledouble(d)) && SameBits(d + a, doubledouble(d) + a) &&
                  SameBits(a - d, a - doubledouble(d)) && SameBits(d - a, doubledouble(d) - a) &&
                  SameBits(a * d, a * doubledouble(d)) && SameBits(d * a, doubledouble(d) * a) &&
                  SameBits(a / d, a / doubledouble(d)) && SameBits(d / a, doubledouble(d) / a) &&
                  SameBits(a + n, a + doubledouble(n)) && SameBits(n - a, doubledouble(n) - a) &&
                  SameBits(n * a, doubledouble(n) * a) && SameBits(a / n, a / doubledouble(n)))
          << "range " << range << ", pair " << i;
    }
  }
}

TEST(DoubleDouble, HoldsPlainNumbersExactly) {
  static_assert(std::is_trivially_copyable_v<doubledouble> && sizeof(doubledouble) == 16);
  static_assert(doubledouble(1) / 3 * 3 == 1 && doubledouble().hi == 0);
  EXPECT_TRUE(SameBits(doubledouble(-7), -7, 0));
  EXPECT_TRUE(SameBits(doubledouble(1.0, 0x1p-60), 1, 0x1p-60));
  EXPECT_TRUE(SameBits(doubledouble(0x1p53, 1.0) + 1L, 0x1p53 + 2, 0));
  EXPECT_TRUE(SameBits(LLONG_MAX, 0x1p63, -1)) << "64-bit integers have two halves";
  EXPECT_TRUE(SameBits(LLONG_MIN, -0x1p63, 0));
  EXPECT_TRUE(SameBits(-1L, -1, 0));
  EXPECT_TRUE(SameBits(ULLONG_MAX, 0x1p64, -1));
  EXPECT_EQ(doubledouble(2) * ULLONG_MAX - LLONG_MAX - LLONG_MAX, doubledouble(0x1p64));
  EXPECT_EQ(0.5f + doubledouble(1) * 3u, 3.5);
  doubledouble x = 10;
  x += 2;
  x -= doubledouble(3);
  x *= 0.5;
  x /= 9L;
  EXPECT_EQ(x, 0.5);
}

TEST(DoubleDouble, ConvertsToPlainNumbers) {
  struct Row {
    const char* why;
    doubledouble x;
    double asDouble;
    int asInt;
  };
  const Row rows[] = {
      {"truncated towards 0", 2.75, 2.75, 2},
      {"and from below", -2.75, -2.75, -2},
      {"the sum of both fields", doubledouble(3, -0x1p-60), 3, 3},
      {"the greatest int", INT_MAX, INT_MAX, INT_MAX},
      {"beyond it", 3e9, 3e9, INT_MAX},
      {"beyond the least", -kInf, -kInf, INT_MIN},
  };
  for (const Row& row : rows) {
    const double asDouble = row.x;
    const int asInt = row.x;
    EXPECT_EQ(asDouble, row.asDouble) << row.why;
    EXPECT_EQ(asInt, row.asInt) << row.why;
  }
  EXPECT_EQ(static_cast<int>(doubledouble(kNan)), 0);
}

TEST(DoubleDouble, ComparesByHighAndThenByLow) {
  const doubledouble numbers[] = {
      -kInf, -2, doubledouble(1, -0x1p-70), 1, doubledouble(1, 0x1p-70), 2, kInf};
  for (int i = 0; i < 7; ++i) {
    for (int j = 0; j < 7; ++j) {
      const doubledouble& a = numbers[i];
      const doubledouble& b = numbers[j];
      EXPECT_EQ(std::tuple(a == b, a != b, a<b, a <= b, a> b, a >= b),
                std::tuple(i == j, i != j, i<j, i <= j, i> j, i >= j))
          << i << ' ' << j;
    }
    const doubledouble& a = numbers[i];
    EXPECT_EQ(std::tuple(a == 1, a != 1, a<1, a <= 1, a> 1, a >= 1),
              std::tuple(i == 3, i != 3, i<3, i <= 3, i> 3, i >= 3));
    EXPECT_EQ(std::tuple(1.0 == a, 1.0 != a, 1.0 < a, 1.0 <= a, 1.0 > a, 1.0 >= a),
              std::tuple(i == 3, i != 3, i > 3, i >= 3, i < 3, i <= 3));
    EXPECT_FALSE(a == kNan || a < kNan || a <= kNan || a > kNan || a >= kNan);
  }
}

TEST(DoubleDouble, HasNoErrorPath) {
  const doubledouble nan(kNan);
  const doubledouble one(1);
  for (const doubledouble& x : {nan + 1, 1 - nan, nan * one, one / nan, one / 0, doubledouble() / 0,
                                recip(0), sqrt(nan), sqrt(-1), sqr(nan), doubledouble(1e302) * 2,
                                doubledouble(kInf) + 1, floor(nan), pow(nan, 3)}) {
    EXPECT_TRUE(std::isnan(x.hi)) << x.hi;
  }
  EXPECT_EQ(sqrt(0), 0);
  EXPECT_EQ(fabs(doubledouble(-1, 0x1p-60)), doubledouble(1, -0x1p-60));
  EXPECT_EQ(-doubledouble(1, 0x1p-60), doubledouble(-1, -0x1p-60));
}

TEST(DoubleDouble, TakesWholePowers) {
  const doubledouble third = doubledouble(1) / 3;
  EXPECT_EQ(pow(third, 0), 1);
  EXPECT_EQ(pow(nan("") * third, 0), 1);
  EXPECT_EQ(pow(2, -1), 0.5);
  EXPECT_EQ(pow(-3, 5), -243);
  EXPECT_EQ(pow(10, 22), 1e22);
  EXPECT_EQ(pow(-1, INT_MIN), 1) << "its absolute value is no int";
  EXPECT_EQ(pow(1, INT_MAX), 1);
}

TEST(DoubleDouble, FindsWholeNumbers) {
  struct Row {
    doubledouble x;
    doubledouble floor;
    doubledouble ceil;
  };
  const Row rows[] = {
      {doubledouble(4, -0x1p-60), 3, 4},
      {doubledouble(4, 0x1p-60), 4, 5},
      {doubledouble(-4, 0x1p-60), -4, -3},
      {2.5, 2, 3},
      {-2.5, -3, -2},
      {doubledouble(0x1p60, 0.75), doubledouble(0x1p60), doubledouble(0x1p60, 1)},
      {doubledouble(0x1p53, -0.25), doubledouble(0x1p53, -1), 0x1p53},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(floor(row.x), row.floor) << row.x.hi << ' ' << row.x.lo;
    EXPECT_EQ(ceil(row.x), row.ceil) << row.x.hi << ' ' << row.x.lo;
  }
}

TEST(DoubleDouble, ScalesByPowersOfTwo) {
  const doubledouble x(1, 0x1p-60);
  EXPECT_EQ(scalb(x, 10), doubledouble(1024, 0x1p-50));
  EXPECT_EQ(scalb(x, -10), doubledouble(0x1p-10, 0x1p-70));
  EXPECT_EQ(scalb(x, -1074), 0x1p-1074);
  EXPECT_EQ(scalb(x, LONG_MIN), 0);
  EXPECT_EQ(scalb(x, LONG_MAX).hi, kInf);
  EXPECT_EQ(scalb(0x1p-1074, 2000), 0x1p926);
  for (const doubledouble& y : {doubledouble(0.5, -0x1p-60), doubledouble(-12, 0x1p-70),
                                doubledouble(kMax), doubledouble(0x1p-1074)}) {
    const auto [mantissa, exponent] = partition(y);
    EXPECT_TRUE(std::abs(mantissa.hi) >= 0.5 && std::abs(mantissa.hi) < 1) << y.hi;
    EXPECT_EQ(scalb(mantissa, exponent), y);
  }
  EXPECT_EQ(partition(12), std::pair(doubledouble(0.75), 4L));
  EXPECT_EQ(partition(0), std::pair(doubledouble(0), 0L));
  EXPECT_EQ(partition(-kInf), std::pair(doubledouble(-kInf), 0L));
}

TEST(DoubleDouble, HypotenuseAlwaysEnds) {
  const doubledouble tiny(0x1p-1074);
  struct Row {
    const char* why;
    doubledouble a;
    doubledouble b;
    doubledouble result;
  };
  const Row rows[] = {
      {"whole", 3, -4, 5},
      {"nothing to add", 7, 0, 7},
      {"both zero", 0, -0.0, 0},
      {"too small to add", 1, 1e-200, 1},
      {"ordered by lo", doubledouble(3, 0x1p-54), 3, sqrt(18 + doubledouble(6) * 0x1p-54)},
      {"infinity", kInf, 1, kInf},
      {"infinity beside NaN", kNan, -kInf, kInf},
      {"beyond the range of products", 3 * 0x1p1016, 4 * 0x1p1016, 5 * 0x1p1016},
      {"the result is out of range", kMax, kMax, kInf},
      {"the largest", kMax, 0, kMax},
      {"below the range of errors", 3 * 0x1p-1060, 4 * 0x1p-1060, 5 * 0x1p-1060},
      {"the least", tiny, tiny, tiny},
  };
  for (const Row& row : rows) {
    const doubledouble result = hypot(row.a, row.b);
    EXPECT_TRUE(result == row.result || fabs(result - row.result) < 0x1p-104 * row.result.hi)
        << row.why;
    EXPECT_EQ(result, hypot(row.b, row.a)) << row.why;
  }
  doubledouble broken(1);
  broken.lo = kNan;
  for (const doubledouble& nan : {doubledouble(kNan), broken}) {
    EXPECT_TRUE(std::isnan(hypot(nan, 1).hi) && std::isnan(hypot(0, nan).hi));
  }
}

TEST(DoubleDouble, KnowsItsConstants) {
  // The nearest pair: pi is the sum of these, rounded.
  const doubledouble pi(0x1.921fb54442d18p+1, 0x1.1a62633145c07p-53);
  EXPECT_LT(fabs(doubledouble::DDPI - pi) / pi, 8 * 0x1p-106);
  for (const doubledouble& one : {doubledouble::DDTWOPI / pi / 2, doubledouble::PION2 / pi * 2,
                                  doubledouble::PION4 / pi * 4, doubledouble::INVPI * pi}) {
    EXPECT_LT(fabs(one - 1), 12 * 0x1p-106);
  }
  // The exponential of the 4096th part by its series, and that to the power 4096.
  for (const auto& [logarithm, number] :
       {std::pair(doubledouble::LN2, 2), std::pair(doubledouble::LN10, 10)}) {
    const doubledouble x = scalb(logarithm, -12);
    doubledouble sum = 1;
    doubledouble term = 1;
    for (int k = 1; k < 12; ++k) {
      sum += term = term * x / k;
    }
    EXPECT_LT(fabs(pow(sum, 4096) / number - 1), 1e-27) << number;
  }
}

TEST(DoubleDouble, RunsWhereDoublesRoundTo53Bits) { EXPECT_TRUE(doubledouble::CheckPrecision()); }

}  // namespace
}  // namespace vlm

// Code as a user writes it, with the standard's names about.
using namespace vlm;
using namespace std;

TEST(DoubleDouble, StandsBesideTheStandardFunctions) {
  const doubledouble two = 2;
  EXPECT_LT(fabs(sqrt(two) * sqrt(two) - 2), 1e-31);
  EXPECT_EQ(pow(two, 10) + pow(2.0, 10), 2048);
  EXPECT_EQ(floor(two / 3) + floor(2.5) + ceil(two / 3) + fabs(-two) + hypot(two, 0), 7);
  EXPECT_EQ(scalb(two, 3) + vlm::sqrt(16), 20);
}

#include <velum/core/Exception.h>
#include <velum/numerics/DoubleDouble.h>

#include <velum/numerics/test/reference/PlainDoubleDouble.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <iomanip>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>

namespace vlm {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kMax = std::numeric_limits<double>::max();

std::string Written(const doubledouble& x, int precision) {
  std::ostringstream out;
  out << std::setprecision(precision) << x;
  return out.str();
}

bool SameBits(const doubledouble& x, const test::Plain& y) {
  return std::bit_cast<std::uint64_t>(x.hi) == std::bit_cast<std::uint64_t>(y.hi) &&
         std::bit_cast<std::uint64_t>(x.lo) == std::bit_cast<std::uint64_t>(y.lo);
}

TEST(DoubleDoubleText, IsReadUpToWhatDoesNotFit) {
  struct Row {
    const char* text;
    doubledouble x;
  };
  const Row rows[] = {
      {"1.5d2", 150},
      {"1.5D+2", 150},
      {"15d-001", 1.5},
      {"1.5e2", 1.5},  // "e" is no exponent
      {" \t\n\v\f\r-7", -7},
      {"+.5", 0.5},
      {"5.", 5},
      {"1.2.3", doubledouble(12) / 10},
      {"- 5", 0},
      {"--5", 0},
      {"1d", 1},
      {"1d 2", 100},
      {"1d+-2", 1},
      {"1 d2", 1},
      {"", 0},
      {"nan", 0},
      {"d5", 0},
      {"9007199254740993", doubledouble(0x1p53, 1.0)},
      {"000000000000000000000000000000000000000005", 5},
      {"1000000000000000000000000000000d-30", 1},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(atodd(row.text), row.x) << row.text;
    EXPECT_EQ(doubledouble(row.text), row.x) << row.text;
  }
  EXPECT_TRUE(std::signbit(atodd("-0").hi));
}

TEST(DoubleDoubleText, NeedsAPointer) {
  const char* const nothing = nullptr;
  try {
    static_cast<void>(atodd(nothing));
    ADD_FAILURE() << "no error";
  } catch (const Exception& error) {
    EXPECT_EQ(error.GetErrCode(), ERR_INTERNAL);
    EXPECT_EQ(error.GetSrcFile(), "DoubleDouble");
  }
  EXPECT_THROW(doubledouble x(nothing), Exception);
}

// Steps that change nothing are not taken, so that each of these ends at once.
TEST(DoubleDoubleText, LargeExponentsEnd) {
  const std::string zeros(100000, '0');
  struct Row {
    const char* why;
    std::string text;
    doubledouble x;
  };
  const Row rows[] = {
      {"overflow", "1d999999999", kInf},
      {"negative overflow", "-1d999999999", -kInf},
      {"underflow", "1d-999999999", 0},
      {"zero", "0d999999999", 0},
      {"an exponent beyond any integer", "1d99999999999999999999", kInf},
      {"below any integer", "1d-99999999999999999999", 0},
      {"the first beyond the range", "1.7976931348623159d308", kInf},
      {"long overflow", "1" + zeros, kInf},
      {"long, brought back", "25" + zeros + "d-100001", 2.5},
      {"long underflow", "0." + zeros + "1", 0},
      {"long fraction, brought back", "0." + zeros + "25d100001", 2.5},
      {"long tail", "2.5" + zeros + "1", 2.5},
  };
  for (const Row& row : rows) {
    const doubledouble x = atodd(row.text.c_str());
    EXPECT_TRUE(x == row.x || fabs(x - row.x) < 600 * 0x1p-106 * std::abs(row.x.hi)) << row.why;
  }
  EXPECT_LT(fabs(atodd("1.7976931348623157d308") - kMax), 1e-14 * kMax);
}

TEST(DoubleDoubleText, IsReadWithTheBitsOfThePlainSteps) {
  SCOPED_TRACE("seed 21");
  std::mt19937 random(21);
  for (int i = 0; i < 20000; ++i) {
    std::string text(1, "+-"[random() % 2]);
    const std::size_t length = 1 + random() % 45;
    for (std::size_t digit = 0; digit < length; ++digit) {
      text += static_cast<char>('0' +
                                (i % 3 == 0 ? random() % 10 * (random() % 4 == 0) : random() % 10));
    }
    if (random() % 2 != 0) text.insert(1 + random() % text.size(), ".");
    if (random() % 2 != 0) text += "d" + std::to_string(static_cast<int>(random() % 480) - 240);
    ASSERT_TRUE(SameBits(atodd(text.c_str()), test::Read(text.c_str()))) << text;
  }
}

TEST(DoubleDoubleText, GivesTheConstants) {
  EXPECT_EQ(doubledouble("3.1415926535897932384626433832795028841972"), doubledouble::DDPI);
  EXPECT_EQ(doubledouble("6.2831853071795864769252867665590057683943"), doubledouble::DDTWOPI);
  EXPECT_EQ(doubledouble("1.5707963267948966192313216916397514420985"), doubledouble::PION2);
  EXPECT_EQ(doubledouble("0.7853981633974483096156608458198757210493"), doubledouble::PION4);
  EXPECT_EQ(doubledouble("0.3183098861837906715377675267450287240689"), doubledouble::INVPI);
  EXPECT_EQ(doubledouble("0.6931471805599453094172321214581765680755"), doubledouble::LN2);
  EXPECT_EQ(doubledouble("2.302585092994045684017991454684364207601"), doubledouble::LN10);
}

TEST(DoubleDoubleText, IsWrittenWithASmallD) {
  struct Row {
    doubledouble x;
    int precision;
    const char* text;
  };
  const Row rows[] = {
      {1500, 3, "1.5d+003"},
      {1500, 1, "1d+003"},
      {-1.75, 2, "-1.7"},  // digits are cut, not rounded
      {0.5, 6, "5d-001"},
      {2, 6, "2"},
      {0, 6, "0"},
      {-0.0, 6, "0"},
      {doubledouble(1) / 3, 32, "3.3333333333333333333333333333333d-001"},
      {doubledouble::DDPI, 31, "3.141592653589793238462643383279"},
      {1e23, 3, "0.99d+023"},  // a little less, with a logarithm that rounds up
      {0x1p-1074, 5, "4.9406d-324"},
      {kMax, 5, "1.7976d+308"},
      {-kInf, 6, "-inf"},
      {std::nan(""), 6, "NaN "},
      {1500, 0, "d+003"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(Written(row.x, row.precision), row.text);
  }
  const std::string all = Written(doubledouble(1) / 3, 1000000);
  EXPECT_LT(all.size(), 2000u) << "the digits end where the number does";
  EXPECT_EQ(all.substr(0, 33), "3.3333333333333333333333333333333");
}

TEST(DoubleDoubleText, LeavesTheStreamAsItWas) {
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
  };
  std::ostringstream out;
  out.imbue(std::locale(std::locale::classic(), new Comma));
  out << std::uppercase << std::showpos << std::setfill('*') << std::setprecision(3);
  out << std::setw(12) << doubledouble(1500) << '|' << std::setw(4) << 7;
  EXPECT_EQ(out.str(), "1.5D+003|**+7");
}

TEST(DoubleDoubleText, HasTheDigitsOfThePlainSteps) {
  SCOPED_TRACE("seed 22");
  std::mt19937 random(22);
  std::uniform_real_distribution<double> exponent(-900, 900);
  std::uniform_real_distribution<double> tail(-0x1p-54, 0x1p-54);
  for (int i = 0; i < 5000; ++i) {
    const double hi = std::exp2(exponent(random));
    const doubledouble x(hi, hi * tail(random));
    const std::string text = Written(x, 33);
    ASSERT_EQ(text.substr(0, text.find('d')), test::Digits({x.hi, x.lo}, 33)) << text;
  }
}

TEST(DoubleDoubleText, ComesBackOverTheWholeRange) {
  SCOPED_TRACE("seed 23");
  std::mt19937 random(23);
  std::uniform_real_distribution<double> mantissa(1, 2);
  std::uniform_real_distribution<double> tail(-0x1p-54, 0x1p-54);
  double worst = 0;
  double worstNearOne = 0;
  for (int exponent = -1074; exponent < 1024; ++exponent) {
    for (int i = 0; i < 8; ++i) {
      const double hi = std::ldexp(i == 0 ? 1 : mantissa(random), exponent);
      const doubledouble x(i % 2 == 0 ? hi : -hi, hi * tail(random));
      const doubledouble back = atodd(Written(x, 35).c_str());
      // Nothing is finer than the least double.
      const double error = std::max(0.0, std::abs((back - x).hi) - 0x1p-1074);
      const double units = std::ldexp(error, 106 - exponent);
      worst = std::max(worst, units);
      if (std::abs(exponent) < 30) worstNearOne = std::max(worstNearOne, units);
    }
  }
  EXPECT_LE(worst, 60);
  EXPECT_GE(worst, 20) << "the bound is far off";
  EXPECT_LE(worstNearOne, 16);
}

}  // namespace
}  // namespace vlm
